// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/registeraccess.h"

#include "genapi/internal/nodemap.h"
#include "genapi/internal/numbernode.h"
#include "genapi/internal/portnode.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::int64_t MaxRegisterBytes = std::int64_t{64} << 20;

} // namespace

CRegisterAccess::CRegisterAccess(CNode& node) : m_node(node) {}

CPortNode& CRegisterAccess::Port()
{
    return m_node.Map().Port(Part().port);
}

EAccessMode CRegisterAccess::Mode()
{
    return Combine(Part().accessMode, Port().AvailableMode());
}

EEndianness CRegisterAccess::ByteOrder()
{
    return Port().ByteOrder(Part().byteOrder);
}

std::int64_t CRegisterAccess::Address()
{
    std::int64_t address = 0;
    for (const SAddressTerm& term : Part().address)
    {
        std::int64_t summand = ResolveInteger(m_node.Map(), term.value);
        if (term.isIndex)
        {
            const std::int64_t stride = term.stride.IsGiven() ? ResolveInteger(m_node.Map(), term.stride) : Length();
            if (__builtin_mul_overflow(summand, stride, &summand))
            {
                GENICAM_THROW(RuntimeException, "Node '" + m_node.Description().name + "': its address overflows");
            }
        }
        // Addresses are patterns of 64 bits; the upper half is negative here.
        address = static_cast<std::int64_t>(static_cast<std::uint64_t>(address) + static_cast<std::uint64_t>(summand));
    }
    return address;
}

std::int64_t CRegisterAccess::Length()
{
    const std::int64_t length = ResolveInteger(m_node.Map(), Part().length);
    if (length < 0 || length > MaxRegisterBytes)
    {
        GENICAM_THROW(RuntimeException,
                      "Node '" + m_node.Description().name + "': its length " + std::to_string(length) + " cannot be");
    }
    return length;
}

const std::vector<std::uint8_t>& CRegisterAccess::Read(bool ignoreCache)
{
    if (m_isCacheValid && !ignoreCache)
    {
        return m_bytes;
    }
    m_isCacheValid = false;
    const std::int64_t length = Length();
    const std::int64_t address = Address();
    m_bytes.resize(static_cast<std::size_t>(length));
    Port().NotePlace(m_node.Index(), address, length);
    Port().ReadBytes(m_node, m_bytes.data(), address, length);
    m_isCacheValid = m_node.Description().isValueCachable;
    return m_bytes;
}

std::vector<std::uint8_t> CRegisterAccess::ReadForChange()
{
    if (IsReadable(m_node.AvailableMode()))
    {
        return Read(false);
    }
    std::vector<std::uint8_t> known = m_bytes;
    known.resize(static_cast<std::size_t>(Length()));
    return known;
}

void CRegisterAccess::Write(const std::vector<std::uint8_t>& bytes, bool keepsCache)
{
    const std::int64_t address = Address();
    const auto length = static_cast<std::int64_t>(bytes.size());
    CPortNode& port = Port();
    const bool isWhole = length == Length();
    port.NotePlace(m_node.Index(), address, Length());
    m_isCacheValid = false;
    port.WriteBytes(m_node, bytes.data(), address, length);
    const SNodeDescription& description = m_node.Description();
    const bool keeps =
        keepsCache && isWhole && description.isValueCachable && description.caching == ECachingMode::WriteThrough;
    m_bytes = bytes;
    m_node.Map().Changed(m_node.Index(), false);
    for (const NodeIndex other : port.Overlapping(m_node.Index(), address, length))
    {
        m_node.Map().Changed(other, false);
    }
    m_isCacheValid = keeps;
}

} // namespace Internal
} // namespace GenApi
