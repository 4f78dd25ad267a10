// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/internal/bootstrap.h"
#include "protocols/gvcp.h"
#include "simulator/cameramodel.h"

#include <functional>
#include <memory>
#include <vector>

namespace GigEServer::Internal
{

/**
 * The whole address space of a camera: bootstrap registers, the camera model's registers, the description.
 *
 * It does not ask who reads or writes; the control channel does. Threads: the control thread.
 */
class GIGESERVER_TEST_EXPORT CRegisters
{
public:
    /** What writing registers leads to, on the thread that writes. */
    struct SHooks
    {
        std::function<void()> onStreamChanged;                 // a register of the stream channel
        std::function<void(std::uint32_t bytes)> onTestPacket; // one of that size is asked for
        std::function<void()> onMessageChanged;                // a register of the message channel
    };

    CRegisters(const SServedCamera& camera, std::shared_ptr<Simulator::CCameraModel> pModel, SHooks hooks);

    /** Whole words. The output is undefined unless the answer is Success. */
    Velmo::Gvcp::EStatus Read(std::uint32_t address, std::uint8_t* data, std::size_t bytes);
    Velmo::Gvcp::EStatus Write(std::uint32_t address, const std::uint8_t* data, std::size_t bytes);

    CBootstrap& GetBootstrap() { return m_bootstrap; }
    Simulator::CCameraModel& GetModel() { return *m_pModel; }
    /** What a camera gives up with its control: the stream, the acquisition, its open files, the messages. */
    void CloseChannels();

private:
    Velmo::Gvcp::EStatus ReadBootstrap(std::uint32_t address, std::uint8_t* data, std::size_t bytes);
    Velmo::Gvcp::EStatus WriteBootstrap(std::uint32_t address, const std::uint8_t* data, std::size_t bytes);
    Velmo::Gvcp::EStatus WriteWord(std::uint32_t address, std::uint32_t value);
    Velmo::Gvcp::EStatus WriteStreamWord(std::uint32_t address, std::uint32_t value);
    Velmo::Gvcp::EStatus WriteMessageWord(std::uint32_t address, std::uint32_t value);
    Velmo::Gvcp::EStatus WriteName(std::uint32_t offset, const std::uint8_t* data, std::size_t bytes);
    Velmo::Gvcp::EStatus ReadModel(std::uint32_t address, std::uint8_t* data, std::size_t bytes);
    Velmo::Gvcp::EStatus WriteModel(std::uint32_t address, const std::uint8_t* data, std::size_t bytes);
    Velmo::Gvcp::EStatus WriteModelWord(std::uint32_t address, std::uint32_t value);
    void LatchTimestamp();
    std::uint32_t LatchClockStatus();
    std::uint32_t ClockConfiguration();
    std::array<std::uint8_t, 16> Name() const;

    const std::shared_ptr<Simulator::CCameraModel> m_pModel;
    const SHooks m_hooks;
    std::vector<std::uint8_t> m_description; // zipped, filled up to whole words
    CBootstrap m_bootstrap;
};

} // namespace GigEServer::Internal
