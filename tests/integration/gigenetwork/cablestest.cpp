// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/fakecamera.h"
#include "support/gigeclient.h"
#include "support/networknamespace.h"
#include "support/warnings.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

using namespace Velmo;
using Test::CFakeCamera;
using Test::CGigEClient;
using Test::CPeerNamespace;
using Test::CRunningStream;
using Test::CSignal;
using Test::CWarnings;
using Test::GetInteger;
using Test::RunIp;
using Test::SetFloat;
using Test::SFakeCameraPlace;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Transport::EDiscoveryScope;
using Transport::EResultStatus;
using Transport::SStreamResult;
using namespace std::chrono_literals;

namespace
{

/** A cable from the adapter "va" of the test's namespace to a namespace where a camera can be. */
class GigENetwork : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
        GigE::SetAdapters({"va"});
    }
    void TearDown() override { GigE::SetAdapters({}); }

    std::unique_ptr<CFakeCamera> StartCamera(const std::string& serial = "GV77",
                                             const std::string& address = "192.168.77.2") const
    {
        return std::make_unique<CFakeCamera>(serial, SFakeCameraPlace{address, &m_far, 0});
    }
    std::vector<std::string> Serials(EDiscoveryScope scope = EDiscoveryScope::All)
    {
        std::vector<std::string> serials;
        for (const CDeviceInfo& info : m_client.Find(scope))
        {
            serials.push_back(info.GetSerialNumber().str());
        }
        std::sort(serials.begin(), serials.end());
        return serials;
    }

    CPeerNamespace m_far;
    CGigEClient m_client;
};

} // namespace

TEST_F(GigENetwork, broadcastFindsTheCameraWithItsAdapter)
{
    const auto pCamera = StartCamera();
    const DeviceInfoList list = m_client.Find(EDiscoveryScope::Usable);
    ASSERT_EQ(list.size(), 1u);
    const CDeviceInfo& info = list.front();
    EXPECT_EQ(info.GetSerialNumber(), "GV77");
    EXPECT_EQ(info.GetIpAddress(), "192.168.77.2");
    EXPECT_EQ(info.Get(Key::InterfaceID), "va");
    EXPECT_EQ(info.Get(Key::Interface), "192.168.77.1");
    EXPECT_EQ(info.Get(Key::AccessStatus), "ReadWrite");
}

TEST_F(GigENetwork, withoutASettingEveryAdapterButLoopbackIsSearched)
{
    const auto pCamera = StartCamera();
    const CFakeCamera onLoopback("LO");
    GigE::SetAdapters({});
    unsetenv(GigE::AdaptersVariable);
    InterfaceInfoList interfaces;
    m_client.Transport().EnumerateInterfaces(interfaces);
    ASSERT_EQ(interfaces.size(), 1u);
    EXPECT_EQ(interfaces.front().GetInterfaceID(), "va");
    EXPECT_EQ(interfaces.front().Get(Key::SubnetMask), "255.255.255.0");
    EXPECT_NE(interfaces.front().Get(Key::MacAddress), "00:00:00:00:00:00");
    EXPECT_THAT(Serials(EDiscoveryScope::Usable), ElementsAre("GV77"));
}

TEST_F(GigENetwork, twoHundredImagesArriveCompleteAndInOrder)
{
    const auto pCamera = StartCamera();
    const auto pDevice = m_client.Open("GV77");
    SetFloat(*pDevice, "AcquisitionFrameRate", 100.0);
    CRunningStream run(*pDevice, 20);
    std::uint64_t last = 0;
    for (int image = 0; image < 200; ++image)
    {
        const SStreamResult result = run.Next();
        ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription << " at " << image;
        if (image > 0)
        {
            ASSERT_EQ(result.blockId, last + 1);
        }
        last = result.blockId;
    }
}

TEST_F(GigENetwork, featuresAreReadAndWritten)
{
    const auto pCamera = StartCamera();
    const auto pDevice = m_client.Open("GV77");
    const GenApi::CIntegerPtr pWidth(pDevice->GetNodeMap()->GetNode("Width"));
    pWidth->SetValue(256);
    EXPECT_EQ(pWidth->GetValue(false, true), 256);
    EXPECT_EQ(GenApi::CStringPtr(pDevice->GetNodeMap()->GetNode("DeviceVendorName"))->GetValue(), "Aravis");
}

/** How the cable breaks: its far end goes down, or the test's own adapter. */
class GigECut : public GigENetwork, public ::testing::WithParamInterface<const char*>
{
protected:
    void SetCable(const std::string& state)
    {
        if (GetParam() == std::string("near"))
        {
            RunIp("link set va " + state);
        }
        else
        {
            m_far.Visit([&] { RunIp("link set vb " + state); });
        }
    }
};

TEST_P(GigECut, isNoticedWithinThreeSecondsAndTheSameCameraComesBack)
{
    const auto pCamera = StartCamera();
    auto pDevice = m_client.Open("GV77");
    const GenICam::gcstring fullName = pDevice->GetDeviceInfo().GetFullName();
    CSignal removed;
    pDevice->SetRemovalCallback([&removed] { removed.Raise(); });
    {
        CRunningStream run(*pDevice, 4);
        ASSERT_EQ(run.Next().status, EResultStatus::Ok);
        const auto cut = std::chrono::steady_clock::now();
        SetCable("down");
        ASSERT_TRUE(removed.Wait(10s));
        const auto took = std::chrono::steady_clock::now() - cut;
        RecordProperty("milliseconds", static_cast<int>(took / 1ms));
        EXPECT_LT(took, 3s);
    }
    EXPECT_TRUE(m_client.Find(EDiscoveryScope::All).empty());
    pDevice.reset();

    SetCable("up");
    // Where the engine could not give up control any more, the camera keeps it until its heartbeat time-out of three
    // seconds. This one takes whatever it is asked, by anybody, for a sign of life: it needs to be left alone for
    // longer.
    ASSERT_TRUE(m_client.WaitForUsable("GV77", 60s, 4s));
    pDevice = m_client.Open("GV77");
    EXPECT_EQ(pDevice->GetDeviceInfo().GetFullName(), fullName);
    CRunningStream run(*pDevice, 4);
    EXPECT_EQ(run.Next().status, EResultStatus::Ok);
}

INSTANTIATE_TEST_SUITE_P(EitherEnd, GigECut, ::testing::Values("near", "far"),
                         [](const auto& info) { return std::string(info.param); });

TEST_F(GigENetwork, everyAddressOfAnAdapterIsSearchedAndIsAnInterface)
{
    RunIp("addr add 10.77.0.1/16 broadcast + dev va");
    m_far.Visit([] { RunIp("addr add 10.77.5.2/16 broadcast + dev vb"); });
    const auto pFirst = StartCamera("FIRST");
    const auto pSecond = StartCamera("SECOND", "10.77.5.2");
    InterfaceInfoList interfaces;
    m_client.Transport().EnumerateInterfaces(interfaces);
    ASSERT_EQ(interfaces.size(), 2u);
    EXPECT_EQ(interfaces[0].GetInterfaceID(), "va");
    EXPECT_EQ(interfaces[1].GetInterfaceID(), "va/10.77.0.1");
    EXPECT_THAT(Serials(EDiscoveryScope::Usable), ElementsAre("FIRST", "SECOND"));
    const auto pDevice = m_client.Open("SECOND");
    EXPECT_EQ(pDevice->GetDeviceInfo().Get(Key::Interface), "10.77.0.1");
    CRunningStream run(*pDevice, 4);
    EXPECT_EQ(run.Next().status, EResultStatus::Ok);

    GigE::SetAdapters({"10.77.0.1"});
    interfaces.clear();
    m_client.Transport().EnumerateInterfaces(interfaces);
    ASSERT_EQ(interfaces.size(), 1u);
    EXPECT_EQ(interfaces[0].GetInterfaceID(), "va/10.77.0.1");
}

TEST_F(GigENetwork, adapterThatIsDownIsSkippedWithItsReason)
{
    const auto pCamera = StartCamera();
    RunIp("link set va down");
    CWarnings warnings;
    EXPECT_TRUE(Serials().empty());
    EXPECT_TRUE(Serials().empty());
    const auto saysSo = ::testing::AllOf(HasSubstr("\"va\""), HasSubstr("is down"));
    EXPECT_THAT(warnings.Lines(), ElementsAre(saysSo));
    RunIp("link set va up");
    // The kernel lets packets through a little later.
    EXPECT_TRUE(m_client.WaitForUsable("GV77", std::chrono::seconds(10)));
    RunIp("link set va down");
    EXPECT_TRUE(Serials().empty());
    EXPECT_THAT(warnings.Lines(), ElementsAre(saysSo, saysSo));
}

TEST_F(GigENetwork, adapterWithoutAnAddressIsSkippedWithItsReason)
{
    RunIp("addr flush dev va");
    CWarnings warnings;
    EXPECT_TRUE(Serials().empty());
    EXPECT_THAT(warnings.Lines(), ElementsAre(::testing::AllOf(HasSubstr("\"va\""), HasSubstr("no IPv4 address"))));
}

TEST_F(GigENetwork, adapterOfTheEnvironmentThatDoesNotExistIsNamedWithThoseThatDo)
{
    const auto pCamera = StartCamera();
    GigE::SetAdapters({});
    setenv(GigE::AdaptersVariable, "eth77, va", 1);
    CWarnings warnings;
    EXPECT_THAT(Serials(), ElementsAre("GV77"));
    EXPECT_THAT(Serials(), ElementsAre("GV77"));
    setenv(GigE::AdaptersVariable, "none", 1);
    EXPECT_THAT(warnings.Lines(),
                ElementsAre(::testing::AllOf(HasSubstr("\"eth77\" does not exist"), HasSubstr("va"))));
}

TEST_F(GigENetwork, twoAdaptersWithACameraEachStreamAtTheSameTime)
{
    CPeerNamespace otherFar;
    otherFar.Connect("vc", "192.168.78.1/24", "vd", "192.168.78.2/24");
    GigE::SetAdapters({"va", "vc"});
    const auto pFirst = StartCamera("FIRST");
    const CFakeCamera second("SECOND", {"192.168.78.2", &otherFar, 0});
    ASSERT_THAT(Serials(EDiscoveryScope::Usable), ElementsAre("FIRST", "SECOND"));
    const auto pFirstDevice = m_client.Open("FIRST");
    const auto pSecondDevice = m_client.Open("SECOND");
    EXPECT_EQ(pFirstDevice->GetDeviceInfo().Get(Key::InterfaceID), "va");
    EXPECT_EQ(pSecondDevice->GetDeviceInfo().Get(Key::InterfaceID), "vc");
    CRunningStream firstRun(*pFirstDevice, 10);
    CRunningStream secondRun(*pSecondDevice, 10);
    for (int image = 0; image < 20; ++image)
    {
        const SStreamResult first = firstRun.Next();
        const SStreamResult other = secondRun.Next();
        EXPECT_EQ(first.status, EResultStatus::Ok) << first.errorDescription;
        EXPECT_EQ(other.status, EResultStatus::Ok) << other.errorDescription;
    }
}

TEST_F(GigENetwork, cutOfOneAdapterLeavesTheOtherCameraAlone)
{
    CPeerNamespace otherFar;
    otherFar.Connect("vc", "192.168.78.1/24", "vd", "192.168.78.2/24");
    GigE::SetAdapters({"va", "vc"});
    const auto pFirst = StartCamera("FIRST");
    const CFakeCamera second("SECOND", {"192.168.78.2", &otherFar, 0});
    const auto pFirstDevice = m_client.Open("FIRST");
    const auto pSecondDevice = m_client.Open("SECOND");
    CSignal firstRemoved;
    pFirstDevice->SetRemovalCallback([&firstRemoved] { firstRemoved.Raise(); });
    RunIp("link set va down");
    ASSERT_TRUE(firstRemoved.Wait(10s));
    EXPECT_FALSE(pSecondDevice->IsRemoved());
    EXPECT_GT(GetInteger(*pSecondDevice->GetNodeMap(), "Width"), 0);
    EXPECT_THAT(Serials(), ElementsAre("SECOND"));
}

TEST_F(GigENetwork, cameraInAnotherSubnetIsReportedAsUnreachableOnly)
{
    m_far.Visit(
        []
        {
            RunIp("addr flush dev vb");
            RunIp("addr add 10.9.8.7/24 broadcast + dev vb");
            RunIp("route add default dev vb"); // this camera answers by unicast, for which it needs a way
        });
    const auto pCamera = StartCamera("FAR", "10.9.8.7");
    const DeviceInfoList all = m_client.Find(EDiscoveryScope::All);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all.front().GetSerialNumber(), "FAR");
    EXPECT_EQ(all.front().GetIpAddress(), "10.9.8.7");
    EXPECT_EQ(all.front().Get(Key::AccessStatus), "Unreachable");
    EXPECT_TRUE(m_client.Find(EDiscoveryScope::Usable).empty());
    const std::unique_ptr<IVelmoDevice> pDevice = m_client.Transport().CreateDevice(all.front());
    EXPECT_THROW(pDevice->Open(EDeviceAccess::Control), GenICam::GenericException);
}
