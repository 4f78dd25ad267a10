// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/controlchannel.h"
#include "protocols/gvbsregisters.h"

#include <gtest/gtest.h>

using namespace GigEServer;
using namespace GigEServer::Internal;
using namespace std::chrono_literals;
namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;
using Gvcp::EStatus;

namespace
{

constexpr std::uint32_t Width = 0x20310; // the camera model's registers
constexpr std::uint32_t SensorWidth = 0x20300;
constexpr SPeer Mine{0x7F000001, 40000};
constexpr SPeer Other{0x7F000001, 40001};

SServedCamera SomeCamera()
{
    SServedCamera camera;
    camera.config.serialNumber = "GC-1";
    camera.config.userDefinedName = "left";
    camera.address = {0x7F000002, 0xFF000000, 0x7FFFFFFF, 1};
    return camera;
}

class ControlChannel : public ::testing::Test
{
protected:
    Gvcp::SAcknowledge Ask(const Gvcp::Bytes& command, const SPeer& peer = Mine)
    {
        m_answer = m_channel.Handle(command.data(), command.size(), peer, m_now);
        Gvcp::SAcknowledge ack;
        EXPECT_EQ(Gvcp::ParseAcknowledge(m_answer.data(), m_answer.size(), ack), Gvcp::EParseResult::Ok);
        return ack;
    }
    EStatus Write(std::uint32_t address, std::uint32_t value, const SPeer& peer = Mine)
    {
        return static_cast<EStatus>(Ask(Gvcp::EncodeWriteRegCmd(++m_id, {{address, value}}), peer).status);
    }
    EStatus ReadStatus(std::uint32_t address, const SPeer& peer = Mine)
    {
        return static_cast<EStatus>(Ask(Gvcp::EncodeReadRegCmd(++m_id, {address}), peer).status);
    }
    std::uint32_t Read(std::uint32_t address, const SPeer& peer = Mine)
    {
        std::vector<std::uint32_t> values;
        EXPECT_EQ(Gvcp::ParseReadRegAck(Ask(Gvcp::EncodeReadRegCmd(++m_id, {address}), peer), values),
                  Gvcp::EParseResult::Ok);
        return values.empty() ? 0 : values.front();
    }
    void TakeControl() { ASSERT_EQ(Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::Success); }

    std::shared_ptr<Simulator::CCameraModel> m_pModel = std::make_shared<Simulator::CCameraModel>(SomeCamera().config);
    int m_streamChanges = 0;
    int m_messageChanges = 0;
    std::uint32_t m_testPacketBytes = 0;
    std::vector<Gvcp::SPacketResend> m_resends;
    std::vector<Gvcp::SForceIp> m_forcedIps;
    CRegisters m_registers{SomeCamera(), m_pModel,
                           CRegisters::SHooks{[this] { ++m_streamChanges; },
                                              [this](std::uint32_t bytes) { m_testPacketBytes = bytes; },
                                              [this]
                                              {
                                                  ++m_messageChanges;
                                              }}};
    CControlChannel m_channel{m_registers, CControlChannel::SHooks{[this](const Gvcp::SPacketResend& resend)
                                                                   { m_resends.push_back(resend); },
                                                                   [this](const Gvcp::SForceIp& forceIp)
                                                                   {
                                                                       m_forcedIps.push_back(forceIp);
                                                                       return true;
                                                                   }}};
    CControlChannel::Time m_now = CControlChannel::Clock::now();
    std::uint16_t m_id = 0;
    Gvcp::Bytes m_answer;
};

} // namespace

TEST_F(ControlChannel, discoveryTellsWhoTheCameraIs)
{
    Gvcp::SDiscoveryAck found;
    ASSERT_EQ(Gvcp::ParseDiscoveryAck(Ask(Gvcp::EncodeDiscoveryCmd(7, false)), found), Gvcp::EParseResult::Ok);
    EXPECT_EQ(found.versionMajor, 2);
    EXPECT_EQ(found.currentIp, 0x7F000002u);
    EXPECT_EQ(found.manufacturerName, "Korvel");
    EXPECT_EQ(found.modelName, "EmuMono1280");
    EXPECT_EQ(found.serialNumber, "GC-1");
    EXPECT_EQ(found.userDefinedName, "left");
    EXPECT_EQ(found.mac, MakeMac(SomeCamera()));
}

TEST_F(ControlChannel, writingNeedsControl)
{
    EXPECT_EQ(Write(Width, 640), EStatus::AccessDenied);
    TakeControl();
    EXPECT_EQ(Write(Width, 640), EStatus::Success);
    EXPECT_EQ(Read(Width), 640u);
}

TEST_F(ControlChannel, secondControllerIsDeniedAndMayReadWhoTheFirstIs)
{
    TakeControl();
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess, Other), EStatus::AccessDenied);
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, 0, Other), EStatus::AccessDenied);
    EXPECT_EQ(Write(Width, 640, Other), EStatus::AccessDenied);
    EXPECT_EQ(Read(Gvbs::ControlChannelPrivilege, Other), Gvbs::CcpControlAccess);
    EXPECT_EQ(Read(Gvbs::PrimaryApplicationIpAddress, Other), Mine.ip);
    EXPECT_EQ(Read(Gvbs::PrimaryApplicationPort, Other), Mine.port);
}

TEST_F(ControlChannel, exclusiveAccessKeepsOthersFromReading)
{
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpExclusiveAccess), EStatus::Success);
    EXPECT_EQ(ReadStatus(Gvbs::Version, Other), EStatus::AccessDenied);
    EXPECT_EQ(ReadStatus(Gvbs::Version), EStatus::Success);
}

TEST_F(ControlChannel, silentOwnerLosesControlAndItsStreamAfterTheHeartbeatTimeout)
{
    TakeControl();
    EXPECT_EQ(Write(Gvbs::HeartbeatTimeout, 1000), EStatus::Success);
    EXPECT_EQ(Write(Gvbs::StreamChannelPort, 50000), EStatus::Success);
    EXPECT_EQ(Write(0x20404, 1), EStatus::Success); // AcquisitionStart
    EXPECT_TRUE(m_pModel->IsAcquiring());
    ASSERT_TRUE(m_channel.GetDeadline().has_value());
    EXPECT_EQ(*m_channel.GetDeadline(), m_now + 1s);
    m_now += 999ms;
    m_channel.Expire(m_now);
    EXPECT_TRUE(m_channel.IsControlled());
    m_now += 1ms;
    m_channel.Expire(m_now);
    EXPECT_FALSE(m_channel.IsControlled());
    EXPECT_FALSE(m_pModel->IsAcquiring());
    EXPECT_EQ(Read(Gvbs::StreamChannelPort), 0u);
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess, Other), EStatus::Success);
}

TEST_F(ControlChannel, everyCommandOfTheOwnerIsAHeartbeat)
{
    TakeControl();
    for (int i = 0; i < 5; ++i)
    {
        m_now += 2s;
        Read(Gvbs::Version);
        m_channel.Expire(m_now);
    }
    EXPECT_TRUE(m_channel.IsControlled());
    m_now += 2s;
    Read(Gvbs::Version, Other);
    m_now += 1s;
    m_channel.Expire(m_now);
    EXPECT_FALSE(m_channel.IsControlled());
}

TEST_F(ControlChannel, refusalsSayWhy)
{
    TakeControl();
    EXPECT_EQ(ReadStatus(0x0300'0000), EStatus::InvalidAddress);
    EXPECT_EQ(ReadStatus(0x0100), EStatus::InvalidAddress); // between the bootstrap registers
    EXPECT_EQ(Write(0x0100, 1), EStatus::InvalidAddress);
    EXPECT_EQ(Write(Gvbs::Version, 1), EStatus::WriteProtect);
    EXPECT_EQ(Write(SensorWidth, 1), EStatus::WriteProtect);
    EXPECT_EQ(Write(Width, 3), EStatus::InvalidParameter);
    const Gvcp::Bytes crooked{0x42, 0x01, 0x00, 0x80, 0x00, 0x04, 0x00, 0x63, 0x00, 0x00, 0x00, 0x02};
    EXPECT_EQ(static_cast<EStatus>(Ask(crooked).status), EStatus::BadAlignment);
    const Gvcp::Bytes unknown{0x42, 0x01, 0x00, 0x90, 0x00, 0x00, 0x00, 0x64};
    const Gvcp::SAcknowledge refusal = Ask(unknown);
    EXPECT_EQ(static_cast<EStatus>(refusal.status), EStatus::NotImplemented);
    EXPECT_EQ(refusal.command, 0x91);
}

TEST_F(ControlChannel, listOfWritesEndsAtTheFirstRefusal)
{
    TakeControl();
    const Gvcp::SAcknowledge ack = Ask(Gvcp::EncodeWriteRegCmd(50, {{Width, 640}, {SensorWidth, 1}, {Width, 320}}));
    std::uint16_t index = 99;
    EXPECT_EQ(static_cast<EStatus>(ack.status), EStatus::WriteProtect);
    ASSERT_EQ(Gvcp::ParseWriteAck(ack, index), Gvcp::EParseResult::Ok);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(Read(Width), 640u);
}

TEST_F(ControlChannel, repeatedWriteIsAnsweredButNotObeyedTwice)
{
    TakeControl();
    const Gvcp::Bytes write = Gvcp::EncodeWriteRegCmd(77, {{Gvbs::StreamChannelPort, 50000}});
    Ask(write);
    const int changes = m_streamChanges;
    EXPECT_EQ(Ask(write).ackId, 77);
    EXPECT_EQ(m_streamChanges, changes);
}

TEST_F(ControlChannel, userNameIsWrittenWhereTheModelKeepsIt)
{
    TakeControl();
    Gvcp::Bytes name{'r', 'i', 'g', 'h', 't', 0};
    name.resize(Gvbs::UserDefinedNameBytes);
    EXPECT_EQ(static_cast<EStatus>(Ask(Gvcp::EncodeWriteMemCmd(9, Gvbs::UserDefinedName, name)).status),
              EStatus::Success);
    EXPECT_EQ(m_pModel->GetUserDefinedName(), "right");
    EXPECT_EQ(Write(Gvbs::UserDefinedName, 0x62000000), EStatus::Success); // 'b'
    EXPECT_EQ(m_pModel->GetUserDefinedName(), "b");
}

TEST_F(ControlChannel, testPacketIsFiredOnceInTheSizeThatIsKept)
{
    TakeControl();
    EXPECT_EQ(Write(Gvbs::StreamChannelPacketSize, Gvbs::ScpsFireTestPacket | Gvbs::ScpsDoNotFragment | 8003),
              EStatus::Success);
    EXPECT_EQ(m_testPacketBytes, 8000u);
    EXPECT_EQ(Read(Gvbs::StreamChannelPacketSize), Gvbs::ScpsDoNotFragment | 8000);
    EXPECT_EQ(Write(Gvbs::StreamChannelPacketSize, 20), EStatus::InvalidParameter);
}

TEST_F(ControlChannel, latchedTimestampIsTheModels)
{
    TakeControl();
    EXPECT_EQ(Write(Gvbs::TimestampControl, Gvbs::TimestampControlLatch), EStatus::Success);
    const std::uint64_t first = std::uint64_t{Read(Gvbs::TimestampValueHigh)} << 32 | Read(Gvbs::TimestampValueLow);
    EXPECT_EQ(Write(Gvbs::TimestampControl, Gvbs::TimestampControlLatch), EStatus::Success);
    const std::uint64_t second = std::uint64_t{Read(Gvbs::TimestampValueHigh)} << 32 | Read(Gvbs::TimestampValueLow);
    EXPECT_GT(second, first);
}

TEST_F(ControlChannel, resendRequestsAreTheOwnersComputers)
{
    const Gvcp::Bytes request = Gvcp::EncodePacketResendCmd(5, {0, false, 3, 1, 2});
    m_channel.Handle(request.data(), request.size(), Mine, m_now);
    EXPECT_TRUE(m_resends.empty());
    TakeControl();
    m_channel.Handle(request.data(), request.size(), Other, m_now); // its stream's port
    m_channel.Handle(request.data(), request.size(), {0x0A000001, 1}, m_now);
    ASSERT_EQ(m_resends.size(), 1u);
    EXPECT_EQ(m_resends.front().blockId, 3u);
}

TEST_F(ControlChannel, forcedAddressIsForOneFreeCamera)
{
    Gvcp::SForceIp forceIp;
    forceIp.mac = MakeMac(SomeCamera());
    forceIp.ip = 0x7F000009;
    EXPECT_EQ(static_cast<EStatus>(Ask(Gvcp::EncodeForceIpCmd(4, forceIp, false)).status), EStatus::Success);
    EXPECT_EQ(m_forcedIps.size(), 1u);
    TakeControl();
    const Gvcp::Bytes again = Gvcp::EncodeForceIpCmd(5, forceIp, false);
    EXPECT_TRUE(m_channel.Handle(again.data(), again.size(), Other, m_now).empty());
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, 0), EStatus::Success);
    forceIp.mac[5] ^= 1;
    const Gvcp::Bytes stranger = Gvcp::EncodeForceIpCmd(6, forceIp, false);
    EXPECT_TRUE(m_channel.Handle(stranger.data(), stranger.size(), Other, m_now).empty());
    EXPECT_EQ(m_forcedIps.size(), 1u);
}

TEST_F(ControlChannel, actionIsAnsweredWhenItsKeysFitAndSomebodyHasControl)
{
    const Gvcp::SAction action{0x11, 0x22, 0x0F, false, 0};
    const Gvcp::Bytes fitting = Gvcp::EncodeActionCmd(60, action, true);
    const Gvcp::Bytes otherGroup = Gvcp::EncodeActionCmd(61, {0x11, 0x23, 0x0F, false, 0}, true);
    TakeControl();
    EXPECT_EQ(Write(Gvbs::ActionDeviceKey, 0x11), EStatus::Success);
    EXPECT_EQ(Write(Gvbs::ActionGroupKey + Gvbs::ActionStride, 0x22), EStatus::Success);
    EXPECT_EQ(Write(Gvbs::ActionGroupMask + Gvbs::ActionStride, 0x01), EStatus::Success);
    EXPECT_EQ(Read(Gvbs::ActionGroupKey + Gvbs::ActionStride), 0x22U);
    const Gvcp::SAcknowledge ack = Ask(fitting, Other);
    EXPECT_EQ(ack.command, static_cast<std::uint16_t>(Gvcp::ECommand::ActionAck));
    EXPECT_EQ(static_cast<EStatus>(ack.status), EStatus::Success);
    EXPECT_TRUE(m_channel.Handle(otherGroup.data(), otherGroup.size(), Other, m_now).empty());
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, 0), EStatus::Success);
    EXPECT_TRUE(m_channel.Handle(fitting.data(), fitting.size(), Other, m_now).empty());
}

TEST_F(ControlChannel, scheduledActionNeedsTheSharedClock)
{
    TakeControl();
    EXPECT_EQ(Write(Gvbs::ActionGroupMask, 0x01), EStatus::Success);
    const Gvcp::Bytes scheduled = Gvcp::EncodeActionCmd(60, {0, 0, 1, true, 1}, true);
    EXPECT_EQ(static_cast<EStatus>(Ask(scheduled, Other).status), EStatus::NoReferenceTime);
    constexpr std::uint32_t disabled = 3; // IEEE 1588: states of a port
    constexpr std::uint32_t uncalibrated = 8;
    constexpr std::uint32_t slave = 9;
    EXPECT_EQ(Read(Gvbs::Ieee1588Status), disabled);
    EXPECT_EQ(Write(Gvbs::GvcpConfiguration, Gvbs::GvcpConfigurationIeee1588), EStatus::Success);
    EXPECT_EQ(Read(Gvbs::GvcpConfiguration), Gvbs::GvcpConfigurationIeee1588);
    const auto start = std::chrono::steady_clock::now();
    while (Read(Gvbs::Ieee1588Status) == uncalibrated && std::chrono::steady_clock::now() - start < 5s)
    {
    }
    EXPECT_EQ(Read(Gvbs::Ieee1588Status), slave);
    EXPECT_EQ(static_cast<EStatus>(Ask(scheduled, Other).status), EStatus::ActionLate); // its time is long past
}

TEST_F(ControlChannel, capabilitiesAreWhatTheCameraDoes)
{
    // GigE Vision, from the most significant bit on: 0 to 4 identity, heartbeat, link speed and controller; 12 IEEE
    // 1588; 14 scheduled actions; 25 actions; 26 to 31 pending, events, resends, writing memory and lists
    EXPECT_EQ(Read(Gvbs::GvcpCapability), 0xF80A007FU);
    EXPECT_GT(Read(Gvbs::NumberOfActionSignals), 0U);
    EXPECT_GT(Read(Gvbs::ScheduledActionQueueSize), 0U);
}

TEST_F(ControlChannel, commandWithoutTheAcknowledgeFlagIsObeyedInSilence)
{
    TakeControl();
    Gvcp::Bytes write = Gvcp::EncodeWriteRegCmd(99, {{Width, 320}});
    write[1] = 0;
    EXPECT_TRUE(m_channel.Handle(write.data(), write.size(), Mine, m_now).empty());
    EXPECT_EQ(Read(Width), 320u);
}

TEST_F(ControlChannel, whatIsNoCommandIsIgnored)
{
    const std::uint8_t garbage[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    for (std::size_t bytes = 0; bytes <= sizeof garbage; ++bytes)
    {
        EXPECT_TRUE(m_channel.Handle(garbage, bytes, Mine, m_now).empty());
    }
}

TEST_F(ControlChannel, messageChannelIsWrittenByTheControllerAndClosedWithTheControl)
{
    EXPECT_EQ(Read(Gvbs::NumberOfMessageChannels), 1U);
    const std::uint32_t events = Gvbs::GvcpCapabilityEvent | Gvbs::GvcpCapabilityEventData;
    EXPECT_EQ(Read(Gvbs::GvcpCapability) & events, 0x18U);
    EXPECT_EQ(Write(Gvbs::MessageChannelPort, 5000), EStatus::AccessDenied);
    TakeControl();
    EXPECT_EQ(Write(Gvbs::MessageChannelDestination, Mine.ip), EStatus::Success);
    EXPECT_EQ(Write(Gvbs::MessageChannelTransmissionTimeout, 200), EStatus::Success);
    EXPECT_EQ(Write(Gvbs::MessageChannelRetryCount, 3), EStatus::Success);
    EXPECT_EQ(Write(Gvbs::MessageChannelPort, 0x00015000), EStatus::InvalidParameter); // network interface 1
    EXPECT_EQ(Write(Gvbs::MessageChannelPort, 5000), EStatus::Success);
    EXPECT_EQ(m_messageChanges, 4);
    EXPECT_EQ(Write(Gvbs::MessageChannelSourcePort, 1), EStatus::WriteProtect);
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, 0), EStatus::Success);
    EXPECT_EQ(m_messageChanges, 5);
    EXPECT_EQ(Read(Gvbs::MessageChannelPort), 0U);
    EXPECT_EQ(Read(Gvbs::MessageChannelDestination), 0U);
}
