// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "gvcpresponder.h"
#include "protocols/gvbsregisters.h"
#include "support/fakecamera.h"
#include "transports/gige/gigetransport.h"
#include "transports/gige/internal/gvcpclient.h"
#include "transports/gige/internal/udpsocket.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <thread>

using namespace Velmo;
using Test::CFakeCamera;
using Test::CGvcpResponder;
using ::testing::HasSubstr;
using Transport::EResultStatus;
using Transport::SStreamResult;
using namespace std::chrono_literals;

namespace
{

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t Privilege = Gvbs::ControlChannelPrivilege;

class GigEMonitor : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override { GigE::SetAdapters({}); }

    std::unique_ptr<IVelmoDevice> Create()
    {
        DeviceInfoList list;
        m_pTransport->EnumerateDevices(list, Transport::EDiscoveryScope::All);
        return m_pTransport->CreateDevice(list.at(0));
    }

    std::shared_ptr<Transport::ITransport> m_pTransport = GigE::CreateTransport();
};

/** Reads whatever can be read. */
void ReadAllFeatures(GenApi::INodeMap& nodeMap)
{
    nodeMap.InvalidateNodes();
    GenApi::NodeList nodes;
    nodeMap.GetNodes(nodes);
    for (GenApi::INode* pNode : nodes)
    {
        try
        {
            if (auto* pValue = dynamic_cast<GenApi::IValue*>(pNode))
            {
                pValue->ToString();
            }
        }
        catch (const GenICam::GenericException&)
        {
            // what cannot be read is not what this is about
        }
    }
}

bool WriteRegister(GigE::Internal::CUdpSocket& socket, std::uint32_t address, std::uint32_t value)
{
    static std::uint16_t requestId = 0;
    socket.Send(Gvcp::EncodeWriteRegCmd(++requestId, {{address, value}}), Loopback, Gvcp::Port);
    const auto deadline = std::chrono::steady_clock::now() + 2s;
    while (std::chrono::steady_clock::now() < deadline)
    {
        std::uint8_t data[600];
        std::uint32_t ip = 0;
        std::uint16_t port = 0;
        Gvcp::SAcknowledge ack;
        const std::size_t bytes = socket.Receive(data, sizeof data, ip, port);
        if (bytes != 0 && Gvcp::ParseAcknowledge(data, bytes, ack) == Gvcp::EParseResult::Ok && ack.ackId == requestId)
        {
            return ack.status == 0;
        }
        std::this_thread::yield();
    }
    return false;
}

/** A camera of a script: its registers, a small description, and every command it got. */
class CScriptedCamera
{
public:
    static constexpr std::uint32_t DescriptionAddress = 0x10000;

    CScriptedCamera() : m_responder("127.0.0.1", [this](const Gvcp::SCommand& command) { return Answer(command); }) {}

    std::vector<std::pair<std::uint16_t, std::uint32_t>> GetCommands()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_commands;
    }

private:
    static Gvcp::Bytes Memory()
    {
        const std::string description =
            R"(<?xml version="1.0"?><RegisterDescription ModelName="M" VendorName="V" ToolTip="" StandardNameSpace="None" )"
            R"(SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" )"
            R"(SubMinorVersion="0" ProductGuid="1" VersionGuid="1" )"
            R"(xmlns="http://www.genicam.org/GenApi/Version_1_1">)"
            R"(<Category Name="Root"><pFeature>Width</pFeature><pFeature>Ccp</pFeature></Category>)"
            R"(<IntReg Name="Width"><Address>0x20000</Address><Length>4</Length><AccessMode>RW</AccessMode>)"
            R"(<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>)"
            R"(<IntReg Name="Ccp"><Address>0x0A00</Address><Length>4</Length><AccessMode>RW</AccessMode>)"
            R"(<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>)"
            R"(<Port Name="Device"/></RegisterDescription>)";
        constexpr std::size_t bytes = 0x20010;
        Gvcp::Bytes memory(bytes);
        char url[64];
        std::snprintf(url, sizeof url, "Local:script.xml;%x;%zx", DescriptionAddress, description.size());
        std::copy(url, url + std::strlen(url), memory.begin() + Gvbs::FirstUrl);
        std::copy(description.begin(), description.end(), memory.begin() + DescriptionAddress);
        memory[0x20003] = 42;
        return memory;
    }

    std::vector<Gvcp::Bytes> Answer(const Gvcp::SCommand& command)
    {
        static const Gvcp::Bytes memory = Memory();
        const auto at = [](std::uint32_t address)
        {
            return memory.begin() + address;
        };
        std::vector<std::uint32_t> addresses;
        std::uint32_t address = 0;
        std::size_t bytes = 0;
        if (command.command == static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryCmd))
        {
            Gvcp::SDiscoveryAck ack;
            ack.modelName = "Scripted";
            ack.serialNumber = "S1";
            ack.currentIp = Loopback;
            return {Gvcp::EncodeDiscoveryAck(command.requestId, ack)};
        }
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (Gvcp::ParseReadRegCmd(command, addresses) == Gvcp::EParseResult::Ok &&
            command.command == static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegCmd))
        {
            m_commands.emplace_back(command.command, addresses.front());
            const auto p = at(addresses.front());
            const std::uint32_t value = std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | p[2] << 8 | p[3];
            return {Gvcp::EncodePendingAck(command.requestId, 10),
                    Gvcp::EncodeReadRegAck(command.requestId, Gvcp::EStatus::Success, {value})};
        }
        if (command.command == static_cast<std::uint16_t>(Gvcp::ECommand::ReadMemCmd) &&
            Gvcp::ParseReadMemCmd(command, address, bytes) == Gvcp::EParseResult::Ok)
        {
            m_commands.emplace_back(command.command, address);
            if (++m_memoryReads % 3 == 1)
            {
                return {}; // lost on its way: to be asked again
            }
            return {Gvcp::EncodeReadMemAck(command.requestId, Gvcp::EStatus::Success, address,
                                           Gvcp::Bytes(at(address), at(address) + static_cast<std::ptrdiff_t>(bytes)))};
        }
        m_commands.emplace_back(command.command, 0);
        return {};
    }

    std::mutex m_mutex; // guards what follows
    std::vector<std::pair<std::uint16_t, std::uint32_t>> m_commands;
    int m_memoryReads = 0;
    CGvcpResponder m_responder; // last: it answers at once
};

} // namespace

TEST_F(GigEMonitor, sendsNothingButReadsAndNeverOneOfTheControlPrivilege)
{
    CScriptedCamera camera;
    const std::unique_ptr<IVelmoDevice> pMonitor = Create();
    const std::size_t discovered = camera.GetCommands().size(); // whether it is free is asked there
    pMonitor->Open(EDeviceAccess::Monitor);
    const GenApi::CIntegerPtr width(pMonitor->GetNodeMap()->GetNode("Width"));
    EXPECT_EQ(width->GetValue(), 42);
    EXPECT_THROW(width->SetValue(1), GenICam::AccessException);
    try
    {
        GenApi::CIntegerPtr(pMonitor->GetNodeMap()->GetNode("Ccp"))->GetValue();
        FAIL() << "read";
    }
    catch (const GenICam::GenericException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("control privilege"));
    }
    pMonitor->GetStream(0)->Open();
    EXPECT_THROW(pMonitor->GetStream(0)->Start(), GenICam::RuntimeException) << "it streams nowhere";
    pMonitor->Close();
    const auto commands = camera.GetCommands();
    ASSERT_GT(commands.size(), discovered + 5);
    for (std::size_t i = discovered; i < commands.size(); ++i)
    {
        EXPECT_TRUE(commands[i].first == static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegCmd) ||
                    commands[i].first == static_cast<std::uint16_t>(Gvcp::ECommand::ReadMemCmd))
            << commands[i].first;
        EXPECT_NE(commands[i].second, Privilege);
    }
}

TEST_F(GigEMonitor, theControllersStreamGoesOnBesideIt)
{
    const CFakeCamera camera;
    const std::unique_ptr<IVelmoDevice> pController = Create();
    pController->Open(EDeviceAccess::Control);
    Transport::IStream& stream = *pController->GetStream(0);
    stream.Open();
    std::vector<std::vector<std::uint8_t>> memory(5, std::vector<std::uint8_t>(stream.GetPayloadBytes()));
    for (auto& buffer : memory)
    {
        stream.AnnounceBuffer(buffer.data(), buffer.size(), &buffer);
        stream.QueueBuffer(&buffer);
    }
    stream.Start();
    GenApi::CCommandPtr(pController->GetNodeMap()->GetNode("AcquisitionStart"))->Execute();
    const std::unique_ptr<IVelmoDevice> pMonitor = Create();
    pMonitor->Open(EDeviceAccess::Monitor);
    EXPECT_EQ(GenApi::CIntegerPtr(pMonitor->GetNodeMap()->GetNode("Width"))->GetValue(),
              GenApi::CIntegerPtr(pController->GetNodeMap()->GetNode("Width"))->GetValue());
    pMonitor->GetStream(0)->Open();
    try
    {
        pMonitor->GetStream(0)->Start();
        FAIL() << "started";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("streams unicast to 127.0.0.1"));
    }
    int images = 0;
    for (; images < 20; ++images)
    {
        SStreamResult result;
        ASSERT_TRUE(stream.RetrieveResult(result, 5000)) << images;
        stream.QueueBuffer(result.pContext);
    }
    pMonitor->Close();
    EXPECT_FALSE(pController->IsRemoved());
    stream.Stop();
}

TEST_F(GigEMonitor, doesNotKeepTheControllersHeartbeatAlive)
{
    const CFakeCamera camera; // it takes every read of the control privilege for a sign of life
    GigE::Internal::CUdpSocket controller;
    ASSERT_TRUE(controller.Bind(Loopback));
    ASSERT_TRUE(WriteRegister(controller, Privilege, Gvbs::CcpControlAccess));
    ASSERT_TRUE(WriteRegister(controller, Gvbs::HeartbeatTimeout, 1000));
    const std::unique_ptr<IVelmoDevice> pMonitor = Create();
    pMonitor->Open(EDeviceAccess::Monitor);
    const auto end = std::chrono::steady_clock::now() + 2500ms; // the camera looks at its heartbeat now and then
    while (std::chrono::steady_clock::now() < end)
    {
        ReadAllFeatures(*pMonitor->GetNodeMap());
    }
    GigE::Internal::CGvcpClient client;
    ASSERT_TRUE(client.Open(Loopback, Loopback));
    EXPECT_EQ(client.ReadRegister(Privilege, 500ms, 3).value, 0U) << "somebody kept the controller alive";
}

TEST_F(GigEMonitor, aCameraThatDoesNotAnswerIsAnErrorThatSaysSo)
{
    auto pCamera = std::make_unique<CFakeCamera>();
    const std::unique_ptr<IVelmoDevice> pMonitor = Create();
    pCamera.reset();
    try
    {
        pMonitor->Open(EDeviceAccess::Monitor);
        FAIL() << "opened";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("cannot be monitored: it does not answer"));
    }
    EXPECT_FALSE(pMonitor->IsOpen());
}
