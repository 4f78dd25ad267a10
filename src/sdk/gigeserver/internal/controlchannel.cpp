// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/controlchannel.h"

#include "protocols/gvbsregisters.h"

namespace GigEServer::Internal
{

namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;
using Gvcp::EParseResult;
using Gvcp::EStatus;

namespace
{

constexpr std::uint32_t PrivilegeMask = Gvbs::CcpExclusiveAccess | Gvbs::CcpControlAccess;

EStatus StatusOf(EParseResult result)
{
    switch (result)
    {
    case EParseResult::Ok:
        return EStatus::Success;
    case EParseResult::BadAlignment:
        return EStatus::BadAlignment;
    case EParseResult::BadAddress:
        return EStatus::InvalidAddress;
    default:
        return EStatus::InvalidHeader;
    }
}

std::string TextOf(CRegisters& registers, std::uint32_t address, std::size_t bytes)
{
    std::vector<std::uint8_t> field(bytes);
    registers.Read(address, field.data(), bytes);
    const std::string text(field.begin(), field.end());
    return text.substr(0, text.find('\0'));
}

bool IsWrite(std::uint16_t command)
{
    return command == static_cast<std::uint16_t>(Gvcp::ECommand::WriteRegCmd) ||
           command == static_cast<std::uint16_t>(Gvcp::ECommand::WriteMemCmd);
}

} // namespace

CControlChannel::CControlChannel(CRegisters& registers, SHooks hooks)
    : m_registers(registers), m_hooks(std::move(hooks)),
      m_isHeldElsewhere(!registers.GetModel().GetFaults().refuseOpenOwner.empty())
{
    if (m_isHeldElsewhere)
    {
        std::uint32_t ip = 0; // an owner that is no address stays without a name
        Gvcp::ParseIp(registers.GetModel().GetFaults().refuseOpenOwner, ip);
        registers.GetBootstrap().Set(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess);
        registers.GetBootstrap().Set(Gvbs::PrimaryApplicationIpAddress, ip);
    }
}

Gvcp::Bytes CControlChannel::Handle(const std::uint8_t* data, std::size_t bytes, const SPeer& peer, Time now)
{
    Command command;
    if (Gvcp::ParseCommand(data, bytes, command) != EParseResult::Ok)
    {
        return {};
    }
    if (IsOwner(peer))
    {
        m_lastHeard = now;
    }
    const bool isRemembered = IsWrite(command.command) && IsOwner(peer);
    const Gvcp::Bytes datagram(data, data + bytes);
    if (isRemembered && datagram == m_lastWrite)
    {
        return m_lastAnswer;
    }
    Gvcp::Bytes answer = Answer(command, peer);
    if (isRemembered || (IsWrite(command.command) && IsOwner(peer)))
    {
        m_lastHeard = now;
        m_lastWrite = datagram;
        m_lastAnswer = answer;
    }
    const bool isAnswered = (command.flags & Gvcp::Flag::AckRequired) != 0;
    return isAnswered ? answer : Gvcp::Bytes();
}

Gvcp::Bytes CControlChannel::Answer(const Command& command, const SPeer& peer)
{
    switch (static_cast<Gvcp::ECommand>(command.command))
    {
    case Gvcp::ECommand::DiscoveryCmd:
        return Discover(command);
    case Gvcp::ECommand::ForceIpCmd:
        return ForceIp(command);
    case Gvcp::ECommand::PacketResendCmd:
        Resend(command, peer);
        return {};
    case Gvcp::ECommand::ReadRegCmd:
        return ReadRegisters(command, peer);
    case Gvcp::ECommand::WriteRegCmd:
        return WriteRegisters(command, peer);
    case Gvcp::ECommand::ReadMemCmd:
        return ReadMemory(command, peer);
    case Gvcp::ECommand::WriteMemCmd:
        return WriteMemory(command, peer);
    case Gvcp::ECommand::ActionCmd:
        return Act(command);
    default:
        // The answer's number is the command's plus one, by the standard, for commands of later versions too.
        return Gvcp::EncodePlainAck(command.requestId, static_cast<Gvcp::ECommand>(command.command + 1),
                                    EStatus::NotImplemented);
    }
}

Gvcp::Bytes CControlChannel::Discover(const Command& command)
{
    const CBootstrap& bootstrap = m_registers.GetBootstrap();
    constexpr int half = 16;
    Gvcp::SDiscoveryAck ack;
    ack.versionMajor = static_cast<std::uint16_t>(bootstrap.Get(Gvbs::Version) >> half);
    ack.versionMinor = static_cast<std::uint16_t>(bootstrap.Get(Gvbs::Version));
    ack.deviceMode = bootstrap.Get(Gvbs::DeviceMode);
    const std::uint64_t mac =
        std::uint64_t{bootstrap.Get(Gvbs::DeviceMacHigh)} << 32 | bootstrap.Get(Gvbs::DeviceMacLow);
    for (std::size_t i = 0; i < ack.mac.size(); ++i)
    {
        ack.mac[i] = static_cast<std::uint8_t>(mac >> 8 * (ack.mac.size() - 1 - i));
    }
    ack.supportedIpConfiguration = bootstrap.Get(Gvbs::NetworkInterfaceCapability);
    ack.currentIpConfiguration = bootstrap.Get(Gvbs::NetworkInterfaceConfiguration);
    ack.currentIp = bootstrap.Get(Gvbs::CurrentIpAddress);
    ack.currentSubnetMask = bootstrap.Get(Gvbs::CurrentSubnetMask);
    ack.defaultGateway = bootstrap.Get(Gvbs::CurrentDefaultGateway);
    ack.manufacturerName = TextOf(m_registers, Gvbs::ManufacturerName, Gvbs::ManufacturerNameBytes);
    ack.modelName = TextOf(m_registers, Gvbs::ModelName, Gvbs::ModelNameBytes);
    ack.deviceVersion = TextOf(m_registers, Gvbs::DeviceVersion, Gvbs::DeviceVersionBytes);
    ack.manufacturerInfo = TextOf(m_registers, Gvbs::ManufacturerInfo, Gvbs::ManufacturerInfoBytes);
    ack.serialNumber = TextOf(m_registers, Gvbs::SerialNumber, Gvbs::SerialNumberBytes);
    ack.userDefinedName = TextOf(m_registers, Gvbs::UserDefinedName, Gvbs::UserDefinedNameBytes);
    return Gvcp::EncodeDiscoveryAck(command.requestId, ack);
}

Gvcp::Bytes CControlChannel::ForceIp(const Command& command)
{
    Gvcp::SForceIp forceIp;
    if (Gvcp::ParseForceIpCmd(command, forceIp) != EParseResult::Ok)
    {
        return Gvcp::EncodeForceIpAck(command.requestId, EStatus::InvalidHeader);
    }
    const CBootstrap& bootstrap = m_registers.GetBootstrap();
    std::uint64_t mac = 0;
    for (const std::uint8_t byte : forceIp.mac)
    {
        mac = mac << 8 | byte;
    }
    const bool isMeant =
        mac == (std::uint64_t{bootstrap.Get(Gvbs::DeviceMacHigh)} << 32 | bootstrap.Get(Gvbs::DeviceMacLow));
    if (!isMeant || IsControlled())
    {
        return {}; // it is a broadcast: only the camera that it is for, and that is free, answers
    }
    return Gvcp::EncodeForceIpAck(command.requestId,
                                  m_hooks.onForceIp(forceIp) ? EStatus::Success : EStatus::InvalidParameter);
}

bool CControlChannel::MayRead(const SPeer& peer) const
{
    const std::uint32_t privilege = m_registers.GetBootstrap().Get(Gvbs::ControlChannelPrivilege);
    return IsOwner(peer) || (privilege & Gvbs::CcpExclusiveAccess) == 0;
}

Gvcp::Bytes CControlChannel::ReadRegisters(const Command& command, const SPeer& peer)
{
    std::vector<std::uint32_t> addresses;
    EStatus status = StatusOf(Gvcp::ParseReadRegCmd(command, addresses));
    if (status == EStatus::Success && !MayRead(peer))
    {
        status = EStatus::AccessDenied;
    }
    std::vector<std::uint32_t> values;
    for (const std::uint32_t address : addresses)
    {
        std::uint8_t word[4] = {};
        status = status == EStatus::Success ? m_registers.Read(address, word, sizeof word) : status;
        if (status != EStatus::Success)
        {
            break; // what was read before the fault is answered
        }
        values.push_back(static_cast<std::uint32_t>(word[0]) << 24 | static_cast<std::uint32_t>(word[1]) << 16 |
                         static_cast<std::uint32_t>(word[2]) << 8 | word[3]);
    }
    return Gvcp::EncodeReadRegAck(command.requestId, status, values);
}

EStatus CControlChannel::WritePrivilege(std::uint32_t value, const SPeer& peer)
{
    if (m_isHeldElsewhere || (m_owner.has_value() && !IsOwner(peer)))
    {
        return EStatus::AccessDenied;
    }
    const std::uint32_t privilege = value & PrivilegeMask;
    if (privilege == 0)
    {
        Release();
        return EStatus::Success;
    }
    m_owner = peer;
    CBootstrap& bootstrap = m_registers.GetBootstrap();
    bootstrap.Set(Gvbs::ControlChannelPrivilege, privilege);
    bootstrap.Set(Gvbs::PrimaryApplicationPort, peer.port);
    bootstrap.Set(Gvbs::PrimaryApplicationIpAddress, peer.ip);
    return EStatus::Success;
}

void CControlChannel::Release()
{
    if (!m_owner.has_value())
    {
        return;
    }
    m_owner.reset();
    m_lastWrite.clear();
    CBootstrap& bootstrap = m_registers.GetBootstrap();
    bootstrap.Set(Gvbs::ControlChannelPrivilege, 0);
    bootstrap.Set(Gvbs::PrimaryApplicationPort, 0);
    bootstrap.Set(Gvbs::PrimaryApplicationIpAddress, 0);
    m_registers.CloseChannels();
}

Gvcp::Bytes CControlChannel::WriteRegisters(const Command& command, const SPeer& peer)
{
    Gvcp::RegisterValues values;
    EStatus status = StatusOf(Gvcp::ParseWriteRegCmd(command, values));
    std::uint16_t written = 0;
    for (const auto& [address, value] : values)
    {
        if (address == Gvbs::ControlChannelPrivilege)
        {
            status = WritePrivilege(value, peer);
        }
        else if (!IsOwner(peer))
        {
            status = EStatus::AccessDenied;
        }
        else
        {
            const std::uint8_t word[] = {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
                                         static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
            status = m_registers.Write(address, word, sizeof word);
        }
        if (status != EStatus::Success)
        {
            break;
        }
        ++written;
    }
    return Gvcp::EncodeWriteRegAck(command.requestId, status, written);
}

Gvcp::Bytes CControlChannel::ReadMemory(const Command& command, const SPeer& peer)
{
    std::uint32_t address = 0;
    std::size_t bytes = 0;
    EStatus status = StatusOf(Gvcp::ParseReadMemCmd(command, address, bytes));
    if (status == EStatus::Success && !MayRead(peer))
    {
        status = EStatus::AccessDenied;
    }
    Gvcp::Bytes data(bytes);
    if (status == EStatus::Success)
    {
        status = m_registers.Read(address, data.data(), bytes);
    }
    if (status != EStatus::Success)
    {
        return Gvcp::EncodeErrorAck(command.requestId, Gvcp::ECommand::ReadMemAck, status);
    }
    return Gvcp::EncodeReadMemAck(command.requestId, status, address, data);
}

Gvcp::Bytes CControlChannel::WriteMemory(const Command& command, const SPeer& peer)
{
    Gvcp::SMemory memory;
    EStatus status = StatusOf(Gvcp::ParseWriteMemCmd(command, memory));
    if (status == EStatus::Success && !IsOwner(peer))
    {
        status = EStatus::AccessDenied;
    }
    const bool hasPrivilege = memory.address <= Gvbs::ControlChannelPrivilege &&
                              Gvbs::ControlChannelPrivilege - memory.address < memory.bytes;
    if (status == EStatus::Success && hasPrivilege)
    {
        status = EStatus::WriteProtect; // by the standard the privilege is taken by WRITEREG
    }
    if (status == EStatus::Success)
    {
        status = m_registers.Write(memory.address, memory.pData, memory.bytes);
    }
    const std::size_t written = status == EStatus::Success ? memory.bytes : 0;
    return Gvcp::EncodeWriteMemAck(command.requestId, status, static_cast<std::uint16_t>(written));
}

void CControlChannel::Resend(const Command& command, const SPeer& peer)
{
    Gvcp::SPacketResend resend;
    // Applications may ask from the port that receives the stream.
    const bool isAllowed = m_owner.has_value() && m_owner->ip == peer.ip;
    if (isAllowed && Gvcp::ParsePacketResendCmd(command, resend) == EParseResult::Ok && resend.streamChannel == 0)
    {
        m_hooks.onResend(resend);
    }
}

Gvcp::Bytes CControlChannel::Act(const Command& command)
{
    Gvcp::SAction action;
    // By the standard a camera that nobody controls does not react; one whose keys do not fit is silent.
    if (!IsControlled() || Gvcp::ParseActionCmd(command, action) != EParseResult::Ok)
    {
        return {};
    }
    const std::optional<EStatus> status = m_registers.GetModel().Action(action);
    return status.has_value() ? Gvcp::EncodePlainAck(command.requestId, Gvcp::ECommand::ActionAck, *status)
                              : Gvcp::Bytes();
}

std::optional<CControlChannel::Time> CControlChannel::GetDeadline() const
{
    const CBootstrap& bootstrap = m_registers.GetBootstrap();
    const bool isWatched =
        m_owner.has_value() && (bootstrap.Get(Gvbs::GvcpConfiguration) & Gvbs::GvcpConfigurationHeartbeatDisable) == 0;
    if (!isWatched)
    {
        return std::nullopt;
    }
    return m_lastHeard + std::chrono::milliseconds(bootstrap.Get(Gvbs::HeartbeatTimeout));
}

void CControlChannel::Expire(Time now)
{
    const std::optional<Time> deadline = GetDeadline();
    if (deadline.has_value() && now >= *deadline)
    {
        Release();
    }
}

} // namespace GigEServer::Internal
