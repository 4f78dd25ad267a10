// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "simulator/cameramodel.h"
#include "transports/emulation/emulationtransport.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace EmulationTest
{

constexpr unsigned int DeadlineMs = 20000;

inline Simulator::SCameraConfig Small(const std::string& serial = "E-1", double rate = 200.0)
{
    Simulator::SCameraConfig config;
    config.serialNumber = serial;
    config.sensorWidth = 64;
    config.sensorHeight = 48;
    config.frameRate = rate;
    config.pixelFormats = {"Mono8", "Mono12", "BayerRG8", "RGB8"};
    return config;
}

/** Counts calls of a removal callback. */
class CCounter
{
public:
    void Count()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_count;
        m_changed.notify_all();
    }
    bool WaitFor(int count)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::milliseconds(DeadlineMs), [&] { return m_count >= count; });
    }
    int Get()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count = 0;
};

/** A transport with cameras, and what tests do with them. */
struct SRig
{
    explicit SRig(std::vector<Simulator::SCameraConfig> cameras = {Small()})
        : transport(Velmo::Emulation::CreateTransport(cameras)), control(Velmo::Emulation::GetControl(transport))
    {
    }

    Velmo::DeviceInfoList Enumerate() const
    {
        Velmo::DeviceInfoList list;
        transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::Usable);
        return list;
    }
    std::unique_ptr<Velmo::IVelmoDevice> Create(std::size_t index = 0) const
    {
        return transport->CreateDevice(Enumerate().at(index));
    }
    std::unique_ptr<Velmo::IVelmoDevice> Open(std::size_t index = 0,
                                              Velmo::EDeviceAccess access = Velmo::EDeviceAccess::Control) const
    {
        auto device = Create(index);
        device->Open(access);
        return device;
    }

    std::shared_ptr<Velmo::Transport::ITransport> transport;
    std::shared_ptr<Velmo::Emulation::IEmulationControl> control;
};

/** A stream that grabs into buffers of its own. */
class CGrab
{
public:
    explicit CGrab(Velmo::IVelmoDevice& device, std::size_t buffers = 8)
        : m_device(device), stream(*device.GetStream(0))
    {
        stream.Open();
        m_memory.resize(buffers);
        for (auto& memory : m_memory)
        {
            memory.resize(stream.GetPayloadBytes());
            stream.AnnounceBuffer(memory.data(), memory.size(), &memory);
        }
    }
    ~CGrab() { stream.Close(); }

    void QueueAll()
    {
        for (auto& memory : m_memory)
        {
            stream.QueueBuffer(&memory);
        }
    }
    void Start()
    {
        QueueAll();
        stream.Start();
        Execute("AcquisitionStart");
    }
    void Execute(const char* command) { GenApi::CCommandPtr(m_device.GetNodeMap()->GetNode(command))->Execute(); }
    /** The next result; its buffer is queued again. */
    Velmo::Transport::SStreamResult Next()
    {
        Velmo::Transport::SStreamResult result;
        if (!stream.RetrieveResult(result, DeadlineMs))
        {
            ADD_FAILURE() << "no result";
            return result;
        }
        last = *static_cast<std::vector<std::uint8_t>*>(result.pContext);
        if (result.status != Velmo::Transport::EResultStatus::Canceled)
        {
            stream.QueueBuffer(result.pContext);
        }
        return result;
    }
    void* Context(std::size_t index) { return &m_memory.at(index); }

private:
    Velmo::IVelmoDevice& m_device;
    std::vector<std::vector<std::uint8_t>> m_memory;

public:
    Velmo::Transport::IStream& stream;
    std::vector<std::uint8_t> last; // bytes of the result that Next gave
};

} // namespace EmulationTest
