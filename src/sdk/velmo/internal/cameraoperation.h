// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/internal/cameracore.h"

namespace Velmo::Internal
{

/** Owns the camera for the time of a scope, and carries out what callbacks posted meanwhile. */
class CCameraCore::COperation
{
public:
    explicit COperation(CCameraCore& core, unsigned int request = Request_None)
        : m_core(core), m_isOwner(core.m_gate->Enter(request))
    {
    }
    ~COperation()
    {
        if (m_isOwner)
        {
            while (const unsigned int requests = m_core.m_gate->Leave())
            {
                m_core.CarryOut(requests);
            }
        }
    }
    COperation(const COperation&) = delete;
    COperation& operator=(const COperation&) = delete;

    /** False: the request was left to the owner. */
    bool IsOwner() const { return m_isOwner; }

private:
    CCameraCore& m_core;
    const bool m_isOwner;
};

/** While the owner waits for callbacks to end, in a handler list or in the device, those must not wait for the camera.
 */
class CAwaitingScope
{
public:
    CAwaitingScope(COperationGate& gate, unsigned int kinds) : m_gate(gate), m_isOwner(gate.IsOwner())
    {
        m_before = m_isOwner ? gate.SetAwaited(kinds) : 0;
    }
    ~CAwaitingScope()
    {
        if (m_isOwner)
        {
            m_gate.SetAwaited(m_before);
        }
    }
    CAwaitingScope(const CAwaitingScope&) = delete;
    CAwaitingScope& operator=(const CAwaitingScope&) = delete;

private:
    COperationGate& m_gate;
    const bool m_isOwner;
    unsigned int m_before = 0;
};

/** Does something at the end of a scope. */
template <class Act> class CAtExit
{
public:
    explicit CAtExit(Act act) : m_act(std::move(act)) {}
    ~CAtExit() { m_act(); }
    CAtExit(const CAtExit&) = delete;
    CAtExit& operator=(const CAtExit&) = delete;

private:
    Act m_act;
};

} // namespace Velmo::Internal
