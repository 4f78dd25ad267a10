// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/deviceport.h"

#include "protocols/gvbsregisters.h"

#include <cstring>
#include <endian.h>
#include <utility>

namespace Velmo::GigE::Internal
{

CDevicePort::CDevicePort(std::string cameraName, ArvDevice* pDevice, std::shared_ptr<CRemoval> pRemoval)
    : ACameraPort(std::move(cameraName), std::move(pRemoval)), m_pDevice(pDevice)
{
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

void CDevicePort::WriteWords(const std::uint8_t* data, std::int64_t address, std::int64_t length)
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

} // namespace Velmo::GigE::Internal
