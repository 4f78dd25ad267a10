// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/discoveryanswers.h"

#include "protocols/gvbsregisters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Velmo;
using namespace Velmo::GigE::Internal;
using STaken = CDiscoveryAnswers::STaken;

namespace
{

constexpr std::uint16_t Id = 0x1234;
constexpr std::uint32_t Here = 0xC0A80100;   // 192.168.1.0/24
constexpr std::uint32_t There = 0x0A000000;  // 10.0.0.0/24
constexpr std::uint32_t Camera = Here | 20;  // in the first adapter's subnet
constexpr std::uint32_t Routed = 0xAC100009; // 172.16.0.9: in nobody's

SAdapter Adapter(const char* id, std::uint32_t network)
{
    SAdapter adapter;
    adapter.id = adapter.name = id;
    adapter.ip = network | 5;
    adapter.mask = 0xFFFFFF00;
    return adapter;
}

const SAdapter First = Adapter("eth0", Here);
const SAdapter Second = Adapter("eth1", There);

Gvcp::Bytes Answer(std::uint32_t ip, const char* serial = "1", std::uint16_t id = Id)
{
    Gvcp::SDiscoveryAck ack;
    ack.currentIp = ip;
    ack.serialNumber = serial;
    ack.modelName = "Tester";
    return Gvcp::EncodeDiscoveryAck(id, ack);
}

STaken Take(CDiscoveryAnswers& answers, const Gvcp::Bytes& datagram, std::uint32_t sender, const SAdapter& adapter,
            std::uint16_t port = Gvcp::Port)
{
    return answers.Take(datagram.data(), datagram.size(), sender, port, adapter);
}

/** What a camera says to a question. */
STaken Tell(CDiscoveryAnswers& answers, const SPrivilegeQuestion& question, std::uint32_t privilege)
{
    return Take(answers, Gvcp::EncodeReadRegAck(question.requestId, Gvcp::EStatus::Success, {privilege}), question.ip,
                First);
}

} // namespace

TEST(DiscoveryAnswers, aCameraInTheSubnetIsFoundAndAskedWhetherItIsFree)
{
    CDiscoveryAnswers answers(Id, {}, {});
    const STaken taken = Take(answers, Answer(Camera), Camera, First);
    EXPECT_TRUE(taken.isNewDevice);
    ASSERT_TRUE(taken.question.has_value());
    EXPECT_EQ(taken.question->ip, Camera);
    EXPECT_EQ(taken.question->adapterId, "eth0");
    EXPECT_TRUE(answers.HasOpenQuestions());
    ASSERT_EQ(answers.GetDevices().size(), 1U);
    EXPECT_EQ(answers.GetDevices()[0].access, EAccessStatus::Unreachable);

    EXPECT_FALSE(Tell(answers, *taken.question, 0).isNewDevice);
    EXPECT_EQ(answers.GetDevices()[0].access, EAccessStatus::Free);
    EXPECT_FALSE(answers.HasOpenQuestions());
}

TEST(DiscoveryAnswers, whoIsHeldOrRefusesTheQuestionIsInUse)
{
    CDiscoveryAnswers answers(Id, {}, {});
    const STaken held = Take(answers, Answer(Camera, "1"), Camera, First);
    const STaken refusing = Take(answers, Answer(Camera + 1, "2"), Camera + 1, First);
    Tell(answers, *held.question, Gvbs::CcpControlAccess);
    Take(answers,
         Gvcp::EncodeErrorAck(refusing.question->requestId, Gvcp::ECommand::ReadRegAck, Gvcp::EStatus::AccessDenied),
         Camera + 1, First);
    EXPECT_EQ(answers.GetDevices()[0].access, EAccessStatus::InUse);
    EXPECT_EQ(answers.GetDevices()[1].access, EAccessStatus::InUse);
}

TEST(DiscoveryAnswers, onlyTheCameraItselfSaysWhetherItIsFree)
{
    CDiscoveryAnswers answers(Id, {}, {});
    const STaken taken = Take(answers, Answer(Camera), Camera, First);
    const Gvcp::Bytes free = Gvcp::EncodeReadRegAck(taken.question->requestId, Gvcp::EStatus::Success, {0});
    Take(answers, free, Camera + 1, First);
    Take(answers, free, Camera, First, Gvcp::Port + 1);
    EXPECT_TRUE(answers.HasOpenQuestions());
    ASSERT_EQ(answers.GetOpenQuestions().size(), 1U);
    EXPECT_EQ(answers.GetOpenQuestions()[0].requestId, taken.question->requestId);
}

TEST(DiscoveryAnswers, aCameraInAnotherSubnetIsListedButNotAsked)
{
    CDiscoveryAnswers answers(Id, {}, {});
    const STaken taken = Take(answers, Answer(Camera), Camera, Second);
    EXPECT_TRUE(taken.isNewDevice);
    EXPECT_FALSE(taken.question.has_value());
}

TEST(DiscoveryAnswers, answersToOthersAndFromOtherPortsAreIgnored)
{
    CDiscoveryAnswers answers(Id, {}, {});
    Take(answers, Answer(Camera, "1", Id + 1), Camera, First);
    Take(answers, Answer(Camera), Camera, First, Gvcp::Port + 1);
    const Gvcp::Bytes whole = Answer(Camera);
    for (std::size_t bytes = 0; bytes < whole.size(); ++bytes)
    {
        answers.Take(whole.data(), bytes, Camera, Gvcp::Port, First);
    }
    EXPECT_TRUE(answers.GetDevices().empty());
}

TEST(DiscoveryAnswers, addressesOfEverybodyOrNobodyAreNoCameras)
{
    CDiscoveryAnswers answers(Id, {}, {});
    for (const std::uint32_t ip : {0xFFFFFFFFU, 0xE0000001U, 0xF0000001U, Here | 0xFFU})
    {
        Take(answers, Answer(ip), Camera, First);
    }
    EXPECT_TRUE(answers.GetDevices().empty());
    Take(answers, Answer(0), Camera, First); // has none yet: where it answered from
    ASSERT_EQ(answers.GetDevices().size(), 1U);
    EXPECT_EQ(answers.GetDevices()[0].ip, Camera);
}

TEST(DiscoveryAnswers, theAdapterInWhoseSubnetACameraIsWins)
{
    CDiscoveryAnswers answers(Id, {}, {});
    Take(answers, Answer(Camera), Camera, Second);
    const STaken better = Take(answers, Answer(Camera), Camera, First);
    EXPECT_FALSE(better.isNewDevice);
    ASSERT_TRUE(better.question.has_value());
    EXPECT_EQ(better.question->adapterId, "eth0");
    Take(answers, Answer(Camera), Camera, Second);
    ASSERT_EQ(answers.GetDevices().size(), 1U);
    EXPECT_EQ(answers.GetDevices()[0].adapter.id, "eth0");
}

TEST(DiscoveryAnswers, theSubnetWinsAlsoForACameraThatIsAskedByItsAddress)
{
    CDiscoveryAnswers answers(Id, {Camera}, {});
    const STaken routed = Take(answers, Answer(Camera), Camera, Second);
    ASSERT_TRUE(routed.question.has_value());
    EXPECT_EQ(routed.question->adapterId, "eth1");
    Tell(answers, *routed.question, 0);

    const STaken better = Take(answers, Answer(Camera), Camera, First);
    EXPECT_FALSE(better.isNewDevice);
    ASSERT_TRUE(better.question.has_value());
    EXPECT_EQ(better.question->adapterId, "eth0");
    ASSERT_EQ(answers.GetDevices().size(), 1U);
    EXPECT_EQ(answers.GetDevices()[0].adapter.id, "eth0");
    EXPECT_EQ(answers.GetDevices()[0].access, EAccessStatus::Free) << "what it said of itself is true on any way";
}

TEST(DiscoveryAnswers, aWayThatWasFoundFirstIsKeptWhereNoneIsBetter)
{
    CDiscoveryAnswers answers(Id, {Routed}, {});
    EXPECT_TRUE(Take(answers, Answer(Routed), Routed, Second).question.has_value());
    EXPECT_FALSE(Take(answers, Answer(Routed), Routed, First).question.has_value());
    ASSERT_EQ(answers.GetDevices().size(), 1U);
    EXPECT_EQ(answers.GetDevices()[0].adapter.id, "eth1");
}

TEST(DiscoveryAnswers, aCameraBehindARouterIsWhereItAnswersFrom)
{
    CDiscoveryAnswers answers(Id, {Routed}, {});
    Take(answers, Answer(Camera), Routed, First); // it has an address of its own network behind the router
    ASSERT_EQ(answers.GetDevices().size(), 1U);
    EXPECT_EQ(answers.GetDevices()[0].ip, Routed);
    EXPECT_TRUE(answers.GetDevices()[0].isRemote);
}

TEST(DiscoveryAnswers, twoCamerasOfOneAddressAreTwo)
{
    CDiscoveryAnswers answers(Id, {}, {});
    EXPECT_TRUE(Take(answers, Answer(Camera, "1"), Camera, First).isNewDevice);
    EXPECT_TRUE(Take(answers, Answer(Camera, "2"), Camera, First).isNewDevice);
    EXPECT_EQ(answers.GetDevices().size(), 2U);
}

TEST(DiscoveryAnswers, itIsCompleteWhenAllThatAreExpectedHaveAnswered)
{
    EXPECT_TRUE(CDiscoveryAnswers(Id, {}, {}).IsComplete());
    CDiscoveryAnswers answers(Id, {}, {Camera, Camera + 1});
    Take(answers, Answer(Camera, "1"), Camera, First);
    Take(answers, Answer(Camera, "1"), Camera, First);
    EXPECT_FALSE(answers.IsComplete());
    Take(answers, Answer(Camera + 1, "2"), Camera + 1, First);
    EXPECT_TRUE(answers.IsComplete());
}

TEST(DiscoveryAnswers, aFloodOfCamerasIsCut)
{
    CDiscoveryAnswers answers(Id, {}, {});
    for (std::size_t i = 0; i < CDiscoveryAnswers::MostDevices + 10; ++i)
    {
        Take(answers, Answer(Camera, std::to_string(i).c_str()), Camera, First);
    }
    EXPECT_EQ(answers.GetDevices().size(), CDiscoveryAnswers::MostDevices);
    EXPECT_EQ(answers.GetOpenQuestions().size(), CDiscoveryAnswers::MostDevices);
}
