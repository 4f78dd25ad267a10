// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "parametercollection/parameters.h"

#include <utility>

namespace ParameterCollection
{

/** The full name of a parameter together with its kind. */
template <class Parameter> struct SParameterName
{
    const char* text; /**< "<path>/<feature>", static storage */

    QString toString() const { return QString::fromLatin1(text); }
    operator QString() const { return toString(); }
    /** The parameter of that name in a collection. */
    Parameter of(QSharedPointer<const IParameterCollection> collection) const
    {
        return Parameter(std::move(collection), toString());
    }
};

} // namespace ParameterCollection

/** Names of parameters by the path they are found under; features as in the GenICam SFNC unless they are the SDK's. */
namespace ParameterCollection::ParameterName
{

namespace CameraDevice
{
inline constexpr SParameterName<CEnumParameter> AcquisitionMode{"@CameraDevice/AcquisitionMode"};
inline constexpr SParameterName<CCommandParameter> AcquisitionStart{"@CameraDevice/AcquisitionStart"};
inline constexpr SParameterName<CCommandParameter> AcquisitionStop{"@CameraDevice/AcquisitionStop"};
inline constexpr SParameterName<CCommandParameter> AcquisitionAbort{"@CameraDevice/AcquisitionAbort"};
inline constexpr SParameterName<CFloatParameter> AcquisitionFrameRate{"@CameraDevice/AcquisitionFrameRate"};
inline constexpr SParameterName<CBooleanParameter> AcquisitionFrameRateEnable{
    "@CameraDevice/AcquisitionFrameRateEnable"};
inline constexpr SParameterName<CIntegerParameter> AcquisitionFrameCount{"@CameraDevice/AcquisitionFrameCount"};
inline constexpr SParameterName<CEnumParameter> TriggerMode{"@CameraDevice/TriggerMode"};
inline constexpr SParameterName<CEnumParameter> TriggerSelector{"@CameraDevice/TriggerSelector"};
inline constexpr SParameterName<CEnumParameter> TriggerSource{"@CameraDevice/TriggerSource"};
inline constexpr SParameterName<CEnumParameter> TriggerActivation{"@CameraDevice/TriggerActivation"};
inline constexpr SParameterName<CFloatParameter> TriggerDelay{"@CameraDevice/TriggerDelay"};
inline constexpr SParameterName<CCommandParameter> TriggerSoftware{"@CameraDevice/TriggerSoftware"};
inline constexpr SParameterName<CEnumParameter> ExposureMode{"@CameraDevice/ExposureMode"};
inline constexpr SParameterName<CEnumParameter> ExposureAuto{"@CameraDevice/ExposureAuto"};
inline constexpr SParameterName<CFloatParameter> ExposureTime{"@CameraDevice/ExposureTime"};
inline constexpr SParameterName<CEnumParameter> GainAuto{"@CameraDevice/GainAuto"};
inline constexpr SParameterName<CEnumParameter> GainSelector{"@CameraDevice/GainSelector"};
inline constexpr SParameterName<CFloatParameter> Gain{"@CameraDevice/Gain"};
inline constexpr SParameterName<CFloatParameter> BlackLevel{"@CameraDevice/BlackLevel"};
inline constexpr SParameterName<CFloatParameter> Gamma{"@CameraDevice/Gamma"};
inline constexpr SParameterName<CIntegerParameter> Width{"@CameraDevice/Width"};
inline constexpr SParameterName<CIntegerParameter> Height{"@CameraDevice/Height"};
inline constexpr SParameterName<CIntegerParameter> WidthMax{"@CameraDevice/WidthMax"};
inline constexpr SParameterName<CIntegerParameter> HeightMax{"@CameraDevice/HeightMax"};
inline constexpr SParameterName<CIntegerParameter> OffsetX{"@CameraDevice/OffsetX"};
inline constexpr SParameterName<CIntegerParameter> OffsetY{"@CameraDevice/OffsetY"};
inline constexpr SParameterName<CIntegerParameter> BinningHorizontal{"@CameraDevice/BinningHorizontal"};
inline constexpr SParameterName<CIntegerParameter> BinningVertical{"@CameraDevice/BinningVertical"};
inline constexpr SParameterName<CBooleanParameter> ReverseX{"@CameraDevice/ReverseX"};
inline constexpr SParameterName<CBooleanParameter> ReverseY{"@CameraDevice/ReverseY"};
inline constexpr SParameterName<CEnumParameter> PixelFormat{"@CameraDevice/PixelFormat"};
inline constexpr SParameterName<CEnumParameter> TestPattern{"@CameraDevice/TestPattern"};
inline constexpr SParameterName<CIntegerParameter> PayloadSize{"@CameraDevice/PayloadSize"};
inline constexpr SParameterName<CEnumParameter> DeviceTLType{"@CameraDevice/DeviceTLType"};
inline constexpr SParameterName<CStringParameter> DeviceVendorName{"@CameraDevice/DeviceVendorName"};
inline constexpr SParameterName<CStringParameter> DeviceModelName{"@CameraDevice/DeviceModelName"};
inline constexpr SParameterName<CStringParameter> DeviceSerialNumber{"@CameraDevice/DeviceSerialNumber"};
inline constexpr SParameterName<CStringParameter> DeviceUserID{"@CameraDevice/DeviceUserID"};
inline constexpr SParameterName<CStringParameter> DeviceVersion{"@CameraDevice/DeviceVersion"};
inline constexpr SParameterName<CStringParameter> DeviceFirmwareVersion{"@CameraDevice/DeviceFirmwareVersion"};
inline constexpr SParameterName<CCommandParameter> DeviceReset{"@CameraDevice/DeviceReset"};
inline constexpr SParameterName<CIntegerParameter> DeviceLinkSpeed{"@CameraDevice/DeviceLinkSpeed"};
inline constexpr SParameterName<CFloatParameter> DeviceTemperature{"@CameraDevice/DeviceTemperature"};
inline constexpr SParameterName<CIntegerParameter> DeviceSFNCVersionMajor{"@CameraDevice/DeviceSFNCVersionMajor"};
inline constexpr SParameterName<CIntegerParameter> DeviceSFNCVersionMinor{"@CameraDevice/DeviceSFNCVersionMinor"};
inline constexpr SParameterName<CIntegerParameter> DeviceSFNCVersionSubMinor{"@CameraDevice/DeviceSFNCVersionSubMinor"};
inline constexpr SParameterName<CIntegerParameter> TimestampLatchValue{"@CameraDevice/TimestampLatchValue"};
inline constexpr SParameterName<CCommandParameter> TimestampLatch{"@CameraDevice/TimestampLatch"};
inline constexpr SParameterName<CIntegerParameter> ActionDeviceKey{"@CameraDevice/ActionDeviceKey"};
inline constexpr SParameterName<CIntegerParameter> ActionGroupKey{"@CameraDevice/ActionGroupKey"};
inline constexpr SParameterName<CIntegerParameter> ActionGroupMask{"@CameraDevice/ActionGroupMask"};
inline constexpr SParameterName<CIntegerParameter> ActionSelector{"@CameraDevice/ActionSelector"};
inline constexpr SParameterName<CBooleanParameter> GevIEEE1588{"@CameraDevice/GevIEEE1588"};
inline constexpr SParameterName<CCommandParameter> GevIEEE1588DataSetLatch{"@CameraDevice/GevIEEE1588DataSetLatch"};
inline constexpr SParameterName<CEnumParameter> GevIEEE1588Status{"@CameraDevice/GevIEEE1588Status"};
inline constexpr SParameterName<CBooleanParameter> PtpEnable{"@CameraDevice/PtpEnable"};
inline constexpr SParameterName<CCommandParameter> PtpDataSetLatch{"@CameraDevice/PtpDataSetLatch"};
inline constexpr SParameterName<CEnumParameter> PtpStatus{"@CameraDevice/PtpStatus"};
inline constexpr SParameterName<CIntegerParameter> GevSCPSPacketSize{"@CameraDevice/GevSCPSPacketSize"};
inline constexpr SParameterName<CIntegerParameter> GevSCPD{"@CameraDevice/GevSCPD"};
inline constexpr SParameterName<CIntegerParameter> GevHeartbeatTimeout{"@CameraDevice/GevHeartbeatTimeout"};
inline constexpr SParameterName<CEnumParameter> UserSetSelector{"@CameraDevice/UserSetSelector"};
inline constexpr SParameterName<CCommandParameter> UserSetLoad{"@CameraDevice/UserSetLoad"};
inline constexpr SParameterName<CCommandParameter> UserSetSave{"@CameraDevice/UserSetSave"};
inline constexpr SParameterName<CEnumParameter> UserSetDefault{"@CameraDevice/UserSetDefault"};
inline constexpr SParameterName<CBooleanParameter> ChunkModeActive{"@CameraDevice/ChunkModeActive"};
inline constexpr SParameterName<CEnumParameter> ChunkSelector{"@CameraDevice/ChunkSelector"};
inline constexpr SParameterName<CBooleanParameter> ChunkEnable{"@CameraDevice/ChunkEnable"};
inline constexpr SParameterName<CEnumParameter> EventSelector{"@CameraDevice/EventSelector"};
inline constexpr SParameterName<CEnumParameter> EventNotification{"@CameraDevice/EventNotification"};
inline constexpr SParameterName<CEnumParameter> ImageCompressionMode{"@CameraDevice/ImageCompressionMode"};
inline constexpr SParameterName<CEnumParameter> FileSelector{"@CameraDevice/FileSelector"};
inline constexpr SParameterName<CEnumParameter> FileOperationSelector{"@CameraDevice/FileOperationSelector"};
inline constexpr SParameterName<CEnumParameter> FileOpenMode{"@CameraDevice/FileOpenMode"};
inline constexpr SParameterName<CIntegerParameter> FileAccessOffset{"@CameraDevice/FileAccessOffset"};
inline constexpr SParameterName<CIntegerParameter> FileAccessLength{"@CameraDevice/FileAccessLength"};
inline constexpr SParameterName<CCommandParameter> FileOperationExecute{"@CameraDevice/FileOperationExecute"};
inline constexpr SParameterName<CEnumParameter> FileOperationStatus{"@CameraDevice/FileOperationStatus"};
inline constexpr SParameterName<CIntegerParameter> FileOperationResult{"@CameraDevice/FileOperationResult"};
inline constexpr SParameterName<CIntegerParameter> FileSize{"@CameraDevice/FileSize"};
} // namespace CameraDevice

namespace StreamGrabber0
{
inline constexpr SParameterName<CIntegerParameter> PayloadSize{"@StreamGrabber0/PayloadSize"};
inline constexpr SParameterName<CEnumParameter> TransmissionType{"@StreamGrabber0/TransmissionType"};
inline constexpr SParameterName<CBooleanParameter> ClearBufferModeEnable{"@StreamGrabber0/ClearBufferModeEnable"};
inline constexpr SParameterName<CIntegerParameter> MaxNumBuffer{"@StreamGrabber0/MaxNumBuffer"};
inline constexpr SParameterName<CIntegerParameter> MaxBufferSize{"@StreamGrabber0/MaxBufferSize"};
inline constexpr SParameterName<CStringParameter> DestinationAddr{"@StreamGrabber0/DestinationAddr"};
inline constexpr SParameterName<CIntegerParameter> DestinationPort{"@StreamGrabber0/DestinationPort"};
inline constexpr SParameterName<CIntegerParameter> StreamDeliveredFrameCount{
    "@StreamGrabber0/StreamDeliveredFrameCount"};
inline constexpr SParameterName<CIntegerParameter> StreamLostFrameCount{"@StreamGrabber0/StreamLostFrameCount"};
inline constexpr SParameterName<CIntegerParameter> StreamIncompleteFrameCount{
    "@StreamGrabber0/StreamIncompleteFrameCount"};
inline constexpr SParameterName<CIntegerParameter> StreamPacketResendCount{"@StreamGrabber0/StreamPacketResendCount"};
} // namespace StreamGrabber0

/** Settings of the SDK's instant camera, by the SDK's names: GrabLoopThreadUseTimeout switches GrabLoopThreadTimeout.
 */
namespace CameraInstance
{
inline constexpr SParameterName<CIntegerParameter> MaxNumBuffer{"@CameraInstance/MaxNumBuffer"};
inline constexpr SParameterName<CIntegerParameter> MaxNumQueuedBuffer{"@CameraInstance/MaxNumQueuedBuffer"};
inline constexpr SParameterName<CBooleanParameter> GrabLoopThreadUseTimeout{"@CameraInstance/GrabLoopThreadUseTimeout"};
inline constexpr SParameterName<CIntegerParameter> GrabLoopThreadTimeout{"@CameraInstance/GrabLoopThreadTimeout"};
inline constexpr SParameterName<CBooleanParameter> InternalGrabEngineThreadPriorityOverride{
    "@CameraInstance/InternalGrabEngineThreadPriorityOverride"};
inline constexpr SParameterName<CIntegerParameter> InternalGrabEngineThreadPriority{
    "@CameraInstance/InternalGrabEngineThreadPriority"};
inline constexpr SParameterName<CBooleanParameter> MonitorModeActive{"@CameraInstance/MonitorModeActive"};
} // namespace CameraInstance

} // namespace ParameterCollection::ParameterName
