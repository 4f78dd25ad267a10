// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/cameraport.h"

#include <cstdio>
#include <cstring>
#include <endian.h>
#include <utility>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr std::int64_t AddressSpace = std::int64_t{1} << 32;

/** The words that hold a range. */
struct SWords
{
    std::int64_t first = 0;  // address
    std::int64_t length = 0; // bytes
};

SWords WordsOf(std::int64_t address, std::int64_t length, std::int64_t word)
{
    const std::int64_t first = address - address % word;
    return {first, (address + length + word - 1) / word * word - first};
}

} // namespace

ACameraPort::ACameraPort(std::string cameraName, std::shared_ptr<CRemoval> pRemoval)
    : m_cameraName(std::move(cameraName)), m_pRemoval(std::move(pRemoval))
{
}

ACameraPort::~ACameraPort() = default;

std::string ACameraPort::Describe(const char* access, std::int64_t address, std::int64_t length) const
{
    char text[80];
    std::snprintf(text, sizeof text, " %lld bytes at address 0x%llx of camera ", static_cast<long long>(length),
                  static_cast<unsigned long long>(address));
    return std::string(access) + text + m_cameraName + " failed";
}

void ACameraPort::Check(const char* access, std::int64_t address, std::int64_t length) const
{
    if (m_pRemoval->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, Describe(access, address, length) + ": the camera was removed.");
    }
    if (address < 0 || length < 0 || length > AddressSpace || address > AddressSpace - length)
    {
        GENICAM_THROW(AccessException,
                      Describe(access, address, length) + ": the range is outside the 32-bit address space.");
    }
}

void ACameraPort::CheckRead(std::int64_t, std::int64_t) const {}

void ACameraPort::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    Check("Reading", address, length);
    CheckRead(address, length);
    if (length == 0)
    {
        return;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const SWords words = WordsOf(address, length, Word);
    if (words.length == length)
    {
        ReadWords(static_cast<std::uint8_t*>(buffer), address, length);
        return;
    }
    std::vector<std::uint8_t> data(static_cast<std::size_t>(words.length));
    ReadWords(data.data(), words.first, words.length);
    std::memcpy(buffer, data.data() + (address - words.first), static_cast<std::size_t>(length));
}

void ACameraPort::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    Check("Writing", address, length);
    if (length == 0)
    {
        return;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const SWords words = WordsOf(address, length, Word);
    if (words.length == length)
    {
        WriteWords(static_cast<const std::uint8_t*>(buffer), address, length);
        return;
    }
    std::vector<std::uint8_t> data(static_cast<std::size_t>(words.length));
    ReadWords(data.data(), words.first, words.length);
    std::memcpy(data.data() + (address - words.first), buffer, static_cast<std::size_t>(length));
    WriteWords(data.data(), words.first, words.length);
}

std::uint32_t ACameraPort::ReadRegister(std::uint32_t address)
{
    std::uint32_t value = 0;
    Read(&value, address, Word);
    return be32toh(value);
}

void ACameraPort::WriteRegister(std::uint32_t address, std::uint32_t value)
{
    const std::uint32_t bytes = htobe32(value);
    ACameraPort::Write(&bytes, address, Word);
}

} // namespace Velmo::GigE::Internal
