// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "transports/emulation/internal/emulationinterface.h"
#include "unit/sdk/transports/emulation/rig.h"

using namespace Velmo::Emulation::Internal;

namespace
{

Simulator::SRackData TwoInterfaces()
{
    Simulator::SRackData data;
    data.interfaces = {{"a", "Port A"}, {"b", ""}};
    data.cameras = {EmulationTest::Small("E-1"), EmulationTest::Small("E-2")};
    data.cameras[0].interfaceId = "a";
    data.cameras[1].interfaceId = "b";
    return data;
}

std::string Text(CEmulationInterface& interface, const char* name)
{
    return GenApi::CValuePtr(interface.GetNodeMap()->GetNode(name))->ToString().str();
}

} // namespace

TEST(EmulationInterface, showsItsOwnCamerasAlone)
{
    const auto rack = std::make_shared<CCameraRack>(TwoInterfaces(), "");
    CEmulationInterface interface(rack, {"b", ""});
    interface.Open();
    EXPECT_EQ(Text(interface, "InterfaceType"), "Custom");
    EXPECT_EQ(Text(interface, "InterfaceDisplayName"), "b");
    EXPECT_EQ(Text(interface, "DeviceCount"), "1");
    EXPECT_EQ(Text(interface, "DeviceSerialNumber"), "E-2");
}

TEST(EmulationInterface, cameraUnderControlIsOpenUntilItIsReleased)
{
    const auto rack = std::make_shared<CCameraRack>(TwoInterfaces(), "");
    CEmulationInterface interface(rack, {"a", "Port A"});
    interface.Open();
    const auto camera = rack->GetCameras().front();
    const int user = 0;
    camera->AddUser(&user, true, nullptr);
    EXPECT_EQ(Text(interface, "DeviceAccessStatus"), "OpenReadWrite");
    GenApi::CCommandPtr(interface.GetNodeMap()->GetNode("DeviceUpdateList"))->Execute();
    camera->RemoveUser(&user);
    EXPECT_EQ(Text(interface, "DeviceAccessStatus"), "ReadWrite");
}

TEST(EmulationInterface, interfaceThatIsGoneCannotBeOpenedAndIsNamed)
{
    const auto rack = std::make_shared<CCameraRack>(TwoInterfaces(), "");
    CEmulationInterface interface(rack, {"c", "Port C"});
    try
    {
        interface.Open();
        FAIL() << "no exception";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_NE(std::string(e.GetDescription()).find("'c' is gone"), std::string::npos) << e.GetDescription();
    }
    EXPECT_FALSE(interface.IsOpen());
}
