// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/registersource.h"

#include "genapi/internal/nodemap.h"
#include "genapi/internal/numbernode.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace GenApi
{
namespace Internal
{
namespace
{

std::uint64_t Gather(const std::vector<std::uint8_t>& bytes, EEndianness byteOrder)
{
    std::uint64_t raw = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        const std::size_t place = byteOrder == EEndianness::Little ? i : bytes.size() - 1 - i;
        raw |= static_cast<std::uint64_t>(bytes[i]) << (8 * place);
    }
    return raw;
}

void Scatter(std::uint64_t raw, EEndianness byteOrder, std::vector<std::uint8_t>& bytes)
{
    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        const std::size_t place = byteOrder == EEndianness::Little ? i : bytes.size() - 1 - i;
        bytes[i] = static_cast<std::uint8_t>(raw >> (8 * place));
    }
}

std::uint64_t Mask(int count)
{
    return count >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
}

} // namespace

CRegisterSource::CRegisterSource(CNode& node) : CNumberSource(node), m_access(node) {}

CRegisterSource::SBits CRegisterSource::Bits(std::int64_t length) const
{
    const int all = static_cast<int>(length) * 8;
    if (Description().kind != ENodeKind::MaskedIntReg)
    {
        return {0, all};
    }
    auto low = static_cast<int>(Reg().lsb);
    auto high = static_cast<int>(Reg().msb);
    // Descriptions count the bits of big-endian registers from the most significant one. That is the register's
    // declared order, whatever a port does to the bytes.
    if (Reg().byteOrder == EEndianness::Big)
    {
        low = all - 1 - low;
        high = all - 1 - high;
    }
    if (low > high)
    {
        std::swap(low, high);
    }
    if (low < 0 || high >= all)
    {
        GENICAM_THROW(RuntimeException, "Node '" + Description().name + "': its bits lie outside the register");
    }
    return {low, high - low + 1};
}

void CRegisterSource::CheckLength(std::int64_t length) const
{
    const bool isGood = IsFloat() ? length == 4 || length == 8 : length >= 1 && length <= 8;
    if (!isGood)
    {
        GENICAM_THROW(RuntimeException,
                      "Node '" + Description().name + "': a number cannot have " + std::to_string(length) + " bytes");
    }
}

SFormulaValue CRegisterSource::DecodeFloat(std::uint64_t raw, std::size_t length) const
{
    if (length == sizeof(float))
    {
        float value = 0.0F;
        const auto bits = static_cast<std::uint32_t>(raw);
        std::memcpy(&value, &bits, sizeof(value));
        return SFormulaValue::FromFloat(value);
    }
    double value = 0.0;
    std::memcpy(&value, &raw, sizeof(value));
    return SFormulaValue::FromFloat(value);
}

std::uint64_t CRegisterSource::EncodeFloat(double value, std::size_t length) const
{
    std::uint64_t raw = 0;
    if (length == sizeof(float))
    {
        if (std::isfinite(value) && std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        {
            GENICAM_THROW(OutOfRangeException, "Node '" + Description().name + "': the value does not fit 4 bytes");
        }
        const auto narrow = static_cast<float>(value);
        std::uint32_t bits = 0;
        std::memcpy(&bits, &narrow, sizeof(bits));
        return bits;
    }
    std::memcpy(&raw, &value, sizeof(raw));
    return raw;
}

SFormulaValue CRegisterSource::Read(bool ignoreCache)
{
    const std::vector<std::uint8_t>& bytes = m_access.Read(ignoreCache);
    CheckLength(static_cast<std::int64_t>(bytes.size()));
    const std::uint64_t raw = Gather(bytes, m_access.ByteOrder());
    if (IsFloat())
    {
        return DecodeFloat(raw, bytes.size());
    }
    const SBits bits = Bits(static_cast<std::int64_t>(bytes.size()));
    std::uint64_t value = raw >> bits.first & Mask(bits.count);
    if (Reg().sign == ESign::Signed && bits.count < 64 && (value >> (bits.count - 1) & 1) != 0)
    {
        value |= ~Mask(bits.count);
    }
    return SFormulaValue::FromInteger(static_cast<std::int64_t>(value));
}

void CRegisterSource::Write(const SFormulaValue& value, bool verify)
{
    const std::int64_t length = m_access.Length();
    CheckLength(length);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(length));
    std::uint64_t raw = 0;
    if (IsFloat())
    {
        raw = EncodeFloat(ToFloat(value), bytes.size());
    }
    else
    {
        const SBits bits = Bits(length);
        const std::uint64_t mask = Mask(bits.count) << bits.first;
        raw = static_cast<std::uint64_t>(ToInteger(value, Node())) << bits.first & mask;
        if (Description().kind == ENodeKind::MaskedIntReg)
        {
            bytes = m_access.ReadForChange();
            raw |= Gather(bytes, m_access.ByteOrder()) & ~mask;
        }
    }
    static_cast<void>(verify); // limits were checked by the node
    Scatter(raw, m_access.ByteOrder(), bytes);
    m_access.Write(bytes);
}

SFormulaValue CRegisterSource::Min()
{
    if (IsFloat())
    {
        return m_access.Length() == 4 ? SFormulaValue::FromFloat(std::numeric_limits<float>::lowest())
                                      : CNumberSource::Min();
    }
    const int count = Bits(m_access.Length()).count;
    // An unsigned value of 64 bits is held in a signed one: its upper half reads as negative.
    if (count >= 64)
    {
        return Reg().sign == ESign::Signed ? CNumberSource::Min() : SFormulaValue::FromInteger(0);
    }
    return SFormulaValue::FromInteger(
        Reg().sign == ESign::Signed ? -static_cast<std::int64_t>(std::uint64_t{1} << (count - 1)) : 0);
}

SFormulaValue CRegisterSource::Max()
{
    if (IsFloat())
    {
        return m_access.Length() == 4 ? SFormulaValue::FromFloat(std::numeric_limits<float>::max())
                                      : CNumberSource::Max();
    }
    const int count = Bits(m_access.Length()).count;
    if (count >= 64)
    {
        return CNumberSource::Max();
    }
    return SFormulaValue::FromInteger(static_cast<std::int64_t>(Mask(Reg().sign == ESign::Signed ? count - 1 : count)));
}

} // namespace Internal
} // namespace GenApi
