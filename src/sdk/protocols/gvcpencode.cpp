// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvbsregisters.h"
#include "protocols/gvcp.h"

#include <algorithm>

namespace Velmo::Gvcp
{

namespace
{

/** Appends big-endian numbers to a datagram that begins with a GVCP header. */
class CWriter
{
public:
    /** Of a command: first is key and flags. Of an acknowledge: first is the status. */
    CWriter(std::uint16_t first, ECommand command, std::size_t payloadBytes, std::uint16_t id)
    {
        m_bytes.reserve(HeaderBytes + payloadBytes);
        U16(first).U16(static_cast<std::uint16_t>(command)).U16(static_cast<std::uint16_t>(payloadBytes)).U16(id);
    }
    CWriter& U16(std::uint16_t value)
    {
        m_bytes.push_back(static_cast<std::uint8_t>(value >> 8));
        m_bytes.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    CWriter& U32(std::uint32_t value)
    {
        return U16(static_cast<std::uint16_t>(value >> 16)).U16(static_cast<std::uint16_t>(value));
    }
    CWriter& U64(std::uint64_t value)
    {
        return U32(static_cast<std::uint32_t>(value >> 32)).U32(static_cast<std::uint32_t>(value));
    }
    CWriter& Zero(std::size_t bytes)
    {
        m_bytes.insert(m_bytes.end(), bytes, 0);
        return *this;
    }
    CWriter& Mac(const std::array<std::uint8_t, 6>& mac)
    {
        m_bytes.insert(m_bytes.end(), mac.begin(), mac.end());
        return *this;
    }
    CWriter& Append(const Bytes& data)
    {
        m_bytes.insert(m_bytes.end(), data.begin(), data.end());
        return *this;
    }
    /** The last byte stays 0. */
    CWriter& Text(const std::string& text, std::size_t fieldBytes)
    {
        const std::size_t length = std::min(text.size(), fieldBytes - 1);
        m_bytes.insert(m_bytes.end(), text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
        return Zero(fieldBytes - length);
    }
    Bytes Take() { return std::move(m_bytes); }

private:
    Bytes m_bytes;
};

CWriter Command(ECommand command, std::uint8_t flags, std::size_t payloadBytes, std::uint16_t requestId)
{
    return CWriter(static_cast<std::uint16_t>(Key << 8 | flags), command, payloadBytes, requestId);
}

CWriter Acknowledge(ECommand answer, EStatus status, std::size_t payloadBytes, std::uint16_t ackId)
{
    return CWriter(static_cast<std::uint16_t>(status), answer, payloadBytes, ackId);
}

std::uint8_t BroadcastFlags(bool allowBroadcastAck)
{
    return allowBroadcastAck ? Flag::AckRequired | Flag::AllowBroadcastAck : Flag::AckRequired;
}

bool IsMemoryAllowed(std::uint32_t address, std::size_t bytes)
{
    return bytes > 0 && bytes <= MaxMemoryBytes && bytes % 4 == 0 && address % 4 == 0;
}

Bytes EncodeEvent(ECommand command, std::uint16_t requestId, const SEvent& event, const Bytes& data, bool isAckRequired)
{
    const std::size_t eventBytes = event.isExtended ? 24 : 16;
    if (data.size() > MaxPayloadBytes - eventBytes)
    {
        return {};
    }
    const auto flags =
        static_cast<std::uint8_t>((isAckRequired ? Flag::AckRequired : 0) | (event.isExtended ? Flag::ExtendedIds : 0));
    CWriter writer = Command(command, flags, eventBytes + data.size(), requestId);
    writer.Zero(2).U16(event.id).U16(event.streamChannel);
    if (event.isExtended)
    {
        writer.Zero(2).U64(event.blockId);
    }
    else
    {
        writer.U16(static_cast<std::uint16_t>(event.blockId));
    }
    return writer.U64(event.timestamp).Append(data).Take();
}

} // namespace

Bytes EncodeDiscoveryCmd(std::uint16_t requestId, bool allowBroadcastAck)
{
    return Command(ECommand::DiscoveryCmd, BroadcastFlags(allowBroadcastAck), 0, requestId).Take();
}

Bytes EncodeForceIpCmd(std::uint16_t requestId, const SForceIp& forceIp, bool allowBroadcastAck)
{
    constexpr std::size_t payloadBytes = 56;
    CWriter writer = Command(ECommand::ForceIpCmd, BroadcastFlags(allowBroadcastAck), payloadBytes, requestId);
    writer.Zero(2).Mac(forceIp.mac);
    writer.Zero(12).U32(forceIp.ip);
    writer.Zero(12).U32(forceIp.subnetMask);
    writer.Zero(12).U32(forceIp.gateway);
    return writer.Take();
}

Bytes EncodeReadRegCmd(std::uint16_t requestId, const std::vector<std::uint32_t>& addresses)
{
    if (addresses.empty() || addresses.size() > MaxReadRegisters)
    {
        return {};
    }
    CWriter writer = Command(ECommand::ReadRegCmd, Flag::AckRequired, addresses.size() * 4, requestId);
    for (const std::uint32_t address : addresses)
    {
        writer.U32(address);
    }
    return writer.Take();
}

Bytes EncodeWriteRegCmd(std::uint16_t requestId, const RegisterValues& values)
{
    if (values.empty() || values.size() > MaxWriteRegisters)
    {
        return {};
    }
    CWriter writer = Command(ECommand::WriteRegCmd, Flag::AckRequired, values.size() * 8, requestId);
    for (const auto& [address, value] : values)
    {
        writer.U32(address).U32(value);
    }
    return writer.Take();
}

Bytes EncodeReadMemCmd(std::uint16_t requestId, std::uint32_t address, std::size_t bytes)
{
    if (!IsMemoryAllowed(address, bytes))
    {
        return {};
    }
    CWriter writer = Command(ECommand::ReadMemCmd, Flag::AckRequired, 8, requestId);
    return writer.U32(address).Zero(2).U16(static_cast<std::uint16_t>(bytes)).Take();
}

Bytes EncodeWriteMemCmd(std::uint16_t requestId, std::uint32_t address, const Bytes& data)
{
    if (!IsMemoryAllowed(address, data.size()))
    {
        return {};
    }
    CWriter writer = Command(ECommand::WriteMemCmd, Flag::AckRequired, 4 + data.size(), requestId);
    return writer.U32(address).Append(data).Take();
}

Bytes EncodePacketResendCmd(std::uint16_t requestId, const SPacketResend& resend)
{
    const std::size_t payloadBytes = resend.isExtended ? 20 : 12;
    CWriter writer =
        Command(ECommand::PacketResendCmd, resend.isExtended ? Flag::ExtendedIds : 0, payloadBytes, requestId);
    writer.U16(resend.streamChannel);
    if (resend.isExtended)
    {
        return writer.Zero(2).U32(resend.firstPacketId).U32(resend.lastPacketId).U64(resend.blockId).Take();
    }
    return writer.U16(static_cast<std::uint16_t>(resend.blockId))
        .U32(resend.firstPacketId)
        .U32(resend.lastPacketId)
        .Take();
}

Bytes EncodeEventCmd(std::uint16_t requestId, const SEvent& event, bool isAckRequired)
{
    return EncodeEvent(ECommand::EventCmd, requestId, event, {}, isAckRequired);
}

Bytes EncodeEventDataCmd(std::uint16_t requestId, const SEvent& event, bool isAckRequired)
{
    return EncodeEvent(ECommand::EventDataCmd, requestId, event, event.data, isAckRequired);
}

Bytes EncodeActionCmd(std::uint16_t requestId, const SAction& action, bool isAckRequired)
{
    const auto flags = static_cast<std::uint8_t>((isAckRequired ? Flag::AckRequired : 0) |
                                                 (action.isScheduled ? Flag::ScheduledAction : 0));
    CWriter writer = Command(ECommand::ActionCmd, flags, action.isScheduled ? 20 : 12, requestId);
    writer.U32(action.deviceKey).U32(action.groupKey).U32(action.groupMask);
    if (action.isScheduled)
    {
        writer.U64(action.time);
    }
    return writer.Take();
}

Bytes EncodeDiscoveryAck(std::uint16_t ackId, const SDiscoveryAck& ack)
{
    CWriter writer = Acknowledge(ECommand::DiscoveryAck, EStatus::Success, DiscoveryAckBytes, ackId);
    writer.U16(ack.versionMajor).U16(ack.versionMinor).U32(ack.deviceMode);
    writer.Zero(2).Mac(ack.mac);
    writer.U32(ack.supportedIpConfiguration).U32(ack.currentIpConfiguration);
    writer.Zero(12).U32(ack.currentIp);
    writer.Zero(12).U32(ack.currentSubnetMask);
    writer.Zero(12).U32(ack.defaultGateway);
    writer.Text(ack.manufacturerName, Gvbs::ManufacturerNameBytes);
    writer.Text(ack.modelName, Gvbs::ModelNameBytes);
    writer.Text(ack.deviceVersion, Gvbs::DeviceVersionBytes);
    writer.Text(ack.manufacturerInfo, Gvbs::ManufacturerInfoBytes);
    writer.Text(ack.serialNumber, Gvbs::SerialNumberBytes);
    writer.Text(ack.userDefinedName, Gvbs::UserDefinedNameBytes);
    return writer.Take();
}

Bytes EncodeForceIpAck(std::uint16_t ackId, EStatus status)
{
    return EncodeErrorAck(ackId, ECommand::ForceIpAck, status);
}

Bytes EncodeReadRegAck(std::uint16_t ackId, EStatus status, const std::vector<std::uint32_t>& values)
{
    if (values.size() > MaxReadRegisters)
    {
        return {};
    }
    CWriter writer = Acknowledge(ECommand::ReadRegAck, status, values.size() * 4, ackId);
    for (const std::uint32_t value : values)
    {
        writer.U32(value);
    }
    return writer.Take();
}

Bytes EncodeWriteRegAck(std::uint16_t ackId, EStatus status, std::uint16_t index)
{
    return Acknowledge(ECommand::WriteRegAck, status, 4, ackId).Zero(2).U16(index).Take();
}

Bytes EncodeReadMemAck(std::uint16_t ackId, EStatus status, std::uint32_t address, const Bytes& data)
{
    if (data.size() > MaxMemoryBytes || data.size() % 4 != 0)
    {
        return {};
    }
    return Acknowledge(ECommand::ReadMemAck, status, 4 + data.size(), ackId).U32(address).Append(data).Take();
}

Bytes EncodeWriteMemAck(std::uint16_t ackId, EStatus status, std::uint16_t index)
{
    return Acknowledge(ECommand::WriteMemAck, status, 4, ackId).Zero(2).U16(index).Take();
}

Bytes EncodePendingAck(std::uint16_t ackId, std::uint16_t timeToCompletionMs)
{
    return Acknowledge(ECommand::PendingAck, EStatus::Success, 4, ackId).Zero(2).U16(timeToCompletionMs).Take();
}

Bytes EncodePlainAck(std::uint16_t ackId, ECommand answer, EStatus status)
{
    return Acknowledge(answer, status, 0, ackId).Take();
}

Bytes EncodeErrorAck(std::uint16_t ackId, ECommand answer, EStatus status)
{
    // Acknowledges of writes carry the index of what failed, whatever their status.
    const bool hasIndex = answer == ECommand::WriteRegAck || answer == ECommand::WriteMemAck;
    const std::size_t payloadBytes = hasIndex ? 4 : 0;
    return Acknowledge(answer, status, payloadBytes, ackId).Zero(payloadBytes).Take();
}

} // namespace Velmo::Gvcp
