// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/eventreader.h"

#include <gtest/gtest.h>

using namespace Velmo;
using GigE::Internal::CEventReader;
using Gvcp::Bytes;
using Transport::SDeviceEvent;

namespace
{

constexpr std::uint32_t Camera = 0x0A010203;
constexpr std::uint16_t SourcePort = 50000;

Gvcp::SEvent SomeEvent(std::uint16_t id = 0x9003)
{
    Gvcp::SEvent event;
    event.id = id;
    event.timestamp = 0x0102030405060708;
    return event;
}

class EventReader : public ::testing::Test
{
protected:
    Bytes Push(const Bytes& datagram, std::uint32_t ip = Camera, std::uint16_t port = SourcePort)
    {
        return m_reader.Handle(datagram.data(), datagram.size(), ip, port,
                               [this](SDeviceEvent event) { m_events.push_back(std::move(event)); });
    }

    CEventReader m_reader{Camera, SourcePort};
    std::vector<SDeviceEvent> m_events;
};

} // namespace

TEST_F(EventReader, givesTheWholeEventAndAcknowledgesIt)
{
    const Bytes message = Gvcp::EncodeEventCmd(7, SomeEvent(), true);
    EXPECT_EQ(Push(message), Gvcp::EncodePlainAck(7, Gvcp::ECommand::EventAck, Gvcp::EStatus::Success));
    ASSERT_EQ(m_events.size(), 1U);
    EXPECT_EQ(m_events[0].id, 0x9003);
    EXPECT_EQ(m_events[0].bytes, (Bytes{0, 0, 0x90, 0x03, 0xFF, 0xFF, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(EventReader, dataFollowTheEvent)
{
    Gvcp::SEvent event = SomeEvent();
    event.data = {0xAA, 0xBB};
    const Bytes message = Gvcp::EncodeEventDataCmd(8, event, true);
    EXPECT_EQ(Push(message), Gvcp::EncodePlainAck(8, Gvcp::ECommand::EventDataAck, Gvcp::EStatus::Success));
    ASSERT_EQ(m_events.size(), 1U);
    EXPECT_EQ(m_events[0].bytes.size(), 18U);
    EXPECT_EQ(m_events[0].bytes.back(), 0xBB);
}

TEST_F(EventReader, acknowledgesOnlyWhereThatIsAskedFor)
{
    EXPECT_TRUE(Push(Gvcp::EncodeEventCmd(7, SomeEvent(), false)).empty());
    EXPECT_EQ(m_events.size(), 1U);
}

TEST_F(EventReader, messageThatComesAgainIsAcknowledgedButNotTakenTwice)
{
    const Bytes message = Gvcp::EncodeEventCmd(7, SomeEvent(), true);
    const Bytes first = Push(message);
    EXPECT_EQ(Push(message), first);
    EXPECT_EQ(m_events.size(), 1U);
    EXPECT_EQ(m_reader.GetCounters().duplicates, 1);
    EXPECT_EQ(m_reader.GetCounters().received, 1);
    Gvcp::SEvent later = SomeEvent();
    ++later.timestamp;
    Push(Gvcp::EncodeEventCmd(7, later, true)); // a camera that does not count
    EXPECT_EQ(m_events.size(), 2U);
}

TEST_F(EventReader, severalEventsOfOneMessageAreAllTaken)
{
    Bytes message = Gvcp::EncodeEventCmd(7, SomeEvent(0x9001), true);
    const Bytes second = Gvcp::EncodeEventCmd(7, SomeEvent(0x9002), true);
    message.insert(message.end(), second.begin() + Gvcp::HeaderBytes, second.end());
    message[5] = 32; // the header's length
    EXPECT_FALSE(Push(message).empty());
    ASSERT_EQ(m_events.size(), 2U);
    EXPECT_EQ(m_events[0].id, 0x9001);
    EXPECT_EQ(m_events[1].id, 0x9002);
    EXPECT_EQ(m_events[1].bytes.size(), 16U);
}

TEST_F(EventReader, extendedEventsAreLonger)
{
    Gvcp::SEvent event = SomeEvent();
    event.isExtended = true;
    Push(Gvcp::EncodeEventCmd(7, event, true));
    ASSERT_EQ(m_events.size(), 1U);
    EXPECT_EQ(m_events[0].bytes.size(), 24U);
}

TEST_F(EventReader, strangersAreNeitherHeardNorAnswered)
{
    const Bytes message = Gvcp::EncodeEventCmd(7, SomeEvent(), true);
    EXPECT_TRUE(Push(message, Camera + 1).empty());
    EXPECT_TRUE(Push(message, Camera, SourcePort + 1).empty());
    EXPECT_TRUE(m_events.empty());
    EXPECT_EQ(m_reader.GetCounters().ignored, 2);
    EXPECT_FALSE(Push(message).empty()); // what a stranger sent does not make the camera's own a duplicate
    EXPECT_EQ(m_events.size(), 1U);
}

TEST_F(EventReader, cameraThatDoesNotSayItsPortMaySendFromAny)
{
    CEventReader reader(Camera, 0);
    const Bytes message = Gvcp::EncodeEventCmd(7, SomeEvent(), true);
    EXPECT_FALSE(reader.Handle(message.data(), message.size(), Camera, 1, [](const SDeviceEvent&) {}).empty());
}

TEST_F(EventReader, everyCutAndEveryOtherPacketIsIgnored)
{
    Gvcp::SEvent event = SomeEvent();
    event.data = {1, 2, 3, 4};
    for (const Bytes& message : {Gvcp::EncodeEventCmd(7, SomeEvent(), true), Gvcp::EncodeEventDataCmd(7, event, true)})
    {
        for (std::size_t bytes = 0; bytes < message.size(); ++bytes)
        {
            EXPECT_TRUE(Push({message.begin(), message.begin() + std::ptrdiff_t(bytes)}).empty()) << bytes;
        }
    }
    Bytes odd = Gvcp::EncodeEventCmd(7, SomeEvent(), true);
    odd.push_back(0);
    odd[5] = 17;
    EXPECT_TRUE(Push(odd).empty());
    EXPECT_TRUE(Push(Gvcp::EncodeReadRegCmd(7, {0})).empty());
    EXPECT_TRUE(Push(Gvcp::EncodePlainAck(7, Gvcp::ECommand::EventAck, Gvcp::EStatus::Success)).empty());
    EXPECT_TRUE(Push({}).empty());
    EXPECT_TRUE(m_events.empty());
}
