// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "contract/transportfixture.h"

#include <algorithm>

/** The part of the contract that interfaces have to keep; included by contract/transportcontract.h. */
namespace Contract
{

/** What the device list of an open interface shows. */
class CShownDevices
{
public:
    explicit CShownDevices(GenApi::INodeMap& nodeMap) : m_nodeMap(nodeMap) {}
    void Update()
    {
        const GenApi::CCommandPtr command(m_nodeMap.GetNode("DeviceUpdateList"));
        ASSERT_TRUE(command.IsValid());
        command->Execute();
        EXPECT_TRUE(command->IsDone());
    }
    std::int64_t Count() const { return GenApi::CIntegerPtr(m_nodeMap.GetNode("DeviceCount"))->GetValue(); }
    std::string Text(const char* name) const { return GenApi::CValuePtr(m_nodeMap.GetNode(name))->ToString().str(); }
    /** Selects the device of that full name; false when it is not in the list. */
    bool Select(const GenICam::gcstring& fullName)
    {
        for (std::int64_t i = 0; i < Count(); ++i)
        {
            GenApi::CIntegerPtr(m_nodeMap.GetNode("DeviceSelector"))->SetValue(i);
            if (Text("DeviceID") == fullName.str())
            {
                return true;
            }
        }
        return false;
    }

private:
    GenApi::INodeMap& m_nodeMap;
};

class InterfaceContract : public TransportContract
{
protected:
    /** The interface that the camera is on, not open. */
    std::unique_ptr<Velmo::Transport::IInterface> MakeInterface(const Velmo::CDeviceInfo& camera)
    {
        Velmo::InterfaceInfoList list;
        transport->EnumerateInterfaces(list);
        const auto found =
            std::find_if(list.begin(), list.end(),
                         [&](const auto& info) { return info.GetInterfaceID() == camera.GetInterfaceID(); });
        return found == list.end() ? nullptr : transport->CreateInterface(*found);
    }
};

TEST_P(InterfaceContract, nodeMapIsThereWhileOpenOnlyAndTellsTheInterface)
{
    const auto interface = MakeInterface(harness->GetCamera());
    ASSERT_NE(nullptr, interface);
    EXPECT_FALSE(interface->IsOpen());
    EXPECT_EQ(nullptr, interface->GetNodeMap());
    for (int round = 0; round < 2; ++round)
    {
        interface->Open();
        ASSERT_TRUE(interface->IsOpen());
        ASSERT_NE(nullptr, interface->GetNodeMap());
        const CShownDevices shown(*interface->GetNodeMap());
        EXPECT_EQ(interface->GetInterfaceInfo().GetInterfaceID().str(), shown.Text("InterfaceID"));
        EXPECT_EQ(interface->GetInterfaceInfo().GetFriendlyName().str(), shown.Text("InterfaceDisplayName"));
        interface->Close();
        EXPECT_FALSE(interface->IsOpen());
        EXPECT_EQ(nullptr, interface->GetNodeMap());
    }
}

TEST_P(InterfaceContract, devicesAreListedAsTheirRecordsSay)
{
    const Velmo::CDeviceInfo camera = harness->GetCamera();
    const auto interface = MakeInterface(camera);
    ASSERT_NE(nullptr, interface);
    interface->Open();
    CShownDevices shown(*interface->GetNodeMap());
    shown.Update();
    ASSERT_TRUE(shown.Select(camera.GetFullName()));
    EXPECT_EQ(camera.GetVendorName().str(), shown.Text("DeviceVendorName"));
    EXPECT_EQ(camera.GetModelName().str(), shown.Text("DeviceModelName"));
    EXPECT_EQ(camera.GetSerialNumber().str(), shown.Text("DeviceSerialNumber"));
    const GenApi::CIntegerPtr selector(interface->GetNodeMap()->GetNode("DeviceSelector"));
    EXPECT_EQ(shown.Count() - 1, selector->GetMax());
    EXPECT_THROW(selector->SetValue(shown.Count()), GenICam::OutOfRangeException);
}

TEST_P(InterfaceContract, deviceThatIsUnpluggedLeavesTheListWithTheNextUpdate)
{
    const Velmo::CDeviceInfo camera = harness->GetCamera();
    const auto interface = MakeInterface(camera);
    ASSERT_NE(nullptr, interface);
    interface->Open();
    CShownDevices shown(*interface->GetNodeMap());
    shown.Update();
    ASSERT_TRUE(shown.Select(camera.GetFullName()));
    int changes = 0;
    GenApi::INode* pCount = interface->GetNodeMap()->GetNode("DeviceCount");
    const auto handle = pCount->RegisterCallback([&changes](GenApi::INode*) { ++changes; });
    ASSERT_TRUE(harness->Unplug());
    shown.Update();
    EXPECT_FALSE(shown.Select(camera.GetFullName()));
    EXPECT_GT(changes, 0);
    EXPECT_EQ(shown.Count() > 0, GenApi::IsAvailable(interface->GetNodeMap()->GetNode("DeviceID")));
    pCount->DeregisterCallback(handle);
}

TEST_P(InterfaceContract, interfaceThatDoesNotExistIsRefused)
{
    Velmo::InterfaceInfoList list;
    transport->EnumerateInterfaces(list);
    ASSERT_FALSE(list.empty());
    Velmo::CInterfaceInfo info = list.front();
    info.SetInterfaceID("no such interface");
    try
    {
        EXPECT_EQ(nullptr, transport->CreateInterface(info));
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_NE(std::string::npos, std::string(e.GetDescription()).find("no such interface")) << e.GetDescription();
    }
}

} // namespace Contract
