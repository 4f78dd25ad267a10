// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/chunks.h"

#include <stdexcept>

namespace Velmo::Chunks
{

namespace
{

constexpr std::size_t LengthOffset = 4; // in the trailer, behind the ID

std::uint32_t ReadWord(const std::uint8_t* p, EByteOrder order)
{
    const std::uint32_t big = std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[2]} << 8 | p[3];
    return order == EByteOrder::Little ? __builtin_bswap32(big) : big;
}

void WriteWord(std::uint8_t* p, std::uint32_t value, EByteOrder order)
{
    const std::uint32_t big = order == EByteOrder::Little ? __builtin_bswap32(value) : value;
    p[0] = static_cast<std::uint8_t>(big >> 24);
    p[1] = static_cast<std::uint8_t>(big >> 16);
    p[2] = static_cast<std::uint8_t>(big >> 8);
    p[3] = static_cast<std::uint8_t>(big);
}

EByteOrder Resolve(const void* pPayload, std::size_t bytes, EByteOrder order)
{
    if (order != EByteOrder::Auto)
    {
        return order;
    }
    const bool isLittle = !Check(pPayload, bytes, EByteOrder::Big) && Check(pPayload, bytes, EByteOrder::Little);
    return isLittle ? EByteOrder::Little : EByteOrder::Big;
}

} // namespace

CReader::CReader(const void* pPayload, std::size_t bytes, EByteOrder order)
    : m_pPayload(static_cast<const std::uint8_t*>(pPayload)), m_left(pPayload == nullptr ? 0 : bytes),
      m_order(Resolve(pPayload, m_left, order))
{
}

bool CReader::Next(SChunk& chunk)
{
    if (m_left == 0 || m_state != EState::Ok)
    {
        return false;
    }
    if (m_left < TrailerBytes)
    {
        m_state = EState::NoTrailer;
        return false;
    }
    const std::size_t trailer = m_left - TrailerBytes;
    const std::uint32_t id = ReadWord(m_pPayload + trailer, m_order);
    const std::uint32_t bytes = ReadWord(m_pPayload + trailer + LengthOffset, m_order);
    if (bytes > trailer)
    {
        m_state = EState::BeyondBegin;
        m_faultyId = id;
        m_faultyBytes = bytes;
        return false;
    }
    m_left = trailer - bytes;
    chunk = {id, m_pPayload + m_left, bytes};
    return true;
}

std::string CReader::GetErrorText() const
{
    switch (m_state)
    {
    case EState::NoTrailer:
        return "The chunk data begin with " + std::to_string(m_left) +
               " bytes that are no chunk: a chunk's trailer has " + std::to_string(TrailerBytes) + " bytes.";
    case EState::BeyondBegin:
        return "The chunk with ID " + std::to_string(m_faultyId) + " claims " + std::to_string(m_faultyBytes) +
               " bytes, but only " + std::to_string(m_left - TrailerBytes) + " lie before its trailer.";
    case EState::Ok:
        break;
    }
    return {};
}

bool Check(const void* pPayload, std::size_t bytes, EByteOrder order)
{
    CReader reader(pPayload, bytes, order);
    SChunk chunk;
    while (reader.Next(chunk))
    {
    }
    return reader.GetState() == CReader::EState::Ok;
}

bool Find(const void* pPayload, std::size_t bytes, EByteOrder order, std::uint32_t id, SChunk& chunk)
{
    CReader reader(pPayload, bytes, order);
    SChunk found;
    SChunk next;
    while (reader.Next(next))
    {
        if (found.pData == nullptr && next.id == id)
        {
            found = next;
        }
    }
    if (found.pData == nullptr || reader.GetState() != CReader::EState::Ok)
    {
        return false;
    }
    chunk = found;
    return true;
}

std::array<std::uint8_t, TrailerBytes> MakeTrailer(std::uint32_t id, std::uint32_t bytes, EByteOrder order)
{
    std::array<std::uint8_t, TrailerBytes> trailer{};
    WriteWord(trailer.data(), id, order);
    WriteWord(trailer.data() + LengthOffset, bytes, order);
    return trailer;
}

void Append(std::vector<std::uint8_t>& payload, std::uint32_t id, const void* pData, std::size_t bytes,
            EByteOrder order)
{
    const auto* begin = static_cast<const std::uint8_t*>(pData);
    const std::size_t aligned = AlignedBytes(bytes);
    if (aligned < bytes || aligned > MaxChunkBytes)
    {
        throw std::length_error("A chunk of " + std::to_string(bytes) +
                                " bytes is too long: its trailer has 32 bits for the length.");
    }
    payload.insert(payload.end(), begin, begin + bytes);
    payload.insert(payload.end(), aligned - bytes, 0);
    const auto trailer = MakeTrailer(id, static_cast<std::uint32_t>(aligned), order);
    payload.insert(payload.end(), trailer.begin(), trailer.end());
}

} // namespace Velmo::Chunks
