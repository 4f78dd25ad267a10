// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

/** Addresses of the GigE Vision bootstrap registers, by the standard's names. */
namespace Velmo::Gvbs
{

constexpr std::uint32_t Version = 0x0000;
constexpr std::uint32_t DeviceMode = 0x0004;
constexpr std::uint32_t DeviceMacHigh = 0x0008;
constexpr std::uint32_t DeviceMacLow = 0x000C;
constexpr std::uint32_t NetworkInterfaceCapability = 0x0010;
constexpr std::uint32_t NetworkInterfaceConfiguration = 0x0014;
constexpr std::uint32_t CurrentIpAddress = 0x0024;
constexpr std::uint32_t CurrentSubnetMask = 0x0034;
constexpr std::uint32_t CurrentDefaultGateway = 0x0044;
constexpr std::uint32_t ManufacturerName = 0x0048;
constexpr std::uint32_t ModelName = 0x0068;
constexpr std::uint32_t DeviceVersion = 0x0088;
constexpr std::uint32_t ManufacturerInfo = 0x00A8;
constexpr std::uint32_t SerialNumber = 0x00D8;
constexpr std::uint32_t UserDefinedName = 0x00E8;
constexpr std::uint32_t FirstUrl = 0x0200;
constexpr std::uint32_t SecondUrl = 0x0400;
constexpr std::uint32_t NumberOfNetworkInterfaces = 0x0600;
constexpr std::uint32_t PersistentIpAddress = 0x064C;
constexpr std::uint32_t PersistentSubnetMask = 0x065C;
constexpr std::uint32_t PersistentDefaultGateway = 0x066C;
constexpr std::uint32_t LinkSpeed = 0x0670;
constexpr std::uint32_t NumberOfMessageChannels = 0x0900;
constexpr std::uint32_t NumberOfStreamChannels = 0x0904;
constexpr std::uint32_t NumberOfActionSignals = 0x0908;
constexpr std::uint32_t ActionDeviceKey = 0x090C;
constexpr std::uint32_t NumberOfActiveLinks = 0x0910;
constexpr std::uint32_t GvspCapability = 0x092C;
constexpr std::uint32_t MessageChannelCapability = 0x0930;
constexpr std::uint32_t GvcpCapability = 0x0934;
constexpr std::uint32_t HeartbeatTimeout = 0x0938;
constexpr std::uint32_t TimestampTickFrequencyHigh = 0x093C;
constexpr std::uint32_t TimestampTickFrequencyLow = 0x0940;
constexpr std::uint32_t TimestampControl = 0x0944;
constexpr std::uint32_t TimestampValueHigh = 0x0948; // the latched one
constexpr std::uint32_t TimestampValueLow = 0x094C;
constexpr std::uint32_t GvcpConfiguration = 0x0954;
constexpr std::uint32_t PendingTimeout = 0x0958;
constexpr std::uint32_t GvspConfiguration = 0x0960;
constexpr std::uint32_t Ieee1588Status = 0x096C;
constexpr std::uint32_t ScheduledActionQueueSize = 0x0970;
constexpr std::uint32_t ControlChannelPrivilege = 0x0A00;
constexpr std::uint32_t PrimaryApplicationPort = 0x0A04;
constexpr std::uint32_t PrimaryApplicationIpAddress = 0x0A14;
constexpr std::uint32_t MessageChannelPort = 0x0B00;
constexpr std::uint32_t MessageChannelDestination = 0x0B10;
constexpr std::uint32_t MessageChannelTransmissionTimeout = 0x0B14;
constexpr std::uint32_t MessageChannelRetryCount = 0x0B18;
constexpr std::uint32_t MessageChannelSourcePort = 0x0B1C;
constexpr std::uint32_t StreamChannelPort = 0x0D00;
constexpr std::uint32_t StreamChannelPacketSize = 0x0D04;
constexpr std::uint32_t StreamChannelPacketDelay = 0x0D08;
constexpr std::uint32_t StreamChannelDestination = 0x0D18;
constexpr std::uint32_t StreamChannelSourcePort = 0x0D1C;
constexpr std::uint32_t StreamChannelCapability = 0x0D20;
constexpr std::uint32_t StreamChannelConfiguration = 0x0D24;
constexpr std::uint32_t ActionGroupKey = 0x9800;
constexpr std::uint32_t ActionGroupMask = 0x9804;
constexpr std::uint32_t ActionStride = 0x0010;
constexpr std::uint32_t ManufacturerSpecific = 0xA000; // end of the bootstrap registers

// Sizes of text registers, bytes.
constexpr std::size_t ManufacturerNameBytes = 32;
constexpr std::size_t ModelNameBytes = 32;
constexpr std::size_t DeviceVersionBytes = 32;
constexpr std::size_t ManufacturerInfoBytes = 48;
constexpr std::size_t SerialNumberBytes = 16;
constexpr std::size_t UserDefinedNameBytes = 16;
constexpr std::size_t UrlBytes = 512;

// Control Channel Privilege.
constexpr std::uint32_t CcpExclusiveAccess = 0x00000001;
constexpr std::uint32_t CcpControlAccess = 0x00000002;

// Stream Channel Packet Size.
constexpr std::uint32_t ScpsPacketSizeMask = 0x0000FFFF;
constexpr std::uint32_t ScpsDoNotFragment = 0x40000000;
constexpr std::uint32_t ScpsFireTestPacket = 0x80000000;

// Device Mode.
constexpr std::uint32_t DeviceModeBigEndian = 0x80000000;
constexpr std::uint32_t DeviceModeUtf8 = 0x00000001; // character set index

// Network Interface Capability and Configuration.
constexpr std::uint32_t IpConfigurationPersistent = 0x00000001;
constexpr std::uint32_t IpConfigurationLinkLocal = 0x00000004;

// GVSP Capability.
constexpr std::uint32_t GvspCapabilitySourcePort = 0x80000000;
constexpr std::uint32_t GvspCapabilityStandardIds = 0x40000000; // 16-bit block identifiers

// GVSP Configuration.
constexpr std::uint32_t GvspConfigurationExtendedIds = 0x40000000; // 64-bit block identifiers

// GVCP Capability.
constexpr std::uint32_t GvcpCapabilityUserDefinedName = 0x80000000;
constexpr std::uint32_t GvcpCapabilitySerialNumber = 0x40000000;
constexpr std::uint32_t GvcpCapabilityHeartbeatDisable = 0x20000000;
constexpr std::uint32_t GvcpCapabilityLinkSpeed = 0x10000000;
constexpr std::uint32_t GvcpCapabilityPrimaryApplication = 0x08000000; // its port and address can be read
constexpr std::uint32_t GvcpCapabilityIeee1588 = 0x00080000;
constexpr std::uint32_t GvcpCapabilityScheduledAction = 0x00020000;
constexpr std::uint32_t GvcpCapabilityAction = 0x00000040;
constexpr std::uint32_t GvcpCapabilityPendingAck = 0x00000020;
constexpr std::uint32_t GvcpCapabilityEventData = 0x00000010;
constexpr std::uint32_t GvcpCapabilityEvent = 0x00000008;
constexpr std::uint32_t GvcpCapabilityPacketResend = 0x00000004;
constexpr std::uint32_t GvcpCapabilityWriteMem = 0x00000002;
constexpr std::uint32_t GvcpCapabilityConcatenation = 0x00000001;

// GVCP Configuration.
constexpr std::uint32_t GvcpConfigurationIeee1588 = 0x00080000; // the clock follows the shared one
constexpr std::uint32_t GvcpConfigurationPendingAck = 0x00000002;
constexpr std::uint32_t GvcpConfigurationHeartbeatDisable = 0x00000001;

// Timestamp Control.
constexpr std::uint32_t TimestampControlReset = 0x00000001;
constexpr std::uint32_t TimestampControlLatch = 0x00000002;

// Message Channel Port.
constexpr std::uint32_t McpHostPortMask = 0x0000FFFF;

// Message Channel Capability.
constexpr std::uint32_t MccSourcePort = 0x80000000; // it can be read

// Stream Channel Port.
constexpr std::uint32_t ScpHostPortMask = 0x0000FFFF;

// Stream Channel Capability.
constexpr std::uint32_t SccExtendedChunkData = 0x00000001;

// Stream Channel Configuration.
constexpr std::uint32_t SccfgExtendedChunkData = 0x00000001;

} // namespace Velmo::Gvbs
