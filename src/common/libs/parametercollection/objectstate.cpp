// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/objectstate.h"

#include <atomic>
#include <mutex>

namespace ParameterCollection
{

struct CObjectState::SPrivate
{
    std::recursive_mutex mutex; // guards the object; nothing in here
    std::atomic<int> state{ObjectState_Disposed};
    std::atomic<int> entries{0};
    std::atomic<int> uses{0};
};

CObjectState::CObjectState() : m_p(std::make_shared<SPrivate>()) {}

CObjectState::~CObjectState() = default;
CObjectState::CObjectState(const CObjectState&) = default;
CObjectState& CObjectState::operator=(const CObjectState&) = default;

int CObjectState::state() const
{
    return m_p->state;
}

void CObjectState::setState(int state)
{
    m_p->state = state;
}

int CObjectState::entryCount() const
{
    return m_p->entries;
}

bool CObjectState::isInUse() const
{
    return m_p->uses > 0;
}

void CObjectState::addUse()
{
    ++m_p->uses;
}

void CObjectState::removeUse()
{
    --m_p->uses;
}

CScopedObjectStateLock::CScopedObjectStateLock(const CObjectState& state) : m_state(state)
{
    ++m_state.m_p->entries;
    m_state.m_p->mutex.lock();
}

CScopedObjectStateLock::~CScopedObjectStateLock()
{
    m_state.m_p->mutex.unlock();
    --m_state.m_p->entries;
}

} // namespace ParameterCollection
