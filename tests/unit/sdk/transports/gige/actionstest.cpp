// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/actions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Velmo;
using namespace Velmo::GigE::Internal;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

constexpr std::uint16_t Request = 0x1234;

SAdapter Adapter(const char* id, unsigned int index, const char* ip, const char* mask, bool isLoopback = false)
{
    SAdapter adapter;
    adapter.id = id;
    adapter.index = index;
    adapter.isLoopback = isLoopback;
    Gvcp::ParseIp(ip, adapter.ip);
    Gvcp::ParseIp(mask, adapter.mask);
    return adapter;
}

std::vector<SAdapter> System()
{
    return {Adapter("lo", 1, "127.0.0.1", "255.0.0.0", true),     Adapter("eth0", 2, "192.168.1.5", "255.255.255.0"),
            Adapter("eth0/10.0.0.5", 2, "10.0.0.5", "255.0.0.0"), Adapter("eth1", 3, "192.168.2.5", "255.255.255.0"),
            Adapter("tun0", 4, "172.16.0.1", "255.255.255.255"),  Adapter("ptp0", 5, "172.17.0.0", "255.255.255.254")};
}

std::uint32_t Ip(const char* text)
{
    std::uint32_t ip = 0;
    EXPECT_TRUE(Gvcp::ParseIp(text, ip)) << text;
    return ip;
}

/** "adapter>target" of each route; "b" at the end of broadcasts. */
std::vector<std::string> Route(const char* target, const char* source = "0.0.0.0")
{
    std::vector<std::string> texts;
    for (const SActionRoute& route : RouteAction(System(), Ip(target), Ip(source)))
    {
        texts.push_back(route.adapter.id + ">" + Gvcp::IpText(route.target) + (route.isBroadcast ? "b" : ""));
    }
    return texts;
}

std::string Texts(const std::vector<Transport::SActionAnswer>& answers)
{
    std::string text;
    for (const Transport::SActionAnswer& answer : answers)
    {
        text += answer.address + "=" + std::to_string(answer.status) + " ";
    }
    return text;
}

class ActionAnswers : public ::testing::Test
{
protected:
    static SActionRoute OneCamera() { return {System()[1], Ip("192.168.1.20"), false}; }
    static SActionRoute Network() { return {System()[1], Ip("192.168.1.255"), true}; }
    static SActionRoute Everywhere() { return {System()[1], LimitedBroadcast, true}; }

    void Take(const Gvcp::Bytes& data, const char* sender, const SActionRoute& route = Network(),
              std::uint16_t port = Gvcp::Port)
    {
        m_answers.Take(data.data(), data.size(), Ip(sender), port, route);
    }
    static Gvcp::Bytes Ack(Gvcp::EStatus status = Gvcp::EStatus::Success, std::uint16_t id = Request)
    {
        return Gvcp::EncodePlainAck(id, Gvcp::ECommand::ActionAck, status);
    }

    CActionAnswers m_answers{Request, 3};
};

} // namespace

TEST(ActionRoute, limitedBroadcastGoesOnceThroughEachAdapter)
{
    EXPECT_THAT(Route("255.255.255.255"),
                ElementsAre("lo>127.255.255.255b", "eth0>255.255.255.255b", "eth1>255.255.255.255b",
                            "tun0>255.255.255.255b", "ptp0>255.255.255.255b"));
}

TEST(ActionRoute, broadcastOfANetworkGoesThroughItsAdapterAlone)
{
    EXPECT_THAT(Route("192.168.2.255", "192.168.1.5"), ElementsAre("eth1>192.168.2.255b"));
    EXPECT_THAT(Route("10.255.255.255"), ElementsAre("eth0/10.0.0.5>10.255.255.255b"));
    EXPECT_THAT(Route("127.255.255.255"), ElementsAre("lo>127.255.255.255b"));
}

TEST(ActionRoute, oneCameraIsReachedThroughTheAdapterOfItsNetwork)
{
    EXPECT_THAT(Route("192.168.2.77"), ElementsAre("eth1>192.168.2.77"));
    EXPECT_THAT(Route("172.16.0.1"), ElementsAre("tun0>172.16.0.1"));
    EXPECT_THAT(Route("172.17.0.1"), ElementsAre("ptp0>172.17.0.1")) << "the other end, not a broadcast";
}

TEST(ActionRoute, farAddressIsReachedThroughTheAdapterThatTheSystemNames)
{
    EXPECT_THAT(Route("8.1.1.255", "192.168.2.5"), ElementsAre("eth1>8.1.1.255"));
    EXPECT_THAT(Route("8.1.1.255", "192.168.9.9"), IsEmpty()) << "that adapter is not in use";
    EXPECT_THAT(Route("8.1.1.255"), IsEmpty());
}

TEST(ActionRoute, withoutAdaptersThereIsNoWay)
{
    EXPECT_TRUE(RouteAction({}, LimitedBroadcast, 0).empty());
    EXPECT_TRUE(RouteAction({}, Ip("192.168.1.20"), Ip("192.168.1.5")).empty());
}

TEST_F(ActionAnswers, areKeptWithTheirStatusInTheOrderOfArrival)
{
    Take(Ack(Gvcp::EStatus::ActionLate), "192.168.1.21");
    Take(Ack(), "192.168.1.20");
    EXPECT_EQ(Texts(m_answers.Get()), "192.168.1.21=32790 192.168.1.20=0 ");
    EXPECT_FALSE(m_answers.IsComplete());
}

TEST_F(ActionAnswers, ofOneCameraCountOnceAndTheFirstHolds)
{
    Take(Ack(Gvcp::EStatus::Busy), "192.168.1.20");
    Take(Ack(), "192.168.1.20");
    Take(Ack(), "192.168.1.20", Everywhere());
    EXPECT_EQ(Texts(m_answers.Get()), "192.168.1.20=32775 ");
}

TEST_F(ActionAnswers, ofOneAddressThatContradictEachOtherAreKeptApart)
{
    Take(Ack(), "192.168.1.20");
    Take(Ack(Gvcp::EStatus::Busy), "192.168.1.21");
    for (int i = 0; i < 3; ++i)
    {
        Take(Ack(Gvcp::EStatus::ActionLate), "192.168.1.20");
        Take(Ack(Gvcp::EStatus::Busy), "192.168.1.21");
        Take(Ack(Gvcp::EStatus::Busy), "192.168.1.22", Network(), 40000);
    }
    EXPECT_EQ(Texts(m_answers.Get()), "192.168.1.20=0 192.168.1.21=32775 ");
    EXPECT_EQ(Texts(m_answers.GetContradictions()), "192.168.1.20=32790 ");
}

TEST_F(ActionAnswers, thatContradictEachOtherAreBounded)
{
    Take(Ack(), "192.168.1.20");
    for (std::uint16_t status = 1; status < 1000; ++status)
    {
        Take(Ack(static_cast<Gvcp::EStatus>(status)), "192.168.1.20");
    }
    EXPECT_LE(m_answers.GetContradictions().size(), 64U);
    EXPECT_EQ(m_answers.Get().size(), 1U);
}

TEST_F(ActionAnswers, beyondTheExpectedAreIgnored)
{
    for (const char* sender : {"192.168.1.20", "192.168.1.21", "192.168.1.22", "192.168.1.23"})
    {
        Take(Ack(), sender);
    }
    EXPECT_TRUE(m_answers.IsComplete());
    EXPECT_EQ(m_answers.Get().size(), 3U);
}

TEST_F(ActionAnswers, toOtherCommandsAreIgnored)
{
    Take(Ack(Gvcp::EStatus::Success, Request + 1), "192.168.1.20");
    Take(Gvcp::EncodeWriteRegAck(Request, Gvcp::EStatus::Success, 0), "192.168.1.20");
    Take(Gvcp::EncodePendingAck(Request, 100), "192.168.1.20");
    EXPECT_EQ(Texts(m_answers.Get()), "");
}

TEST_F(ActionAnswers, thatAreCutOffOrLieAboutTheirLengthAreIgnored)
{
    const Gvcp::Bytes whole = Ack();
    for (std::size_t bytes = 0; bytes < whole.size(); ++bytes)
    {
        Take(Gvcp::Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(bytes)), "192.168.1.20");
    }
    Gvcp::Bytes lying = whole;
    lying[5] = 4; // the header's length
    Take(lying, "192.168.1.20");
    EXPECT_EQ(Texts(m_answers.Get()), "");
}

TEST_F(ActionAnswers, fromElsewhereAreIgnored)
{
    Take(Ack(), "192.168.1.20", Network(), 40000);
    Take(Ack(), "192.168.2.20", Network());
    Take(Ack(), "192.168.1.21", OneCamera());
    EXPECT_EQ(Texts(m_answers.Get()), "");
    Take(Ack(), "192.168.2.20", Everywhere());
    Take(Ack(), "192.168.1.20", OneCamera());
    EXPECT_EQ(Texts(m_answers.Get()), "192.168.2.20=0 192.168.1.20=0 ");
}
