// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/gigeclient.h"

#include <memory>
#include <optional>
#include <string>

namespace Test
{

/** A monitor of a GigE camera with a transport of its own, as another program has it. */
class CGigEMonitor
{
public:
    /** Throws std::runtime_error when no camera has that serial number, and what opening throws. */
    explicit CGigEMonitor(const std::string& serial = "GC-1");
    ~CGigEMonitor();
    CGigEMonitor(const CGigEMonitor&) = delete;
    CGigEMonitor& operator=(const CGigEMonitor&) = delete;

    Velmo::IVelmoDevice& Device() { return *m_pDevice; }
    Velmo::Transport::IStream& Stream() { return *m_pDevice->GetStream(0); }
    void Start(std::size_t buffers = 100);
    /** See CStreamBuffers; after Start. */
    Velmo::Transport::SStreamResult Next(std::vector<std::uint8_t>* pImage = nullptr)
    {
        return m_buffers->Next(pImage);
    }
    std::int64_t Statistic(const char* name) { return GetInteger(*Stream().GetNodeMap(), name); }
    bool WaitForRemoval(std::chrono::milliseconds limit) { return m_removed.Wait(limit); }

private:
    CGigEClient m_client;
    CSignal m_removed;
    std::unique_ptr<Velmo::IVelmoDevice> m_pDevice;
    std::optional<CStreamBuffers> m_buffers;
};

} // namespace Test
