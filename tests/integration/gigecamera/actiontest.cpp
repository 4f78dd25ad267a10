// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/gvcppeer.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Test;
using namespace std::chrono_literals;
namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;
namespace Gvsp = Velmo::Gvsp;
namespace Register = Simulator::Register;
using Gvcp::EStatus;
using Velmo::Transport::SActionAnswer;
using Velmo::Transport::SActionCommand;

namespace
{

constexpr std::uint32_t DeviceKey = 0x1234;
constexpr std::uint32_t GroupKey = 0x42;

/** Two cameras that wait for the first action signal, and the SDK's transport to send it. */
class NetworkActions : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Velmo::GigE::SetAdapters({"127.0.0.1"});
        for (CGvcpPeer* pPeer : {&m_first, &m_second})
        {
            constexpr std::uint32_t action1 = 2; // of TriggerSource
            pPeer->OpenStream(8000);
            Set(*pPeer, static_cast<std::uint32_t>(Register::TriggerMode), 1);
            Set(*pPeer, static_cast<std::uint32_t>(Register::TriggerSource), action1);
            Set(*pPeer, Gvbs::ActionDeviceKey, DeviceKey);
            Set(*pPeer, Gvbs::ActionGroupKey, GroupKey);
            Set(*pPeer, Gvbs::ActionGroupMask, 1);
            Set(*pPeer, static_cast<std::uint32_t>(Register::AcquisitionStart), 1);
        }
    }
    void TearDown() override { Velmo::GigE::SetAdapters({}); }

    static void Set(CGvcpPeer& peer, std::uint32_t address, std::uint32_t value)
    {
        EXPECT_EQ(peer.Write(address, value), EStatus::Success) << address;
    }
    std::vector<SActionAnswer> Act(std::uint32_t groupKey, std::optional<std::uint64_t> time = std::nullopt)
    {
        SActionCommand command;
        command.deviceKey = DeviceKey;
        command.groupKey = groupKey;
        command.groupMask = 1;
        command.time = time;
        command.address = "127.255.255.255";
        command.timeoutMs = 500;
        command.expectedAnswers = 2;
        return m_pTransport->GetGigEExtension()->IssueAction(command);
    }
    /** The time stamp of the next image; 0 when none comes. */
    static std::uint64_t NextTimestamp(CGvcpPeer& peer, std::chrono::milliseconds limit)
    {
        const auto block = peer.ReceiveBlock(limit);
        Gvsp::SPacket packet;
        Gvsp::SLeader leader;
        const bool isImage =
            block.count(0) != 0 &&
            Gvsp::ParsePacket(block.at(0).data(), block.at(0).size(), packet) == Gvsp::EParseResult::Ok &&
            Gvsp::ParseLeader(packet, leader) == Gvsp::EParseResult::Ok;
        return isImage ? leader.timestamp : 0;
    }
    /** The camera's clock now. */
    static std::uint64_t Latch(CGvcpPeer& peer)
    {
        Set(peer, Gvbs::TimestampControl, Gvbs::TimestampControlLatch);
        return std::uint64_t{peer.Read(Gvbs::TimestampValueHigh)} << 32 | peer.Read(Gvbs::TimestampValueLow);
    }

    CCameraProgram m_cameras{{"--count", "2", "--link-speed", "0"}, 2};
    CGvcpPeer m_first{0x7F000001};
    CGvcpPeer m_second{0x7F000002};
    std::shared_ptr<Velmo::Transport::ITransport> m_pTransport = Velmo::GigE::CreateTransport();
};

} // namespace

TEST_F(NetworkActions, triggerAnImageInEveryCameraOfTheGroup)
{
    const std::vector<SActionAnswer> answers = Act(GroupKey);
    std::vector<std::string> sources;
    for (const SActionAnswer& answer : answers)
    {
        sources.push_back(answer.address);
        EXPECT_EQ(answer.status, 0U);
    }
    EXPECT_THAT(sources, ::testing::UnorderedElementsAre("127.0.0.1", "127.0.0.2"));
    EXPECT_NE(NextTimestamp(m_first, 5s), 0U);
    EXPECT_NE(NextTimestamp(m_second, 5s), 0U);
    EXPECT_EQ(NextTimestamp(m_first, 200ms), 0U) << "one action is one image";
}

TEST_F(NetworkActions, leaveOtherGroupsAlone)
{
    EXPECT_TRUE(Act(GroupKey + 1).empty());
    EXPECT_EQ(NextTimestamp(m_first, 200ms), 0U);
}

TEST_F(NetworkActions, triggerAtATimeOfTheSharedClock)
{
    ASSERT_EQ(Act(GroupKey, 1).size(), 2U);
    EXPECT_EQ(Act(GroupKey, 1).front().status, static_cast<std::uint32_t>(EStatus::NoReferenceTime));
    constexpr std::uint32_t slave = 9; // IEEE 1588: states of a port
    for (CGvcpPeer* pPeer : {&m_first, &m_second})
    {
        Set(*pPeer, Gvbs::GvcpConfiguration, Gvbs::GvcpConfigurationIeee1588);
        const auto start = std::chrono::steady_clock::now();
        while (pPeer->Read(Gvbs::Ieee1588Status) != slave && std::chrono::steady_clock::now() - start < 5s)
        {
        }
    }
    constexpr std::uint64_t aheadNs = 300'000'000;
    const std::uint64_t time = Latch(m_first) + aheadNs;
    const std::vector<SActionAnswer> answers = Act(GroupKey, time);
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].status, 0U);
    EXPECT_EQ(answers[1].status, 0U);
    EXPECT_EQ(NextTimestamp(m_first, 5s), time);
    EXPECT_EQ(NextTimestamp(m_second, 5s), time);
    EXPECT_EQ(Act(GroupKey, time).front().status, static_cast<std::uint32_t>(EStatus::ActionLate));
}
