// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icamera.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/iinterface.h"
#include "camerapool/iinterfaceinfo.h"
#include "camerapool/itransportlayerinfo.h"

namespace Plugin::CameraPool
{

// Defined here so that each interface's run-time information exists once in the process.
IInterfaceInfo::IInterfaceInfo(QObject* parent) : IBaseInfo(parent) {}

ITransportLayerInfo::ITransportLayerInfo(QObject* parent) : QObject(parent) {}

IInterface::IInterface(QObject* parent) : IDevice(parent) {}

IInterfaceInfo::~IInterfaceInfo() = default;
ITransportLayerInfo::~ITransportLayerInfo() = default;
IInterface::~IInterface() = default;
IDeviceControlService::~IDeviceControlService() = default;
ICameraControlService::~ICameraControlService() = default;
IDeviceStatusService::~IDeviceStatusService() = default;
ICameraStatusService::~ICameraStatusService() = default;
IDeviceParameterService::~IDeviceParameterService() = default;
ICameraStreamControlService::~ICameraStreamControlService() = default;
ICameraEnumerationService::~ICameraEnumerationService() = default;

} // namespace Plugin::CameraPool
