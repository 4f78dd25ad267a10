// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/internal/operationgate.h"

#include <functional>
#include <memory>
#include <mutex>

namespace Velmo::Internal
{

/** The way from a device's removal callback to its camera; the device may call it until the camera disconnects. */
class CRemovalLink
{
public:
    CRemovalLink(std::shared_ptr<COperationGate> gate, std::function<void()> onRemoved);
    void Fire();
    /** Later calls do nothing; those that run are for the gate to await. */
    void Disconnect();

private:
    const std::shared_ptr<COperationGate> m_gate;
    std::mutex m_mutex; // guards m_connected; taken before the gate's own
    bool m_connected = true;
    const std::function<void()> m_onRemoved;
};

} // namespace Velmo::Internal
