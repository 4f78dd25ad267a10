// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/scriptedtransport.h"
#include "velmo/internal/transportregistry.h"
#include "velmo/log.h"
#include "velmo/tlfactory.h"
#include "velmo/velmo.h"

#include <gtest/gtest.h>
#include <sched.h>

using namespace Velmo;
using Test::CScriptedSdk;
using Test::CScriptedTransport;
using Test::EFault;
using Test::EStep;

namespace
{

std::shared_ptr<CScriptedTransport> Make(const std::string& deviceClass, const std::vector<std::string>& serials,
                                         bool gige = false)
{
    Test::SScriptedTransportConfig config;
    config.deviceClass = deviceClass;
    config.gige = gige;
    auto transport = std::make_shared<CScriptedTransport>(config);
    for (const std::string& serial : serials)
    {
        Test::SScriptedCamera camera;
        camera.serialNumber = serial;
        transport->AddCamera(camera);
    }
    return transport;
}

/** Keeps what is logged while it lives. */
class CLogCapture
{
public:
    CLogCapture()
    {
        SetLogSink([this](const SLogRecord& record) { records.push_back(record); });
    }
    ~CLogCapture() { SetLogSink(nullptr); }
    std::vector<SLogRecord> records;
};

} // namespace

TEST(Sdk, usersAreCounted)
{
    Internal::CTransportRegistry::GetInstance().SetBuiltInTransportsEnabled(false);
    EXPECT_EQ(0U, VelmoInitializationCount());
    VelmoInitialize();
    VelmoInitialize();
    EXPECT_EQ(2U, VelmoInitializationCount());
    VelmoTerminate();
    EXPECT_NO_THROW(CTlFactory::GetInstance().CreateTl("none"));
    VelmoTerminate();
    EXPECT_EQ(0U, VelmoInitializationCount());
    Internal::CTransportRegistry::GetInstance().SetBuiltInTransportsEnabled(true);
}

TEST(Sdk, terminatingMoreOftenThanInitialisingThrows)
{
    EXPECT_THROW(VelmoTerminate(), GenICam::LogicalErrorException);
}

TEST(Sdk, factoryRefusesWhenNotRunning)
{
    TlInfoList list;
    EXPECT_THROW(CTlFactory::GetInstance().EnumerateTls(list), GenICam::RuntimeException);
}

TEST(Sdk, builtInTransportsAreMadeAnewByEachStart)
{
    auto& registry = Internal::CTransportRegistry::GetInstance();
    VelmoInitialize();
    const auto first = registry.GetAll();
    TlInfoList list;
    EXPECT_EQ(2, CTlFactory::GetInstance().EnumerateTls(list));
    VelmoTerminate();
    EXPECT_TRUE(registry.GetAll().empty());
    VelmoInitialize();
    const auto second = registry.GetAll();
    ASSERT_EQ(first.size(), second.size());
    EXPECT_NE(first.front(), second.front());
    VelmoTerminate();
}

TEST(Sdk, realTimePrioritiesAreThoseOfTheSystem)
{
    int lowest = -1;
    int highest = -1;
    EXPECT_TRUE(GetRTThreadPriorityCapabilities(&lowest, &highest));
    EXPECT_EQ(sched_get_priority_min(SCHED_RR), lowest);
    EXPECT_EQ(sched_get_priority_max(SCHED_RR), highest);
    EXPECT_TRUE(GetRTThreadPriorityCapabilities(nullptr, nullptr));
}

TEST(Registry, sameClassTwiceIsRefused)
{
    const CScriptedSdk sdk({Make("A", {})});
    EXPECT_THROW(Internal::CTransportRegistry::GetInstance().Register(Make("A", {})), GenICam::LogicalErrorException);
    EXPECT_THROW(Internal::CTransportRegistry::GetInstance().Register(nullptr), GenICam::InvalidArgumentException);
}

TEST(Factory, transportLayersComeInOrderOfRegistration)
{
    const CScriptedSdk sdk({Make("B", {}), Make("A", {})});
    TlInfoList list;
    ASSERT_EQ(2, CTlFactory::GetInstance().EnumerateTls(list));
    EXPECT_EQ("B", list[0].GetDeviceClass());
    EXPECT_EQ("A", list[1].GetDeviceClass());
}

TEST(Factory, handlesOfOneTransportAreCounted)
{
    const CScriptedSdk sdk({Make("A", {})});
    CTlFactory& factory = CTlFactory::GetInstance();
    ITransportLayer* pFirst = factory.CreateTl("A");
    ITransportLayer* pSecond = factory.CreateTl("A");
    ASSERT_NE(nullptr, pFirst);
    EXPECT_EQ(pFirst, pSecond);
    EXPECT_EQ(2U, sdk.GetHeldTransportLayers("A"));
    factory.ReleaseTl(pFirst);
    EXPECT_EQ("A", pSecond->GetTlInfo().GetDeviceClass());
    factory.ReleaseTl(pSecond);
    EXPECT_EQ(0U, sdk.GetHeldTransportLayers("A"));
    EXPECT_THROW(factory.ReleaseTl(pSecond), GenICam::InvalidArgumentException);
    EXPECT_NO_THROW(factory.ReleaseTl(nullptr));
}

TEST(Factory, unknownOrFailingTransportLayerIsNull)
{
    const CLogCapture log;
    const auto transport = Make("A", {});
    const CScriptedSdk sdk({transport});
    EXPECT_EQ(nullptr, CTlFactory::GetInstance().CreateTl("none"));
    transport->SetFault(EStep::CreateTl, EFault::Unknown);
    EXPECT_EQ(nullptr, CTlFactory::GetInstance().CreateTl("A"));
    EXPECT_EQ(1U, log.records.size());
}

TEST(Factory, handleHeldBeyondTheSdkRefusesAndCanBeReleased)
{
    const ITransportLayer* pTl = nullptr;
    {
        const CScriptedSdk sdk({Make("A", {})});
        ITransportLayer* pHeld = CTlFactory::GetInstance().CreateTl("A");
        pTl = pHeld;
    }
    DeviceInfoList list;
    EXPECT_THROW(const_cast<ITransportLayer*>(pTl)->EnumerateDevices(list), GenICam::RuntimeException);
    EXPECT_NO_THROW(CTlFactory::GetInstance().ReleaseTl(pTl));
}

TEST(Factory, onlyTransportsWithTheExtensionAreGigE)
{
    const auto gige = Make("G", {"1"}, true);
    const CScriptedSdk sdk({Make("A", {}), gige});
    CTlFactory& factory = CTlFactory::GetInstance();
    ITransportLayer* pPlain = factory.CreateTl("A");
    ITransportLayer* pGigE = factory.CreateTl("G");
    EXPECT_EQ(nullptr, dynamic_cast<IGigETransportLayer*>(pPlain));
    auto* pExtended = dynamic_cast<IGigETransportLayer*>(pGigE);
    ASSERT_NE(nullptr, pExtended);
    gige->SetInUseBy("1", "another host");
    DeviceInfoList list;
    EXPECT_EQ(0, pExtended->EnumerateDevices(list));
    EXPECT_EQ(1, pExtended->EnumerateAllDevices(list));
    EXPECT_EQ(1U, gige->GetCount(EStep::EnumerateAllDevices));
    CDeviceInfo info = pExtended->CreateDeviceInfo();
    info.SetIpAddress("10.0.0.1");
    EXPECT_FALSE(pExtended->AnnounceRemoteDevice(info));
    factory.ReleaseTl(pPlain);
    factory.ReleaseTl(pGigE);
}

TEST(Factory, oneBadTransportCostsOnlyItself)
{
    for (const EFault fault : {EFault::Runtime, EFault::Standard, EFault::Unknown})
    {
        const CLogCapture log;
        const auto bad = Make("A", {"1"});
        const CScriptedSdk sdk({bad, Make("B", {"2"})});
        bad->SetFault(EStep::EnumerateDevices, fault);
        DeviceInfoList list;
        ASSERT_EQ(1, CTlFactory::GetInstance().EnumerateDevices(list));
        EXPECT_EQ("2", list[0].GetSerialNumber());
        ASSERT_EQ(1U, log.records.size());
        EXPECT_EQ(ELogLevel::Warning, log.records[0].level);
    }
}

TEST(Factory, filterOfClassAndSerialFindsOneAndAddsToTheList)
{
    const auto other = Make("A", {"1", "2"});
    const CScriptedSdk sdk({other, Make("B", {"1", "2"})});
    CDeviceInfo wanted;
    wanted.SetDeviceClass("B");
    wanted.SetSerialNumber("2");
    DeviceInfoList list;
    EXPECT_EQ(1, CTlFactory::GetInstance().EnumerateDevices(list, {wanted}, true));
    EXPECT_EQ("B/2", list[0].GetFullName());
    EXPECT_EQ(2, CTlFactory::GetInstance().EnumerateDevices(list, {wanted}, true));
    EXPECT_EQ(0U, other->GetCount(EStep::EnumerateDevices));
    EXPECT_EQ(4, CTlFactory::GetInstance().EnumerateDevices(list));
}

TEST(Factory, firstDeviceMatchesTheRecord)
{
    const CScriptedSdk sdk({Make("A", {}), Make("B", {"7", "8"})});
    CTlFactory& factory = CTlFactory::GetInstance();
    IVelmoDevice* pAny = factory.CreateFirstDevice();
    EXPECT_EQ("7", pAny->GetDeviceInfo().GetSerialNumber());
    factory.DestroyDevice(pAny);
    CDeviceInfo wanted;
    wanted.SetSerialNumber("8");
    IVelmoDevice* pEight = factory.CreateFirstDevice(wanted);
    EXPECT_EQ("8", pEight->GetDeviceInfo().GetSerialNumber());
    factory.DestroyDevice(pEight);
    wanted.SetSerialNumber("9");
    EXPECT_THROW(factory.CreateFirstDevice(wanted), GenICam::RuntimeException);
    EXPECT_THROW(factory.CreateDevice(wanted), GenICam::RuntimeException);
}

TEST(Factory, deviceOutlivesTheSdk)
{
    IVelmoDevice* pDevice = nullptr;
    {
        const CScriptedSdk sdk({Make("A", {"1"})});
        pDevice = CTlFactory::GetInstance().CreateFirstDevice();
    }
    EXPECT_EQ("1", pDevice->GetDeviceInfo().GetSerialNumber());
    CTlFactory::GetInstance().DestroyDevice(pDevice);
}

TEST(Factory, interfaceOpensAndUnknownOneIsNull)
{
    const auto transport = Make("A", {});
    transport->AddInterface("eth0");
    const CScriptedSdk sdk({transport});
    ITransportLayer* pTl = CTlFactory::GetInstance().CreateTl("A");
    InterfaceInfoList list;
    ASSERT_EQ(1, pTl->EnumerateInterfaces(list));
    IInterface* pInterface = pTl->CreateInterface(list[0]);
    ASSERT_NE(nullptr, pInterface);
    EXPECT_EQ(nullptr, pInterface->GetNodeMap());
    pInterface->Open();
    ASSERT_NE(nullptr, pInterface->GetNodeMap());
    EXPECT_NE(nullptr, pInterface->GetNodeMap()->GetNode("InterfaceValue"));
    pTl->DestroyInterface(pInterface);
    EXPECT_EQ(nullptr, pTl->CreateInterface(CInterfaceInfo()));
    EXPECT_EQ(0U, transport->GetLivingInterfaces());
    CTlFactory::GetInstance().ReleaseTl(pTl);
}

TEST(Log, defaultSinkIsRestoredAndASinkThatThrowsIsHarmless)
{
    SetLogSink([](const SLogRecord&) { throw 1; });
    EXPECT_NO_FATAL_FAILURE(Log(ELogLevel::Error, "test", "dropped"));
    SetLogSink(nullptr);
    ::testing::internal::CaptureStderr();
    Log(ELogLevel::Info, "test", "quiet");
    Log(ELogLevel::Warning, "test", "loud");
    EXPECT_EQ("warning: test: loud\n", ::testing::internal::GetCapturedStderr());
}
