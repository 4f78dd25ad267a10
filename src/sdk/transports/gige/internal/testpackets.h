// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/udpsocket.h"

#include <cstdint>

namespace Velmo::GigE::Internal
{

struct SOpenCamera;

/**
 * Directs a controlled camera's stream channel to a socket of its own for its life and asks for test packets; the
 * channel is as it was afterwards. Only while no stream is started. Threads: one at a time.
 */
class CTestPackets
{
public:
    /** Throws GenICam exceptions when the camera refuses, RuntimeException when there is no socket. */
    explicit CTestPackets(SOpenCamera& camera);
    ~CTestPackets();
    CTestPackets(const CTestPackets&) = delete;
    CTestPackets& operator=(const CTestPackets&) = delete;

    /** Whether a packet of that size, headers included, arrives in one piece. Changes the camera's packet size. False
     *  also when the camera refuses the size. */
    bool Pass(std::uint32_t packetBytes);

private:
    bool Await(std::uint32_t packetBytes);

    SOpenCamera& m_camera;
    CUdpSocket m_socket;
    std::uint32_t m_destinationBefore = 0;
    std::uint32_t m_portBefore = 0;
};

} // namespace Velmo::GigE::Internal
