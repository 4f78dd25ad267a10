// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/internal/waitgraph.h"

#include <array>
#include <condition_variable>
#include <memory>
#include <optional>

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
    explicit COperationGate(std::shared_ptr<CWaitGraph> waits) : m_waits(std::move(waits)) {}

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

    /** For the time of a scope callbacks of these kinds do not wait for the camera; nothing where the thread is not
     *  its owner. */
    class CExemption
    {
    public:
        CExemption(COperationGate& gate, unsigned int kinds);
        ~CExemption();
        CExemption(const CExemption&) = delete;
        CExemption& operator=(const CExemption&) = delete;

    private:
        COperationGate& m_gate;
        const bool m_isOwner;
        unsigned int m_before = 0;
    };

    /** Owner only: for the time of a scope it calls the transport, which may wait for such callbacks to end. */
    class CTransportWait
    {
    public:
        CTransportWait(COperationGate& gate, ECallbackKind kind);
        ~CTransportWait();
        CTransportWait(const CTransportWait&) = delete;
        CTransportWait& operator=(const CTransportWait&) = delete;

    private:
        const CExemption m_exemption;
        CWaitGraph& m_waits;
        std::optional<CWaitGraph::CWaiting> m_waiting;
    };

private:
    const CWaitGraph::Threads& RunnersOf(ECallbackKind kind) const;
    CWaitGraph::Threads& RunnersOf(ECallbackKind kind);
    bool IsOwnedByThisThread() const;
    bool IsExempt() const;
    bool RunsElsewhere(ECallbackKind kind) const;
    unsigned int SetExempt(unsigned int kinds);

    const std::shared_ptr<CWaitGraph> m_waits; // its mutex guards the members below
    std::condition_variable m_changed;
    CWaitGraph::Threads m_owner; // none or one
    unsigned int m_depth = 0;
    unsigned int m_exempt = 0;
    unsigned int m_requests = 0;
    std::array<CWaitGraph::Threads, 2> m_callbacks; // the threads that run one, by its kind
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
