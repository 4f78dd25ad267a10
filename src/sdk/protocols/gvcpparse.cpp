// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvbsregisters.h"
#include "protocols/gvcp.h"
#include "protocols/internal/bigendian.h"

#include <algorithm>
#include <limits>

namespace Velmo::Gvcp
{

namespace
{

using Internal::U16;
using Internal::U32;
using Internal::U64;

/** Up to the first NUL, or the whole field when a careless device filled it. */
std::string Text(const std::uint8_t* p, std::size_t fieldBytes)
{
    return std::string(p, std::find(p, p + fieldBytes, std::uint8_t{0}));
}

EParseResult CheckMemory(std::uint32_t address, std::size_t bytes)
{
    if (address % 4 != 0 || bytes % 4 != 0)
    {
        return EParseResult::BadAlignment;
    }
    if (bytes > 0 && address > std::numeric_limits<std::uint32_t>::max() - (bytes - 1))
    {
        return EParseResult::BadAddress;
    }
    return EParseResult::Ok;
}

/** Payload of an address and at least one word of data: WRITEMEM_CMD, READMEM_ACK. */
EParseResult ParseMemory(const std::uint8_t* payload, std::size_t payloadBytes, SMemory& memory)
{
    if (payloadBytes <= 4 || payloadBytes > MaxPayloadBytes)
    {
        return EParseResult::LengthMismatch;
    }
    const std::uint32_t address = U32(payload);
    const EParseResult result = CheckMemory(address, payloadBytes - 4);
    if (result == EParseResult::Ok)
    {
        memory.address = address;
        memory.pData = payload + 4;
        memory.bytes = payloadBytes - 4;
    }
    return result;
}

/** Payload of two reserved bytes and a number: WRITEREG_ACK, WRITEMEM_ACK, PENDING_ACK. */
EParseResult ParseReservedAndNumber(const SAcknowledge& ack, std::uint16_t& number)
{
    if (ack.payloadBytes != 4)
    {
        return EParseResult::LengthMismatch;
    }
    number = U16(ack.pPayload + 2);
    return EParseResult::Ok;
}

EParseResult ParseWords(const std::uint8_t* payload, std::size_t payloadBytes, std::vector<std::uint32_t>& words)
{
    if (payloadBytes == 0 || payloadBytes % 4 != 0 || payloadBytes > MaxPayloadBytes)
    {
        return EParseResult::LengthMismatch;
    }
    words.clear();
    for (std::size_t offset = 0; offset < payloadBytes; offset += 4)
    {
        words.push_back(U32(payload + offset));
    }
    return EParseResult::Ok;
}

/** The first event; dataBytes is what follows it. */
EParseResult ParseEvent(const SCommand& command, SEvent& event, std::size_t& dataBytes)
{
    const bool isExtended = (command.flags & Flag::ExtendedIds) != 0;
    const std::size_t eventBytes = isExtended ? 24 : 16;
    if (command.payloadBytes < eventBytes)
    {
        return EParseResult::LengthMismatch;
    }
    const std::uint8_t* p = command.pPayload;
    event.id = U16(p + 2);
    event.streamChannel = U16(p + 4);
    event.isExtended = isExtended;
    event.blockId = isExtended ? U64(p + 8) : U16(p + 6);
    event.timestamp = U64(p + eventBytes - 8);
    event.data.clear();
    dataBytes = command.payloadBytes - eventBytes;
    return EParseResult::Ok;
}

} // namespace

EParseResult ParseCommand(const std::uint8_t* data, std::size_t bytes, SCommand& command)
{
    if (bytes < HeaderBytes)
    {
        return EParseResult::TooShort;
    }
    if (data[0] != Key)
    {
        return EParseResult::BadKey;
    }
    const std::size_t payloadBytes = U16(data + 4);
    if (bytes - HeaderBytes < payloadBytes)
    {
        return EParseResult::TooShort;
    }
    command.flags = data[1];
    command.command = U16(data + 2);
    command.requestId = U16(data + 6);
    command.pPayload = data + HeaderBytes;
    command.payloadBytes = payloadBytes;
    return EParseResult::Ok;
}

EParseResult ParseAcknowledge(const std::uint8_t* data, std::size_t bytes, SAcknowledge& ack)
{
    if (bytes < HeaderBytes)
    {
        return EParseResult::TooShort;
    }
    const std::size_t payloadBytes = U16(data + 4);
    if (bytes - HeaderBytes < payloadBytes)
    {
        return EParseResult::TooShort;
    }
    ack.status = U16(data);
    ack.command = U16(data + 2);
    ack.ackId = U16(data + 6);
    ack.pPayload = data + HeaderBytes;
    ack.payloadBytes = payloadBytes;
    return EParseResult::Ok;
}

EParseResult ParseForceIpCmd(const SCommand& command, SForceIp& forceIp)
{
    constexpr std::size_t payloadBytes = 56;
    if (command.payloadBytes != payloadBytes)
    {
        return EParseResult::LengthMismatch;
    }
    std::copy_n(command.pPayload + 2, forceIp.mac.size(), forceIp.mac.begin());
    forceIp.ip = U32(command.pPayload + 20);
    forceIp.subnetMask = U32(command.pPayload + 36);
    forceIp.gateway = U32(command.pPayload + 52);
    return EParseResult::Ok;
}

EParseResult ParseReadRegCmd(const SCommand& command, std::vector<std::uint32_t>& addresses)
{
    std::vector<std::uint32_t> words;
    const EParseResult result = ParseWords(command.pPayload, command.payloadBytes, words);
    if (result != EParseResult::Ok)
    {
        return result;
    }
    if (std::any_of(words.begin(), words.end(), [](std::uint32_t address) { return address % 4 != 0; }))
    {
        return EParseResult::BadAlignment;
    }
    addresses = std::move(words);
    return EParseResult::Ok;
}

EParseResult ParseWriteRegCmd(const SCommand& command, RegisterValues& values)
{
    std::vector<std::uint32_t> words;
    const EParseResult result = ParseWords(command.pPayload, command.payloadBytes, words);
    if (result != EParseResult::Ok)
    {
        return result;
    }
    if (words.size() % 2 != 0)
    {
        return EParseResult::LengthMismatch;
    }
    RegisterValues pairs;
    for (std::size_t i = 0; i < words.size(); i += 2)
    {
        if (words[i] % 4 != 0)
        {
            return EParseResult::BadAlignment;
        }
        pairs.emplace_back(words[i], words[i + 1]);
    }
    values = std::move(pairs);
    return EParseResult::Ok;
}

EParseResult ParseReadMemCmd(const SCommand& command, std::uint32_t& address, std::size_t& bytes)
{
    if (command.payloadBytes != 8)
    {
        return EParseResult::LengthMismatch;
    }
    const std::uint32_t start = U32(command.pPayload);
    const std::size_t count = U16(command.pPayload + 6);
    if (count == 0 || count > MaxMemoryBytes)
    {
        return EParseResult::LengthMismatch;
    }
    const EParseResult result = CheckMemory(start, count);
    if (result == EParseResult::Ok)
    {
        address = start;
        bytes = count;
    }
    return result;
}

EParseResult ParseWriteMemCmd(const SCommand& command, SMemory& memory)
{
    return ParseMemory(command.pPayload, command.payloadBytes, memory);
}

EParseResult ParsePacketResendCmd(const SCommand& command, SPacketResend& resend)
{
    const bool isExtended = (command.flags & Flag::ExtendedIds) != 0;
    if (command.payloadBytes != (isExtended ? 20 : 12))
    {
        return EParseResult::LengthMismatch;
    }
    const std::uint8_t* p = command.pPayload;
    constexpr std::uint32_t standardIds = 0x00FFFFFF;
    resend.streamChannel = U16(p);
    resend.isExtended = isExtended;
    resend.blockId = isExtended ? U64(p + 12) : U16(p + 2);
    resend.firstPacketId = isExtended ? U32(p + 4) : U32(p + 4) & standardIds;
    resend.lastPacketId = isExtended ? U32(p + 8) : U32(p + 8) & standardIds;
    return EParseResult::Ok;
}

EParseResult ParseEventCmd(const SCommand& command, SEvent& event)
{
    std::size_t others = 0;
    return ParseEvent(command, event, others);
}

EParseResult ParseEventDataCmd(const SCommand& command, SEvent& event)
{
    std::size_t dataBytes = 0;
    const EParseResult result = ParseEvent(command, event, dataBytes);
    if (result == EParseResult::Ok)
    {
        const std::uint8_t* pEnd = command.pPayload + command.payloadBytes;
        event.data.assign(pEnd - dataBytes, pEnd);
    }
    return result;
}

EParseResult ParseActionCmd(const SCommand& command, SAction& action)
{
    const bool isScheduled = (command.flags & Flag::ScheduledAction) != 0;
    if (command.payloadBytes != (isScheduled ? 20 : 12))
    {
        return EParseResult::LengthMismatch;
    }
    const std::uint8_t* p = command.pPayload;
    action.deviceKey = U32(p);
    action.groupKey = U32(p + 4);
    action.groupMask = U32(p + 8);
    action.isScheduled = isScheduled;
    action.time = isScheduled ? U64(p + 12) : 0;
    return EParseResult::Ok;
}

bool IsAnswer(const SAcknowledge& ack, ECommand answer, std::uint16_t requestId)
{
    return ack.command == static_cast<std::uint16_t>(answer) && ack.ackId == requestId;
}

EParseResult ParseDiscoveryAck(const SAcknowledge& ack, SDiscoveryAck& discovery)
{
    // A later version of the standard may append fields.
    if (ack.payloadBytes < DiscoveryAckBytes)
    {
        return EParseResult::LengthMismatch;
    }
    const std::uint8_t* p = ack.pPayload;
    discovery.versionMajor = U16(p + Gvbs::Version);
    discovery.versionMinor = U16(p + Gvbs::Version + 2);
    discovery.deviceMode = U32(p + Gvbs::DeviceMode);
    std::copy_n(p + Gvbs::DeviceMacHigh + 2, discovery.mac.size(), discovery.mac.begin());
    discovery.supportedIpConfiguration = U32(p + Gvbs::NetworkInterfaceCapability);
    discovery.currentIpConfiguration = U32(p + Gvbs::NetworkInterfaceConfiguration);
    discovery.currentIp = U32(p + Gvbs::CurrentIpAddress);
    discovery.currentSubnetMask = U32(p + Gvbs::CurrentSubnetMask);
    discovery.defaultGateway = U32(p + Gvbs::CurrentDefaultGateway);
    discovery.manufacturerName = Text(p + Gvbs::ManufacturerName, Gvbs::ManufacturerNameBytes);
    discovery.modelName = Text(p + Gvbs::ModelName, Gvbs::ModelNameBytes);
    discovery.deviceVersion = Text(p + Gvbs::DeviceVersion, Gvbs::DeviceVersionBytes);
    discovery.manufacturerInfo = Text(p + Gvbs::ManufacturerInfo, Gvbs::ManufacturerInfoBytes);
    discovery.serialNumber = Text(p + Gvbs::SerialNumber, Gvbs::SerialNumberBytes);
    discovery.userDefinedName = Text(p + Gvbs::UserDefinedName, Gvbs::UserDefinedNameBytes);
    return EParseResult::Ok;
}

EParseResult ParseReadRegAck(const SAcknowledge& ack, std::vector<std::uint32_t>& values)
{
    return ParseWords(ack.pPayload, ack.payloadBytes, values);
}

EParseResult ParseWriteAck(const SAcknowledge& ack, std::uint16_t& index)
{
    return ParseReservedAndNumber(ack, index);
}

EParseResult ParseReadMemAck(const SAcknowledge& ack, SMemory& memory)
{
    return ParseMemory(ack.pPayload, ack.payloadBytes, memory);
}

EParseResult ParsePendingAck(const SAcknowledge& ack, std::uint16_t& timeToCompletionMs)
{
    return ParseReservedAndNumber(ack, timeToCompletionMs);
}

} // namespace Velmo::Gvcp
