// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"

#include "parametercollection/parameterpath.h"
#include "utils/exceptions.h"

#include <stdexcept>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ParameterCollection::CScopedObjectStateLock;
namespace Path = ParameterCollection::ParameterPath;

namespace
{

/** The end of a camera, and the guards against using one that has ended or that somebody else uses. */
class CameraDisposal : public ::Test::CameraPoolFixture
{
protected:
    template <class Work> static QString thrown(Work&& work)
    {
        try
        {
            work();
        }
        catch (const Core::Exception::InvalidOperationException& e)
        {
            return e.message();
        }
        return {};
    }
};

TEST_F(CameraDisposal, disposalClosesDestroysAndMarksBothStates)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const auto instanceState = camera->instanceState();
    const auto deviceState = camera->deviceState();
    const auto collection = camera->getParameterCollection();
    int closed = 0;
    QObject::connect(camera.data(), &IDevice::deviceClosed, [&] { ++closed; });
    camera.reset();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    EXPECT_EQ(instanceState.state(), 0);
    EXPECT_EQ(deviceState.state(), 0);
    EXPECT_EQ(collection->nodeMap(Path::CameraDevice), nullptr);
}

TEST_F(CameraDisposal, disposalOfACameraThatWasNeverInitialisedWorks)
{
    QSharedPointer<CCamera> camera(new CCamera(record(), nullptr));
    EXPECT_NO_THROW(camera.reset());
}

TEST_F(CameraDisposal, disposalWithAThrowingReceiverStillDestroysTheDevice)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    QObject::connect(camera.data(), &IDevice::deviceClosed, [] { throw std::runtime_error("receiver"); });
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(CameraDisposal, disposalWithAThrowingReceiverStillWritesTheSettings)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const auto instanceState = camera->instanceState();
    QObject::connect(camera.data(), &IDevice::deviceClosed, [] { throw std::runtime_error("receiver"); });
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toInt(), 10);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MaxNumBuffersContinuousShot")).toInt(), 450);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/UsedBufferMemory")).toUInt(), 8388608U);
    EXPECT_EQ(instanceState.state(), 0);
}

TEST_F(CameraDisposal, disposalWithAReceiverThatThrowsAnyKindFinishes)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const auto collection = camera->getParameterCollection();
    QObject::connect(camera.data(), &IDevice::deviceClosed, [] { throw 1; });
    QObject::connect(collection.data(), &ParameterCollection::IParameterCollection::nodeMapDetaching, [] { throw 2; });
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(collection->nodeMap(Path::CameraDevice), nullptr);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MaxNumBuffersContinuousShot")).toInt(), 450);
}

TEST_F(CameraDisposal, disposalOfACameraThatWasNeverInitialisedLeavesTheSettings)
{
    QSettings().setValue(QStringLiteral("Grab/MinNumBuffersContinuousShot"), 25);
    QSharedPointer<CCamera>(new CCamera(record(), nullptr)).reset();
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toInt(), 25);
}

TEST_F(CameraDisposal, disposalKeepsSettingsThatMakeNoSense)
{
    QSettings().setValue(QStringLiteral("Grab/MinNumBuffersContinuousShot"), QStringLiteral("many"));
    makeCamera().reset();
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toString(), QStringLiteral("many"));
}

TEST_F(CameraDisposal, disposalMakesTheDefaultSettingsExplicit)
{
    makeCamera().reset();
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toInt(), 10);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MaxNumBuffersContinuousShot")).toInt(), 450);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/UsedBufferMemory")).toUInt(), 8388608U);
}

TEST_F(CameraDisposal, aCameraAloneIsNeitherDisposedNorInUse)
{
    const auto camera = makeCamera();
    const CScopedObjectStateLock own(camera->instanceState());
    EXPECT_NO_THROW(camera->raiseExceptionIfDisposed());
    EXPECT_NO_THROW(camera->raiseExceptionIfInUse());
}

TEST_F(CameraDisposal, aCameraWithoutItsInstantCameraIsDisposed)
{
    auto camera = makeCamera();
    const CCamera* const pCamera = camera.data();
    QString text;
    // The parameters go after the instant camera, when the camera that is being destroyed can still be asked.
    QObject::connect(camera->getParameterCollection().data(), &QObject::destroyed,
                     [&]
                     {
                         try
                         {
                             pCamera->raiseExceptionIfDisposed();
                         }
                         catch (const Core::Exception::ObjectDisposedException& e)
                         {
                             text = e.message();
                         }
                     });
    camera.reset();
    EXPECT_EQ(text, QStringLiteral("Camera object has been disposed."));
}

TEST_F(CameraDisposal, aSecondHolderOfTheInstanceMakesItInUse)
{
    const auto camera = makeCamera();
    const CScopedObjectStateLock own(camera->instanceState());
    const CScopedObjectStateLock other(camera->instanceState());
    EXPECT_EQ(thrown([&] { camera->raiseExceptionIfInUse(); }),
              QStringLiteral("Action cannot be performed. The camera instance is in use."));
}

TEST_F(CameraDisposal, aMarkedUseMakesTheStreamGrabberInUse)
{
    const auto camera = makeCamera();
    auto state = camera->instanceState();
    state.addUse();
    EXPECT_EQ(thrown([&] { camera->raiseExceptionIfInUse(); }),
              QStringLiteral("Action cannot be performed. The stream grabber is still in use."));
    state.removeUse();
}

TEST_F(CameraDisposal, disposalOfALostCameraWorks)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    m_transport->RemoveCamera(s_serial);
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

} // namespace
