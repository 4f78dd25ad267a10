// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/interfaceparameters.h"

#include "genapi/exceptions.h"

#include <gtest/gtest.h>

using namespace Velmo;
using namespace Velmo::Transport;

namespace
{

CDeviceInfo Device(const std::string& name, const char* status = "ReadWrite")
{
    CDeviceInfo info;
    info.SetFullName("full " + name).SetVendorName("Maker");
    info.SetModelName("Model " + name);
    info.SetIpAddress("192.168.1.5").SetPropertyValue(Key::MacAddress, "00:11:22:aa:bb:cc");
    info.SetPropertyValue(Key::AccessStatus, status);
    return info;
}

class DeviceListParameters : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_list.AddTo(m_map, true);
        m_map.Build();
    }
    GenApi::INode* Node(const char* name) { return m_map.Get()->GetNode(name); }
    std::string Text(const char* name) { return GenApi::CValuePtr(Node(name))->ToString().str(); }
    void Select(std::int64_t index) { GenApi::CIntegerPtr(Node("DeviceSelector"))->SetValue(index); }
    void Update() { GenApi::CCommandPtr(Node("DeviceUpdateList"))->Execute(); }

    DeviceInfoList m_present{Device("a")};
    std::string m_openHere;
    bool m_failsToLook = false;
    CDeviceListParameters m_list{{[this]
                                  {
                                      if (m_failsToLook)
                                      {
                                          GENICAM_THROW(RuntimeException, "no cable");
                                      }
                                      return m_present;
                                  },
                                  [this](const CDeviceInfo& info)
                                  {
                                      return info.GetFullName() == m_openHere;
                                  }},
                                 {Device("old")}};
    CSoftwareNodeMap m_map{"Test"}; // after what it shows
};

} // namespace

TEST_F(DeviceListParameters, showsWhatWasSeenUntilItIsAskedToLook)
{
    EXPECT_EQ(Text("DeviceID"), "full old");
    Update();
    EXPECT_EQ(Text("DeviceID"), "full a");
}

TEST_F(DeviceListParameters, selectorSelectsEveryParameterOfADevice)
{
    m_present = {Device("a"), Device("b", "InUse")};
    Update();
    Select(1);
    EXPECT_EQ(Text("DeviceModelName"), "Model b");
    EXPECT_EQ(Text("DeviceAccessStatus"), "Busy");
    EXPECT_EQ(GenApi::CIntegerPtr(Node("GevDeviceIPAddress"))->GetValue(), 0xC0A80105);
    EXPECT_EQ(GenApi::CIntegerPtr(Node("GevDeviceMACAddress"))->GetValue(), 0x001122AABBCC);
    Select(0);
    EXPECT_EQ(Text("DeviceAccessStatus"), "ReadWrite");
}

TEST_F(DeviceListParameters, shorterListMovesTheSelectionToItsFirst)
{
    m_present = {Device("a"), Device("b")};
    Update();
    Select(1);
    m_present = {Device("c")};
    Update();
    EXPECT_EQ(GenApi::CIntegerPtr(Node("DeviceSelector"))->GetValue(), 0);
    EXPECT_EQ(Text("DeviceID"), "full c");
}

TEST_F(DeviceListParameters, emptyListMakesTheDeviceNotAvailable)
{
    m_present.clear();
    Update();
    for (const char* name : {"DeviceSelector", "DeviceID", "DeviceAccessStatus", "GevDeviceIPAddress"})
    {
        EXPECT_FALSE(GenApi::IsAvailable(Node(name))) << name;
    }
    EXPECT_EQ(GenApi::CIntegerPtr(Node("DeviceCount"))->GetValue(), 0);
}

TEST_F(DeviceListParameters, failureToLookKeepsTheListAndItsReason)
{
    m_failsToLook = true;
    try
    {
        Update();
        FAIL() << "no exception";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_NE(std::string(e.GetDescription()).find("no cable"), std::string::npos);
    }
    EXPECT_EQ(Text("DeviceID"), "full old");
}

TEST_F(DeviceListParameters, deviceOpenedHereIsToldWithoutLookingAgain)
{
    EXPECT_EQ(Text("DeviceAccessStatus"), "ReadWrite");
    m_openHere = "full old";
    EXPECT_EQ(Text("DeviceAccessStatus"), "OpenReadWrite");
    m_openHere.clear();
    EXPECT_EQ(Text("DeviceAccessStatus"), "ReadWrite");
}

TEST(InterfaceAddresses, areReadStrictly)
{
    EXPECT_EQ(IpOf("10.0.0.255"), 0x0A0000FF);
    EXPECT_EQ(MacOf("ff:00:01:02:03:04"), 0xFF0001020304);
    for (const char* text : {"", "10.0.0", "10.0.0.256", "10.0.0.1.", "a.b.c.d", "10.0.0.1 "})
    {
        EXPECT_EQ(IpOf(text), 0) << text;
    }
    for (const char* text : {"", "ff:00:01:02:03", "ff:00:01:02:03:100", "ff-00-01-02-03-04"})
    {
        EXPECT_EQ(MacOf(text), 0) << text;
    }
}
