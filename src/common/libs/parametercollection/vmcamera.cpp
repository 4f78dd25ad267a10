// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/vmcamera.h"

#include "parametercollection/parameternames.h"

namespace ParameterCollection
{

namespace Device = ParameterName::CameraDevice;

VMCamera::VMCamera(const QSharedPointer<const IParameterCollection>& collection)
    : AcquisitionMode(Device::AcquisitionMode.of(collection)),
      AcquisitionStart(Device::AcquisitionStart.of(collection)),
      AcquisitionStop(Device::AcquisitionStop.of(collection)),
      AcquisitionAbort(Device::AcquisitionAbort.of(collection)),
      AcquisitionFrameRate(Device::AcquisitionFrameRate.of(collection)),
      AcquisitionFrameRateEnable(Device::AcquisitionFrameRateEnable.of(collection)),
      AcquisitionFrameCount(Device::AcquisitionFrameCount.of(collection)),
      TriggerMode(Device::TriggerMode.of(collection)), TriggerSelector(Device::TriggerSelector.of(collection)),
      TriggerSource(Device::TriggerSource.of(collection)), TriggerActivation(Device::TriggerActivation.of(collection)),
      TriggerDelay(Device::TriggerDelay.of(collection)), TriggerSoftware(Device::TriggerSoftware.of(collection)),
      ExposureMode(Device::ExposureMode.of(collection)), ExposureAuto(Device::ExposureAuto.of(collection)),
      ExposureTime(Device::ExposureTime.of(collection)), GainAuto(Device::GainAuto.of(collection)),
      GainSelector(Device::GainSelector.of(collection)), Gain(Device::Gain.of(collection)),
      BlackLevel(Device::BlackLevel.of(collection)), Gamma(Device::Gamma.of(collection)),
      Width(Device::Width.of(collection)), Height(Device::Height.of(collection)),
      WidthMax(Device::WidthMax.of(collection)), HeightMax(Device::HeightMax.of(collection)),
      OffsetX(Device::OffsetX.of(collection)), OffsetY(Device::OffsetY.of(collection)),
      BinningHorizontal(Device::BinningHorizontal.of(collection)),
      BinningVertical(Device::BinningVertical.of(collection)), ReverseX(Device::ReverseX.of(collection)),
      ReverseY(Device::ReverseY.of(collection)), PixelFormat(Device::PixelFormat.of(collection)),
      TestPattern(Device::TestPattern.of(collection)), PayloadSize(Device::PayloadSize.of(collection)),
      DeviceTLType(Device::DeviceTLType.of(collection)), DeviceVendorName(Device::DeviceVendorName.of(collection)),
      DeviceModelName(Device::DeviceModelName.of(collection)),
      DeviceSerialNumber(Device::DeviceSerialNumber.of(collection)), DeviceUserID(Device::DeviceUserID.of(collection)),
      DeviceVersion(Device::DeviceVersion.of(collection)),
      DeviceFirmwareVersion(Device::DeviceFirmwareVersion.of(collection)),
      DeviceReset(Device::DeviceReset.of(collection)), DeviceLinkSpeed(Device::DeviceLinkSpeed.of(collection)),
      DeviceTemperature(Device::DeviceTemperature.of(collection)),
      DeviceSFNCVersionMajor(Device::DeviceSFNCVersionMajor.of(collection)),
      DeviceSFNCVersionMinor(Device::DeviceSFNCVersionMinor.of(collection)),
      DeviceSFNCVersionSubMinor(Device::DeviceSFNCVersionSubMinor.of(collection)),
      TimestampLatchValue(Device::TimestampLatchValue.of(collection)),
      TimestampLatch(Device::TimestampLatch.of(collection)), ActionDeviceKey(Device::ActionDeviceKey.of(collection)),
      ActionGroupKey(Device::ActionGroupKey.of(collection)), ActionGroupMask(Device::ActionGroupMask.of(collection)),
      ActionSelector(Device::ActionSelector.of(collection)), GevIEEE1588(Device::GevIEEE1588.of(collection)),
      GevIEEE1588DataSetLatch(Device::GevIEEE1588DataSetLatch.of(collection)),
      GevIEEE1588Status(Device::GevIEEE1588Status.of(collection)), PtpEnable(Device::PtpEnable.of(collection)),
      PtpDataSetLatch(Device::PtpDataSetLatch.of(collection)), PtpStatus(Device::PtpStatus.of(collection)),
      GevSCPSPacketSize(Device::GevSCPSPacketSize.of(collection)), GevSCPD(Device::GevSCPD.of(collection)),
      GevHeartbeatTimeout(Device::GevHeartbeatTimeout.of(collection)),
      UserSetSelector(Device::UserSetSelector.of(collection)), UserSetLoad(Device::UserSetLoad.of(collection)),
      UserSetSave(Device::UserSetSave.of(collection)), UserSetDefault(Device::UserSetDefault.of(collection)),
      ChunkModeActive(Device::ChunkModeActive.of(collection)), ChunkSelector(Device::ChunkSelector.of(collection)),
      ChunkEnable(Device::ChunkEnable.of(collection)), EventSelector(Device::EventSelector.of(collection)),
      EventNotification(Device::EventNotification.of(collection)),
      ImageCompressionMode(Device::ImageCompressionMode.of(collection)),
      FileSelector(Device::FileSelector.of(collection)),
      FileOperationSelector(Device::FileOperationSelector.of(collection)),
      FileOpenMode(Device::FileOpenMode.of(collection)), FileAccessOffset(Device::FileAccessOffset.of(collection)),
      FileAccessLength(Device::FileAccessLength.of(collection)),
      FileOperationExecute(Device::FileOperationExecute.of(collection)),
      FileOperationStatus(Device::FileOperationStatus.of(collection)),
      FileOperationResult(Device::FileOperationResult.of(collection)), FileSize(Device::FileSize.of(collection))
{
}

VMCamera::~VMCamera() = default;

} // namespace ParameterCollection
