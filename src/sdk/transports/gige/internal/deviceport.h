// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodes.h"
#include "transports/gige/internal/engine.h"
#include "transports/gige/internal/removal.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

namespace Velmo::GigE::Internal
{

/**
 * The camera's registers through the engine. Memory is the camera's: big-endian.
 * Errors: AccessException (refused), TimeoutException, RuntimeException; each text names camera, address and length.
 * Threads: any; accesses come one after the other.
 */
class CDevicePort : public GenApi::IPort
{
public:
    CDevicePort(std::string cameraName, ArvDevice* pDevice, std::shared_ptr<CRemoval> pRemoval);
    ~CDevicePort() override;

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }
    void Read(void* buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;
    std::uint32_t ReadRegister(std::uint32_t address);
    void WriteRegister(std::uint32_t address, std::uint32_t value);
    /** Whether Write, which is the node map's way, touched the packet size: the user's choice, even of the same one. */
    bool IsPacketSizeWritten() const { return m_isPacketSizeWritten; }

private:
    std::string Describe(const char* access, std::int64_t address, std::int64_t length) const;
    void Check(const char* access, std::int64_t address, std::int64_t length) const;
    void WriteWords(const void* buffer, std::int64_t address, std::int64_t length);
    void ReadAligned(std::uint8_t* data, std::int64_t address, std::int64_t length);
    void WriteAligned(const std::uint8_t* data, std::int64_t address, std::int64_t length);

    std::string m_cameraName;
    ArvDevice* m_pDevice; // the device that owns this port keeps it
    std::shared_ptr<CRemoval> m_pRemoval;
    std::atomic<bool> m_isPacketSizeWritten{false};
    std::recursive_mutex m_mutex; // one access at a time; a write may have to read first
};

} // namespace Velmo::GigE::Internal
