// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/registermemory.h"

#include "genapi/exceptions.h"
#include "simulator/registers.h"

#include <algorithm>
#include <cstring>

namespace Simulator::Internal
{

CRegisterMemory::CRegisterMemory() : m_bytes(static_cast<std::size_t>(Register::End - Register::Begin)) {}

void CRegisterMemory::Check(std::int64_t address, std::int64_t length)
{
    if (address < Register::Begin || length < 0 || length > Register::End - Register::Begin ||
        address > Register::End - length)
    {
        GENICAM_THROW(AccessException, "The camera has no register at address " + std::to_string(address) +
                                           ", length " + std::to_string(length) + ".");
    }
}

std::uint64_t CRegisterMemory::GetInteger(std::int64_t address, std::int64_t bytes) const
{
    std::uint64_t value = 0;
    for (std::int64_t i = 0; i < bytes; ++i)
    {
        value = value << 8U | m_bytes[static_cast<std::size_t>(address - Register::Begin + i)];
    }
    return value;
}

void CRegisterMemory::SetInteger(std::int64_t address, std::uint64_t value, std::int64_t bytes)
{
    for (std::int64_t i = bytes - 1; i >= 0; --i)
    {
        m_bytes[static_cast<std::size_t>(address - Register::Begin + i)] = static_cast<std::uint8_t>(value & 0xFFU);
        value >>= 8U;
    }
}

double CRegisterMemory::GetFloat(std::int64_t address) const
{
    const std::uint64_t bits = GetInteger(address, 8);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

void CRegisterMemory::SetFloat(std::int64_t address, double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    SetInteger(address, bits, 8);
}

std::string CRegisterMemory::GetText(std::int64_t address) const
{
    const auto first = m_bytes.begin() + (address - Register::Begin);
    return {first, std::find(first, first + Register::TextBytes, std::uint8_t{0})};
}

void CRegisterMemory::SetText(std::int64_t address, const std::string& text)
{
    const auto first = m_bytes.begin() + (address - Register::Begin);
    std::fill(first, first + Register::TextBytes, std::uint8_t{0});
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(Register::TextBytes - 1));
    std::copy(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length), first);
}

void CRegisterMemory::Get(void* buffer, std::int64_t address, std::int64_t length) const
{
    const auto first = m_bytes.begin() + (address - Register::Begin);
    std::copy_n(first, length, static_cast<std::uint8_t*>(buffer)); // nothing, and no buffer, for no bytes
}

void CRegisterMemory::Set(const void* buffer, std::int64_t address, std::int64_t length)
{
    const auto first = m_bytes.begin() + (address - Register::Begin);
    std::copy_n(static_cast<const std::uint8_t*>(buffer), length, first);
}

} // namespace Simulator::Internal
