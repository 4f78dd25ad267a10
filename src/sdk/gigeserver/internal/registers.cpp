// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/registers.h"

#include "genapi/exceptions.h"
#include "gigeserver/internal/description.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"

#include <algorithm>
#include <cstring>

namespace GigEServer::Internal
{

namespace Gvbs = Velmo::Gvbs;
using Velmo::Gvcp::EStatus;

namespace
{

constexpr std::uint32_t SmallestPacketBytes = 92; // room for a leader in extended ID mode with its headers
constexpr std::uint32_t LargestPacketBytes = 16384;
constexpr std::uint32_t PacketIncrement = 4;

std::uint32_t WordAt(const std::uint8_t* p)
{
    return static_cast<std::uint32_t>(p[0]) << 24 | static_cast<std::uint32_t>(p[1]) << 16 |
           static_cast<std::uint32_t>(p[2]) << 8 | p[3];
}

void PutWord(std::uint8_t* p, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
    {
        p[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
}

bool IsName(std::uint32_t address)
{
    return address >= Gvbs::UserDefinedName && address < Gvbs::UserDefinedName + Gvbs::UserDefinedNameBytes;
}

/** The camera model's register behind a bootstrap register; 0 where there is none. */
std::uint32_t ModelRegisterOf(std::uint32_t address)
{
    if (address == Gvbs::ActionDeviceKey)
    {
        return static_cast<std::uint32_t>(Simulator::Register::ActionDeviceKey);
    }
    const std::uint32_t offset = address - Gvbs::ActionGroupKey;
    const std::uint32_t signal = offset / Gvbs::ActionStride;
    const bool isKey = offset % Gvbs::ActionStride == 0;
    const bool isMask = offset % Gvbs::ActionStride == Gvbs::ActionGroupMask - Gvbs::ActionGroupKey;
    if (address < Gvbs::ActionGroupKey || signal >= ActionSignals || (!isKey && !isMask))
    {
        return 0;
    }
    // The model numbers its signals from one.
    const std::int64_t first = isKey ? Simulator::Register::ActionGroupKey : Simulator::Register::ActionGroupMask;
    return static_cast<std::uint32_t>(first) + 4 * (signal + 1);
}

} // namespace

CRegisters::CRegisters(const SServedCamera& camera, std::shared_ptr<Simulator::CCameraModel> pModel, SHooks hooks)
    : m_pModel(std::move(pModel)), m_hooks(std::move(hooks)), m_description(ZipDescription(*m_pModel)),
      m_bootstrap(camera, DescriptionUrl(*m_pModel, m_description.size()))
{
    constexpr std::size_t word = 4;
    m_description.resize((m_description.size() + word - 1) / word * word); // the URL has the length without that
}

EStatus CRegisters::Read(std::uint32_t address, std::uint8_t* data, std::size_t bytes)
{
    const std::uint64_t end = std::uint64_t{address} + bytes;
    if (end <= Gvbs::ManufacturerSpecific)
    {
        return ReadBootstrap(address, data, bytes);
    }
    if (address >= DescriptionAddress)
    {
        if (end > std::uint64_t{DescriptionAddress} + m_description.size())
        {
            return EStatus::InvalidAddress;
        }
        std::memcpy(data, m_description.data() + (address - DescriptionAddress), bytes);
        return EStatus::Success;
    }
    return ReadModel(address, data, bytes);
}

EStatus CRegisters::Write(std::uint32_t address, const std::uint8_t* data, std::size_t bytes)
{
    const std::uint64_t end = std::uint64_t{address} + bytes;
    if (end <= Gvbs::ManufacturerSpecific)
    {
        return WriteBootstrap(address, data, bytes);
    }
    if (address >= DescriptionAddress)
    {
        return end > std::uint64_t{DescriptionAddress} + m_description.size() ? EStatus::InvalidAddress
                                                                              : EStatus::WriteProtect;
    }
    return WriteModel(address, data, bytes);
}

EStatus CRegisters::ReadBootstrap(std::uint32_t address, std::uint8_t* data, std::size_t bytes)
{
    for (std::size_t i = 0; i < bytes; i += 4)
    {
        const std::uint32_t word = address + static_cast<std::uint32_t>(i);
        if (!m_bootstrap.Exists(word))
        {
            return EStatus::InvalidAddress;
        }
        if (IsName(word))
        {
            std::memcpy(data + i, Name().data() + (word - Gvbs::UserDefinedName), 4);
            continue;
        }
        if (const std::uint32_t behind = ModelRegisterOf(word); behind != 0)
        {
            const EStatus status = ReadModel(behind, data + i, 4);
            if (status != EStatus::Success)
            {
                return status;
            }
            continue;
        }
        PutWord(data + i, word == Gvbs::Ieee1588Status      ? LatchClockStatus()
                          : word == Gvbs::GvcpConfiguration ? m_bootstrap.Get(word) | ClockConfiguration()
                                                            : m_bootstrap.Get(word));
    }
    return EStatus::Success;
}

EStatus CRegisters::WriteBootstrap(std::uint32_t address, const std::uint8_t* data, std::size_t bytes)
{
    for (std::size_t i = 0; i < bytes; i += 4)
    {
        const std::uint32_t word = address + static_cast<std::uint32_t>(i);
        if (!m_bootstrap.Exists(word))
        {
            return EStatus::InvalidAddress;
        }
        if (!m_bootstrap.IsWritable(word))
        {
            return EStatus::WriteProtect;
        }
    }
    if (IsName(address))
    {
        return WriteName(address - Gvbs::UserDefinedName, data, bytes);
    }
    for (std::size_t i = 0; i < bytes; i += 4)
    {
        const EStatus status = WriteWord(address + static_cast<std::uint32_t>(i), WordAt(data + i));
        if (status != EStatus::Success)
        {
            return status;
        }
    }
    return EStatus::Success;
}

EStatus CRegisters::WriteWord(std::uint32_t address, std::uint32_t value)
{
    if (const std::uint32_t behind = ModelRegisterOf(address); behind != 0)
    {
        return WriteModelWord(behind, value);
    }
    switch (address)
    {
    case Gvbs::TimestampControl:
        if ((value & Gvbs::TimestampControlLatch) != 0)
        {
            LatchTimestamp();
        }
        if ((value & Gvbs::TimestampControlReset) != 0)
        {
            return WriteModelWord(static_cast<std::uint32_t>(Simulator::Register::TimestampReset), 1);
        }
        return EStatus::Success;
    case Gvbs::GvcpConfiguration:
        m_bootstrap.Set(address, value & (Gvbs::GvcpConfigurationPendingAck | Gvbs::GvcpConfigurationHeartbeatDisable));
        return WriteModelWord(static_cast<std::uint32_t>(Simulator::Register::PtpEnable),
                              (value & Gvbs::GvcpConfigurationIeee1588) != 0 ? 1 : 0);
    case Gvbs::GvspConfiguration:
        m_bootstrap.Set(address, value & Gvbs::GvspConfigurationExtendedIds);
        m_hooks.onStreamChanged();
        return EStatus::Success;
    case Gvbs::StreamChannelPort:
    case Gvbs::StreamChannelPacketSize:
    case Gvbs::StreamChannelPacketDelay:
    case Gvbs::StreamChannelDestination:
    case Gvbs::StreamChannelConfiguration:
        return WriteStreamWord(address, value);
    case Gvbs::MessageChannelPort:
    case Gvbs::MessageChannelDestination:
    case Gvbs::MessageChannelTransmissionTimeout:
    case Gvbs::MessageChannelRetryCount:
        return WriteMessageWord(address, value);
    default:
        m_bootstrap.Set(address, value);
        return EStatus::Success;
    }
}

EStatus CRegisters::WriteMessageWord(std::uint32_t address, std::uint32_t value)
{
    if (address == Gvbs::MessageChannelPort && (value & ~Gvbs::McpHostPortMask) != 0)
    {
        return EStatus::InvalidParameter; // there is one network interface, number 0
    }
    m_bootstrap.Set(address, value);
    m_hooks.onMessageChanged();
    return EStatus::Success;
}

EStatus CRegisters::WriteStreamWord(std::uint32_t address, std::uint32_t value)
{
    bool isTest = false;
    if (address == Gvbs::StreamChannelPort && (value & ~Gvbs::ScpHostPortMask) != 0)
    {
        return EStatus::InvalidParameter; // there is one network interface, number 0
    }
    if (address == Gvbs::StreamChannelConfiguration && (value & ~Gvbs::SccfgExtendedChunkData) != 0)
    {
        return EStatus::InvalidParameter;
    }
    if (address == Gvbs::StreamChannelPacketSize)
    {
        const std::uint32_t bytes = value & Gvbs::ScpsPacketSizeMask;
        if (bytes < SmallestPacketBytes || bytes > LargestPacketBytes)
        {
            return EStatus::InvalidParameter;
        }
        isTest = (value & Gvbs::ScpsFireTestPacket) != 0;
        value = (value & Gvbs::ScpsDoNotFragment) | bytes / PacketIncrement * PacketIncrement;
    }
    m_bootstrap.Set(address, value);
    m_hooks.onStreamChanged();
    if (isTest)
    {
        m_hooks.onTestPacket(value & Gvbs::ScpsPacketSizeMask);
    }
    return EStatus::Success;
}

std::array<std::uint8_t, 16> CRegisters::Name() const
{
    static_assert(Gvbs::UserDefinedNameBytes == 16);
    std::array<std::uint8_t, 16> field{};
    const std::string name = m_pModel->GetUserDefinedName();
    std::copy_n(name.begin(), std::min(name.size(), field.size() - 1), field.begin());
    return field;
}

EStatus CRegisters::WriteName(std::uint32_t offset, const std::uint8_t* data, std::size_t bytes)
{
    std::array<std::uint8_t, 16> field = Name();
    std::copy_n(data, bytes, field.begin() + offset);
    const auto end = std::find(field.begin(), field.end(), std::uint8_t{0});
    try
    {
        m_pModel->SetFeature("DeviceUserID", std::string(field.begin(), end));
    }
    catch (const GenICam::GenericException&)
    {
        return EStatus::InvalidParameter;
    }
    return EStatus::Success;
}

EStatus CRegisters::ReadModel(std::uint32_t address, std::uint8_t* data, std::size_t bytes)
{
    try
    {
        m_pModel->Read(data, address, static_cast<std::int64_t>(bytes));
        return EStatus::Success;
    }
    catch (const GenICam::AccessException&)
    {
        return EStatus::InvalidAddress;
    }
    catch (const GenICam::GenericException&)
    {
        return EStatus::LocalProblem; // a fault that was asked for
    }
}

EStatus CRegisters::WriteModel(std::uint32_t address, const std::uint8_t* data, std::size_t bytes)
{
    try
    {
        m_pModel->Write(data, address, static_cast<std::int64_t>(bytes));
        return EStatus::Success;
    }
    catch (const GenICam::AccessException&)
    {
        std::vector<std::uint8_t> current(bytes);
        return ReadModel(address, current.data(), bytes) == EStatus::Success ? EStatus::WriteProtect
                                                                             : EStatus::InvalidAddress;
    }
    catch (const GenICam::OutOfRangeException&)
    {
        return EStatus::InvalidParameter;
    }
    catch (const GenICam::InvalidArgumentException&)
    {
        return EStatus::InvalidParameter;
    }
    catch (const GenICam::GenericException&)
    {
        return EStatus::LocalProblem;
    }
}

EStatus CRegisters::WriteModelWord(std::uint32_t address, std::uint32_t value)
{
    std::uint8_t word[4];
    PutWord(word, value);
    return WriteModel(address, word, sizeof word);
}

std::uint32_t CRegisters::LatchClockStatus()
{
    std::uint8_t word[4] = {};
    WriteModelWord(static_cast<std::uint32_t>(Simulator::Register::PtpDataSetLatch), 1);
    ReadModel(static_cast<std::uint32_t>(Simulator::Register::PtpStatus), word, sizeof word);
    return WordAt(word);
}

std::uint32_t CRegisters::ClockConfiguration()
{
    std::uint8_t word[4] = {};
    ReadModel(static_cast<std::uint32_t>(Simulator::Register::PtpEnable), word, sizeof word);
    return WordAt(word) != 0 ? Gvbs::GvcpConfigurationIeee1588 : 0;
}

void CRegisters::LatchTimestamp()
{
    std::uint8_t value[8] = {};
    WriteModelWord(static_cast<std::uint32_t>(Simulator::Register::TimestampLatch), 1);
    ReadModel(static_cast<std::uint32_t>(Simulator::Register::TimestampLatchValue), value, sizeof value);
    m_bootstrap.Set(Gvbs::TimestampValueHigh, WordAt(value));
    m_bootstrap.Set(Gvbs::TimestampValueLow, WordAt(value + 4));
}

void CRegisters::CloseChannels()
{
    WriteModelWord(static_cast<std::uint32_t>(Simulator::Register::AcquisitionStop), 1);
    m_pModel->AbandonFiles();
    m_bootstrap.Set(Gvbs::StreamChannelPort, 0);
    m_bootstrap.Set(Gvbs::StreamChannelDestination, 0);
    m_bootstrap.Set(Gvbs::GvcpConfiguration, 0);
    m_bootstrap.Set(Gvbs::MessageChannelPort, 0);
    m_bootstrap.Set(Gvbs::MessageChannelDestination, 0);
    m_hooks.onStreamChanged();
    m_hooks.onMessageChanged();
}

} // namespace GigEServer::Internal
