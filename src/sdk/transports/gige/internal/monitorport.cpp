// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/monitorport.h"

#include "protocols/gvbsregisters.h"

#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr std::chrono::milliseconds Timeout{200};
constexpr int Attempts = 4;

} // namespace

CMonitorPort::CMonitorPort(std::string cameraName, std::uint32_t adapterIp, std::uint32_t deviceIp,
                           std::shared_ptr<CRemoval> pRemoval)
    : ACameraPort(std::move(cameraName), std::move(pRemoval)), m_reader(Timeout, Attempts)
{
    if (!m_reader.Open(adapterIp, deviceIp))
    {
        GENICAM_THROW(RuntimeException, "The camera " + CameraName() +
                                            " cannot be monitored: the network adapter's address " +
                                            Gvcp::IpText(adapterIp) + " cannot be used: " + m_reader.GetError() + ".");
    }
}

CMonitorPort::~CMonitorPort() = default;

void CMonitorPort::CheckRead(std::int64_t address, std::int64_t length) const
{
    const std::int64_t privilege = Gvbs::ControlChannelPrivilege;
    if (address < privilege + Word && address + length > privilege)
    {
        GENICAM_THROW(AccessException, Describe("Reading", address, length) +
                                           ": a monitor does not read the control privilege, since some cameras take "
                                           "that for a sign of life of the controlling application.");
    }
}

void CMonitorPort::ReadWords(std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    const SReadResult read = m_reader.Read(data, address, length);
    if (read.result != ERequest::Answered)
    {
        Throw(Describe("Reading", read.address, read.bytes), read.result, read.status);
    }
}

void CMonitorPort::Throw(const std::string& what, ERequest result, std::uint16_t status) const
{
    switch (result)
    {
    case ERequest::Silent:
        GENICAM_THROW(TimeoutException, what + ": the camera does not answer.");
    case ERequest::Pending:
        GENICAM_THROW(RuntimeException, what + ": the camera keeps asking for more time and does not come to an end.");
    case ERequest::NotSent:
        GENICAM_THROW(RuntimeException, what + ": the request cannot be sent: " + m_reader.GetError() + ".");
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

void CMonitorPort::WriteWords(const std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    Write(data, address, length);
}

GenICam::gcstring CMonitorPort::GetWriteRefusal() const
{
    return "the camera " + CameraName() +
           " is open as a monitor, which only watches; the application that controls the camera can write";
}

} // namespace Velmo::GigE::Internal
