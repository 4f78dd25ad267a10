// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/cameraport.h"
#include "transports/gige/internal/engine.h"
#include "transports/gige/internal/enginecalls.h"
#include "transports/gige/internal/registerreader.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace Velmo::GigE::Internal
{

/** Of a camera that is controlled. Addresses in host byte order. */
struct SDevicePortConfig
{
    std::string cameraName;
    std::uint32_t adapterIp = 0;
    std::uint32_t deviceIp = 0;
    ArvDevice* pDevice = nullptr; // the owner of the port keeps it, and the calls
    CEngineCalls* pCalls = nullptr;
    std::shared_ptr<CRemoval> pRemoval;
};

/**
 * The registers of a camera that is controlled. Writes go through the engine, whose socket has the privilege; reads
 * need none and go by requests of our own, unless the camera lets only the controlling socket read.
 */
class GIGE_TEST_EXPORT CDevicePort : public ACameraPort
{
public:
    /** Throws RuntimeException when the adapter's address cannot be used. */
    explicit CDevicePort(const SDevicePortConfig& config);
    ~CDevicePort() override;

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;
    /** Whether Write, which is the node map's way, touched the packet size: the user's choice, even of the same one. */
    bool IsPacketSizeWritten() const { return m_isPacketSizeWritten; }

private:
    void ReadWords(std::uint8_t* data, std::int64_t address, std::int64_t length) override;
    void ReadByEngine(std::uint8_t* data, std::int64_t address, std::int64_t length);
    void WriteWords(const std::uint8_t* data, std::int64_t address, std::int64_t length) override;
    [[noreturn]] void ThrowRead(const SReadResult& read) const;

    ArvDevice* m_pDevice;
    CEngineCalls& m_calls;
    CRegisterReader m_reader;
    bool m_isReadByEngine = false; // an access's lock is held
    std::atomic<bool> m_isPacketSizeWritten{false};
};

} // namespace Velmo::GigE::Internal
