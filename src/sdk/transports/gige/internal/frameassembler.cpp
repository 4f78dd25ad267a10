// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/frameassembler.h"

#include "protocols/gvcp.h"
#include "transports/gige/internal/streamresult.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr std::size_t MostOpenFrames = 16;
constexpr std::uint64_t LateWindow = 16;      // a leader that is further behind is no late one: the stream began again
constexpr std::uint16_t ErrorStatus = 0x8000; // of Gvcp::EStatus: those that say that something failed
constexpr std::uint16_t ResentStatus = static_cast<std::uint16_t>(Gvcp::EStatus::PacketResend);

Velmo::EPayloadType PayloadTypeOf(std::uint16_t type)
{
    if (Gvsp::HasChunks(type))
    {
        return Velmo::EPayloadType::ChunkData;
    }
    switch (static_cast<Gvsp::EPayloadType>(type))
    {
    case Gvsp::EPayloadType::Image:
        return Velmo::EPayloadType::Image;
    case Gvsp::EPayloadType::RawData:
        return Velmo::EPayloadType::RawData;
    case Gvsp::EPayloadType::File:
        return Velmo::EPayloadType::File;
    default:
        return Velmo::EPayloadType::Undefined;
    }
}

void Fail(Transport::SStreamResult& result, ArvBufferStatus reason, const std::string& text)
{
    result.status = Transport::EResultStatus::Failed;
    result.errorCode = static_cast<std::uint32_t>(reason);
    result.errorDescription = text;
}

} // namespace

CFrameAssembler::CFrameAssembler(std::size_t packetBytes, Duration retention)
    : m_packetBytes(packetBytes), m_retention(retention)
{
}

void CFrameAssembler::AddBuffer(void* pContext, std::uint8_t* pMemory, std::size_t bytes)
{
    m_buffers.push_back({pContext, pMemory, bytes});
}

void CFrameAssembler::Push(const std::uint8_t* data, std::size_t bytes, Time now)
{
    Gvsp::SPacket packet;
    Gvsp::SLeader leader;
    if (Gvsp::ParsePacket(data, bytes, packet) != Gvsp::EParseResult::Ok || !Accept(packet, leader))
    {
        ++m_counters.ignored;
        return;
    }
    // Extended headers have a flag for it, and cameras may set that only.
    const bool isResent = packet.header.status == ResentStatus || (packet.header.flags & Gvsp::Flag::PacketResend) != 0;
    m_counters.resent += isResent ? 1 : 0;
    const std::uint64_t number = m_order.NumberOf(packet.header.blockId, packet.header.isExtended);
    if (number <= m_lastClosed)
    {
        ++m_counters.ignored;
        return;
    }
    SFrame& frame = FindFrame(number);
    frame.lastPacket = now;
    AddPacket(frame, packet, leader);
    CloseFinished();
}

bool CFrameAssembler::Accept(const Gvsp::SPacket& packet, Gvsp::SLeader& leader)
{
    const Gvsp::SHeader& header = packet.header;
    const bool isLeader = header.format == Gvsp::EPacketFormat::Leader;
    if (header.blockId == 0 || (header.status & ErrorStatus) != 0 || header.format == Gvsp::EPacketFormat::AllIn ||
        isLeader != (header.packetId == 0))
    {
        return false;
    }
    if (!isLeader)
    {
        return m_hasBegun;
    }
    if (Gvsp::ParseLeader(packet, leader) != Gvsp::EParseResult::Ok)
    {
        return false;
    }
    if (!m_hasBegun || IsNewBeginning(header, leader))
    {
        BeginWith(header);
    }
    m_newestTimestamp = std::max(m_newestTimestamp, leader.timestamp);
    return true;
}

bool CFrameAssembler::IsNewBeginning(const Gvsp::SHeader& header, const Gvsp::SLeader& leader) const
{
    const std::uint64_t number = m_order.NumberOf(header.blockId, header.isExtended);
    const std::uint64_t newest = m_order.GetNewest();
    if (number > newest)
    {
        return header.blockId == 1 && number - newest > LateWindow; // a wrap that is not one
    }
    if (newest - number > LateWindow)
    {
        return true;
    }
    const auto open = std::find_if(m_frames.begin(), m_frames.end(),
                                   [number](const SFrame& frame) { return frame.number == number; });
    const bool isTaken = number <= m_lastClosed || (open != m_frames.end() && open->hasLeader);
    return isTaken && leader.timestamp > m_newestTimestamp;
}

void CFrameAssembler::BeginWith(const Gvsp::SHeader& header)
{
    while (!m_frames.empty())
    {
        CloseFront();
    }
    m_hasBegun = true;
    m_order = CBlockOrder();
    m_newestTimestamp = 0;
    m_lastClosed = m_order.NumberOf(header.blockId, header.isExtended) - 1;
}

CFrameAssembler::SFrame& CFrameAssembler::FindFrame(std::uint64_t number)
{
    auto place = m_frames.end();
    while (place != m_frames.begin() && std::prev(place)->number >= number)
    {
        --place;
        if (place->number == number)
        {
            return *place;
        }
    }
    m_order.SetNewest(number);
    SFrame frame;
    frame.number = number;
    if (m_buffers.empty())
    {
        CloseForWantOfBuffers(number);
        place = std::find_if(m_frames.begin(), m_frames.end(), [number](const SFrame& f) { return f.number > number; });
    }
    TakeBuffer(frame);
    return *m_frames.insert(place, std::move(frame));
}

void CFrameAssembler::CloseForWantOfBuffers(std::uint64_t number)
{
    // What is complete must not wait for what is not, or the consumer has nothing to give back.
    const auto last = std::find_if(m_frames.rbegin(), m_frames.rend(), &CFrameAssembler::IsComplete);
    for (auto count = m_frames.rend() - last; count > 0 && m_frames.front().number < number; --count)
    {
        CloseFront();
    }
}

void CFrameAssembler::TakeBuffer(SFrame& frame)
{
    if (m_buffers.empty())
    {
        return;
    }
    frame.hasBuffer = true;
    frame.buffer = m_buffers.front();
    m_buffers.pop_front();
    if (!m_spareMaps.empty())
    {
        frame.isReceived = std::move(m_spareMaps.back());
        m_spareMaps.pop_back();
        frame.isReceived.clear();
    }
}

void CFrameAssembler::AddPacket(SFrame& frame, const Gvsp::SPacket& packet, const Gvsp::SLeader& leader)
{
    switch (packet.header.format)
    {
    case Gvsp::EPacketFormat::Leader:
        m_counters.ignored += frame.hasLeader ? 1 : 0;
        frame.leader = frame.hasLeader ? frame.leader : leader;
        frame.hasLeader = true;
        break;
    case Gvsp::EPacketFormat::Trailer:
        if (frame.hasTrailer || Gvsp::ParseTrailer(packet, frame.trailer) != Gvsp::EParseResult::Ok)
        {
            ++m_counters.ignored;
            break;
        }
        frame.hasTrailer = true;
        frame.trailerPacketId = packet.header.packetId;
        frame.isInconsistent = frame.isInconsistent || frame.highestPacketId >= frame.trailerPacketId;
        break;
    default:
        AddPayload(frame, packet);
        break;
    }
}

void CFrameAssembler::AddPayload(SFrame& frame, const Gvsp::SPacket& packet)
{
    const std::uint32_t id = packet.header.packetId;
    if (packet.payloadBytes == 0 || !frame.hasBuffer)
    {
        m_counters.ignored += frame.hasBuffer ? 1 : 0;
        return;
    }
    frame.highestPacketId = std::max(frame.highestPacketId, id);
    if (!LearnPacketSize(frame, packet) || (frame.hasTrailer && id >= frame.trailerPacketId))
    {
        frame.isInconsistent = true;
        return;
    }
    Place(frame, packet);
}

bool CFrameAssembler::LearnPacketSize(SFrame& frame, const Gvsp::SPacket& packet)
{
    const std::size_t bytes = packet.payloadBytes;
    if (frame.packetDataBytes == 0)
    {
        // The first packet tells; when another comes before it, the one of the images before is as good.
        const std::size_t usual = m_packetDataBytes != 0
                                      ? m_packetDataBytes
                                      : Gvsp::DataBytesPerPacket(m_packetBytes, packet.header.isExtended);
        frame.packetDataBytes = packet.header.packetId == 1 ? bytes : std::max(usual, bytes);
    }
    if (packet.header.packetId == 1 || bytes > frame.packetDataBytes)
    {
        m_packetDataBytes = bytes;
    }
    if (bytes < frame.packetDataBytes)
    {
        const bool isOnly = frame.shortPacketId == 0 || frame.shortPacketId == packet.header.packetId;
        frame.shortPacketId = packet.header.packetId;
        return isOnly;
    }
    return bytes == frame.packetDataBytes;
}

void CFrameAssembler::Place(SFrame& frame, const Gvsp::SPacket& packet)
{
    const std::uint64_t offset = (std::uint64_t{packet.header.packetId} - 1) * frame.packetDataBytes;
    if (offset >= frame.buffer.bytes)
    {
        frame.isTooLarge = true;
        return;
    }
    const std::size_t id = packet.header.packetId; // small now: the buffer has room for so many
    if (id < frame.isReceived.size() && frame.isReceived[id])
    {
        ++m_counters.ignored;
        return;
    }
    if (id >= frame.isReceived.size())
    {
        frame.isReceived.resize(id + 1);
    }
    frame.isReceived[id] = true;
    ++frame.received;
    const std::size_t room = frame.buffer.bytes - static_cast<std::size_t>(offset);
    const std::size_t bytes = std::min(packet.payloadBytes, room);
    frame.isTooLarge = frame.isTooLarge || bytes < packet.payloadBytes;
    std::memcpy(frame.buffer.pMemory + offset, packet.pPayload, bytes);
    frame.dataEnd = std::max(frame.dataEnd, static_cast<std::size_t>(offset) + bytes);
}

bool CFrameAssembler::IsComplete(const SFrame& frame)
{
    if (!frame.hasTrailer)
    {
        return false;
    }
    const bool isDecided = !frame.hasBuffer || frame.isTooLarge || frame.isInconsistent;
    return isDecided || (frame.hasLeader && frame.received == frame.trailerPacketId - 1);
}

void CFrameAssembler::CloseFinished()
{
    while (!m_frames.empty())
    {
        const bool isDropped = !m_frames.front().hasBuffer && m_frames.size() > 1;
        if (!IsComplete(m_frames.front()) && !isDropped && m_frames.size() <= MostOpenFrames)
        {
            return;
        }
        CloseFront();
    }
}

void CFrameAssembler::CloseFront()
{
    SFrame frame = std::move(m_frames.front());
    m_frames.pop_front();
    m_counters.lost += frame.number - m_lastClosed - 1 + (frame.hasBuffer ? 0 : 1);
    m_lastClosed = frame.number;
    if (frame.hasBuffer)
    {
        m_results.push_back(MakeResult(frame));
        m_spareMaps.push_back(std::move(frame.isReceived));
    }
}

Transport::SStreamResult CFrameAssembler::MakeResult(const SFrame& frame)
{
    Transport::SStreamResult result;
    result.pContext = frame.buffer.pContext;
    result.blockId = frame.number;
    result.payloadBytes = frame.dataEnd;
    result.status = Transport::EResultStatus::Ok;
    if (frame.hasLeader)
    {
        result.timestamp = frame.leader.timestamp;
        result.payloadType = PayloadTypeOf(frame.leader.payloadType);
        result.pixelType = frame.leader.pixelFormat;
        result.width = frame.leader.sizeX;
        result.height = frame.leader.sizeY;
        result.offsetX = frame.leader.offsetX;
        result.offsetY = frame.leader.offsetY;
        result.paddingX = frame.leader.paddingX;
    }
    if (frame.hasLeader && frame.hasTrailer && Gvsp::HasGeometry(frame.trailer.payloadType))
    {
        result.height = std::min(result.height, frame.trailer.sizeY); // a line scan may have ended early
    }
    Judge(frame, result);
    (result.status == Transport::EResultStatus::Ok ? m_counters.delivered : m_counters.incomplete) += 1;
    return result;
}

void CFrameAssembler::Judge(const SFrame& frame, Transport::SStreamResult& result)
{
    const std::uint32_t expected = frame.hasTrailer ? frame.trailerPacketId - 1 : frame.highestPacketId;
    const bool isWhole = frame.hasLeader && frame.hasTrailer && frame.received >= expected;
    const bool isShortInside = frame.shortPacketId != 0 && frame.shortPacketId != expected;
    const bool isCut = result.payloadType == Velmo::EPayloadType::Image && result.payloadBytes < ImageBytes(result);
    if (frame.isTooLarge)
    {
        Fail(result, ARV_BUFFER_STATUS_SIZE_MISMATCH, FailureText(ARV_BUFFER_STATUS_SIZE_MISMATCH));
    }
    else if (frame.isInconsistent || (isWhole && isShortInside))
    {
        Fail(result, ARV_BUFFER_STATUS_WRONG_PACKET_ID, FailureText(ARV_BUFFER_STATUS_WRONG_PACKET_ID));
    }
    else if (!isWhole)
    {
        const std::uint32_t missing = (frame.hasLeader ? 0 : 1) + (frame.hasTrailer ? 0 : 1) +
                                      (expected > frame.received ? expected - frame.received : 0);
        m_counters.missing += missing;
        Fail(result, ARV_BUFFER_STATUS_MISSING_PACKETS,
             "The image is incomplete: at least " + std::to_string(missing) +
                 " packets are missing, and those of a multicast stream are not asked for again.");
    }
    else if (isCut)
    {
        Fail(result, ARV_BUFFER_STATUS_SIZE_MISMATCH, "The image has fewer bytes than its width and height need.");
    }
}

void CFrameAssembler::Expire(Time now)
{
    while (!m_frames.empty() && m_frames.front().lastPacket + m_retention <= now)
    {
        CloseFront();
        CloseFinished();
    }
}

std::optional<CFrameAssembler::Time> CFrameAssembler::GetDeadline() const
{
    return m_frames.empty() ? std::nullopt : std::optional<Time>(m_frames.front().lastPacket + m_retention);
}

bool CFrameAssembler::TakeResult(Transport::SStreamResult& result)
{
    if (m_results.empty())
    {
        return false;
    }
    result = std::move(m_results.front());
    m_results.pop_front();
    return true;
}

void CFrameAssembler::CancelAll()
{
    for (const SFrame& frame : m_frames)
    {
        if (frame.hasBuffer)
        {
            m_results.push_back(MakeCanceledResult(frame.buffer.pContext));
        }
    }
    m_frames.clear();
    for (const SBuffer& buffer : m_buffers)
    {
        m_results.push_back(MakeCanceledResult(buffer.pContext));
    }
    m_buffers.clear();
    m_hasBegun = false;
}

} // namespace Velmo::GigE::Internal
