// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/deviceport.h"

#include "protocols/gvbsregisters.h"

#include <cstring>
#include <endian.h>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{

// As patient as the engine is.
constexpr std::chrono::milliseconds Timeout{500};
constexpr int Attempts = 5;

/** One access by the engine; it may outlive its port. */
struct SAccess
{
    std::shared_ptr<ArvDevice> pDevice;
    guint64 address = 0;
    std::vector<std::uint8_t> data; // big-endian
    bool isDone = false;
    CEngineError error;

    SAccess(ArvDevice* pOwned, std::int64_t start, std::int64_t bytes)
        : pDevice(ARV_DEVICE(g_object_ref(pOwned)), SObjectUnref()), address(static_cast<guint64>(start)),
          data(static_cast<std::size_t>(bytes))
    {
    }

    void Read()
    {
        if (data.size() != sizeof(std::uint32_t))
        {
            isDone = arv_device_read_memory(pDevice.get(), address, static_cast<guint32>(data.size()), data.data(),
                                            error.Receive()) != FALSE;
            return;
        }
        // Every camera reads registers; some refuse memory access to them.
        std::uint32_t value = 0;
        isDone = arv_device_read_register(pDevice.get(), address, &value, error.Receive()) != FALSE;
        value = htobe32(value);
        std::memcpy(data.data(), &value, sizeof value);
    }

    void Write()
    {
        if (data.size() != sizeof(std::uint32_t))
        {
            isDone = arv_device_write_memory(pDevice.get(), address, static_cast<guint32>(data.size()), data.data(),
                                             error.Receive()) != FALSE;
            return;
        }
        std::uint32_t value = 0;
        std::memcpy(&value, data.data(), sizeof value);
        isDone = arv_device_write_register(pDevice.get(), address, be32toh(value), error.Receive()) != FALSE;
    }
};

} // namespace

CDevicePort::CDevicePort(const SDevicePortConfig& config)
    : ACameraPort(config.cameraName, config.pRemoval), m_pDevice(config.pDevice), m_calls(*config.pCalls),
      m_reader(Timeout, Attempts)
{
    if (!m_reader.Open(config.adapterIp, config.deviceIp))
    {
        GENICAM_THROW(RuntimeException,
                      "The camera " + CameraName() + " cannot be opened: the network adapter's address " +
                          Gvcp::IpText(config.adapterIp) + " cannot be used: " + m_reader.GetError() + ".");
    }
}

CDevicePort::~CDevicePort() = default;

void CDevicePort::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    ACameraPort::Write(buffer, address, length);
    constexpr std::int64_t setting{Gvbs::StreamChannelPacketSize};
    if (address < setting + Word && address + length > setting)
    {
        m_isPacketSizeWritten = true;
    }
}

void CDevicePort::ReadWords(std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    if (!m_isReadByEngine)
    {
        const SReadResult read = m_reader.Read(data, address, length);
        if (read.result == ERequest::Answered)
        {
            return;
        }
        if (read.result != ERequest::Refused || read.status != static_cast<std::uint16_t>(Gvcp::EStatus::AccessDenied))
        {
            ThrowRead(read);
        }
    }
    ReadByEngine(data, address, length);
    m_isReadByEngine = true; // it was the socket that was refused, not the address
}

void CDevicePort::ReadByEngine(std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    const std::string what = Describe("Reading", address, length);
    const auto pAccess = std::make_shared<SAccess>(m_pDevice, address, length);
    m_calls.Run(what, [pAccess] { pAccess->Read(); });
    if (!pAccess->isDone)
    {
        pAccess->error.Throw(what);
    }
    std::memcpy(data, pAccess->data.data(), pAccess->data.size());
}

void CDevicePort::WriteWords(const std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    const std::string what = Describe("Writing", address, length);
    const auto pAccess = std::make_shared<SAccess>(m_pDevice, address, length);
    std::memcpy(pAccess->data.data(), data, pAccess->data.size());
    m_calls.Run(what, [pAccess] { pAccess->Write(); });
    if (!pAccess->isDone)
    {
        pAccess->error.Throw(what);
    }
}

void CDevicePort::ThrowRead(const SReadResult& read) const
{
    const std::string what = Describe("Reading", read.address, read.bytes);
    switch (read.result)
    {
    case ERequest::Silent:
        GENICAM_THROW(TimeoutException, what + ": the camera does not answer.");
    case ERequest::Pending:
        GENICAM_THROW(TimeoutException, what + ": the camera keeps asking for more time and does not come to an end.");
    case ERequest::NotSent:
        GENICAM_THROW(RuntimeException, what + ": the request cannot be sent: " + m_reader.GetError() + ".");
    default:
        break;
    }
    const std::string text = what + ": the camera refuses: " + Gvcp::StatusText(read.status) + ".";
    if (read.status == static_cast<std::uint16_t>(Gvcp::EStatus::WriteProtect) ||
        read.status == static_cast<std::uint16_t>(Gvcp::EStatus::Busy))
    {
        GENICAM_THROW(AccessException, text);
    }
    GENICAM_THROW(RuntimeException, text);
}

} // namespace Velmo::GigE::Internal
