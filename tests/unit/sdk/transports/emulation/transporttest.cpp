// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "rig.h"

#include "genapi/exceptions.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <unistd.h>

using namespace EmulationTest;
using testing::HasSubstr;
using Velmo::EDeviceAccess;

namespace
{

/** A data file named by the environment, for the life of the object. */
class CDataFile
{
public:
    CDataFile() : m_name(testing::TempDir() + "emulation_" + std::to_string(::getpid()) + ".json")
    {
        ::setenv(Velmo::Emulation::FileVariable, m_name.c_str(), 1);
    }
    ~CDataFile()
    {
        ::unsetenv(Velmo::Emulation::FileVariable);
        std::remove(m_name.c_str());
    }
    void Write(const std::string& text) const { std::ofstream(m_name, std::ios::binary) << text; }
    const std::string& GetName() const { return m_name; }

private:
    const std::string m_name;
};

std::size_t CountOf(const std::shared_ptr<Velmo::Transport::ITransport>& transport)
{
    Velmo::DeviceInfoList list;
    transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::All);
    return list.size();
}

} // namespace

TEST(EmulationTransport, recordHasEveryProperty)
{
    auto config = Small();
    config.userDefinedName = "left";
    const SRig rig({config});
    const Velmo::CDeviceInfo info = rig.Enumerate().at(0);
    EXPECT_EQ(info.GetDeviceClass(), "KorvelCamEmu");
    EXPECT_EQ(info.GetDeviceFactory(), "KorvelCamEmu");
    EXPECT_EQ(info.GetTLType(), "CamEmu");
    EXPECT_EQ(info.GetFullName(), "Emulated Camera#KorvelCamEmu#E-1");
    EXPECT_EQ(info.GetFriendlyName(), "left (E-1)");
    EXPECT_EQ(info.GetVendorName(), "Korvel");
    EXPECT_EQ(info.GetModelName(), "EmuMono1280");
    EXPECT_EQ(info.GetSerialNumber(), "E-1");
    EXPECT_EQ(info.GetDeviceVersion(), "1.0");
    EXPECT_EQ(info.GetUserDefinedName(), "left");
    EXPECT_EQ(info.GetInterfaceID(), "DefaultInterface");
}

TEST(EmulationTransport, cameraWithoutNameHasNoUserDefinedName)
{
    const SRig rig;
    EXPECT_FALSE(rig.Enumerate().at(0).IsUserDefinedNameAvailable());
}

TEST(EmulationTransport, withoutEnvironmentThereAreTwoCameras)
{
    EXPECT_EQ(CountOf(Velmo::Emulation::CreateTransport()), 2U);
}

TEST(EmulationTransport, environmentGivesTheNumberOfCameras)
{
    ::setenv(Velmo::Emulation::CountVariable, "5", 1);
    const auto transport = Velmo::Emulation::CreateTransport();
    ::unsetenv(Velmo::Emulation::CountVariable);
    EXPECT_EQ(CountOf(transport), 5U);
}

TEST(EmulationTransport, numberThatIsNoneGivesTheDefault)
{
    ::setenv(Velmo::Emulation::CountVariable, "many", 1);
    const auto transport = Velmo::Emulation::CreateTransport();
    ::unsetenv(Velmo::Emulation::CountVariable);
    EXPECT_EQ(CountOf(transport), 2U);
}

TEST(EmulationTransport, fileIsReadAgainWhenItChanged)
{
    const CDataFile file;
    file.Write(R"({"cameras": [{"serial": "A"}]})");
    const auto transport = Velmo::Emulation::CreateTransport();
    EXPECT_EQ(CountOf(transport), 1U);
    file.Write(R"({"cameras": [{"serial": "A"}, {"serial": "B"}]})");
    EXPECT_EQ(CountOf(transport), 2U);
}

TEST(EmulationTransport, cameraTakenOutOfTheFileIsRemovedAndTheOthersStay)
{
    const CDataFile file;
    file.Write(R"({"cameras": [{"serial": "A"}, {"serial": "B"}]})");
    const auto transport = Velmo::Emulation::CreateTransport();
    Velmo::DeviceInfoList list;
    transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::All);
    const auto first = transport->CreateDevice(list.at(0));
    const auto second = transport->CreateDevice(list.at(1));
    first->Open(EDeviceAccess::Control);
    second->Open(EDeviceAccess::Control);
    CCounter removed;
    first->SetRemovalCallback([&] { removed.Count(); });
    file.Write(R"({"cameras": [{"serial": "B"}]})");
    EXPECT_EQ(CountOf(transport), 1U);
    EXPECT_TRUE(removed.WaitFor(1));
    EXPECT_TRUE(first->IsRemoved());
    EXPECT_FALSE(second->IsRemoved());
    first->SetRemovalCallback(nullptr);
}

TEST(EmulationTransport, badFileKeepsTheCamerasAndTellsWhatIsWrong)
{
    const CDataFile file;
    file.Write(R"({"cameras": [{"serial": "A"}]})");
    const auto transport = Velmo::Emulation::CreateTransport();
    ASSERT_EQ(CountOf(transport), 1U);
    file.Write(R"({"cameras": [{"serial": "A", "sensro": 1}]})");
    EXPECT_EQ(CountOf(transport), 1U);
    const auto control = Velmo::Emulation::GetControl(transport);
    EXPECT_THAT(control->GetDataError(), HasSubstr("'cameras[0].sensro'"));
    EXPECT_THAT(control->GetDataError(), HasSubstr(file.GetName()));
    file.Write(R"({"cameras": []})");
    EXPECT_EQ(CountOf(transport), 0U);
    EXPECT_EQ(control->GetDataError(), "");
}

TEST(EmulationTransport, configuredFeatureThatDoesNotFitNamesItsCamera)
{
    const CDataFile file;
    file.Write(R"({"cameras": [{"serial": "A", "features": {"Width": 3}}]})");
    const auto transport = Velmo::Emulation::CreateTransport();
    EXPECT_EQ(CountOf(transport), 0U);
    EXPECT_THAT(Velmo::Emulation::GetControl(transport)->GetDataError(),
                testing::AllOf(HasSubstr("'A'"), HasSubstr("'Width'")));
}

TEST(EmulationTransport, missingFileGivesNoCamerasAndAnError)
{
    const CDataFile file;
    const auto transport = Velmo::Emulation::CreateTransport();
    EXPECT_EQ(CountOf(transport), 0U);
    EXPECT_THAT(Velmo::Emulation::GetControl(transport)->GetDataError(), HasSubstr(file.GetName()));
}

TEST(EmulationTransport, interfacesOfTheFileAreListedAndCountTheirCameras)
{
    const CDataFile file;
    file.Write(R"({"interfaces": [{"id": "a", "name": "Port A"}, {"id": "b"}],
                   "cameras": [{"serial": "A", "interface": "a"}]})");
    const auto transport = Velmo::Emulation::CreateTransport();
    Velmo::InterfaceInfoList list;
    transport->EnumerateInterfaces(list);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].GetInterfaceID(), "a");
    EXPECT_EQ(list[0].GetFriendlyName(), "Port A");
    const auto interface = transport->CreateInterface(list[0]);
    EXPECT_EQ(interface->GetNodeMap(), nullptr);
    interface->Open();
    EXPECT_EQ(GenApi::CIntegerPtr(interface->GetNodeMap()->GetNode("DeviceCount"))->GetValue(), 1);
    EXPECT_EQ(GenApi::CStringPtr(interface->GetNodeMap()->GetNode("InterfaceID"))->GetValue(), "a");
    interface->Close();
    EXPECT_FALSE(interface->IsOpen());
}

TEST(EmulationTransport, defaultInterfaceIsReported)
{
    const SRig rig;
    Velmo::InterfaceInfoList list;
    rig.transport->EnumerateInterfaces(list);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0].GetInterfaceID(), "DefaultInterface");
}

TEST(EmulationTransport, unknownRecordMakesNoDevice)
{
    const SRig rig;
    Velmo::CDeviceInfo info = rig.Enumerate().at(0);
    info.SetFullName("Emulated Camera#KorvelCamEmu#none");
    EXPECT_THROW(rig.transport->CreateDevice(info), GenICam::RuntimeException);
}

TEST(EmulationTransport, pluggedCameraAppearsAndUnpluggedOneGoes)
{
    const SRig rig;
    rig.control->Plug(Small("E-2"));
    EXPECT_EQ(rig.Enumerate().size(), 2U);
    EXPECT_TRUE(rig.control->Unplug("E-1"));
    ASSERT_EQ(rig.Enumerate().size(), 1U);
    EXPECT_EQ(rig.Enumerate()[0].GetSerialNumber(), "E-2");
    EXPECT_FALSE(rig.control->Unplug("E-1"));
}

TEST(EmulationTransport, sameSerialCannotBePluggedTwice)
{
    const SRig rig;
    EXPECT_THROW(rig.control->Plug(Small()), GenICam::InvalidArgumentException);
    EXPECT_EQ(rig.Enumerate().size(), 1U);
}

TEST(EmulationTransport, deadCameraVanishesUntilItIsPluggedAgain)
{
    const SRig rig;
    rig.control->FindCamera("E-1")->SetFeature("FaultRemove", "1");
    EXPECT_TRUE(rig.Enumerate().empty());
    rig.control->Plug(Small());
    EXPECT_EQ(rig.Enumerate().size(), 1U);
}

TEST(EmulationTransport, resetCameraComesBackAfterItsBootTimeWithItsName)
{
    auto config = Small();
    config.bootTimeMs = 1;
    const SRig rig({config});
    const auto device = rig.Open();
    CCounter removed;
    device->SetRemovalCallback([&] { removed.Count(); });
    GenApi::CStringPtr(device->GetNodeMap()->GetNode("DeviceUserID"))->SetValue("renamed");
    GenApi::CCommandPtr(device->GetNodeMap()->GetNode("DeviceReset"))->Execute();
    EXPECT_TRUE(removed.WaitFor(1));
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(DeadlineMs);
    while (rig.Enumerate().empty() && std::chrono::steady_clock::now() < deadline)
    {
    }
    ASSERT_EQ(rig.Enumerate().size(), 1U);
    EXPECT_EQ(rig.Enumerate()[0].GetUserDefinedName(), "renamed");
    device->SetRemovalCallback(nullptr);
}

TEST(EmulationTransport, renamedCameraIsReportedUnderItsNewName)
{
    const SRig rig;
    const auto device = rig.Open();
    GenApi::CStringPtr(device->GetNodeMap()->GetNode("DeviceUserID"))->SetValue("front");
    EXPECT_EQ(rig.Enumerate()[0].GetUserDefinedName(), "front");
    EXPECT_EQ(rig.Enumerate()[0].GetFriendlyName(), "front (E-1)");
}

TEST(EmulationTransport, slowDiscoveryTakesItsTime)
{
    auto config = Small();
    config.faults.discoveryDelayMs = 60;
    const SRig rig({config});
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(rig.Enumerate().size(), 1U);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(60));
}

TEST(EmulationTransport, currentControlIsThatOfTheLatestTransport)
{
    const SRig rig({Small("X")});
    const auto control = Velmo::Emulation::GetCurrentControl();
    ASSERT_NE(control, nullptr);
    EXPECT_NE(control->FindCamera("X"), nullptr);
}
