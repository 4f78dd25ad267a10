// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/removallink.h"

#include <optional>
#include <utility>

namespace Velmo::Internal
{

CRemovalLink::CRemovalLink(std::shared_ptr<COperationGate> gate, std::function<void()> onRemoved)
    : m_gate(std::move(gate)), m_onRemoved(std::move(onRemoved))
{
}

void CRemovalLink::Fire()
{
    std::optional<CCallbackScope> scope;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_connected)
        {
            return;
        }
        scope.emplace(*m_gate, CallbackKind_Removal);
    }
    m_onRemoved();
}

void CRemovalLink::Disconnect()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_connected = false;
}

} // namespace Velmo::Internal
