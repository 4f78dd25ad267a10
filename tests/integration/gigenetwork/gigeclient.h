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

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isRaised = false;
};

void SetFloat(Velmo::IVelmoDevice& device, const char* name, double value);
std::int64_t GetInteger(GenApi::INodeMap& nodeMap, const char* name);

/** The GigE transport as a test uses it. */
class CGigEClient
{
public:
    CGigEClient();
    Velmo::Transport::ITransport& Transport() { return *m_pTransport; }
    Velmo::DeviceInfoList Find(Velmo::Transport::EDiscoveryScope scope);
    /** Discovers and opens; throws std::runtime_error when no camera has that serial number. */
    std::unique_ptr<Velmo::IVelmoDevice> Open(const std::string& serial);
    /** Discovers until the camera can be opened. */
    bool WaitForUsable(const std::string& serial, std::chrono::seconds timeout);

private:
    std::shared_ptr<Velmo::Transport::ITransport> m_pTransport;
};

/** A camera's first stream, started with buffers of its own, and its acquisition; both end with the object. */
class CRunningStream
{
public:
    CRunningStream(Velmo::IVelmoDevice& device, std::size_t buffers);
    ~CRunningStream();
    CRunningStream(const CRunningStream&) = delete;
    CRunningStream& operator=(const CRunningStream&) = delete;

    /** The next result, whose buffer is queued again; throws std::runtime_error when none comes within 5 s. */
    Velmo::Transport::SStreamResult Next();
    std::int64_t Statistic(const char* name) { return GetInteger(*m_stream.GetNodeMap(), name); }

private:
    Velmo::IVelmoDevice& m_device;
    Velmo::Transport::IStream& m_stream;
    std::vector<std::vector<std::uint8_t>> m_memory;
};

} // namespace Test
