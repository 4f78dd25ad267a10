// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/portnode.h"

#include "genapi/internal/nodemap.h"
#include "genapi/internal/numbernode.h"
#include "genapi/internal/stringnode.h"
#include "genapi/internal/textparse.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace GenApi
{
namespace Internal
{
namespace
{

/** Runs an access to a foreign port; what is no GenICam exception becomes one. */
template <class Access> void Guard(const CNode& node, const char* what, Access access)
{
    try
    {
        access();
    }
    catch (const GenICam::GenericException&)
    {
        throw;
    }
    catch (const std::exception& e)
    {
        GENICAM_THROW(RuntimeException,
                      "Node '" + node.Description().name + "' could not be " + what + ": " + e.what());
    }
}

} // namespace

void CPortNode::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    Map().Run(
        [&]
        {
            RequireReadable();
            ReadBytes(*this, static_cast<std::uint8_t*>(buffer), address, length);
        });
}

void CPortNode::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    Map().Run(
        [&]
        {
            RequireWritable();
            WriteBytes(*this, static_cast<const std::uint8_t*>(buffer), address, length);
            for (const NodeIndex other : Overlapping(NoNode, address, length))
            {
                Map().Changed(other, false);
            }
        });
}

EAccessMode CPortNode::SourceMode()
{
    if (HoldsData())
    {
        return IsAttached() ? EAccessMode::RO : EAccessMode::NA;
    }
    if (m_target == nullptr)
    {
        return EAccessMode::NA;
    }
    const EAccessMode mode = m_target->GetAccessMode();
    return mode == EAccessMode::NI ? EAccessMode::NA : mode;
}

std::uint64_t CPortNode::Id()
{
    const NodeIndex node = Description().port->chunkIdNode;
    if (node == NoNode)
    {
        return Description().port->id;
    }
    CNode& source = Map().Node(node);
    if (!IsReadable(source.AvailableMode()))
    {
        return ~std::uint64_t{0};
    }
    if (!IsTextKind(source.Description().kind))
    {
        return static_cast<std::uint64_t>(Map().Number(node).ReadInteger(false));
    }
    std::uint64_t id = ~std::uint64_t{0};
    ParseHex(static_cast<CStringNode&>(source).ReadText(false), id);
    return id;
}

void CPortNode::AttachCopy(const std::uint8_t* data, std::size_t bytes)
{
    m_copy.clear();
    if (data != nullptr)
    {
        m_copy.assign(data, data + bytes);
        m_copy.reserve(1); // an event without data is attached all the same
    }
    AttachView(data == nullptr ? nullptr : m_copy.data(), m_copy.size(), EEndianness::Little);
}

void CPortNode::AttachView(const std::uint8_t* data, std::size_t bytes, EEndianness byteOrder)
{
    m_data = data;
    m_bytes = data == nullptr ? 0 : bytes;
    m_byteOrder = byteOrder;
}

EEndianness CPortNode::ByteOrder(EEndianness declared) const
{
    if (!Description().port->swapByteOrder)
    {
        return declared;
    }
    if (HoldsData())
    {
        return m_byteOrder;
    }
    return declared == EEndianness::Little ? EEndianness::Big : EEndianness::Little;
}

void CPortNode::CopyAttached(const CNode& reader, std::uint8_t* buffer, std::int64_t address, std::int64_t length) const
{
    const auto size = static_cast<std::int64_t>(m_bytes);
    if (address < 0 || length < 0 || length > size || address > size - length)
    {
        GENICAM_THROW(AccessException, "Node '" + reader.Description().name + "' lies outside the " +
                                           std::to_string(m_bytes) + " bytes attached to '" + Description().name + "'");
    }
    std::memcpy(buffer, m_data + address, static_cast<std::size_t>(length));
}

void CPortNode::ReadBytes(const CNode& reader, std::uint8_t* buffer, std::int64_t address, std::int64_t length)
{
    if (IsAttached())
    {
        CopyAttached(reader, buffer, address, length);
        return;
    }
    if (m_target == nullptr)
    {
        GENICAM_THROW(AccessException, "Node '" + reader.Description().name + "' cannot be read: port '" +
                                           Description().name + "' is not connected");
    }
    Guard(reader, "read", [&] { m_target->Read(buffer, address, length); });
}

void CPortNode::WriteBytes(const CNode& writer, const std::uint8_t* buffer, std::int64_t address, std::int64_t length)
{
    if (m_target == nullptr || HoldsData())
    {
        GENICAM_THROW(AccessException, "Node '" + writer.Description().name + "' cannot be written: port '" +
                                           Description().name + "' is not connected");
    }
    Guard(writer, "written", [&] { m_target->Write(buffer, address, length); });
}

void CPortNode::NotePlace(NodeIndex reg, std::int64_t address, std::int64_t length)
{
    const auto known = m_places.find(reg);
    if (known != m_places.end())
    {
        if (known->second.address == address && known->second.length == length)
        {
            return;
        }
        auto range = m_byAddress.equal_range(known->second.address);
        m_byAddress.erase(
            std::find_if(range.first, range.second, [reg](const auto& entry) { return entry.second == reg; }));
    }
    m_places[reg] = {address, length};
    m_byAddress.emplace(address, reg);
    m_longest = std::max(m_longest, length);
}

NodeIndices CPortNode::Overlapping(NodeIndex self, std::int64_t address, std::int64_t length) const
{
    NodeIndices found;
    // Addresses are patterns of 64 bits; sums near the ends must not wrap.
    constexpr std::int64_t Lowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t Highest = std::numeric_limits<std::int64_t>::max();
    const std::int64_t first = address < Lowest + m_longest ? Lowest : address - m_longest;
    const std::int64_t end = address > Highest - length ? Highest : address + length;
    for (auto place = m_byAddress.lower_bound(first); place != m_byAddress.end(); ++place)
    {
        if (place->first >= end)
        {
            break;
        }
        const std::int64_t otherLength = m_places.at(place->second).length;
        if (place->second != self && address - place->first < otherLength)
        {
            found.push_back(place->second);
        }
    }
    return found;
}

} // namespace Internal
} // namespace GenApi
