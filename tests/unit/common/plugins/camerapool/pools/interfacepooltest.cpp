// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/interfacepool.h"
#include "camerapool/internal/cameraparameterservice.h"
#include "camerapool/internal/interface.h"
#include "parametercollection/parameterpath.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <memory>
#include <stdexcept>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EFault;
using ::Test::EStep;

class InterfacePool : public ::testing::Test
{
protected:
    InterfacePool() { m_transport->AddInterface("port0"); }

    QSharedPointer<CInterfaceInfo> record(const std::string& interfaceId = "port0")
    {
        return CInterfaceInfo::fromInterfaceInfo(::Test::interfaceInfo(interfaceId, "TestScripted"));
    }
    GenApi::INodeMap* nodeMap(const QSharedPointer<IDevice>& device) const
    {
        return device->getParameterCollection()->nodeMap(ParameterCollection::ParameterPath::Interface);
    }
    static int stateOf(const QSharedPointer<IDevice>& device)
    {
        return device->getParameterCollection()->objectState().state();
    }

    std::shared_ptr<::Test::CScriptedTransport> m_transport = std::make_shared<::Test::CScriptedTransport>();
    ::Test::CScriptedSdk m_sdk{{m_transport}};
    CInterfacePool m_pool{nullptr};
    QSharedPointer<CInterfaceInfo> m_info = record();
};

TEST_F(InterfacePool, createsADeviceForAnInterfaceRecord)
{
    const auto device = m_pool.createDevice(m_info);
    ASSERT_FALSE(device.isNull());
    EXPECT_NE(qobject_cast<IInterface*>(device.data()), nullptr);
    EXPECT_EQ(device->getInfo(), m_info);
    EXPECT_FALSE(device->isOpen());
}

TEST_F(InterfacePool, createsNothingForACameraRecord)
{
    EXPECT_TRUE(m_pool.createDevice(::Test::cameraRecord("camera")).isNull());
    EXPECT_FALSE(m_pool.openDevice(::Test::cameraRecord("camera"), false));
}

TEST_F(InterfacePool, creatingAgainGivesTheSameDevice)
{
    EXPECT_EQ(m_pool.createDevice(m_info), m_pool.createDevice(record()));
}

TEST_F(InterfacePool, openingAttachesTheNodeMapAndSignals)
{
    QSignalSpy opening(&m_pool, &ADevicePool::deviceOpening);
    QSignalSpy opened(&m_pool, &ADevicePool::deviceOpened);
    ASSERT_TRUE(m_pool.openDevice(m_info, false));
    const auto device = m_pool.findDevice(m_info);
    EXPECT_TRUE(device->isOpen());
    EXPECT_TRUE(device->isConnected());
    EXPECT_EQ(stateOf(device), 1);
    EXPECT_NE(nodeMap(device), nullptr);
    EXPECT_EQ(opening.count(), 1);
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened.at(0).at(0).value<BaseInfoPtr>().data(), m_info.data());
}

TEST_F(InterfacePool, openingAndClosingTakeTheirStepsInOrder)
{
    const auto device = m_pool.createDevice(m_info);
    const auto collection = device->getParameterCollection();
    QStringList steps;
    const auto note = [&](const char* step)
    {
        steps.append(QStringLiteral("%1 in state %2").arg(QLatin1String(step)).arg(stateOf(device)));
    };
    using ParameterCollection::IParameterCollection;
    m_transport->SetHook(EStep::OpenInterface, [&](const std::string&) { note("open"); });
    QObject::connect(collection.data(), &IParameterCollection::nodeMapAttached, [&] { note("attach"); });
    QObject::connect(device.data(), &IDevice::deviceOpened, [&] { note("tell"); });
    m_pool.openDevice(m_info, false);
    m_transport->SetHook(EStep::OpenInterface, nullptr);
    EXPECT_EQ(steps, QStringList({QStringLiteral("open in state 0"), QStringLiteral("attach in state 0"),
                                  QStringLiteral("tell in state 1")}));

    steps.clear();
    m_transport->SetHook(EStep::CloseInterface, [&](const std::string&) { note("close"); });
    m_transport->SetHook(EStep::DestroyInterface, [&](const std::string&) { note("destroy"); });
    QObject::connect(collection.data(), &IParameterCollection::nodeMapDetaching, [&] { note("detach"); });
    QObject::connect(device.data(), &IDevice::deviceClosed, [&] { note("tell"); });
    m_pool.closeDevice(BaseInfoPtr(m_info));
    m_transport->SetHook(EStep::CloseInterface, nullptr);
    m_transport->SetHook(EStep::DestroyInterface, nullptr);
    EXPECT_EQ(steps, QStringList({QStringLiteral("detach in state 1"), QStringLiteral("close in state 2"),
                                  QStringLiteral("destroy in state 2"), QStringLiteral("tell in state 2")}));
}

TEST_F(InterfacePool, openingAnOpenInterfaceDoesNothing)
{
    m_pool.openDevice(m_info, false);
    QSignalSpy opened(&m_pool, &ADevicePool::deviceOpened);
    EXPECT_TRUE(m_pool.openDevice(m_info, false));
    EXPECT_EQ(opened.count(), 0);
    EXPECT_EQ(m_transport->GetCount(EStep::OpenInterface), 1U);
}

TEST_F(InterfacePool, closingDestroysTheSdkObjectAndSignals)
{
    m_pool.openDevice(m_info, false);
    const auto device = m_pool.findDevice(m_info);
    QSignalSpy closing(&m_pool, &ADevicePool::deviceClosing);
    QSignalSpy closed(&m_pool, &ADevicePool::deviceClosed);
    m_pool.closeDevice(BaseInfoPtr(m_info));
    EXPECT_FALSE(device->isOpen());
    EXPECT_EQ(stateOf(device), 2);
    EXPECT_EQ(nodeMap(device), nullptr);
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("TestScripted"), 0U);
    EXPECT_EQ(closing.count(), 1);
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(InterfacePool, eachOpenMakesTheSdkObjectAnew)
{
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_TRUE(m_pool.openDevice(m_info, false));
        m_pool.closeDevice(BaseInfoPtr(m_info));
    }
    EXPECT_EQ(m_transport->GetCount(EStep::CreateInterface), 2U);
}

TEST_F(InterfacePool, closingAClosedInterfaceSignalsOnlyThatItCloses)
{
    m_pool.createDevice(m_info);
    QSignalSpy closing(&m_pool, &ADevicePool::deviceClosing);
    QSignalSpy closed(&m_pool, &ADevicePool::deviceClosed);
    m_pool.closeDevice(BaseInfoPtr(m_info));
    EXPECT_EQ(closing.count(), 1);
    EXPECT_EQ(closed.count(), 0);
}

TEST_F(InterfacePool, failureToOpenIsLoggedAndKept)
{
    m_transport->SetFault(EStep::OpenInterface, EFault::Standard, "no power");
    const ::Test::CMessageLog log;
    EXPECT_FALSE(m_pool.openDevice(m_info, false));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("no power"));
    EXPECT_TRUE(log.contains(QStringLiteral("Interface could not be opened. Reason: no power")));
    EXPECT_FALSE(m_pool.isDeviceOpen(m_info));
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("TestScripted"), 0U);
}

TEST_F(InterfacePool, unknownExceptionWhileOpeningHasAnEmptyReason)
{
    m_transport->SetFault(EStep::OpenInterface, EFault::Unknown);
    m_info->setErrorString(QStringLiteral("old"));
    const ::Test::CMessageLog log;
    EXPECT_FALSE(m_pool.openDevice(m_info, false));
    EXPECT_EQ(m_info->errorString(), QString());
    EXPECT_TRUE(log.contains(QStringLiteral("Interface could not be opened. Reason: ")));
}

TEST_F(InterfacePool, interfaceThatIsGoneCannotBeOpenedAndHoldsNoTransportLayer)
{
    const auto info = record("gone");
    EXPECT_FALSE(m_pool.openDevice(info, false));
    EXPECT_FALSE(info->errorString().isEmpty());
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("TestScripted"), 0U);
}

TEST_F(InterfacePool, failureOfTheTransportLayerIsKept)
{
    m_transport->SetFault(EStep::CreateTl, EFault::Runtime);
    EXPECT_FALSE(m_pool.openDevice(m_info, false));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("The transport layer \"TestScripted\" could not be created."));
}

TEST_F(InterfacePool, failureToCloseStillDestroysTheSdkObject)
{
    m_pool.openDevice(m_info, false);
    m_transport->SetFault(EStep::CloseInterface, EFault::Standard, "stuck", "", 1);
    EXPECT_NO_THROW(m_pool.closeDevice(BaseInfoPtr(m_info)));
    EXPECT_FALSE(m_pool.isDeviceOpen(m_info));
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
}

TEST_F(InterfacePool, whateverIsThrownWhileItClosesIsDropped)
{
    ASSERT_TRUE(m_pool.openDevice(m_info, false));
    const auto device = m_pool.findDevice(m_info);
    m_transport->SetFault(EStep::CloseInterface, EFault::Unknown);
    QObject::connect(device.data(), &IDevice::deviceClosed, [] { throw 1; });
    EXPECT_NO_THROW(m_pool.closeDevice(BaseInfoPtr(m_info)));
    m_transport->SetFault(EStep::CloseInterface, EFault::None);
    EXPECT_FALSE(device->isOpen());
    EXPECT_EQ(stateOf(device), 2);
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("TestScripted"), 0U);
}

TEST_F(InterfacePool, failureToDetachItsNodeMapIsLoggedAndKept)
{
    using ParameterCollection::IParameterCollection;
    const auto collection = m_pool.createDevice(m_info)->getParameterCollection();
    QObject::connect(collection.data(), &IParameterCollection::nodeMapAttached,
                     [] { throw std::runtime_error("attached"); });
    QObject::connect(collection.data(), &IParameterCollection::nodeMapDetaching,
                     [] { throw std::runtime_error("callback"); });
    const ::Test::CMessageLog log;
    EXPECT_FALSE(m_pool.openDevice(m_info, false));
    EXPECT_EQ(log.lines(),
              QStringList({QStringLiteral("Interface could not be opened. Reason: attached"),
                           QStringLiteral("Could not detach from interface node maps. Unexpected exceptions e.g. from "
                                          "callbacks. Reason: callback")}));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("callback"));
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("TestScripted"), 0U);
}

TEST_F(InterfacePool, receiverThatThrowsWhileItsNodeMapGoesDoesNotKeepAnInterfaceOpen)
{
    ASSERT_TRUE(m_pool.openDevice(m_info, false));
    const auto device = m_pool.findDevice(m_info);
    QObject::connect(device->getParameterCollection().data(),
                     &ParameterCollection::IParameterCollection::nodeMapDetaching,
                     [] { throw std::runtime_error("callback"); });
    QSignalSpy closed(&m_pool, &ADevicePool::deviceClosed);
    EXPECT_NO_THROW(m_pool.closeDevice(BaseInfoPtr(m_info)));
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(nodeMap(device), nullptr);
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
}

TEST_F(InterfacePool, receiverThatThrowsWhenItOpensClosesItForThoseWhoWereTold)
{
    const auto device = m_pool.createDevice(m_info);
    QObject::connect(device.data(), &IDevice::deviceOpened, [] { throw std::runtime_error("cannot show it"); });
    QStringList told;
    QObject::connect(&m_pool, &ADevicePool::deviceOpened, &m_pool, [&] { told.append(QStringLiteral("opened")); });
    QObject::connect(&m_pool, &ADevicePool::deviceClosed, &m_pool, [&] { told.append(QStringLiteral("closed")); });
    EXPECT_FALSE(m_pool.openDevice(m_info, false));
    EXPECT_EQ(told, QStringList({QStringLiteral("opened"), QStringLiteral("closed")}));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("cannot show it"));
    EXPECT_FALSE(device->isOpen());
    EXPECT_EQ(stateOf(device), 2);
    EXPECT_EQ(nodeMap(device), nullptr);
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("TestScripted"), 0U);
}

TEST_F(InterfacePool, openingAndClosingComeInOrderWithTheRecord)
{
    QStringList order;
    const auto note = [&](auto signal, const QString& name)
    {
        QObject::connect(&m_pool, signal, &m_pool,
                         [&order, name, this](const BaseInfoPtr& info)
                         { order.append(info.data() == m_info.data() ? name : QStringLiteral("stranger")); });
    };
    note(&ADevicePool::deviceOpening, QStringLiteral("opening"));
    note(&ADevicePool::deviceOpened, QStringLiteral("opened"));
    note(&ADevicePool::deviceClosing, QStringLiteral("closing"));
    note(&ADevicePool::deviceClosed, QStringLiteral("closed"));
    m_pool.openDevice(m_info, false);
    m_pool.closeDevice(m_pool.findDevice(m_info));
    EXPECT_EQ(order.join(QLatin1Char(' ')), QStringLiteral("opening opened closing closed"));
}

TEST_F(InterfacePool, interfaceThatSomebodyHoldsOutlivesThePoolClosed)
{
    auto pool = std::make_unique<CInterfacePool>(nullptr);
    ASSERT_TRUE(pool->openDevice(m_info, false));
    const auto device = pool->findDevice(m_info);
    pool.reset();
    EXPECT_FALSE(device->isOpen());
    EXPECT_EQ(device->getInfo(), m_info);
    EXPECT_EQ(m_transport->GetLivingInterfaces(), 0U);
}

TEST_F(InterfacePool, openInterfaceIsClosedWhenItsDeviceGoes)
{
    m_pool.openDevice(m_info, false);
    m_pool.beginAnnounce();
    m_pool.endAnnounce();
    EXPECT_TRUE(::Test::waitUntil([&] { return m_transport->GetLivingInterfaces() == 0; }));
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("TestScripted"), 0U);
}

TEST_F(InterfacePool, parameterServiceFindsItsCollection)
{
    CCameraParameterService service;
    service.addPool(&m_pool);
    EXPECT_TRUE(service.getParameterCollection(m_info).isNull());
    const auto device = m_pool.createDevice(m_info);
    EXPECT_EQ(service.getParameterCollection(m_info), device->getParameterCollection());
}

TEST(CameraParameterService, withoutPoolsThereIsNoCollection)
{
    CCameraParameterService service;
    EXPECT_TRUE(service.getParameterCollection(::Test::cameraRecord("camera")).isNull());
    EXPECT_TRUE(service.getParameterCollection({}).isNull());
}

class CCountingPool : public ADevicePool
{
public:
    CCountingPool() : ADevicePool(nullptr) {}
    QSharedPointer<IDevice> createDevice(QSharedPointer<IBaseInfo>) override { return {}; }
    QSharedPointer<IDevice> findDevice(QSharedPointer<IBaseInfo>) const override
    {
        ++m_asked;
        return m_device;
    }
    mutable int m_asked = 0;
    QSharedPointer<IDevice> m_device;
};

TEST(CameraParameterService, poolAddedTwiceIsAskedOnce)
{
    CCountingPool pool;
    CCameraParameterService service;
    service.addPool(&pool);
    service.addPool(&pool);
    service.getParameterCollection(::Test::cameraRecord("camera"));
    EXPECT_EQ(pool.m_asked, 1);
}

TEST(CameraParameterService, destroyedPoolIsSkipped)
{
    auto first = std::make_unique<CCountingPool>();
    CCountingPool second;
    second.m_device.reset(new CInterface(::Test::interfaceRecord("eth0"), nullptr));
    CCameraParameterService service;
    service.addPool(first.get());
    service.addPool(&second);
    first.reset();
    EXPECT_EQ(service.getParameterCollection(::Test::interfaceRecord("eth0")),
              second.m_device->getParameterCollection());
}

TEST(CameraParameterService, firstPoolThatKnowsTheDeviceAnswers)
{
    CCountingPool first;
    CCountingPool second;
    first.m_device.reset(new CInterface(::Test::interfaceRecord("eth0"), nullptr));
    CCameraParameterService service;
    service.addPool(&first);
    service.addPool(&second);
    EXPECT_EQ(service.getParameterCollection(::Test::interfaceRecord("eth0")),
              first.m_device->getParameterCollection());
    EXPECT_EQ(second.m_asked, 0);
}

} // namespace
