// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/monitorport.h"

#include "protocols/gvbsregisters.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr std::int64_t Word = 4;
constexpr std::int64_t AddressSpace = std::int64_t{1} << 32;
constexpr std::chrono::milliseconds Timeout{200};
constexpr int Attempts = 4;

} // namespace

CMonitorPort::CMonitorPort(std::string cameraName, std::uint32_t adapterIp, std::uint32_t deviceIp,
                           std::shared_ptr<CRemoval> pRemoval)
    : m_cameraName(std::move(cameraName)), m_pRemoval(std::move(pRemoval))
{
    if (!m_client.Open(adapterIp, deviceIp))
    {
        GENICAM_THROW(RuntimeException, "The camera " + m_cameraName +
                                            " cannot be monitored: the network adapter's address " +
                                            Gvcp::IpText(adapterIp) + " cannot be used: " + m_client.GetError() + ".");
    }
}

CMonitorPort::~CMonitorPort() = default;

std::string CMonitorPort::Describe(const char* access, std::int64_t address, std::int64_t length) const
{
    char text[80];
    std::snprintf(text, sizeof text, " %lld bytes at address 0x%llx of camera ", static_cast<long long>(length),
                  static_cast<unsigned long long>(address));
    return std::string(access) + text + m_cameraName + " failed";
}

void CMonitorPort::Check(std::int64_t address, std::int64_t length) const
{
    if (m_pRemoval->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, Describe("Reading", address, length) + ": the camera was removed.");
    }
    if (address < 0 || length < 0 || length > AddressSpace || address > AddressSpace - length)
    {
        GENICAM_THROW(AccessException,
                      Describe("Reading", address, length) + ": the range is outside the 32-bit address space.");
    }
    const std::int64_t privilege = Gvbs::ControlChannelPrivilege;
    if (address < privilege + Word && address + length > privilege)
    {
        GENICAM_THROW(AccessException, Describe("Reading", address, length) +
                                           ": a monitor does not read the control privilege, since some cameras take "
                                           "that for a sign of life of the controlling application.");
    }
}

void CMonitorPort::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    Check(address, length);
    if (length == 0)
    {
        return;
    }
    const std::int64_t first = address - address % Word;
    const std::int64_t last = (address + length + Word - 1) / Word * Word;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (first == address && last == address + length)
    {
        ReadWords(static_cast<std::uint8_t*>(buffer), address, length);
        return;
    }
    // The protocol knows whole words only.
    std::vector<std::uint8_t> words(static_cast<std::size_t>(last - first));
    ReadWords(words.data(), first, last - first);
    std::memcpy(buffer, words.data() + (address - first), static_cast<std::size_t>(length));
}

void CMonitorPort::ReadWords(std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    if (length == Word)
    {
        // Every camera reads registers; some refuse memory access to them.
        const SRegisterAnswer answer = m_client.ReadRegister(static_cast<std::uint32_t>(address), Timeout, Attempts);
        if (answer.result != ERequest::Answered)
        {
            Throw(Describe("Reading", address, length), answer.result, answer.status);
        }
        const std::uint32_t value = answer.value;
        for (int byte = 0; byte < Word; ++byte)
        {
            data[byte] = static_cast<std::uint8_t>(value >> (8 * (Word - 1 - byte)));
        }
        return;
    }
    for (std::int64_t done = 0; done < length;)
    {
        const std::int64_t bytes = std::min<std::int64_t>(length - done, Gvcp::MaxMemoryBytes / Word * Word);
        const SMemoryAnswer answer = m_client.ReadMemory(static_cast<std::uint32_t>(address + done),
                                                         static_cast<std::size_t>(bytes), Timeout, Attempts);
        if (answer.result != ERequest::Answered)
        {
            Throw(Describe("Reading", address + done, bytes), answer.result, answer.status);
        }
        std::memcpy(data + done, answer.data.data(), answer.data.size());
        done += bytes;
    }
}

void CMonitorPort::Throw(const std::string& what, ERequest result, std::uint16_t status) const
{
    switch (result)
    {
    case ERequest::Silent:
        GENICAM_THROW(TimeoutException, what + ": the camera does not answer.");
    case ERequest::NotSent:
        GENICAM_THROW(RuntimeException, what + ": the request cannot be sent: " + m_client.GetError() + ".");
    default:
        if (status == static_cast<std::uint16_t>(Gvcp::EStatus::AccessDenied))
        {
            GENICAM_THROW(AccessException, what + ": the camera lets only the controlling application read it.");
        }
        GENICAM_THROW(AccessException, what + ": the camera refuses: " + Gvcp::StatusText(status) + ".");
    }
}

void CMonitorPort::Write(const void*, std::int64_t address, std::int64_t length)
{
    GENICAM_THROW(AccessException, Describe("Writing", address, length) + ": " + GetWriteRefusal().str() + ".");
}

GenICam::gcstring CMonitorPort::GetWriteRefusal() const
{
    return "the camera " + m_cameraName +
           " is open as a monitor, which only watches; the application that controls the camera can write";
}

std::uint32_t CMonitorPort::ReadRegister(std::uint32_t address)
{
    std::uint8_t data[Word];
    Read(data, address, Word);
    return std::uint32_t{data[0]} << 24 | std::uint32_t{data[1]} << 16 | std::uint32_t{data[2]} << 8 | data[3];
}

} // namespace Velmo::GigE::Internal
