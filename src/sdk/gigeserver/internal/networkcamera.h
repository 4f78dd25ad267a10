// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/internal/controlchannel.h"
#include "gigeserver/internal/messagechannel.h"
#include "gigeserver/internal/streamsender.h"
#include "simulator/flash.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace GigEServer::Internal
{

/**
 * A camera on the network: the model, its registers, its channels and its socket.
 *
 * States: running -> booting (reset) -> running; dead (removed, or died in a frame) for good.
 * Threads: the control thread; what the model or the sender thread reports only sets flags and wakes it.
 */
class CNetworkCamera
{
public:
    using Time = CControlChannel::Time;

    /** wake makes the control thread call OnTime soon; from any thread. Throws what the model and the socket throw. */
    CNetworkCamera(const SServedCamera& camera, std::function<void()> wake);
    ~CNetworkCamera();
    CNetworkCamera(const CNetworkCamera&) = delete;
    CNetworkCamera& operator=(const CNetworkCamera&) = delete;

    int GetSocket() const { return m_socket; }
    const SAddress& GetAddress() const { return m_camera.address; }
    SCounters GetCounters() const { return m_counters.Get(); }

    using Relay = std::function<void(const std::uint8_t* data, std::size_t bytes, const SPeer& peer)>;
    /** All datagrams that wait at its own socket. Discoveries are given to the relay as well, if there is one. */
    void Receive(Time now, const Relay& onDiscovery);
    /** Where acknowledges of events come in; -1 while the camera does not run. */
    int GetMessageSocket() const { return m_messageSocket; }
    /** All datagrams that wait there. */
    void ReceiveAcknowledges(Time now);
    /** One that arrived elsewhere for all cameras of an adapter. */
    void Handle(const std::uint8_t* data, std::size_t bytes, const SPeer& peer, Time now);
    /** Does what is due: late answers, the heartbeat, events, the end of a reset. */
    void OnTime(Time now);
    /** The camera of the same serial number that a fault wants beside this one since it came back, at the next address;
     *  told once. */
    std::optional<SServedCamera> TakeTwin();
    /** When OnTime is to be called at the latest; nothing: when woken. */
    std::optional<Time> GetDeadline() const;

private:
    struct SLateAnswer
    {
        Time due;
        SPeer peer;
        Velmo::Gvcp::Bytes answer;
    };
    void Boot();
    void ShutDown();
    bool IsRunning() const { return m_pControl != nullptr; }
    void Send(const Velmo::Gvcp::Bytes& answer, const SPeer& peer) { SendFrom(m_socket, answer, peer); }
    void SendFrom(int socket, const Velmo::Gvcp::Bytes& datagram, const SPeer& peer) const;
    /** Who the answer to that command is for: an application in another subnet, to which there may be no way back, can
     *  allow that everybody gets the one to its discovery. */
    SPeer RecipientOf(const std::uint8_t* data, std::size_t bytes, const SPeer& peer) const;
    bool MoveTo(const Velmo::Gvcp::SForceIp& forceIp);
    void UpdateStream();
    void UpdateMessages();
    void OnModelMessage(const Velmo::Gvcp::SEvent& event);
    void SendEvents(Time now);
    /** How long the camera takes for that command. */
    std::uint32_t GetCommandMs(const std::uint8_t* data, std::size_t bytes) const;

    SServedCamera m_camera;
    const std::function<void()> m_wake;
    const std::shared_ptr<Simulator::SFlash> m_pFlash = std::make_shared<Simulator::SFlash>();
    int m_socket = -1;
    int m_messageSocket = -1;
    SLiveCounters m_counters;
    std::atomic<bool> m_isResetAsked{false};
    std::atomic<bool> m_isDead{false};
    std::optional<Time> m_bootEnd;
    bool m_bootsWithTwin = false;
    bool m_isTwinMissing = false;
    std::vector<SLateAnswer> m_lateAnswers;
    std::shared_ptr<Simulator::CCameraModel> m_pModel;
    std::unique_ptr<CRegisters> m_pRegisters;
    std::unique_ptr<CStreamSender> m_pSender;
    std::unique_ptr<CMessageChannel> m_pMessages;
    std::unique_ptr<CControlChannel> m_pControl; // there while it runs
    std::mutex m_eventMutex;                     // guards m_events; nothing is called while it is held
    std::vector<Velmo::Gvcp::SEvent> m_events;   // that the model reported, on whatever thread
};

} // namespace GigEServer::Internal
