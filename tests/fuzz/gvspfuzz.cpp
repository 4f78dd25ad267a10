// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvsp.h"

#include <cstdlib>

using namespace Velmo::Gvsp;

namespace
{

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

/** What was read from the packet is what the encoder writes into its begin, but for bits that are reserved. */
template <class Record, class Encode, class Parse>
void RequireSame(const SPacket& packet, const Record& record, Encode encode, Parse parse)
{
    const Bytes encoded = encode(packet.header, record);
    SPacket parsed;
    Record again;
    Require(ParsePacket(encoded.data(), encoded.size(), parsed) == EParseResult::Ok);
    Require(parse(parsed, again) == EParseResult::Ok);
    Require(encode(parsed.header, again) == encoded);
    Require(parsed.header.blockId == packet.header.blockId && parsed.header.packetId == packet.header.packetId);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SPacket packet;
    if (ParsePacket(data, size, packet) != EParseResult::Ok)
    {
        return 0;
    }
    Require(packet.pPayload + packet.payloadBytes == data + size);
    SLeader leader;
    if (ParseLeader(packet, leader) == EParseResult::Ok)
    {
        RequireSame(packet, leader, EncodeLeader, ParseLeader);
    }
    STrailer trailer;
    if (ParseTrailer(packet, trailer) == EParseResult::Ok)
    {
        RequireSame(packet, trailer, EncodeTrailer, ParseTrailer);
    }
    return 0;
}
