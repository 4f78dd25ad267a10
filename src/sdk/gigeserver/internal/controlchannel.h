// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/internal/registers.h"
#include "protocols/gvcp.h"

#include <chrono>
#include <functional>
#include <optional>

namespace GigEServer::Internal
{

/** An application as the network knows it. Host byte order. */
struct SPeer
{
    std::uint32_t ip = 0;
    std::uint16_t port = 0;
};
inline bool operator==(const SPeer& left, const SPeer& right)
{
    return left.ip == right.ip && left.port == right.port;
}

/**
 * The control channel of a camera: who may do what, and the answers.
 *
 * It has no socket and no clock: datagrams and times come in, datagrams go out. Threads: the control thread.
 */
class GIGESERVER_TEST_EXPORT CControlChannel
{
public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;

    struct SHooks
    {
        std::function<void(const Velmo::Gvcp::SPacketResend&)> onResend;
        /** False when the camera cannot have that address. */
        std::function<bool(const Velmo::Gvcp::SForceIp&)> onForceIp;
    };

    CControlChannel(CRegisters& registers, SHooks hooks);

    /** The answer, or an empty one where the camera stays silent. */
    Velmo::Gvcp::Bytes Handle(const std::uint8_t* data, std::size_t bytes, const SPeer& peer, Time now);
    /** Frees a camera whose application fell silent. */
    void Expire(Time now);
    /** When Expire is to be called; nothing while nobody has control. */
    std::optional<Time> GetDeadline() const;
    bool IsControlled() const { return m_owner.has_value(); }

private:
    using Command = Velmo::Gvcp::SCommand;
    Velmo::Gvcp::Bytes Answer(const Command& command, const SPeer& peer);
    Velmo::Gvcp::Bytes Discover(const Command& command);
    Velmo::Gvcp::Bytes ForceIp(const Command& command);
    Velmo::Gvcp::Bytes ReadRegisters(const Command& command, const SPeer& peer);
    Velmo::Gvcp::Bytes WriteRegisters(const Command& command, const SPeer& peer);
    Velmo::Gvcp::Bytes ReadMemory(const Command& command, const SPeer& peer);
    Velmo::Gvcp::Bytes WriteMemory(const Command& command, const SPeer& peer);
    void Resend(const Command& command, const SPeer& peer);
    Velmo::Gvcp::Bytes Act(const Command& command);
    Velmo::Gvcp::EStatus WritePrivilege(std::uint32_t value, const SPeer& peer);
    bool MayRead(const SPeer& peer) const;
    bool IsOwner(const SPeer& peer) const { return m_owner.has_value() && *m_owner == peer; }
    void Release();

    CRegisters& m_registers;
    const SHooks m_hooks;
    const bool m_isHeldElsewhere; // a fault: an application that nobody sees has control
    std::optional<SPeer> m_owner;
    Time m_lastHeard{};
    Velmo::Gvcp::Bytes m_lastWrite; // of the owner, with its answer: a repeated command is not obeyed twice
    Velmo::Gvcp::Bytes m_lastAnswer;
};

} // namespace GigEServer::Internal
