// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"

#include <cstdlib>
#include <cstring>

using namespace Velmo::Gvcp;

namespace
{

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

void ParseAsCommand(const std::uint8_t* data, std::size_t size)
{
    SCommand command;
    if (ParseCommand(data, size, command) != EParseResult::Ok)
    {
        return;
    }
    Require(command.pPayload + command.payloadBytes <= data + size);
    SForceIp forceIp;
    ParseForceIpCmd(command, forceIp);
    std::vector<std::uint32_t> addresses;
    if (ParseReadRegCmd(command, addresses) == EParseResult::Ok)
    {
        Require(!EncodeReadRegCmd(command.requestId, addresses).empty());
    }
    RegisterValues values;
    if (ParseWriteRegCmd(command, values) == EParseResult::Ok)
    {
        Require(!EncodeWriteRegCmd(command.requestId, values).empty());
    }
    std::uint32_t address = 0;
    std::size_t bytes = 0;
    if (ParseReadMemCmd(command, address, bytes) == EParseResult::Ok)
    {
        Require(!EncodeReadMemCmd(command.requestId, address, bytes).empty());
    }
    SMemory memory;
    if (ParseWriteMemCmd(command, memory) == EParseResult::Ok)
    {
        const Bytes content(memory.pData, memory.pData + memory.bytes);
        Require(!EncodeWriteMemCmd(command.requestId, memory.address, content).empty());
    }
}

void ParseAsMessage(const std::uint8_t* data, std::size_t size)
{
    SCommand command;
    if (ParseCommand(data, size, command) != EParseResult::Ok)
    {
        return;
    }
    SPacketResend resend;
    if (ParsePacketResendCmd(command, resend) == EParseResult::Ok)
    {
        Require(EncodePacketResendCmd(command.requestId, resend).size() == HeaderBytes + command.payloadBytes);
    }
    SEvent event;
    ParseEventCmd(command, event);
    if (ParseEventDataCmd(command, event) == EParseResult::Ok)
    {
        const bool fits = command.payloadBytes <= MaxPayloadBytes;
        Require(EncodeEventDataCmd(command.requestId, event, false).empty() != fits);
    }
    SAction action;
    if (ParseActionCmd(command, action) == EParseResult::Ok)
    {
        Require(EncodeActionCmd(command.requestId, action, true).size() == HeaderBytes + command.payloadBytes);
    }
}

void ParseAsAcknowledge(const std::uint8_t* data, std::size_t size)
{
    SAcknowledge ack;
    if (ParseAcknowledge(data, size, ack) != EParseResult::Ok)
    {
        return;
    }
    StatusText(ack.status);
    std::vector<std::uint32_t> values;
    ParseReadRegAck(ack, values);
    std::uint16_t number = 0;
    ParseWriteAck(ack, number);
    ParsePendingAck(ack, number);
    SMemory memory;
    if (ParseReadMemAck(ack, memory) == EParseResult::Ok)
    {
        Require(memory.pData + memory.bytes <= data + size);
    }
    if (IsAnswer(ack, ECommand::ActionAck, ack.ackId))
    {
        const Bytes again = EncodePlainAck(ack.ackId, ECommand::ActionAck, static_cast<EStatus>(ack.status));
        const bool hasPayload = ack.payloadBytes != 0;
        Require(again.size() == HeaderBytes && (hasPayload || std::memcmp(again.data(), data, HeaderBytes) == 0));
        Require(!IsAnswer(ack, ECommand::ActionAck, static_cast<std::uint16_t>(ack.ackId + 1)));
    }
    SDiscoveryAck discovery;
    if (ParseDiscoveryAck(ack, discovery) == EParseResult::Ok)
    {
        Require(EncodeDiscoveryAck(ack.ackId, discovery).size() == HeaderBytes + DiscoveryAckBytes);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ParseAsCommand(data, size);
    ParseAsMessage(data, size);
    ParseAsAcknowledge(data, size);
    return 0;
}
