// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/gigemonitor.h"

namespace Test
{

CGigEMonitor::CGigEMonitor(const std::string& serial) : m_pDevice(m_client.Create(serial))
{
    m_pDevice->SetRemovalCallback([this] { m_removed.Raise(); });
    m_pDevice->Open(Velmo::EDeviceAccess::Monitor);
}

CGigEMonitor::~CGigEMonitor()
{
    m_pDevice->SetRemovalCallback(nullptr);
}

void CGigEMonitor::Start(std::size_t buffers)
{
    m_buffers.emplace(Stream(), buffers);
    Stream().Start();
}

} // namespace Test
