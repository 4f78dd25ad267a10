// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/cameranames.h"

#include "camerapool/internal/camerainfo.h"

#include <gtest/gtest.h>

namespace
{

using HostKit::CameraInfoPtr;
using HostKit::findByName;

CameraInfoPtr camera(const char* serial, const char* userName, const char* fullName)
{
    Velmo::CDeviceInfo info;
    info.SetVendorName("Maker").SetFullName(fullName);
    info.SetModelName("Model");
    info.SetSerialNumber(serial);
    info.SetUserDefinedName(userName);
    return Plugin::CameraPool::Internal::CCameraInfo::fromDeviceInfo(info);
}

class CameraNames : public testing::Test
{
protected:
    QVector<CameraInfoPtr> m_cameras{camera("1", "left", "full-1"), camera("2", "left", "full-2"),
                                     camera("3", "", "full-3")};
    QString m_error;
};

TEST_F(CameraNames, aSerialNumberTheFullNameAndTheLongNameFindTheCamera)
{
    EXPECT_EQ(findByName(m_cameras, QStringLiteral("2"), m_error), m_cameras[1]);
    EXPECT_EQ(findByName(m_cameras, QStringLiteral("full-3"), m_error), m_cameras[2]);
    EXPECT_EQ(findByName(m_cameras, QStringLiteral("Maker-Model-1"), m_error), m_cameras[0]);
}

TEST_F(CameraNames, aNameOfTwoCamerasIsRefusedWithBoth)
{
    EXPECT_TRUE(findByName(m_cameras, QStringLiteral("left"), m_error).isNull());
    EXPECT_TRUE(m_error.contains(QStringLiteral("full-1")) && m_error.contains(QStringLiteral("full-2")));
}

TEST_F(CameraNames, anEmptyNameFindsNoCameraWithoutUserName)
{
    EXPECT_TRUE(findByName(m_cameras, QString(), m_error).isNull());
}

TEST_F(CameraNames, anUnknownNameIsInTheReason)
{
    EXPECT_TRUE(findByName(m_cameras, QStringLiteral("nobody"), m_error).isNull());
    EXPECT_TRUE(m_error.contains(QStringLiteral("nobody")));
}

} // namespace
