// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/messagechannel.h"

#include <gtest/gtest.h>

using namespace GigEServer::Internal;
using namespace std::chrono_literals;
namespace Gvcp = Velmo::Gvcp;
using Gvcp::ECommand;
using Gvcp::EStatus;

namespace
{

constexpr SPeer Host{0x7F000001, 40000};
constexpr SPeer Stranger{0x7F000009, 40000};

Gvcp::SEvent SomeEvent(std::uint16_t id = 0x9010)
{
    Gvcp::SEvent event;
    event.id = id;
    event.timestamp = 0x1122334455667788;
    return event;
}

class MessageChannel : public ::testing::Test
{
protected:
    void Open(std::chrono::milliseconds timeout = 100ms, std::uint32_t retries = 2, const SPeer& peer = Host)
    {
        m_channel.SetTarget({peer, timeout, retries});
    }
    void Acknowledge(std::uint16_t id, ECommand answer = ECommand::EventAck, const SPeer& peer = Host)
    {
        const Gvcp::Bytes ack = Gvcp::EncodePlainAck(id, answer, EStatus::Success);
        m_channel.Handle(ack.data(), ack.size(), peer, m_now);
    }
    void Pass(std::chrono::milliseconds time)
    {
        m_now += time;
        m_channel.OnTime(m_now);
    }

    std::vector<Gvcp::Bytes> m_sent;
    SLiveCounters m_counters;
    CMessageChannel m_channel{[this](const Gvcp::Bytes& message, const SPeer& peer)
                              {
                                  EXPECT_EQ(peer, Host);
                                  m_sent.push_back(message);
                              },
                              m_counters};
    CMessageChannel::Time m_now{};
};

} // namespace

TEST_F(MessageChannel, eventWithoutDataIsThatManyBytes)
{
    Open(0ms);
    m_channel.Push(SomeEvent(), m_now);
    // GVCP header: key, flags, EVENT_CMD, length, request; event: reserved, id, stream channel, block, time
    EXPECT_EQ(m_sent, (std::vector<Gvcp::Bytes>{{0x42, 0x00, 0x00, 0xC0, 0x00, 0x10, 0x00, 0x01, //
                                                 0x00, 0x00, 0x90, 0x10, 0xFF, 0xFF, 0x00, 0x00, //
                                                 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88}}));
    EXPECT_FALSE(m_channel.GetDeadline().has_value());
}

TEST_F(MessageChannel, eventWithDataAsksForItsAcknowledge)
{
    Open();
    Gvcp::SEvent event = SomeEvent(0x9003);
    event.streamChannel = 0;
    event.blockId = 7;
    event.data = {0, 0, 0, 0, 0, 0, 0, 7};
    m_channel.Push(event, m_now);
    EXPECT_EQ(m_sent, (std::vector<Gvcp::Bytes>{{0x42, 0x01, 0x00, 0xC2, 0x00, 0x18, 0x00, 0x01, //
                                                 0x00, 0x00, 0x90, 0x03, 0x00, 0x00, 0x00, 0x07, //
                                                 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, //
                                                 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x07}}));
    EXPECT_EQ(m_channel.GetDeadline(), m_now + 100ms);
    Acknowledge(1, ECommand::EventAck); // of another kind
    EXPECT_TRUE(m_channel.GetDeadline().has_value());
    Acknowledge(1, ECommand::EventDataAck);
    EXPECT_FALSE(m_channel.GetDeadline().has_value());
}

TEST_F(MessageChannel, nothingLeavesAClosedOne)
{
    m_channel.Push(SomeEvent(), m_now);
    Pass(1s);
    EXPECT_TRUE(m_sent.empty());
    Open();
    Pass(1s);
    EXPECT_TRUE(m_sent.empty());
}

TEST_F(MessageChannel, messageIsSentAgainUnchangedUntilTheRetriesAreUsedUp)
{
    Open(100ms, 2);
    m_channel.Push(SomeEvent(), m_now);
    Pass(99ms);
    EXPECT_EQ(m_sent.size(), 1U);
    Pass(1ms);
    Pass(100ms);
    ASSERT_EQ(m_sent.size(), 3U);
    EXPECT_EQ(m_sent[0], m_sent[1]);
    EXPECT_EQ(m_sent[0], m_sent[2]);
    EXPECT_EQ(m_counters.Get().lostEvents, 0U);
    Pass(100ms);
    Pass(100ms);
    EXPECT_EQ(m_sent.size(), 3U);
    EXPECT_EQ(m_counters.Get().lostEvents, 1U);
    EXPECT_EQ(m_counters.Get().events, 1U);
    EXPECT_FALSE(m_channel.GetDeadline().has_value());
}

TEST_F(MessageChannel, nextMessageWaitsForTheAcknowledgeOfTheOneBefore)
{
    Open();
    m_channel.Push(SomeEvent(0x9001), m_now);
    m_channel.Push(SomeEvent(0x9002), m_now);
    EXPECT_EQ(m_sent.size(), 1U);
    Acknowledge(1, ECommand::EventAck, Stranger);
    Acknowledge(2);
    m_channel.Handle(reinterpret_cast<const std::uint8_t*>("rubbish"), 7, Host, m_now);
    EXPECT_EQ(m_sent.size(), 1U);
    Acknowledge(1);
    ASSERT_EQ(m_sent.size(), 2U);
    EXPECT_EQ(m_sent[1][7], 2);  // the request's number
    EXPECT_EQ(m_sent[1][11], 2); // the event's
}

TEST_F(MessageChannel, closingDropsWhatWaits)
{
    Open();
    m_channel.Push(SomeEvent(), m_now);
    m_channel.Push(SomeEvent(), m_now);
    Open(100ms, 2, {Host.ip, 0});
    Open();
    Pass(1s);
    Acknowledge(1);
    EXPECT_EQ(m_sent.size(), 1U);
    EXPECT_EQ(m_counters.Get().lostEvents, 2U);
}

TEST_F(MessageChannel, silentApplicationCostsOnlyTheEventsBeyondTheQueue)
{
    Open();
    for (std::size_t i = 0; i < CMessageChannel::MostWaiting + 6; ++i) // one is on its way
    {
        m_channel.Push(SomeEvent(), m_now);
    }
    EXPECT_EQ(m_counters.Get().lostEvents, 5U);
    EXPECT_EQ(m_sent.size(), 1U);
}

TEST_F(MessageChannel, requestNumbersAreNeverZero)
{
    Open(0ms);
    for (int i = 0; i < 0x10000; ++i)
    {
        m_channel.Push(SomeEvent(), m_now);
    }
    EXPECT_EQ(m_sent[0xFFFE][6], 0xFF);
    EXPECT_EQ(m_sent[0xFFFE][7], 0xFF);
    EXPECT_EQ(m_sent[0xFFFF][6], 0);
    EXPECT_EQ(m_sent[0xFFFF][7], 1);
}
