// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "transport/transport.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Test
{

/** Something that another thread tells and a test waits for. */
class CSignal
{
public:
    void Raise();
    bool Wait(std::chrono::milliseconds timeout);
    /** How often it was raised. */
    int Count();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count = 0;
};

void Execute(Velmo::IVelmoDevice& device, const char* command);
void SetFloat(Velmo::IVelmoDevice& device, const char* name, double value);
std::int64_t GetInteger(GenApi::INodeMap& nodeMap, const char* name);

/** The GigE transport as a test uses it. */
class CGigEClient
{
public:
    CGigEClient();
    Velmo::Transport::ITransport& Transport() { return *m_pTransport; }
    Velmo::DeviceInfoList Find(Velmo::Transport::EDiscoveryScope scope);
    /** Discovers; throws std::runtime_error when no camera has that serial number. */
    std::unique_ptr<Velmo::IVelmoDevice> Create(const std::string& serial);
    /** The same, opened. */
    std::unique_ptr<Velmo::IVelmoDevice> Open(const std::string& serial,
                                              Velmo::EDeviceAccess access = Velmo::EDeviceAccess::Control);
    /** Discovers until the camera can be opened, and leaves it alone for the pause after each time it cannot. */
    bool WaitForUsable(const std::string& serial, std::chrono::seconds timeout,
                       std::chrono::seconds pause = std::chrono::seconds(0));

private:
    std::shared_ptr<Velmo::Transport::ITransport> m_pTransport;
};

/** A stream, opened, with announced and queued buffers; it is stopped and closed with the object. */
class CStreamBuffers
{
public:
    CStreamBuffers(Velmo::Transport::IStream& stream, std::size_t count);
    ~CStreamBuffers();
    CStreamBuffers(const CStreamBuffers&) = delete;
    CStreamBuffers& operator=(const CStreamBuffers&) = delete;

    /** The next result, whose buffer is queued again if it can be; throws std::runtime_error when none comes within
     *  5 s. Its bytes go to the image, if there is one. */
    Velmo::Transport::SStreamResult Next(std::vector<std::uint8_t>* pImage = nullptr);

private:
    Velmo::Transport::IStream& m_stream;
    std::vector<std::vector<std::uint8_t>> m_memory;
};

/** A camera's first stream, started with buffers of its own, and its acquisition; both end with the object. */
class CRunningStream
{
public:
    explicit CRunningStream(Velmo::IVelmoDevice& device, std::size_t buffers = 10);
    ~CRunningStream();
    CRunningStream(const CRunningStream&) = delete;
    CRunningStream& operator=(const CRunningStream&) = delete;

    Velmo::Transport::SStreamResult Next(std::vector<std::uint8_t>* pImage = nullptr) { return m_buffers.Next(pImage); }
    std::int64_t Statistic(const char* name) { return GetInteger(*m_stream.GetNodeMap(), name); }

private:
    Velmo::IVelmoDevice& m_device;
    Velmo::Transport::IStream& m_stream;
    CStreamBuffers m_buffers;
};

} // namespace Test
