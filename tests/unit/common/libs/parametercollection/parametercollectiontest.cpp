// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/parametercollection.h"

#include "fakenodemap.h"
#include "parametercollection/parameternames.h"
#include "parametercollection/parameterpath.h"
#include "parametercollection/sfncversion.h"
#include "parametercollection/vmcamera.h"
#include "utils/exceptions.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <atomic>
#include <thread>

namespace
{

using namespace ParameterCollection;

class ParameterCollectionTest : public ::testing::Test
{
protected:
    ParameterCollectionTest()
    {
        m_collection->announceNodeMap(ParameterPath::CameraDevice);
        m_collection->announceNodeMap(ParameterPath::StreamGrabber0);
    }
    void attachCamera() { m_collection->attachNodeMap(ParameterPath::CameraDevice, &m_camera); }

    CFakeNodeMap m_camera;
    CFakeNodeMap m_stream;
    CObjectState m_state;
    QSharedPointer<CParameterCollection> m_collection = QSharedPointer<CParameterCollection>::create(m_state);
};

TEST_F(ParameterCollectionTest, bareNamesAreSearchedInTheOrderOfAnnouncement)
{
    auto& ofStream = m_stream.add("PayloadSize", 2);
    m_collection->attachNodeMap(ParameterPath::StreamGrabber0, &m_stream);
    EXPECT_EQ(m_collection->node("PayloadSize"), static_cast<CFakeNode*>(&ofStream));
    auto& ofCamera = m_camera.add("PayloadSize", 1);
    attachCamera();
    EXPECT_EQ(m_collection->node("PayloadSize"), static_cast<CFakeNode*>(&ofCamera));
    EXPECT_EQ(m_collection->node("@StreamGrabber0/PayloadSize"), static_cast<CFakeNode*>(&ofStream));
}

TEST_F(ParameterCollectionTest, announcingTwiceChangesNothing)
{
    m_collection->announceNodeMap(ParameterPath::CameraDevice);
    EXPECT_EQ(m_collection->paths(), (QStringList{"@CameraDevice", "@StreamGrabber0"}));
}

TEST_F(ParameterCollectionTest, attachingUnderAPathThatWasNotAnnouncedIsRefused)
{
    EXPECT_THROW(m_collection->attachNodeMap("@Elsewhere", &m_camera), Core::Exception::ArgumentException);
}

TEST_F(ParameterCollectionTest, unknownNamesAndPathsGiveNoNode)
{
    attachCamera();
    EXPECT_EQ(m_collection->node("Nothing"), nullptr);
    EXPECT_EQ(m_collection->node("@Elsewhere/Nothing"), nullptr);
    EXPECT_EQ(m_collection->node(QString()), nullptr);
}

TEST_F(ParameterCollectionTest, theNodeMapCanBeUsedWhileBothSignalsAreEmitted)
{
    int usable = 0;
    const auto count = [&](const QString& path)
    {
        usable += m_collection->nodeMap(path) == &m_camera ? 1 : 0;
    };
    QObject::connect(m_collection.data(), &IParameterCollection::nodeMapAttached, count);
    QObject::connect(m_collection.data(), &IParameterCollection::nodeMapDetaching, count);
    attachCamera();
    EXPECT_EQ(usable, 1);
    m_collection->detachAllNodeMaps();
    EXPECT_EQ(usable, 2);
    EXPECT_EQ(m_collection->nodeMap(ParameterPath::CameraDevice), nullptr);
}

TEST_F(ParameterCollectionTest, detachingWhatIsNotAttachedEmitsNothing)
{
    QSignalSpy detaching(m_collection.data(), &IParameterCollection::nodeMapDetaching);
    m_collection->detachAllNodeMaps();
    EXPECT_EQ(detaching.count(), 0);
}

TEST_F(ParameterCollectionTest, anotherNodeMapDetachesTheFirst)
{
    QSignalSpy detaching(m_collection.data(), &IParameterCollection::nodeMapDetaching);
    QSignalSpy attached(m_collection.data(), &IParameterCollection::nodeMapAttached);
    attachCamera();
    attachCamera();
    EXPECT_EQ(attached.count(), 1) << "the same node map again";
    m_collection->attachNodeMap(ParameterPath::CameraDevice, &m_stream);
    EXPECT_EQ(detaching.count(), 1);
    EXPECT_EQ(attached.count(), 2);
    EXPECT_EQ(m_collection->nodeMap(ParameterPath::CameraDevice), &m_stream);
}

TEST_F(ParameterCollectionTest, aReceiverThatDetachesAgainWhileDetachingIsHarmless)
{
    int emitted = 0;
    QObject::connect(m_collection.data(), &IParameterCollection::nodeMapDetaching,
                     [&](const QString& path)
                     {
                         ++emitted;
                         m_collection->announceNodeMap("@Another");
                         m_collection->detachNodeMap(path);
                     });
    attachCamera();
    m_collection->detachNodeMap(ParameterPath::CameraDevice);
    EXPECT_EQ(emitted, 1);
    EXPECT_EQ(m_collection->nodeMap(ParameterPath::CameraDevice), nullptr);
}

TEST_F(ParameterCollectionTest, aUserWithTheLockKeepsTheNodeMapFromGoing)
{
    m_camera.add("Width", 10);
    attachCamera();
    std::atomic<bool> detached{false};
    std::thread detacher;
    {
        const CScopedObjectStateLock lock(m_state);
        detacher = std::thread(
            [&]
            {
                m_collection->detachAllNodeMaps();
                detached = true;
            });
        while (m_state.entryCount() < 2)
        {
            std::this_thread::yield();
        }
        EXPECT_NE(m_collection->node("Width"), nullptr);
        EXPECT_FALSE(detached);
    }
    detacher.join();
    EXPECT_EQ(m_collection->node("Width"), nullptr);
}

TEST_F(ParameterCollectionTest, aParameterSurvivesReopening)
{
    const CIntegerParameter width(m_collection, "@CameraDevice/Width");
    EXPECT_FALSE(width.isValid());
    m_camera.add("Width", 10);
    attachCamera();
    EXPECT_TRUE(width.isValid());
    EXPECT_EQ(width.value(), 10);
    m_collection->detachAllNodeMaps();
    EXPECT_FALSE(width.isReadable());
    EXPECT_EQ(width.valueOr(7), 7);
    attachCamera();
    EXPECT_EQ(width.value(), 10);
}

TEST_F(ParameterCollectionTest, aMissingParameterThrowsWithItsName)
{
    try
    {
        CIntegerParameter(m_collection, "@CameraDevice/Width").value();
        FAIL() << "no exception";
    }
    catch (const GenICam::AccessException& e)
    {
        EXPECT_NE(std::string(e.GetDescription()).find("@CameraDevice/Width"), std::string::npos);
    }
}

TEST_F(ParameterCollectionTest, aParameterOfAnotherKindIsNotValid)
{
    m_camera.add("Width", 10);
    attachCamera();
    EXPECT_TRUE(CParameter(m_collection, "Width").isValid());
    EXPECT_FALSE(CFloatParameter(m_collection, "Width").isValid());
    EXPECT_FALSE(CEnumParameter(m_collection, "Width").isAvailable());
    EXPECT_THROW(CFloatParameter(m_collection, "Width").value(), GenICam::AccessException);
}

TEST_F(ParameterCollectionTest, refusedWritesThrowOrReturnFalse)
{
    m_camera.add("Width", 10);
    attachCamera();
    CIntegerParameter width(m_collection, "Width");
    EXPECT_THROW(width.setValue(101), GenICam::OutOfRangeException);
    EXPECT_FALSE(width.trySetValue(101));
    EXPECT_TRUE(width.trySetValue(100));
    EXPECT_EQ(width.toString(), QStringLiteral("100"));
    EXPECT_TRUE(width.tryFromString("5"));
    EXPECT_EQ(width.value(), 5);
    EXPECT_EQ(width.minimum() + width.maximum() + width.increment(), 101);
}

TEST_F(ParameterCollectionTest, accessModesAreToldApart)
{
    auto& node = m_camera.add("Width", 10);
    attachCamera();
    const CIntegerParameter width(m_collection, "Width");
    node.access = GenApi::EAccessMode::RO;
    EXPECT_TRUE(width.isReadable() && !width.isWritable() && width.isAvailable());
    node.access = GenApi::EAccessMode::NA;
    EXPECT_TRUE(width.isImplemented() && !width.isAvailable() && !width.isReadable());
    node.access = GenApi::EAccessMode::NI;
    EXPECT_TRUE(width.isValid() && !width.isImplemented());
}

TEST(Parameters, withoutACollectionNothingIsValid)
{
    const VMCamera camera({});
    EXPECT_FALSE(camera.ActionDeviceKey.isValid());
    EXPECT_FALSE(camera.PtpEnable.isAvailable());
    EXPECT_EQ(camera.Width.valueOr(3), 3);
}

TEST_F(ParameterCollectionTest, theCameraSetReadsTheDevicesNodeMapOnly)
{
    m_stream.add("ActionDeviceKey", 1);
    m_collection->attachNodeMap(ParameterPath::StreamGrabber0, &m_stream);
    const VMCamera camera(m_collection);
    EXPECT_FALSE(camera.ActionDeviceKey.isAvailable());
    m_camera.add("ActionDeviceKey", 5);
    attachCamera();
    EXPECT_EQ(camera.ActionDeviceKey.value(), 5);
}

TEST(ParameterNames, arePathAndFeature)
{
    EXPECT_EQ(ParameterName::CameraDevice::DeviceTLType.toString(), QStringLiteral("@CameraDevice/DeviceTLType"));
    EXPECT_EQ(ParameterName::StreamGrabber0::PayloadSize.toString(), QStringLiteral("@StreamGrabber0/PayloadSize"));
}

TEST_F(ParameterCollectionTest, theSfncVersionIsWhatTheDeviceNames)
{
    EXPECT_EQ(readSfncVersion(m_collection), SfncVersion::Undefined);
    m_camera.add("DeviceSFNCVersionMajor", 2);
    m_camera.add("DeviceSFNCVersionMinor", 5);
    attachCamera();
    EXPECT_EQ(readSfncVersion(m_collection), SfncVersion::V2_5_0) << "a missing last number counts as 0";
    m_camera.add("DeviceSFNCVersionSubMinor", 1);
    EXPECT_EQ(readSfncVersion(m_collection), QVersionNumber(2, 5, 1));
}

TEST(ObjectState, copiesShareStateLockAndCounts)
{
    CObjectState state;
    CObjectState copy = state;
    copy.setState(ObjectState_Open);
    EXPECT_EQ(state.state(), ObjectState_Open);
    copy.addUse();
    EXPECT_TRUE(state.isInUse());
    state.removeUse();
    EXPECT_FALSE(copy.isInUse());
    const CScopedObjectStateLock outer(state);
    const CScopedObjectStateLock inner(copy);
    EXPECT_EQ(state.entryCount(), 2) << "the lock is recursive and counts every entry";
}

} // namespace
