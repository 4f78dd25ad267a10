// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/devicepool.h"
#include "support/seed.h"
#include "unit/common/plugins/camerapool/testing/records.h"
#include "utils/exceptions.h"
#include "velmo/velmo.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSignalSpy>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <iostream>
#include <limits>
#include <random>
#include <string>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

class CFakeDevice : public IDevice
{
public:
    explicit CFakeDevice(QSharedPointer<IBaseInfo> info) : IDevice(nullptr), m_info(std::move(info)) {}
    QSharedPointer<Plugin::AppCore::IInfo> getInfo() const override { return m_info; }
    bool isConnected() const override { return m_isOpen; }
    bool isOpen() const override { return m_isOpen; }
    QSharedPointer<ParameterCollection::IParameterCollection> getParameterCollection() const override { return {}; }
    bool open(bool monitorMode) override
    {
        throwIfAsked();
        m_monitorMode = monitorMode;
        m_isOpen = true;
        emit deviceOpened();
        return true;
    }
    void close() override
    {
        throwIfAsked();
        m_isOpen = false;
        emit deviceClosed();
    }

    bool m_monitorMode = false;
    bool m_throws = false;

private:
    void throwIfAsked() const
    {
        if (m_throws)
        {
            throw Core::Exception::TimeoutException(QStringLiteral("no answer"));
        }
    }

    QSharedPointer<IBaseInfo> m_info;
    bool m_isOpen = false;
};

class CFakePool : public ADevicePool
{
public:
    CFakePool() : ADevicePool(nullptr) {}
    ~CFakePool() override { releaseDevices(); }
    using ADevicePool::appendDevice;
    using ADevicePool::closeDevice;
    using ADevicePool::devices;
    using ADevicePool::openDevice;
    QSharedPointer<IDevice> createDevice(QSharedPointer<IBaseInfo> info) override
    {
        if (auto known = findDevice(info))
        {
            return known;
        }
        const QSharedPointer<CFakeDevice> device(new CFakeDevice(info));
        appendDevice(device);
        connectOpenState(device.data());
        return device;
    }
};

/** Processor time of this thread: other programs do not count. */
std::int64_t threadNanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/** The search as it is defined: the first device whose record has the same identity. */
QSharedPointer<IDevice> walk(const CFakePool& pool, const BaseInfoPtr& asked)
{
    const auto* const pAskedInterface = qobject_cast<const IInterfaceInfo*>(asked.data());
    for (const auto& device : pool.devices())
    {
        const auto own = device->getInfo().objectCast<IBaseInfo>();
        const auto* const pOwnInterface = qobject_cast<const IInterfaceInfo*>(own.data());
        const bool areInterfaces = pAskedInterface != nullptr && pOwnInterface != nullptr;
        if (areInterfaces ? pOwnInterface->getInterfaceId() == pAskedInterface->getInterfaceId()
                          : asked->getType() == RecordType_Camera && own->getType() == RecordType_Camera &&
                                own->getFullName() == asked->getFullName())
        {
            return device;
        }
    }
    return {};
}

class DevicePool : public ::testing::Test
{
protected:
    ~DevicePool() override { ADevicePool::setActiveDevice({}); }
    void announce(const QVector<QSharedPointer<IBaseInfo>>& infos)
    {
        m_pool.beginAnnounce();
        m_pool.announceDevices(infos);
        m_pool.endAnnounce();
    }
    static BaseInfoPtr infoOf(const QSignalSpy& spy, int index) { return spy.at(index).at(0).value<BaseInfoPtr>(); }

    CFakePool m_pool;
    const BaseInfoPtr m_camera = ::Test::cameraRecord("pool/1");
    const BaseInfoPtr m_other = ::Test::cameraRecord("pool/2");
};

TEST_F(DevicePool, holdsOneInitializationOfTheSdk)
{
    const auto before = Velmo::VelmoInitializationCount();
    {
        const CFakePool another;
        EXPECT_EQ(Velmo::VelmoInitializationCount(), before + 1);
    }
    EXPECT_EQ(Velmo::VelmoInitializationCount(), before);
}

TEST_F(DevicePool, registersTheMetatypesOfRecords)
{
    EXPECT_EQ(QMetaType::type("BaseInfoPtr"), qMetaTypeId<BaseInfoPtr>());
    EXPECT_EQ(QMetaType::type("Plugin::CameraPool::BaseInfoPtr"), qMetaTypeId<BaseInfoPtr>());
}

TEST_F(DevicePool, variantOfARecordConvertsToTheObject)
{
    const auto variant = QVariant::fromValue(m_camera);
    EXPECT_EQ(variant.value<QObject*>(), m_camera.data());
}

TEST_F(DevicePool, findsACameraByItsFullName)
{
    const auto device = m_pool.createDevice(m_camera);
    m_pool.createDevice(m_other);
    EXPECT_EQ(m_pool.findDevice(::Test::cameraRecord("pool/1")), device);
}

TEST_F(DevicePool, fullNamesAreCaseSensitive)
{
    m_pool.createDevice(m_camera);
    EXPECT_TRUE(m_pool.findDevice(::Test::cameraRecord("POOL/1")).isNull());
}

TEST_F(DevicePool, findsAnInterfaceByItsInterfaceId)
{
    const auto device = m_pool.createDevice(::Test::interfaceRecord("eth0"));
    m_pool.createDevice(::Test::interfaceRecord("eth1"));
    EXPECT_EQ(m_pool.findDevice(::Test::interfaceRecord("eth0")), device);
}

TEST_F(DevicePool, firstOfTheRecordsOfEqualNameIsFoundByEachOfThem)
{
    const BaseInfoPtr twin = ::Test::cameraRecord("pool/1");
    const QSharedPointer<IDevice> first(new CFakeDevice(m_camera));
    const QSharedPointer<IDevice> second(new CFakeDevice(twin));
    m_pool.appendDevice(first);
    m_pool.appendDevice(second);
    EXPECT_EQ(m_pool.findDevice(m_camera), first);
    EXPECT_EQ(m_pool.findDevice(twin), first);
    EXPECT_EQ(m_pool.findDevice(::Test::cameraRecord("pool/1")), first);
    announce({twin}); // finds the first, yet it is the first that no pass announces any more
    EXPECT_EQ(m_pool.findDevice(m_camera), second);
    EXPECT_EQ(m_pool.findDevice(twin), second);
}

TEST_F(DevicePool, firstOfTheInterfacesOfEqualIdIsFoundByEachOfThem)
{
    const BaseInfoPtr own = ::Test::interfaceRecord("eth0");
    const BaseInfoPtr twin = ::Test::interfaceRecord("eth0");
    const QSharedPointer<IDevice> first(new CFakeDevice(own));
    m_pool.appendDevice(first);
    m_pool.appendDevice(QSharedPointer<IDevice>(new CFakeDevice(twin)));
    EXPECT_EQ(m_pool.findDevice(own), first);
    EXPECT_EQ(m_pool.findDevice(twin), first);
}

TEST_F(DevicePool, interfaceAndCameraOfEqualTextAreApart)
{
    const auto camera = m_pool.createDevice(::Test::cameraRecord("eth0"));
    const auto interface = m_pool.createDevice(::Test::interfaceRecord("eth0"));
    EXPECT_NE(camera, interface);
    EXPECT_EQ(m_pool.findDevice(::Test::cameraRecord("eth0")), camera);
    EXPECT_EQ(m_pool.findDevice(::Test::interfaceRecord("eth0")), interface);
}

TEST_F(DevicePool, findsWhatAWalkFromFrontToBackFinds)
{
    const auto seed = static_cast<std::mt19937::result_type>(::Test::randomSeed());
    RecordProperty("seed", std::to_string(seed));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto randomRecord = [&random]() -> BaseInfoPtr
    {
        const std::string text = "key/" + std::to_string(random() % 8);
        return random() % 3 == 0 ? BaseInfoPtr(::Test::interfaceRecord(text)) : BaseInfoPtr(::Test::cameraRecord(text));
    };
    for (int round = 0; round < 200; ++round)
    {
        const BaseInfoPtr record = randomRecord();
        m_pool.appendDevice(QSharedPointer<IDevice>(new CFakeDevice(record)));
        if (random() % 16 == 0)
        {
            m_pool.beginAnnounce();
            for (const auto& device : QVector<QSharedPointer<IDevice>>(m_pool.devices()))
            {
                if (random() % 3 != 0)
                {
                    m_pool.announceDevice(device->getInfo().objectCast<IBaseInfo>());
                }
            }
            m_pool.endAnnounce();
        }
        const BaseInfoPtr foreign = randomRecord();
        ASSERT_EQ(m_pool.findDevice(record), walk(m_pool, record));
        ASSERT_EQ(m_pool.findDevice(foreign), walk(m_pool, foreign));
        for (const auto& device : m_pool.devices())
        {
            const auto own = device->getInfo().objectCast<IBaseInfo>();
            ASSERT_EQ(m_pool.findDevice(own), walk(m_pool, own));
        }
    }
}

TEST_F(DevicePool, findsNothingForNull)
{
    m_pool.createDevice(m_camera);
    EXPECT_TRUE(m_pool.findDevice({}).isNull());
}

TEST_F(DevicePool, openingAnUnknownDeviceCreatesIt)
{
    EXPECT_TRUE(m_pool.openDevice(m_camera, true));
    const auto device = m_pool.findDevice(m_camera);
    ASSERT_FALSE(device.isNull());
    EXPECT_TRUE(static_cast<CFakeDevice*>(device.data())->m_monitorMode);
    EXPECT_TRUE(m_pool.isDeviceOpen(m_camera));
}

TEST_F(DevicePool, openingWithoutAnActiveDeviceFails)
{
    EXPECT_FALSE(m_pool.openDevice(false));
}

TEST_F(DevicePool, activeDeviceIsOpenedAndClosed)
{
    ADevicePool::setActiveDevice(m_camera);
    EXPECT_TRUE(m_pool.openDevice(false));
    EXPECT_TRUE(m_pool.isDeviceOpen(m_camera));
    m_pool.closeDevice();
    EXPECT_FALSE(m_pool.isDeviceOpen(m_camera));
}

TEST_F(DevicePool, nullIsNotOpenAndClosesNothing)
{
    EXPECT_FALSE(m_pool.isDeviceOpen({}));
    m_pool.closeDevice(QSharedPointer<IDevice>());
    m_pool.closeDevice(QSharedPointer<IBaseInfo>());
    m_pool.closeDevice();
    EXPECT_TRUE(m_pool.devices().isEmpty());
}

TEST_F(DevicePool, unknownDeviceIsNotOpen)
{
    EXPECT_FALSE(m_pool.isDeviceOpen(m_camera));
}

TEST_F(DevicePool, openAndCloseAreSignalledWithTheRecord)
{
    QSignalSpy opened(&m_pool, &ADevicePool::deviceOpened);
    QSignalSpy closed(&m_pool, &ADevicePool::deviceClosed);
    m_pool.openDevice(m_camera, false);
    m_pool.closeDevice(m_camera);
    ASSERT_EQ(opened.count(), 1);
    ASSERT_EQ(closed.count(), 1);
    EXPECT_EQ(infoOf(opened, 0), m_camera);
    EXPECT_EQ(infoOf(closed, 0), m_camera);
}

TEST_F(DevicePool, exceptionsOfADevicePassThrough)
{
    m_pool.openDevice(m_camera, false);
    const auto device = m_pool.findDevice(m_camera);
    static_cast<CFakeDevice*>(device.data())->m_throws = true;
    EXPECT_THROW(m_pool.openDevice(m_camera, false), Core::Exception::TimeoutException);
    EXPECT_THROW(m_pool.closeDevice(m_camera), Core::Exception::TimeoutException);
    EXPECT_THROW(m_pool.closeDevice(device), Core::Exception::TimeoutException);
}

TEST_F(DevicePool, openStateOfWhatIsNoDeviceIsNotSignalled)
{
    QSignalSpy opened(&m_pool, &ADevicePool::deviceOpened);
    QSignalSpy closed(&m_pool, &ADevicePool::deviceClosed);
    QObject stranger;
    ASSERT_TRUE(QObject::connect(&stranger, SIGNAL(objectNameChanged(QString)), &m_pool, SLOT(onDeviceOpened())));
    ASSERT_TRUE(QObject::connect(&stranger, SIGNAL(objectNameChanged(QString)), &m_pool, SLOT(onDeviceClosed())));
    stranger.setObjectName(QStringLiteral("renamed"));
    EXPECT_EQ(opened.count(), 0);
    EXPECT_EQ(closed.count(), 0);
}

TEST_F(DevicePool, announcingTwiceConnectsOnceAndCreatesOneDevice)
{
    QSignalSpy connected(&m_pool, &ADevicePool::deviceConnected);
    m_pool.beginAnnounce();
    m_pool.announceDevice(m_camera);
    m_pool.announceDevice(m_camera);
    m_pool.endAnnounce();
    announce({m_camera});
    ASSERT_EQ(connected.count(), 1);
    EXPECT_EQ(infoOf(connected, 0), m_camera);
    EXPECT_EQ(m_pool.devices().size(), 1);
}

TEST_F(DevicePool, announcingNullDoesNothing)
{
    QSignalSpy connected(&m_pool, &ADevicePool::deviceConnected);
    m_pool.announceDevice({});
    EXPECT_EQ(connected.count(), 0);
    EXPECT_TRUE(m_pool.devices().isEmpty());
}

TEST_F(DevicePool, connectionIsSignalledBeforeTheDeviceExists)
{
    bool isFound = true;
    QObject::connect(&m_pool, &ADevicePool::deviceConnected, &m_pool,
                     [&](const BaseInfoPtr& info) { isFound = !m_pool.findDevice(info).isNull(); });
    announce({m_camera});
    EXPECT_FALSE(isFound);
}

TEST_F(DevicePool, emptyPassRemovesAllDevices)
{
    announce({m_camera, m_other});
    QSignalSpy disconnected(&m_pool, &ADevicePool::deviceDisconnected);
    announce({});
    ASSERT_EQ(disconnected.count(), 2);
    EXPECT_EQ(infoOf(disconnected, 0), m_camera);
    EXPECT_EQ(infoOf(disconnected, 1), m_other);
    EXPECT_TRUE(m_pool.devices().isEmpty());
    EXPECT_TRUE(m_pool.findDevice(m_camera).isNull());
}

TEST_F(DevicePool, removalKeepsTheOrderOfTheOthers)
{
    const BaseInfoPtr third = ::Test::cameraRecord("pool/3");
    announce({m_camera, m_other, third});
    announce({third, m_camera});
    ASSERT_EQ(m_pool.devices().size(), 2);
    EXPECT_EQ(m_pool.devices().at(0)->getInfo(), m_camera);
    EXPECT_EQ(m_pool.devices().at(1)->getInfo(), third);
    EXPECT_EQ(m_pool.findDevice(third), m_pool.devices().at(1));
}

TEST_F(DevicePool, deviceOfAnotherRecordOfEqualNameIsRemoved)
{
    announce({m_camera});
    QSignalSpy disconnected(&m_pool, &ADevicePool::deviceDisconnected);
    announce({::Test::cameraRecord("pool/1")});
    EXPECT_EQ(disconnected.count(), 1);
}

TEST_F(DevicePool, removedDeviceLivesUntilTheEventLoopRuns)
{
    announce({m_camera});
    const QWeakPointer<IDevice> device = m_pool.findDevice(m_camera);
    announce({});
    EXPECT_FALSE(device.isNull());
    QCoreApplication::processEvents();
    EXPECT_TRUE(device.isNull());
}

TEST_F(DevicePool, removedDeviceLivesAsLongAsSomebodyHoldsIt)
{
    announce({m_camera});
    const auto device = m_pool.findDevice(m_camera);
    announce({});
    QCoreApplication::processEvents();
    EXPECT_EQ(device->getInfo(), m_camera);
}

TEST_F(DevicePool, poolCanBeDestroyedWithRemovedDevicesPending)
{
    QWeakPointer<IDevice> device;
    {
        CFakePool pool;
        pool.announceDevice(m_camera);
        device = pool.findDevice(m_camera);
        pool.beginAnnounce();
        pool.endAnnounce();
    }
    EXPECT_TRUE(device.isNull());
    QCoreApplication::processEvents();
}

TEST_F(DevicePool, activeDeviceIsCommonToAllPoolsAndSurvivesItsDevice)
{
    announce({m_camera});
    ADevicePool::setActiveDevice(m_camera);
    announce({});
    EXPECT_EQ(ADevicePool::getActiveDeviceInfo(), m_camera);
}

TEST_F(DevicePool, settingTheActiveDeviceAgainChangesNothing)
{
    ADevicePool::setActiveDevice(m_camera);
    ADevicePool::setActiveDevice(m_camera);
    EXPECT_EQ(ADevicePool::getActiveDeviceInfo(), m_camera);
    ADevicePool::setActiveDevice({});
    EXPECT_TRUE(ADevicePool::getActiveDeviceInfo().isNull());
}

TEST_F(DevicePool, noDeviceIsOpenExclusive)
{
    m_pool.openDevice(m_camera, false);
    EXPECT_FALSE(m_pool.isDeviceOpenExclusive(m_camera));
}

TEST_F(DevicePool, costOfAnnouncingADeviceDoesNotGrowWithTheirNumber)
{
    const auto measure = [](int count)
    {
        QVector<BaseInfoPtr> infos;
        for (int i = 0; i < count; ++i)
        {
            infos.append(::Test::cameraRecord("many/" + std::to_string(i)));
        }
        CFakePool pool;
        pool.announceDevices(infos);
        std::int64_t least = std::numeric_limits<std::int64_t>::max();
        for (int i = 0; i < 5; ++i)
        {
            const std::int64_t start = threadNanoseconds();
            pool.beginAnnounce();
            pool.announceDevices(infos);
            pool.endAnnounce();
            least = std::min(least, threadNanoseconds() - start);
        }
        return static_cast<double>(least) / count;
    };
    const double few = measure(1000);
    const double many = measure(20000);
    std::cout << "ns per device: " << few << " of 1000, " << many << " of 20000\n";
    EXPECT_LT(many, 12 * few); // a linear search would make it 20 times as much; caches make it a few times
}

} // namespace
