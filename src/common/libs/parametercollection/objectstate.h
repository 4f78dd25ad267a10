// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "parametercollection/parametercollection_export.h"

#include <QSharedPointer>

#include <memory>

namespace ParameterCollection
{

/** States of a device as the parameter layer sees them. */
enum EObjectState
{
    ObjectState_Disposed = 0,
    ObjectState_Open = 1,
    ObjectState_Closed = 2,
    ObjectState_ConnectionLost = 3
};

/**
 * The state of an object together with the recursive lock that guards it, shared by all that use the object.
 * Copies share the same state. Threads: any.
 */
class PARAMETERCOLLECTION_EXPORT CObjectState
{
public:
    CObjectState();
    ~CObjectState();
    CObjectState(const CObjectState&);
    CObjectState& operator=(const CObjectState&);

    /** Does not take the lock: a removal must not wait for a user that holds it. */
    int state() const;
    void setState(int state);
    /** How many scoped locks, of all threads, hold or wait for the lock now. */
    int entryCount() const;
    /** Marked by whoever uses the object beyond a scoped lock; counted. */
    bool isInUse() const;
    void addUse();
    void removeUse();

private:
    friend class CScopedObjectStateLock;
    struct SPrivate;
    std::shared_ptr<SPrivate> m_p;
};

/** Holds the lock of an object state; counts as one entry. */
class PARAMETERCOLLECTION_EXPORT CScopedObjectStateLock
{
public:
    explicit CScopedObjectStateLock(const CObjectState& state);
    ~CScopedObjectStateLock();
    CScopedObjectStateLock(const CScopedObjectStateLock&) = delete;
    CScopedObjectStateLock& operator=(const CScopedObjectStateLock&) = delete;

private:
    CObjectState m_state;
};

} // namespace ParameterCollection
