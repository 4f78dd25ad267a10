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
