// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/interfacenames.h"

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/interfaceinfo.h"

#include <gtest/gtest.h>

namespace
{

using HostKit::findInterface;
using HostKit::InterfaceInfoPtr;
using HostKit::interfaceOf;

InterfaceInfoPtr interface(const char* id, const char* friendlyName, const char* deviceClass)
{
    Velmo::CInterfaceInfo info;
    info.SetInterfaceID(id).SetFriendlyName(friendlyName);
    info.SetFullName(std::string(deviceClass) + "/" + id).SetDeviceClass(deviceClass);
    return Plugin::CameraPool::Internal::CInterfaceInfo::fromInterfaceInfo(info);
}

class InterfaceNames : public testing::Test
{
protected:
    QVector<InterfaceInfoPtr> m_interfaces{interface("eth0", "eth0 (10.0.0.1)", "A"), interface("port", "Port", "A"),
                                           interface("port", "Port B", "B")};
    QString m_error;
};

TEST_F(InterfaceNames, identifierFriendlyNameAndFullNameFindTheInterface)
{
    for (const char* name : {"eth0", "eth0 (10.0.0.1)", "A/eth0"})
    {
        EXPECT_EQ(findInterface(m_interfaces, QLatin1String(name), m_error), m_interfaces[0]) << name;
    }
}

TEST_F(InterfaceNames, aNameOfTwoInterfacesIsRefusedWithBoth)
{
    EXPECT_TRUE(findInterface(m_interfaces, QStringLiteral("port"), m_error).isNull());
    EXPECT_TRUE(m_error.contains(QStringLiteral("A/port")) && m_error.contains(QStringLiteral("B/port")));
}

TEST_F(InterfaceNames, anUnknownNameIsInTheReason)
{
    EXPECT_TRUE(findInterface(m_interfaces, QStringLiteral("nobody"), m_error).isNull());
    EXPECT_TRUE(m_error.contains(QStringLiteral("nobody")));
}

TEST_F(InterfaceNames, interfaceOfACameraIsOfItsOwnTransportLayer)
{
    Velmo::CDeviceInfo device;
    device.SetDeviceClass("B").SetPropertyValue(Velmo::Key::InterfaceID, "port");
    EXPECT_EQ(interfaceOf(m_interfaces, *Plugin::CameraPool::Internal::CCameraInfo::fromDeviceInfo(device)),
              m_interfaces[2]);
    device.SetDeviceClass("C");
    EXPECT_TRUE(interfaceOf(m_interfaces, *Plugin::CameraPool::Internal::CCameraInfo::fromDeviceInfo(device)).isNull());
}

} // namespace
