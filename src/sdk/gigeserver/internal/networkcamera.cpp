// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/networkcamera.h"

#include "genapi/exceptions.h"
#include "gigeserver/internal/receiveall.h"
#include "gigeserver/internal/sockets.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace GigEServer::Internal
{

namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;
using Simulator::CCameraModel;
using std::chrono::milliseconds;

namespace
{

bool IsCommand(const std::uint8_t* data, std::size_t bytes, std::initializer_list<Gvcp::ECommand> kinds)
{
    Gvcp::SCommand command;
    return Gvcp::ParseCommand(data, bytes, command) == Gvcp::EParseResult::Ok &&
           std::find(kinds.begin(), kinds.end(), static_cast<Gvcp::ECommand>(command.command)) != kinds.end();
}

/** Commands that take their time when the camera is told to be slow. */
bool TakesTime(const std::uint8_t* data, std::size_t bytes)
{
    return IsCommand(data, bytes,
                     {Gvcp::ECommand::ReadRegCmd, Gvcp::ECommand::WriteRegCmd, Gvcp::ECommand::ReadMemCmd,
                      Gvcp::ECommand::WriteMemCmd});
}

/** Whether it starts an operation with the camera's files. */
bool IsFileOperation(const std::uint8_t* data, std::size_t bytes)
{
    constexpr auto Execute = static_cast<std::uint32_t>(Simulator::Register::FileOperationExecute);
    Gvcp::SCommand command;
    if (Gvcp::ParseCommand(data, bytes, command) != Gvcp::EParseResult::Ok)
    {
        return false;
    }
    Gvcp::RegisterValues values;
    if (command.command == static_cast<std::uint16_t>(Gvcp::ECommand::WriteRegCmd) &&
        Gvcp::ParseWriteRegCmd(command, values) == Gvcp::EParseResult::Ok)
    {
        return std::any_of(values.begin(), values.end(), [](const auto& value) { return value.first == Execute; });
    }
    Gvcp::SMemory memory;
    return command.command == static_cast<std::uint16_t>(Gvcp::ECommand::WriteMemCmd) &&
           Gvcp::ParseWriteMemCmd(command, memory) == Gvcp::EParseResult::Ok && memory.address <= Execute &&
           Execute - memory.address < memory.bytes;
}

std::uint16_t RequestIdOf(const std::uint8_t* data)
{
    constexpr std::size_t place = 6; // GVCP command header, "req_id"
    return static_cast<std::uint16_t>(data[place] << 8 | data[place + 1]);
}

} // namespace

CNetworkCamera::CNetworkCamera(const SServedCamera& camera, std::function<void()> wake)
    : m_camera(camera), m_wake(std::move(wake)), m_socket(OpenSocket(camera.address.ip, Gvcp::Port, false))
{
    try
    {
        Boot();
    }
    catch (...)
    {
        ShutDown();
        close(m_socket);
        throw;
    }
}

CNetworkCamera::~CNetworkCamera()
{
    ShutDown();
    close(m_socket);
}

void CNetworkCamera::Boot()
{
    m_bootEnd.reset();
    try
    {
        m_pModel = std::make_shared<CCameraModel>(m_camera.config, m_pFlash);
    }
    catch (const GenICam::GenericException& error)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "Simulated camera '" + m_camera.config.serialNumber + "': " + error.GetDescription());
    }
    m_pModel->SetEventHandler(
        [this](CCameraModel::EEvent event)
        {
            (event == CCameraModel::EEvent::Reset ? m_isResetAsked : m_isDead) = true;
            m_wake();
        });
    m_pModel->SetMessageHandler([this](const Gvcp::SEvent& event) { OnModelMessage(event); });
    m_pMessages = std::make_unique<CMessageChannel>([this](const Gvcp::Bytes& message, const SPeer& peer)
                                                    { SendFrom(m_messageSocket, message, peer); },
                                                    m_counters);
    m_pRegisters = std::make_unique<CRegisters>(
        m_camera, m_pModel,
        CRegisters::SHooks{[this] { UpdateStream(); }, [this](std::uint32_t) { m_pSender->SendTestPacket(); },
                           [this]
                           {
                               UpdateMessages();
                           }});
    m_messageSocket = OpenSocket(m_camera.address.ip, 0, false);
    m_pRegisters->GetBootstrap().Set(Gvbs::MessageChannelSourcePort, PortOf(m_messageSocket));
    m_pSender = std::make_unique<CStreamSender>(m_camera, m_pModel, m_counters,
                                                [this]
                                                {
                                                    m_isDead = true;
                                                    m_wake();
                                                });
    m_pRegisters->GetBootstrap().Set(Gvbs::StreamChannelSourcePort, m_pSender->GetPort());
    m_pControl = std::make_unique<CControlChannel>(
        *m_pRegisters, CControlChannel::SHooks{[this](const Gvcp::SPacketResend& resend) { m_pSender->Resend(resend); },
                                               [this](const Gvcp::SForceIp& forceIp)
                                               {
                                                   return MoveTo(forceIp);
                                               }});
}

void CNetworkCamera::ShutDown()
{
    m_pControl.reset();
    m_lateAnswers.clear();
    m_pSender.reset();
    m_pRegisters.reset();
    m_pMessages.reset();
    if (m_messageSocket >= 0)
    {
        close(m_messageSocket);
        m_messageSocket = -1;
    }
    if (m_pModel != nullptr)
    {
        m_pModel->SetEventHandler(nullptr);
        m_pModel->SetMessageHandler(nullptr); // with the sender nobody is left who could be in it
        m_pModel.reset();
    }
    const std::lock_guard<std::mutex> lock(m_eventMutex);
    m_events.clear();
}

void CNetworkCamera::OnModelMessage(const Gvcp::SEvent& event)
{
    {
        const std::lock_guard<std::mutex> lock(m_eventMutex);
        m_events.push_back(event);
    }
    m_wake();
}

void CNetworkCamera::SendEvents(Time now)
{
    std::vector<Gvcp::SEvent> events;
    {
        const std::lock_guard<std::mutex> lock(m_eventMutex);
        events.swap(m_events);
    }
    if (m_camera.faults.isSilent)
    {
        return;
    }
    for (const Gvcp::SEvent& event : events)
    {
        m_pMessages->Push(event, now);
    }
    m_pMessages->OnTime(now);
}

void CNetworkCamera::UpdateMessages()
{
    const CBootstrap& bootstrap = m_pRegisters->GetBootstrap();
    SMessageTarget target;
    target.peer.ip = bootstrap.Get(Gvbs::MessageChannelDestination);
    target.peer.port = static_cast<std::uint16_t>(bootstrap.Get(Gvbs::MessageChannelPort) & Gvbs::McpHostPortMask);
    target.timeout = milliseconds(bootstrap.Get(Gvbs::MessageChannelTransmissionTimeout));
    target.retries = bootstrap.Get(Gvbs::MessageChannelRetryCount);
    if (target.peer.ip == 0)
    {
        target.peer.port = 0;
    }
    m_pMessages->SetTarget(target);
}

std::optional<SServedCamera> CNetworkCamera::TakeTwin()
{
    if (!std::exchange(m_isTwinMissing, false))
    {
        return std::nullopt;
    }
    SServedCamera twin = m_camera;
    twin.config.faults.afterReset = Simulator::EAfterReset::Same;
    ++twin.address.ip;
    return twin;
}

void CNetworkCamera::UpdateStream()
{
    const CBootstrap& bootstrap = m_pRegisters->GetBootstrap();
    const std::uint32_t packetSize = bootstrap.Get(Gvbs::StreamChannelPacketSize);
    STarget target;
    target.ip = bootstrap.Get(Gvbs::StreamChannelDestination);
    target.port = static_cast<std::uint16_t>(bootstrap.Get(Gvbs::StreamChannelPort) & Gvbs::ScpHostPortMask);
    target.packetBytes = packetSize & Gvbs::ScpsPacketSizeMask;
    target.isFragmented = (packetSize & Gvbs::ScpsDoNotFragment) == 0;
    target.delayNs = bootstrap.Get(Gvbs::StreamChannelPacketDelay); // the clock ticks in nanoseconds
    target.isExtended = (bootstrap.Get(Gvbs::GvspConfiguration) & Gvbs::GvspConfigurationExtendedIds) != 0;
    target.hasExtendedChunks = (bootstrap.Get(Gvbs::StreamChannelConfiguration) & Gvbs::SccfgExtendedChunkData) != 0;
    if (target.ip == 0)
    {
        target.port = 0;
    }
    m_pSender->SetTarget(target);
}

bool CNetworkCamera::MoveTo(const Gvcp::SForceIp& forceIp)
{
    if (forceIp.ip == 0 || forceIp.ip == m_camera.address.ip)
    {
        return true; // to look for an address anew: it finds the one it has
    }
    // The stream's socket moves with the next reset only; its source address is of no importance. Applications ignore
    // messages that come from elsewhere.
    int socket = -1;
    int messageSocket = -1;
    try
    {
        socket = OpenSocket(forceIp.ip, Gvcp::Port, false);
        messageSocket = OpenSocket(forceIp.ip, 0, false);
    }
    catch (const GenICam::RuntimeException&)
    {
        if (socket >= 0)
        {
            close(socket);
        }
        return false; // and stays where it is
    }
    close(std::exchange(m_socket, socket));
    close(std::exchange(m_messageSocket, messageSocket));
    m_pRegisters->GetBootstrap().Set(Gvbs::MessageChannelSourcePort, PortOf(m_messageSocket));
    m_camera.address.ip = forceIp.ip;
    m_camera.address.subnetMask = forceIp.subnetMask;
    m_camera.address.broadcast = forceIp.ip | ~forceIp.subnetMask;
    CBootstrap& bootstrap = m_pRegisters->GetBootstrap();
    bootstrap.SetAddress(m_camera.address);
    bootstrap.Set(Gvbs::CurrentDefaultGateway, forceIp.gateway);
    return true;
}

void CNetworkCamera::Receive(Time now, const Relay& onDiscovery)
{
    ReceiveAll(m_socket,
               [&](const std::uint8_t* data, std::size_t bytes, const SPeer& peer)
               {
                   Handle(data, bytes, peer, now);
                   if (onDiscovery && IsCommand(data, bytes, {Gvcp::ECommand::DiscoveryCmd}))
                   {
                       onDiscovery(data, bytes, peer);
                   }
               });
}

void CNetworkCamera::ReceiveAcknowledges(Time now)
{
    ReceiveAll(m_messageSocket,
               [&](const std::uint8_t* data, std::size_t bytes, const SPeer& peer)
               {
                   if (m_pMessages != nullptr && !m_camera.faults.isSilent)
                   {
                       m_pMessages->Handle(data, bytes, peer, now);
                   }
               });
}

void CNetworkCamera::Handle(const std::uint8_t* data, std::size_t bytes, const SPeer& peer, Time now)
{
    if (!IsRunning() || m_isDead || m_isResetAsked || m_camera.faults.isSilent)
    {
        return;
    }
    const Gvcp::Bytes answer = m_pControl->Handle(data, bytes, peer, now);
    if (answer.empty())
    {
        return;
    }
    if (m_pModel->HasLostPower())
    {
        return; // in the middle of the command
    }
    const SPeer recipient = RecipientOf(data, bytes, peer);
    const std::uint32_t discoveryMs = m_camera.config.faults.discoveryDelayMs;
    if (discoveryMs != 0 && IsCommand(data, bytes, {Gvcp::ECommand::DiscoveryCmd}))
    {
        m_lateAnswers.push_back({now + milliseconds(discoveryMs), recipient, answer});
        return;
    }
    const std::uint32_t commandMs = GetCommandMs(data, bytes);
    if (commandMs == 0)
    {
        Send(answer, recipient);
        return;
    }
    // By the standard only where the controlling application has asked for it.
    if ((m_pRegisters->GetBootstrap().Get(Gvbs::GvcpConfiguration) & Gvbs::GvcpConfigurationPendingAck) != 0)
    {
        constexpr std::uint32_t most = 0xFFFF;
        Send(Gvcp::EncodePendingAck(RequestIdOf(data), static_cast<std::uint16_t>(std::min(commandMs, most))), peer);
    }
    m_lateAnswers.push_back({now + milliseconds(commandMs), peer, answer});
}

std::uint32_t CNetworkCamera::GetCommandMs(const std::uint8_t* data, std::size_t bytes) const
{
    const std::uint32_t commandMs = TakesTime(data, bytes) ? m_camera.faults.commandMs : 0;
    return IsFileOperation(data, bytes) ? std::max(commandMs, m_pModel->GetFaults().fileDelayMs) : commandMs;
}

SPeer CNetworkCamera::RecipientOf(const std::uint8_t* data, std::size_t bytes, const SPeer& peer) const
{
    Gvcp::SCommand command;
    const SAddress& own = m_camera.address;
    const bool isElsewhere = (peer.ip & own.subnetMask) != (own.ip & own.subnetMask);
    const bool isForAll = isElsewhere && Gvcp::ParseCommand(data, bytes, command) == Gvcp::EParseResult::Ok &&
                          command.command == static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryCmd) &&
                          (command.flags & Gvcp::Flag::AllowBroadcastAck) != 0;
    return isForAll ? SPeer{LimitedBroadcast, peer.port} : peer;
}

void CNetworkCamera::SendFrom(int socket, const Gvcp::Bytes& datagram, const SPeer& peer) const
{
    const unsigned int adapter = peer.ip == LimitedBroadcast ? m_camera.address.adapterIndex : 0;
    SendDatagram(socket, datagram, peer.ip, peer.port, adapter);
}

void CNetworkCamera::OnTime(Time now)
{
    if (m_isDead && IsRunning())
    {
        ShutDown();
    }
    else if (m_isResetAsked.exchange(false))
    {
        const Simulator::SAfterReset after = m_pModel->GetAfterReset();
        ShutDown();
        m_camera.config = after.config;
        m_bootsWithTwin = after.what == Simulator::EAfterReset::Twice;
        if (after.what != Simulator::EAfterReset::Never)
        {
            m_bootEnd = now + milliseconds(after.bootTimeMs);
        }
    }
    else if (m_bootEnd.has_value() && now >= *m_bootEnd)
    {
        Boot();
        m_isTwinMissing = std::exchange(m_bootsWithTwin, false);
    }
    if (!IsRunning())
    {
        return;
    }
    m_pControl->Expire(now);
    SendEvents(now);
    const auto late = std::stable_partition(m_lateAnswers.begin(), m_lateAnswers.end(),
                                            [now](const SLateAnswer& answer) { return answer.due <= now; });
    for (auto answer = m_lateAnswers.begin(); answer != late; ++answer)
    {
        Send(answer->answer, answer->peer);
    }
    m_lateAnswers.erase(m_lateAnswers.begin(), late);
}

std::optional<CNetworkCamera::Time> CNetworkCamera::GetDeadline() const
{
    if (!IsRunning())
    {
        return m_bootEnd;
    }
    std::optional<Time> deadline = m_pControl->GetDeadline();
    if (const std::optional<Time> message = m_pMessages->GetDeadline(); message.has_value())
    {
        deadline = deadline.has_value() ? std::min(*deadline, *message) : message;
    }
    for (const SLateAnswer& answer : m_lateAnswers)
    {
        deadline = deadline.has_value() ? std::min(*deadline, answer.due) : answer.due;
    }
    return deadline;
}

} // namespace GigEServer::Internal
