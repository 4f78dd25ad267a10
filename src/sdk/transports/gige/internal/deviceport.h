// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/cameraport.h"
#include "transports/gige/internal/engine.h"

#include <atomic>
#include <memory>
#include <string>

namespace Velmo::GigE::Internal
{

/** The registers of a camera that is controlled, through the engine. */
class CDevicePort : public ACameraPort
{
public:
    CDevicePort(std::string cameraName, ArvDevice* pDevice, std::shared_ptr<CRemoval> pRemoval);
    ~CDevicePort() override;

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;
    /** Whether Write, which is the node map's way, touched the packet size: the user's choice, even of the same one. */
    bool IsPacketSizeWritten() const { return m_isPacketSizeWritten; }

private:
    void ReadWords(std::uint8_t* data, std::int64_t address, std::int64_t length) override;
    void WriteWords(const std::uint8_t* data, std::int64_t address, std::int64_t length) override;

    ArvDevice* m_pDevice; // the device that owns this port keeps it
    std::atomic<bool> m_isPacketSizeWritten{false};
};

} // namespace Velmo::GigE::Internal
