// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerapool.h"

#include <gtest/gtest.h>

#include <QMetaMethod>

/** What other plugins were compiled against: signals and slots in their order, with their arguments. */
namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

/** The class's own signals, or its own slots, in their order. */
QStringList own(const QMetaObject& meta, QMetaMethod::MethodType type)
{
    QStringList signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        if (meta.method(i).methodType() == type)
        {
            signatures.append(QString::fromLatin1(meta.method(i).methodSignature()));
        }
    }
    return signatures;
}

TEST(SignalOrder, ofTheCameraInterface)
{
    EXPECT_EQ(own(ICamera::staticMetaObject, QMetaMethod::Signal),
              QStringList({QStringLiteral("cameraGrabStart()"), QStringLiteral("cameraGrabStarted()"),
                           QStringLiteral("cameraGrabStopped()"), QStringLiteral("cameraConnectionLost()"),
                           QStringLiteral("cameraImageGrabbed(Velmo::CGrabResultPtr)"),
                           QStringLiteral("cameraImageGrabFailed()"),
                           QStringLiteral("cameraStatisticChanged(int,int,double,uint64_t,CCompressionStatistic)")}));
    EXPECT_EQ(own(ICamera::staticMetaObject, QMetaMethod::Slot),
              QStringList({QStringLiteral("startGrabbing()"), QStringLiteral("stopGrabbing()"),
                           QStringLiteral("singleShot(uint)")}));
}

TEST(SignalOrder, ofTheCamera)
{
    EXPECT_EQ(own(CCamera::staticMetaObject, QMetaMethod::Signal),
              QStringList({QStringLiteral("invokeTimeout(int64_t)")}));
    EXPECT_EQ(own(CCamera::staticMetaObject, QMetaMethod::Slot),
              QStringList({QStringLiteral("open(bool)"), QStringLiteral("close()"), QStringLiteral("startGrabbing()"),
                           QStringLiteral("stopGrabbing()"), QStringLiteral("singleShot(uint)"),
                           QStringLiteral("onFrameGrabberTimeout()")}));
}

TEST(SignalOrder, ofTheCameraPool)
{
    QStringList names;
    for (const QString& signature : own(CCameraPool::staticMetaObject, QMetaMethod::Signal))
    {
        EXPECT_TRUE(signature.contains(QStringLiteral("(QSharedPointer<ICameraInfo>"))) << qPrintable(signature);
        names.append(signature.section(QLatin1Char('('), 0, 0));
    }
    EXPECT_EQ(names.join(QLatin1Char(' ')),
              QStringLiteral("cameraGrabStart cameraGrabStarted cameraGrabStopped cameraConnectionLost "
                             "cameraImageGrabbed cameraImageGrabFailed cameraStatisticUpdated cameraDetached "
                             "cameraAttached"));
    EXPECT_EQ(own(CCameraPool::staticMetaObject, QMetaMethod::Slot),
              QStringList({QStringLiteral("onCameraGrabStart()"), QStringLiteral("onCameraGrabStarted()"),
                           QStringLiteral("onCameraGrabStopped()"), QStringLiteral("onCameraConnectionLost()"),
                           QStringLiteral("onCameraImageGrabbed(Velmo::CGrabResultPtr)"),
                           QStringLiteral("onCameraImageGrabFailed()"),
                           QStringLiteral("onCameraStatisticUpdated(int,int,double,uint64_t,CCompressionStatistic)")}));
}

} // namespace
