// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/deviceport.h"

#include "protocols/gvbsregisters.h"

#include <cstdio>
#include <cstring>
#include <endian.h>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{
constexpr std::int64_t Word = 4;
constexpr std::int64_t AddressSpace = std::int64_t{1} << 32;
} // namespace

CDevicePort::CDevicePort(std::string cameraName, ArvDevice* pDevice, std::shared_ptr<CRemoval> pRemoval)
    : m_cameraName(std::move(cameraName)), m_pDevice(pDevice), m_pRemoval(std::move(pRemoval))
{
}

CDevicePort::~CDevicePort() = default;

std::string CDevicePort::Describe(const char* access, std::int64_t address, std::int64_t length) const
{
    char text[80];
    std::snprintf(text, sizeof text, " %lld bytes at address 0x%llx of camera ", static_cast<long long>(length),
                  static_cast<unsigned long long>(address));
    return std::string(access) + text + m_cameraName + " failed";
}

void CDevicePort::Check(const char* access, std::int64_t address, std::int64_t length) const
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

void CDevicePort::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    Check("Reading", address, length);
    if (length == 0)
    {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const std::int64_t first = address - address % Word;
    const std::int64_t last = (address + length + Word - 1) / Word * Word;
    if (first == address && last == address + length)
    {
        ReadAligned(static_cast<std::uint8_t*>(buffer), address, length);
        return;
    }
    // The protocol knows whole words only.
    std::vector<std::uint8_t> words(static_cast<std::size_t>(last - first));
    ReadAligned(words.data(), first, last - first);
    std::memcpy(buffer, words.data() + (address - first), static_cast<std::size_t>(length));
}

void CDevicePort::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    WriteWords(buffer, address, length);
    constexpr std::int64_t setting{Gvbs::StreamChannelPacketSize};
    if (address < setting + Word && address + length > setting)
    {
        m_isPacketSizeWritten = true;
    }
}

void CDevicePort::WriteWords(const void* buffer, std::int64_t address, std::int64_t length)
{
    Check("Writing", address, length);
    if (length == 0)
    {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const std::int64_t first = address - address % Word;
    const std::int64_t last = (address + length + Word - 1) / Word * Word;
    if (first == address && last == address + length)
    {
        WriteAligned(static_cast<const std::uint8_t*>(buffer), address, length);
        return;
    }
    std::vector<std::uint8_t> words(static_cast<std::size_t>(last - first));
    ReadAligned(words.data(), first, last - first);
    std::memcpy(words.data() + (address - first), buffer, static_cast<std::size_t>(length));
    WriteAligned(words.data(), first, last - first);
}

void CDevicePort::ReadAligned(std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    CEngineError error;
    if (length == Word)
    {
        // Every camera reads registers; some refuse memory access to them.
        std::uint32_t value = 0;
        if (!arv_device_read_register(m_pDevice, static_cast<guint64>(address), &value, error.Receive()))
        {
            error.Throw(Describe("Reading", address, length));
        }
        value = htobe32(value);
        std::memcpy(data, &value, sizeof value);
        return;
    }
    if (!arv_device_read_memory(m_pDevice, static_cast<guint64>(address), static_cast<guint32>(length), data,
                                error.Receive()))
    {
        error.Throw(Describe("Reading", address, length));
    }
}

void CDevicePort::WriteAligned(const std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    CEngineError error;
    if (length == Word)
    {
        std::uint32_t value = 0;
        std::memcpy(&value, data, sizeof value);
        if (!arv_device_write_register(m_pDevice, static_cast<guint64>(address), be32toh(value), error.Receive()))
        {
            error.Throw(Describe("Writing", address, length));
        }
        return;
    }
    if (!arv_device_write_memory(m_pDevice, static_cast<guint64>(address), static_cast<guint32>(length),
                                 const_cast<std::uint8_t*>(data), error.Receive()))
    {
        error.Throw(Describe("Writing", address, length));
    }
}

std::uint32_t CDevicePort::ReadRegister(std::uint32_t address)
{
    std::uint32_t value = 0;
    Read(&value, address, Word);
    return be32toh(value);
}

void CDevicePort::WriteRegister(std::uint32_t address, std::uint32_t value)
{
    const std::uint32_t bytes = htobe32(value);
    WriteWords(&bytes, address, Word);
}

} // namespace Velmo::GigE::Internal
