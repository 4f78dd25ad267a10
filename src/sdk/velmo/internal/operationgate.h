// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace Velmo::Internal
{

/** Which of the camera's callbacks a thread is running. */
enum ECallbackKind : unsigned int
{
    CallbackKind_Loop = 1,
    CallbackKind_Removal = 2
};

/** What a callback may leave to the thread that owns the camera at that moment. */
enum ERequest : unsigned int
{
    Request_None = 0,
    Request_Stop = 1,
    Request_Close = 2,
    Request_Destroy = 4
};

/**
 * Serialises the operations on one camera without a lock that handlers could deadlock on.
 *
 * One thread at a time owns the camera, recursively. An owner that needs a callback on another thread to end first
 * awaits it; such a callback that wants the camera meanwhile does not wait, which would be a deadlock: it posts its
 * request, and the owner carries it out before it leaves.
 * Threads: any.
 */
class COperationGate
{
public:
    /** False: the request was posted and the caller does not own the camera. Throws LogicalErrorException where it
     *  would have to be posted but is Request_None. */
    bool Enter(unsigned int request);
    /** The requests to carry out before calling again; 0: the camera was left, or an outer call still owns it. */
    unsigned int Leave();
    /** Owner only: leaves something to be done before the camera is left. */
    void Post(unsigned int request);
    void ClearRequest(unsigned int request);

    void EnterCallback(ECallbackKind kind);
    void LeaveCallback(ECallbackKind kind);
    /** Owner only: until no other thread runs a callback of that kind. */
    void AwaitCallbacks(ECallbackKind kind);
    bool IsOwner() const;
    /** Owner only: callbacks of these kinds stop waiting for the camera until it is set back to 0. */
    unsigned int SetAwaited(unsigned int kinds);

private:
    bool RunsOnThisThread(unsigned int kinds) const;
    bool RunsElsewhere(ECallbackKind kind) const;

    mutable std::mutex m_mutex; // guards the members below; never held while a handler or transport is called
    std::condition_variable m_changed;
    std::thread::id m_owner;
    unsigned int m_depth = 0;
    unsigned int m_awaited = 0;
    unsigned int m_requests = 0;
    std::vector<std::pair<std::thread::id, ECallbackKind>> m_callbacks;
};

/** A callback for the time of a scope. */
class CCallbackScope
{
public:
    CCallbackScope(COperationGate& gate, ECallbackKind kind) : m_gate(gate), m_kind(kind)
    {
        m_gate.EnterCallback(kind);
    }
    ~CCallbackScope() { m_gate.LeaveCallback(m_kind); }
    CCallbackScope(const CCallbackScope&) = delete;
    CCallbackScope& operator=(const CCallbackScope&) = delete;

private:
    COperationGate& m_gate;
    const ECallbackKind m_kind;
};

} // namespace Velmo::Internal
