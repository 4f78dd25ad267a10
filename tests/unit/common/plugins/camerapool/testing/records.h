// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/interfaceinfo.h"

#include <string>

namespace Test
{

/** A camera's record as an SDK producer gives it. */
inline Velmo::CDeviceInfo deviceInfo(const std::string& fullName, const std::string& deviceClass = "KorvelGigE")
{
    Velmo::CDeviceInfo info;
    info.SetDeviceClass(deviceClass);
    info.SetTLType("GEV");
    info.SetFullName(fullName);
    info.SetFriendlyName("Friendly " + fullName);
    info.SetVendorName("Vendor");
    info.SetModelName("Model");
    info.SetSerialNumber("4711");
    info.SetDeviceVersion("1.5");
    info.SetDeviceFactory("KorvelGigE/Factory");
    return info;
}

inline Velmo::CInterfaceInfo interfaceInfo(const std::string& interfaceId,
                                           const std::string& deviceClass = "KorvelGigE")
{
    Velmo::CInterfaceInfo info;
    info.SetDeviceClass(deviceClass);
    info.SetTLType("GEV");
    info.SetFullName("Full " + interfaceId);
    info.SetFriendlyName("Friendly " + interfaceId);
    info.SetVendorName("Vendor");
    info.SetInterfaceID(interfaceId);
    return info;
}

inline QSharedPointer<Plugin::CameraPool::Internal::CCameraInfo> cameraRecord(const std::string& fullName)
{
    return Plugin::CameraPool::Internal::CCameraInfo::fromDeviceInfo(deviceInfo(fullName));
}

inline QSharedPointer<Plugin::CameraPool::Internal::CInterfaceInfo> interfaceRecord(const std::string& interfaceId)
{
    return Plugin::CameraPool::Internal::CInterfaceInfo::fromInterfaceInfo(interfaceInfo(interfaceId));
}

} // namespace Test
