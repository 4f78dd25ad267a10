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

} // namespace Velmo::Internal
