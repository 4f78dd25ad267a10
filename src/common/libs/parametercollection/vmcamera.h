// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "parametercollection/parameters.h"

namespace ParameterCollection
{

/**
 * The parameters of a camera, each by its member; feature names are those of the GenICam SFNC.
 *
 * Members are found anew on every use, so that the set may be made before the camera is opened; a parameter that the
 * camera does not have is not valid. Threads: as CParameter.
 */
class PARAMETERCOLLECTION_EXPORT VMCamera
{
public:
    /** A null collection gives a set in which nothing is valid. */
    explicit VMCamera(const QSharedPointer<const IParameterCollection>& collection);
    ~VMCamera();

    CEnumParameter AcquisitionMode;
    CCommandParameter AcquisitionStart;
    CCommandParameter AcquisitionStop;
    CCommandParameter AcquisitionAbort;
    CFloatParameter AcquisitionFrameRate;
    CBooleanParameter AcquisitionFrameRateEnable;
    CIntegerParameter AcquisitionFrameCount;
    CEnumParameter TriggerMode;
    CEnumParameter TriggerSelector;
    CEnumParameter TriggerSource;
    CEnumParameter TriggerActivation;
    CFloatParameter TriggerDelay;
    CCommandParameter TriggerSoftware;
    CEnumParameter ExposureMode;
    CEnumParameter ExposureAuto;
    CFloatParameter ExposureTime;
    CEnumParameter GainAuto;
    CEnumParameter GainSelector;
    CFloatParameter Gain;
    CFloatParameter BlackLevel;
    CFloatParameter Gamma;
    CIntegerParameter Width;
    CIntegerParameter Height;
    CIntegerParameter WidthMax;
    CIntegerParameter HeightMax;
    CIntegerParameter OffsetX;
    CIntegerParameter OffsetY;
    CIntegerParameter BinningHorizontal;
    CIntegerParameter BinningVertical;
    CBooleanParameter ReverseX;
    CBooleanParameter ReverseY;
    CEnumParameter PixelFormat;
    CEnumParameter TestPattern;
    CIntegerParameter PayloadSize;
    CEnumParameter DeviceTLType;
    CStringParameter DeviceVendorName;
    CStringParameter DeviceModelName;
    CStringParameter DeviceSerialNumber;
    CStringParameter DeviceUserID;
    CStringParameter DeviceVersion;
    CStringParameter DeviceFirmwareVersion;
    CCommandParameter DeviceReset;
    CIntegerParameter DeviceLinkSpeed;
    CFloatParameter DeviceTemperature;
    CIntegerParameter DeviceSFNCVersionMajor;
    CIntegerParameter DeviceSFNCVersionMinor;
    CIntegerParameter DeviceSFNCVersionSubMinor;
    CIntegerParameter TimestampLatchValue;
    CCommandParameter TimestampLatch;
    CIntegerParameter ActionDeviceKey;
    CIntegerParameter ActionGroupKey;
    CIntegerParameter ActionGroupMask;
    CIntegerParameter ActionSelector;
    CBooleanParameter GevIEEE1588;
    CCommandParameter GevIEEE1588DataSetLatch;
    CEnumParameter GevIEEE1588Status;
    CBooleanParameter PtpEnable;
    CCommandParameter PtpDataSetLatch;
    CEnumParameter PtpStatus;
    CIntegerParameter GevSCPSPacketSize;
    CIntegerParameter GevSCPD;
    CIntegerParameter GevHeartbeatTimeout;
    CEnumParameter UserSetSelector;
    CCommandParameter UserSetLoad;
    CCommandParameter UserSetSave;
    CEnumParameter UserSetDefault;
    CBooleanParameter ChunkModeActive;
    CEnumParameter ChunkSelector;
    CBooleanParameter ChunkEnable;
    CEnumParameter EventSelector;
    CEnumParameter EventNotification;
    CEnumParameter ImageCompressionMode;
    CEnumParameter FileSelector;
    CEnumParameter FileOperationSelector;
    CEnumParameter FileOpenMode;
    CIntegerParameter FileAccessOffset;
    CIntegerParameter FileAccessLength;
    CCommandParameter FileOperationExecute;
    CEnumParameter FileOperationStatus;
    CIntegerParameter FileOperationResult;
    CIntegerParameter FileSize;
};

} // namespace ParameterCollection
