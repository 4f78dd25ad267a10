// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icamera.h"
#include "camerapool/icameraactioncommandsservice.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/idevicefirmwareupdate.h"
#include "camerapool/idevicefirmwareupdateservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/ifirmwareupdateinfo.h"
#include "camerapool/iimagedecompressorservice.h"
#include "camerapool/iinterface.h"
#include "camerapool/iinterfaceinfo.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/ifirmwareupdatable.h"
#include "camerapool/internal/interfaceinfo.h"
#include "camerapool/itransportlayerinfo.h"

namespace Plugin::CameraPool
{

IBaseInfo::IBaseInfo(QObject* parent) : IInfo(parent) {}

IBaseInfo::~IBaseInfo() = default;

ICameraInfo::ICameraInfo(QObject* parent) : IBaseInfo(parent) {}

ICameraInfo::~ICameraInfo() = default;

IInterfaceInfo::IInterfaceInfo(QObject* parent) : IBaseInfo(parent) {}

IInterfaceInfo::~IInterfaceInfo() = default;

ITransportLayerInfo::ITransportLayerInfo(QObject* parent) : QObject(parent) {}

ITransportLayerInfo::~ITransportLayerInfo() = default;

IDevice::IDevice(QObject* parent) : QObject(parent) {}

IDevice::~IDevice() = default;

ICamera::ICamera(QObject* parent) : IDevice(parent) {}

ICamera::~ICamera() = default;

IInterface::IInterface(QObject* parent) : IDevice(parent) {}

IInterface::~IInterface() = default;

IDeviceControlService::IDeviceControlService(QObject* parent) : IService(parent) {}

IDeviceControlService::~IDeviceControlService() = default;

ICameraControlService::ICameraControlService(QObject* parent) : IDeviceControlService(parent) {}

ICameraControlService::~ICameraControlService() = default;

IDeviceStatusService::IDeviceStatusService(QObject* parent) : IService(parent) {}

IDeviceStatusService::~IDeviceStatusService() = default;

ICameraStatusService::ICameraStatusService(QObject* parent) : IDeviceStatusService(parent) {}

ICameraStatusService::~ICameraStatusService() = default;

ICameraStreamControlService::ICameraStreamControlService(QObject* parent) : IService(parent) {}

ICameraStreamControlService::~ICameraStreamControlService() = default;

ICameraActionCommandsService::ICameraActionCommandsService(QObject* parent) : IService(parent) {}

ICameraActionCommandsService::~ICameraActionCommandsService() = default;

IDeviceParameterService::IDeviceParameterService(QObject* parent) : IService(parent) {}

IDeviceParameterService::~IDeviceParameterService() = default;

ICameraEnumerationService::ICameraEnumerationService(QObject* parent) : IService(parent) {}

ICameraEnumerationService::~ICameraEnumerationService() = default;

IFirmwareUpdateInfo::IFirmwareUpdateInfo(QObject* parent) : QObject(parent) {}

IFirmwareUpdateInfo::~IFirmwareUpdateInfo() = default;

IDeviceFirmwareUpdate::IDeviceFirmwareUpdate(QObject* parent) : QObject(parent) {}

IDeviceFirmwareUpdate::~IDeviceFirmwareUpdate() = default;

IDeviceFirmwareUpdateService::IDeviceFirmwareUpdateService(QObject* parent) : IService(parent) {}

IDeviceFirmwareUpdateService::~IDeviceFirmwareUpdateService() = default;

IImageDecompressorService::IImageDecompressorService(QObject* parent) : IService(parent) {}

IImageDecompressorService::~IImageDecompressorService() = default;

namespace Internal
{

IFirmwareUpdatable::~IFirmwareUpdatable() = default;

} // namespace Internal

} // namespace Plugin::CameraPool
