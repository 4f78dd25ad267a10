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
constexpr std::uint32_t NumberOfMessageChannels = 0x0900;
constexpr std::uint32_t NumberOfStreamChannels = 0x0904;
constexpr std::uint32_t NumberOfActionSignals = 0x0908;
constexpr std::uint32_t ActionDeviceKey = 0x090C;
constexpr std::uint32_t GvcpCapability = 0x0934;
constexpr std::uint32_t HeartbeatTimeout = 0x0938;
constexpr std::uint32_t TimestampTickFrequencyHigh = 0x093C;
constexpr std::uint32_t TimestampTickFrequencyLow = 0x0940;
constexpr std::uint32_t TimestampControl = 0x0944;
constexpr std::uint32_t Ieee1588Status = 0x096C;
constexpr std::uint32_t ScheduledActionQueueSize = 0x0970;
constexpr std::uint32_t ControlChannelPrivilege = 0x0A00;
constexpr std::uint32_t PrimaryApplicationPort = 0x0A04;
constexpr std::uint32_t PrimaryApplicationIpAddress = 0x0A14;
constexpr std::uint32_t MessageChannelPort = 0x0B00;
constexpr std::uint32_t StreamChannelPort = 0x0D00;
constexpr std::uint32_t StreamChannelPacketSize = 0x0D04;
constexpr std::uint32_t StreamChannelPacketDelay = 0x0D08;
constexpr std::uint32_t StreamChannelDestination = 0x0D18;
constexpr std::uint32_t ActionGroupKey = 0x9800;
constexpr std::uint32_t ActionGroupMask = 0x9804;
constexpr std::uint32_t ActionStride = 0x0010;

// Sizes of text registers, bytes.
constexpr std::size_t ManufacturerNameBytes = 32;
constexpr std::size_t ModelNameBytes = 32;
constexpr std::size_t DeviceVersionBytes = 32;
constexpr std::size_t ManufacturerInfoBytes = 48;
constexpr std::size_t SerialNumberBytes = 16;
constexpr std::size_t UserDefinedNameBytes = 16;

// Control Channel Privilege.
constexpr std::uint32_t CcpExclusiveAccess = 0x00000001;
constexpr std::uint32_t CcpControlAccess = 0x00000002;

// Stream Channel Packet Size.
constexpr std::uint32_t ScpsPacketSizeMask = 0x0000FFFF;
constexpr std::uint32_t ScpsDoNotFragment = 0x40000000;
constexpr std::uint32_t ScpsFireTestPacket = 0x80000000;

} // namespace Velmo::Gvbs
