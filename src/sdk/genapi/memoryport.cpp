// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/memoryport.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace GenApi
{

CMemoryPort::CMemoryPort(std::size_t bytes) : m_bytes(bytes) {}

CMemoryPort::~CMemoryPort() = default;

EAccessMode CMemoryPort::GetAccessMode() const
{
    return EAccessMode::RW;
}

void CMemoryPort::Check(std::int64_t address, std::int64_t length) const
{
    const auto size = static_cast<std::int64_t>(m_bytes.size());
    if (address < 0 || length < 0 || length > size || address > size - length)
    {
        GENICAM_THROW(AccessException, "No memory at address " + std::to_string(address) + ", length " +
                                           std::to_string(length) + "; the port has " + std::to_string(size) +
                                           " bytes");
    }
}

std::vector<CMemoryPort::Hook> CMemoryPort::HooksFor(const std::vector<SHook>& hooks, std::int64_t address,
                                                     std::int64_t length) const
{
    std::vector<Hook> found;
    for (const SHook& hook : hooks)
    {
        if (hook.address < address + length && address < hook.address + hook.length)
        {
            found.push_back(hook.hook);
        }
    }
    return found;
}

void CMemoryPort::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    std::vector<Hook> hooks;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        Check(address, length);
        hooks = HooksFor(m_readHooks, address, length);
    }
    for (const Hook& hook : hooks)
    {
        hook(address, length);
    }
    if (length > 0)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::memcpy(buffer, m_bytes.data() + address, static_cast<std::size_t>(length));
    }
}

void CMemoryPort::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    std::vector<Hook> hooks;
    std::vector<std::uint8_t> before;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        Check(address, length);
        const auto first = m_bytes.begin() + address;
        before.assign(first, first + length);
        hooks = HooksFor(m_writeHooks, address, length);
        if (length > 0)
        {
            std::memcpy(m_bytes.data() + address, buffer, static_cast<std::size_t>(length));
        }
    }
    try
    {
        for (const Hook& hook : hooks)
        {
            hook(address, length);
        }
    }
    catch (...)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::copy(before.begin(), before.end(), m_bytes.begin() + address);
        throw;
    }
}

void CMemoryPort::SetWriteHook(std::int64_t address, std::int64_t length, Hook hook)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_writeHooks.push_back({address, length, std::move(hook)});
}

void CMemoryPort::SetReadHook(std::int64_t address, std::int64_t length, Hook hook)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_readHooks.push_back({address, length, std::move(hook)});
}

void CMemoryPort::Poke(std::int64_t address, std::uint64_t value, std::size_t bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Check(address, static_cast<std::int64_t>(bytes));
    for (std::size_t i = 0; i < bytes; ++i)
    {
        m_bytes[static_cast<std::size_t>(address) + i] =
            i < sizeof(value) ? static_cast<std::uint8_t>(value >> (8 * i)) : std::uint8_t{0};
    }
}

std::uint64_t CMemoryPort::Peek(std::int64_t address, std::size_t bytes) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Check(address, static_cast<std::int64_t>(bytes));
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes && i < sizeof(value); ++i)
    {
        value |= static_cast<std::uint64_t>(m_bytes[static_cast<std::size_t>(address) + i]) << (8 * i);
    }
    return value;
}

void CMemoryPort::PokeText(std::int64_t address, const GenICam::gcstring& text, std::size_t bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Check(address, static_cast<std::int64_t>(bytes));
    const auto first = m_bytes.begin() + address;
    std::fill(first, first + static_cast<std::int64_t>(bytes), std::uint8_t{0});
    const std::size_t count = std::min(bytes, text.size());
    std::copy(text.str().begin(), text.str().begin() + static_cast<std::ptrdiff_t>(count), first);
}

GenICam::gcstring CMemoryPort::PeekText(std::int64_t address, std::size_t bytes) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Check(address, static_cast<std::int64_t>(bytes));
    const auto first = m_bytes.begin() + address;
    const auto last = std::find(first, first + static_cast<std::int64_t>(bytes), std::uint8_t{0});
    return std::string(first, last);
}

} // namespace GenApi
