// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/**
 * The register map of the camera model: big-endian, above the bootstrap registers of the transports.
 * Widths: 4 bytes unless noted; "64" in the comment means a 64-bit integer, "double" an IEEE double.
 */
namespace Simulator::Register
{

constexpr std::int64_t Begin = 0x20000;
constexpr std::int64_t TextBytes = 64;

constexpr std::int64_t DeviceVendorName = 0x20000; // texts of TextBytes
constexpr std::int64_t DeviceModelName = 0x20040;
constexpr std::int64_t DeviceManufacturerInfo = 0x20080;
constexpr std::int64_t DeviceVersion = 0x200C0;
constexpr std::int64_t DeviceFirmwareVersion = 0x20100;
constexpr std::int64_t DeviceSerialNumber = 0x20140;
constexpr std::int64_t DeviceUserID = 0x20180;
constexpr std::int64_t DeviceSFNCVersionMajor = 0x201C0;
constexpr std::int64_t DeviceSFNCVersionMinor = 0x201C4;
constexpr std::int64_t DeviceSFNCVersionSubMinor = 0x201C8;
constexpr std::int64_t DeviceTemperature = 0x201D0; // double
constexpr std::int64_t DeviceReset = 0x201D8;
constexpr std::int64_t TimestampLatch = 0x201E0;
constexpr std::int64_t TimestampReset = 0x201E4;
constexpr std::int64_t TimestampLatchValue = 0x201E8; // 64
constexpr std::int64_t TimestampIncrement = 0x201F0;  // 64

constexpr std::int64_t SensorWidth = 0x20300;
constexpr std::int64_t SensorHeight = 0x20304;
constexpr std::int64_t WidthMax = 0x20308;
constexpr std::int64_t HeightMax = 0x2030C;
constexpr std::int64_t Width = 0x20310;
constexpr std::int64_t Height = 0x20314;
constexpr std::int64_t OffsetX = 0x20318;
constexpr std::int64_t OffsetY = 0x2031C;
constexpr std::int64_t PixelFormat = 0x20328;
constexpr std::int64_t ReverseX = 0x2032C;
constexpr std::int64_t TestPattern = 0x20330;

constexpr std::int64_t AcquisitionMode = 0x20400;
constexpr std::int64_t AcquisitionStart = 0x20404;
constexpr std::int64_t AcquisitionStop = 0x20408;
constexpr std::int64_t AcquisitionFrameCount = 0x2040C;
constexpr std::int64_t AcquisitionFrameRateEnable = 0x20410;
constexpr std::int64_t AcquisitionFrameRate = 0x20418;          // double, Hz
constexpr std::int64_t AcquisitionFrameRateMax = 0x20420;       // double, Hz
constexpr std::int64_t AcquisitionResultingFrameRate = 0x20428; // double, Hz
constexpr std::int64_t ExposureTime = 0x20430;                  // double, us
constexpr std::int64_t ExposureAuto = 0x20438;
constexpr std::int64_t TriggerSelector = 0x20440;
constexpr std::int64_t TriggerMode = 0x20444;
constexpr std::int64_t TriggerSource = 0x20448;
constexpr std::int64_t TriggerSoftware = 0x2044C;
constexpr std::int64_t AcquisitionStatus = 0x20450;

constexpr std::int64_t Gain = 0x20500;       // double, dB
constexpr std::int64_t BlackLevel = 0x20508; // double, per cent of full scale

constexpr std::int64_t UserSetSelector = 0x20600;
constexpr std::int64_t UserSetLoad = 0x20604;
constexpr std::int64_t UserSetSave = 0x20608;
constexpr std::int64_t UserSetDefault = 0x2060C;

constexpr std::int64_t ActionDeviceKey = 0x20640;
constexpr std::int64_t ActionSelector = 0x20644;
constexpr std::int64_t ActionGroupKey = 0x20650;  // one for each value of ActionSelector, of which 0 is not used;
constexpr std::int64_t ActionGroupMask = 0x20670; // room for 8

constexpr std::int64_t PtpEnable = 0x206A0;
constexpr std::int64_t PtpDataSetLatch = 0x206A4;
constexpr std::int64_t PtpStatus = 0x206A8;
constexpr std::int64_t PtpOffsetFromMaster = 0x206B0; // 64, signed

constexpr std::int64_t PayloadSize = 0x20700;
constexpr std::int64_t TLParamsLocked = 0x20704;
constexpr std::int64_t ClearBufferModeEnable = 0x20708;

constexpr std::int64_t ChunkModeActive = 0x20720;
constexpr std::int64_t ChunkSelector = 0x20724;
constexpr std::int64_t ChunkEnable = 0x20730; // one for each value of ChunkSelector; room for 32

constexpr std::int64_t EventSelector = 0x207C0;
constexpr std::int64_t TestEventGenerate = 0x207C4;
constexpr std::int64_t EventNotification = 0x207D0; // one for each value of EventSelector; room for 12

constexpr std::int64_t FaultDropFrames = 0x20800;
constexpr std::int64_t FaultFailEveryNth = 0x20804;
constexpr std::int64_t FaultStall = 0x20808;
constexpr std::int64_t FaultRemove = 0x2080C;
constexpr std::int64_t FaultRemovalReports = 0x20810;
constexpr std::int64_t FaultChunkLies = 0x20814;
constexpr std::int64_t FaultChunkMissing = 0x20818;

constexpr std::int64_t FramesGenerated = 0x20900; // 64
constexpr std::int64_t FramesLost = 0x20908;      // 64

constexpr std::int64_t ImageCompressionMode = 0x20980;
constexpr std::int64_t ImageCompressionRatio = 0x20988; // double, per cent
constexpr std::int64_t ImageCompressionDecodedSize = 0x20990;
constexpr std::int64_t ImageCompressionDescriptorLength = 0x20994;
constexpr std::int64_t ImageCompressionDescriptorHashLength = 0x20998;
constexpr std::int64_t ImageCompressionDescriptor = 0x209A0;     // 48 bytes
constexpr std::int64_t ImageCompressionDescriptorHash = 0x209E0; // 16 bytes

// File access and firmware.
constexpr std::int64_t FileSelector = 0x20C00;
constexpr std::int64_t FileOperationSelector = 0x20C04;
constexpr std::int64_t FileOperationExecute = 0x20C08;
constexpr std::int64_t FileAccessOffset = 0x20C0C;
constexpr std::int64_t FileAccessLength = 0x20C10;
constexpr std::int64_t FileOperationStatus = 0x20C14;
constexpr std::int64_t FileOperationResult = 0x20C18;
constexpr std::int64_t FileSize = 0x20C1C;
constexpr std::int64_t FileOpenMode = 0x20C20; // one for each value of FileSelector; room for 8
constexpr std::int64_t FirmwareActivate = 0x20C40;
constexpr std::int64_t FirmwareStatus = 0x20C44;
constexpr std::int64_t FaultPowerLossAtFileOperation = 0x20C60;
constexpr std::int64_t FaultPowerLossAtWrite = 0x20C64;
constexpr std::int64_t FaultFileFailure = 0x20C68;
constexpr std::int64_t FaultFileShortWrite = 0x20C6C;
constexpr std::int64_t FaultFileDelay = 0x20C70;
constexpr std::int64_t FaultAfterReset = 0x20C74;
constexpr std::int64_t FileAccessBuffer = 0x20D00;  // FileAccessBufferBytes
constexpr std::int64_t FileAccessBufferBytes = 512; // GVCP WRITEMEM carries at most 536

constexpr std::int64_t End = 0x21000;

} // namespace Simulator::Register
