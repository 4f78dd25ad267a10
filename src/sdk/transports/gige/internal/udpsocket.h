// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "transports/gige/gige_testexport.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Velmo::GigE::Internal
{

/** A non-blocking IPv4 datagram socket. Addresses and ports in host byte order. Threads: one at a time. */
class GIGE_TEST_EXPORT CUdpSocket
{
public:
    CUdpSocket() = default;
    ~CUdpSocket();
    CUdpSocket(CUdpSocket&& other) noexcept;
    CUdpSocket& operator=(CUdpSocket&& other) noexcept;
    CUdpSocket(const CUdpSocket&) = delete;
    CUdpSocket& operator=(const CUdpSocket&) = delete;

    /** Opens the socket anew at that address; port 0 lets the system choose. False: GetError() says why. */
    bool Bind(std::uint32_t ip, std::uint16_t port = 0, bool isShared = false);
    void Close();
    bool IsOpen() const { return m_descriptor >= 0; }
    int GetDescriptor() const { return m_descriptor; }
    std::uint16_t GetPort() const;
    const std::string& GetError() const { return m_error; }

    /** Through the adapter of that index where it is not 0. False when the system refuses. */
    bool Send(const Gvcp::Bytes& packet, std::uint32_t ip, std::uint16_t port, unsigned int adapterIndex = 0);
    /** One datagram, cut to bytes; 0 when there is none. */
    std::size_t Receive(std::uint8_t* data, std::size_t bytes, std::uint32_t& senderIp, std::uint16_t& senderPort);

private:
    int m_descriptor = -1;
    std::string m_error;
};

} // namespace Velmo::GigE::Internal
