// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/adapterinterface.h"

#include "genapi/exceptions.h"
#include "transports/gige/internal/adapterlink.h"
#include "transports/gige/internal/records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using namespace Velmo;
using namespace Velmo::GigE::Internal;

namespace
{

class CFakeNetwork : public INetworkView
{
public:
    std::vector<SAdapter> GetAdapters() override { return adapters; }
    DeviceInfoList GetSeen(const SAdapter&) override { return seen; }
    DeviceInfoList Look(const SAdapter&) override { return present; }
    bool IsOpenHere(const CDeviceInfo&) override { return false; }

    std::vector<SAdapter> adapters;
    DeviceInfoList seen;
    DeviceInfoList present;
};

SAdapter Loopback()
{
    const auto system = ListSystemAdapters();
    const auto found =
        std::find_if(system.begin(), system.end(), [](const SAdapter& adapter) { return adapter.isLoopback; });
    return found == system.end() ? SAdapter() : *found;
}

class GigEAdapterInterface : public ::testing::Test
{
protected:
    GigEAdapterInterface() { network->adapters = {Loopback()}; }
    std::unique_ptr<CAdapterInterface> Make()
    {
        return std::make_unique<CAdapterInterface>(MakeInterfaceInfo(network->adapters.front()), network);
    }
    static std::int64_t Value(CAdapterInterface& interface, const char* name)
    {
        return GenApi::CIntegerPtr(interface.GetNodeMap()->GetNode(name))->GetValue();
    }

    std::shared_ptr<CFakeNetwork> network = std::make_shared<CFakeNetwork>();
};

} // namespace

TEST_F(GigEAdapterInterface, showsTheAdapterAsTheSystemKnowsIt)
{
    const auto interface = Make();
    interface->Open();
    GenApi::INodeMap& nodeMap = *interface->GetNodeMap();
    EXPECT_EQ(GenApi::CStringPtr(nodeMap.GetNode("GevInterfaceAdapterName"))->GetValue(), Loopback().name);
    EXPECT_EQ(GenApi::CValuePtr(nodeMap.GetNode("InterfaceType"))->ToString(), "GigEVision");
    EXPECT_EQ(Value(*interface, "GevInterfaceSubnetIPAddress"), Loopback().ip);
    EXPECT_EQ(Value(*interface, "GevInterfaceSubnetMask"), Loopback().mask);
    EXPECT_EQ(Value(*interface, "GevInterfaceMACAddress"), 0);
    EXPECT_EQ(Value(*interface, "GevInterfaceMTU"), ReadMtu(Loopback()));
    EXPECT_GE(Value(*interface, "GevInterfaceMTU"), 1500);
}

TEST_F(GigEAdapterInterface, speedThatTheSystemDoesNotKnowIsNotAvailable)
{
    const auto interface = Make();
    interface->Open();
    ASSERT_EQ(ReadLinkSpeedMbps(Loopback()), UnknownLinkValue); // loopback has no link
    EXPECT_FALSE(GenApi::IsAvailable(interface->GetNodeMap()->GetNode("GevInterfaceLinkSpeed")));
    EXPECT_TRUE(GenApi::IsAvailable(interface->GetNodeMap()->GetNode("GevInterfaceMTU")));
    EXPECT_GT(interface->GetNodeMap()->GetNode("GevInterfaceLinkSpeedRegister")->GetPollingTime(), 0);
}

TEST_F(GigEAdapterInterface, selectorShowsFurtherAddressesOfTheAdapter)
{
    // An address of the loopback network that is not configured: the system's own then is a further one.
    network->adapters.front().ip = 0x7F000009;
    network->adapters.front().id = "lo/127.0.0.9";
    const auto interface = Make();
    interface->Open();
    EXPECT_EQ(Value(*interface, "GevInterfaceSubnetIPAddress"), 0x7F000009);
    const GenApi::CIntegerPtr selector(interface->GetNodeMap()->GetNode("GevInterfaceSubnetSelector"));
    ASSERT_GE(selector->GetMax(), 1);
    selector->SetValue(1);
    EXPECT_EQ(Value(*interface, "GevInterfaceSubnetIPAddress"), Loopback().ip);
    EXPECT_THROW(selector->SetValue(selector->GetMax() + 1), GenICam::OutOfRangeException);
}

TEST_F(GigEAdapterInterface, adapterThatIsGoneCannotBeOpenedAndIsNamed)
{
    const auto interface = Make();
    network->adapters.clear();
    try
    {
        interface->Open();
        FAIL() << "no exception";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_NE(std::string(e.GetDescription()).find("\"" + Loopback().id + "\" is gone"), std::string::npos);
    }
    EXPECT_FALSE(interface->IsOpen());
}

TEST_F(GigEAdapterInterface, adapterThatGoesWhileOpenMakesItsValuesFailAndStillCloses)
{
    const auto interface = Make();
    interface->Open();
    network->adapters.clear();
    EXPECT_THROW(Value(*interface, "GevInterfaceSubnetIPAddress"), GenICam::RuntimeException);
    EXPECT_THROW(GenApi::CCommandPtr(interface->GetNodeMap()->GetNode("DeviceUpdateList"))->Execute(),
                 GenICam::RuntimeException);
    EXPECT_NO_THROW(interface->Close());
}

TEST_F(GigEAdapterInterface, transportThatIsGoneIsAnErrorNotACrash)
{
    const auto interface = Make();
    interface->Open();
    network.reset();
    EXPECT_THROW(Value(*interface, "GevInterfaceMTU"), GenICam::GenericException);
    interface->Close();
    EXPECT_THROW(interface->Open(), GenICam::RuntimeException);
}

TEST_F(GigEAdapterInterface, standInForNoAdapterOpensWithoutAddresses)
{
    CAdapterInterface interface(MakeDefaultInterfaceInfo(), network);
    interface.Open();
    EXPECT_EQ(interface.GetNodeMap()->GetNode("GevInterfaceMTU"), nullptr);
    EXPECT_EQ(Value(interface, "DeviceCount"), 0);
}

TEST(GigELinkSpeed, isWhatTheSystemKeepsForTheAdapter)
{
    namespace fs = std::filesystem;
    std::string folder = (fs::temp_directory_path() / "linkspeedXXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    fs::create_directory(folder + "/eth7");
    const auto write = [&folder](const char* item, const char* text)
    {
        std::ofstream(folder + "/eth7/" + item) << text;
    };
    SAdapter adapter;
    adapter.name = "eth7";
    adapter.index = 7;
    write("ifindex", "7\n");
    EXPECT_EQ(ReadLinkSpeedMbps(adapter, folder), UnknownLinkValue);
    write("speed", "2500\n");
    EXPECT_EQ(ReadLinkSpeedMbps(adapter, folder), 2500);
    write("speed", "-1\n"); // the link is down
    EXPECT_EQ(ReadLinkSpeedMbps(adapter, folder), UnknownLinkValue);
    write("speed", "1000\n");
    write("ifindex", "8\n"); // another network namespace's adapter of that name
    EXPECT_EQ(ReadLinkSpeedMbps(adapter, folder), UnknownLinkValue);
    fs::remove_all(folder);
}

TEST(GigEGateway, isTheDefaultRouteOfTheAdapter)
{
    const std::string routes = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\n"
                               "eth0\t00000000\t0101A8C0\t0003\t0\t0\t0\t00000000\n"
                               "eth0\t0001A8C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\n"
                               "eth1\t0002A8C0\t0102A8C0\t0003\t0\t0\t0\t00FFFFFF\n";
    EXPECT_EQ(GatewayIn(routes, "eth0"), 0xC0A80101);
    EXPECT_EQ(GatewayIn(routes, "eth1"), 0U); // a gateway to one network, not the default one
    EXPECT_EQ(GatewayIn(routes, "eth2"), 0U);
    EXPECT_EQ(GatewayIn("", "eth0"), 0U);
}
