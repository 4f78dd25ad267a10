// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/bootstrap.h"

#include "protocols/gvbsregisters.h"

#include <algorithm>

namespace GigEServer::Internal
{

namespace Gvbs = Velmo::Gvbs;

namespace
{

constexpr std::uint32_t StandardVersion = 0x00020000; // Version: major in the upper half, minor in the lower
constexpr std::uint32_t LowestHeartbeatMs = 500;
constexpr std::uint32_t DefaultHeartbeatMs = 3000;
constexpr std::uint32_t DefaultPacketBytes = 1500;
constexpr std::uint32_t ScheduledActions = 8;           // that the camera model lets wait
constexpr std::uint32_t TicksPerSecond = 1'000'000'000; // the camera model's clock

std::uint32_t Hash(const std::string& text, std::uint32_t seed)
{
    std::uint32_t hash = 2166136261U ^ seed; // FNV-1a
    for (const char c : text)
    {
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619U;
    }
    return hash;
}

} // namespace

std::array<std::uint8_t, 6> MakeMac(const SServedCamera& camera)
{
    const std::uint32_t hash = Hash(camera.config.serialNumber, camera.address.ip);
    const std::uint32_t ip = camera.address.ip;
    return {0x02,
            static_cast<std::uint8_t>(hash >> 8),
            static_cast<std::uint8_t>(hash),
            static_cast<std::uint8_t>(ip >> 16),
            static_cast<std::uint8_t>(ip >> 8),
            static_cast<std::uint8_t>(ip)};
}

CBootstrap::CBootstrap(const SServedCamera& camera, const std::string& url)
{
    AddIdentity(camera, url);
    AddCapabilities(camera);
    AddChannels();
    SetAddress(camera.address);
}

void CBootstrap::AddText(std::uint32_t address, std::size_t bytes, const std::string& text)
{
    std::string field = text.substr(0, bytes - 1);
    field.resize(bytes, '\0');
    for (std::size_t i = 0; i < bytes; i += 4)
    {
        std::uint32_t word = 0;
        for (std::size_t k = 0; k < 4; ++k)
        {
            word = word << 8 | static_cast<std::uint8_t>(field[i + k]);
        }
        Add(address + static_cast<std::uint32_t>(i), word);
    }
}

void CBootstrap::AddIdentity(const SServedCamera& camera, const std::string& url)
{
    for (std::uint32_t address = Gvbs::Version; address < Gvbs::UserDefinedName; address += 4)
    {
        Add(address, 0); // what is reserved between the fields is read along
    }
    const std::array<std::uint8_t, 6> mac = MakeMac(camera);
    Add(Gvbs::Version, StandardVersion);
    Add(Gvbs::DeviceMode, Gvbs::DeviceModeBigEndian | Gvbs::DeviceModeUtf8);
    Add(Gvbs::DeviceMacHigh, static_cast<std::uint32_t>(mac[0] << 8 | mac[1]));
    Add(Gvbs::DeviceMacLow, static_cast<std::uint32_t>(mac[2]) << 24 | static_cast<std::uint32_t>(mac[3]) << 16 |
                                static_cast<std::uint32_t>(mac[4]) << 8 | mac[5]);
    AddText(Gvbs::ManufacturerName, Gvbs::ManufacturerNameBytes, camera.config.vendorName);
    AddText(Gvbs::ModelName, Gvbs::ModelNameBytes, camera.config.modelName);
    AddText(Gvbs::DeviceVersion, Gvbs::DeviceVersionBytes, camera.config.deviceVersion);
    AddText(Gvbs::ManufacturerInfo, Gvbs::ManufacturerInfoBytes, "Simulated camera");
    AddText(Gvbs::SerialNumber, Gvbs::SerialNumberBytes, camera.config.serialNumber);
    for (std::uint32_t i = 0; i < Gvbs::UserDefinedNameBytes; i += 4)
    {
        AddWritable(Gvbs::UserDefinedName + i, 0);
    }
    AddText(Gvbs::FirstUrl, Gvbs::UrlBytes, url);
    AddText(Gvbs::SecondUrl, Gvbs::UrlBytes, "");
}

void CBootstrap::AddCapabilities(const SServedCamera& camera)
{
    // The computer's own address is what the camera has; nothing but FORCEIP moves it.
    Add(Gvbs::NetworkInterfaceCapability, Gvbs::IpConfigurationLinkLocal);
    Add(Gvbs::NetworkInterfaceConfiguration, Gvbs::IpConfigurationLinkLocal);
    Add(Gvbs::NumberOfNetworkInterfaces, 1);
    constexpr std::uint64_t bitsPerMegabit = 1'000'000;
    Add(Gvbs::LinkSpeed, static_cast<std::uint32_t>(camera.linkBitsPerSecond / bitsPerMegabit));
    Add(Gvbs::NumberOfMessageChannels, 1);
    Add(Gvbs::NumberOfStreamChannels, 1);
    Add(Gvbs::NumberOfActionSignals, ActionSignals);
    AddWritable(Gvbs::ActionDeviceKey, 0);
    for (std::uint32_t signal = 0; signal < ActionSignals; ++signal)
    {
        AddWritable(Gvbs::ActionGroupKey + signal * Gvbs::ActionStride, 0);
        AddWritable(Gvbs::ActionGroupMask + signal * Gvbs::ActionStride, 0);
    }
    Add(Gvbs::Ieee1588Status, 0);
    Add(Gvbs::ScheduledActionQueueSize, ScheduledActions);
    Add(Gvbs::NumberOfActiveLinks, 1);
    Add(Gvbs::GvspCapability, Gvbs::GvspCapabilitySourcePort | Gvbs::GvspCapabilityStandardIds);
    Add(Gvbs::MessageChannelCapability, Gvbs::MccSourcePort);
    Add(Gvbs::GvcpCapability,
        Gvbs::GvcpCapabilityUserDefinedName | Gvbs::GvcpCapabilitySerialNumber | Gvbs::GvcpCapabilityHeartbeatDisable |
            Gvbs::GvcpCapabilityLinkSpeed | Gvbs::GvcpCapabilityPrimaryApplication | Gvbs::GvcpCapabilityIeee1588 |
            Gvbs::GvcpCapabilityScheduledAction | Gvbs::GvcpCapabilityAction | Gvbs::GvcpCapabilityPendingAck |
            Gvbs::GvcpCapabilityEventData | Gvbs::GvcpCapabilityEvent | Gvbs::GvcpCapabilityPacketResend |
            Gvbs::GvcpCapabilityWriteMem | Gvbs::GvcpCapabilityConcatenation);
    AddWritable(Gvbs::HeartbeatTimeout, DefaultHeartbeatMs);
    Add(Gvbs::TimestampTickFrequencyHigh, 0);
    Add(Gvbs::TimestampTickFrequencyLow, TicksPerSecond);
    AddWritable(Gvbs::TimestampControl, 0);
    Add(Gvbs::TimestampValueHigh, 0);
    Add(Gvbs::TimestampValueLow, 0);
    AddWritable(Gvbs::GvcpConfiguration, 0);
    Add(Gvbs::PendingTimeout, camera.faults.commandMs);
    AddWritable(Gvbs::GvspConfiguration, 0);
}

void CBootstrap::AddChannels()
{
    AddWritable(Gvbs::ControlChannelPrivilege, 0);
    Add(Gvbs::PrimaryApplicationPort, 0);
    Add(Gvbs::PrimaryApplicationIpAddress, 0);
    AddWritable(Gvbs::MessageChannelPort, 0);
    AddWritable(Gvbs::MessageChannelDestination, 0);
    AddWritable(Gvbs::MessageChannelTransmissionTimeout, 0);
    AddWritable(Gvbs::MessageChannelRetryCount, 0);
    Add(Gvbs::MessageChannelSourcePort, 0);
    AddWritable(Gvbs::StreamChannelPort, 0);
    AddWritable(Gvbs::StreamChannelPacketSize, DefaultPacketBytes);
    AddWritable(Gvbs::StreamChannelPacketDelay, 0);
    AddWritable(Gvbs::StreamChannelDestination, 0);
    Add(Gvbs::StreamChannelSourcePort, 0);
    Add(Gvbs::StreamChannelCapability, Gvbs::SccExtendedChunkData);
    AddWritable(Gvbs::StreamChannelConfiguration, 0);
}

void CBootstrap::SetAddress(const SAddress& address)
{
    Set(Gvbs::CurrentIpAddress, address.ip);
    Set(Gvbs::CurrentSubnetMask, address.subnetMask);
}

bool CBootstrap::IsWritable(std::uint32_t address) const
{
    const auto found = m_words.find(address);
    return found != m_words.end() && found->second.isWritable;
}

std::uint32_t CBootstrap::Get(std::uint32_t address) const
{
    const auto found = m_words.find(address);
    return found == m_words.end() ? 0 : found->second.value;
}

void CBootstrap::Set(std::uint32_t address, std::uint32_t value)
{
    const auto found = m_words.find(address);
    if (found != m_words.end())
    {
        found->second.value = address == Gvbs::HeartbeatTimeout ? std::max(value, LowestHeartbeatMs) : value;
    }
}

} // namespace GigEServer::Internal
