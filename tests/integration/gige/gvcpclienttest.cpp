// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gvcpclient.h"
#include "gvcpresponder.h"
#include "protocols/gvbsregisters.h"
#include "transports/gige/internal/udpsocket.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <poll.h>
#include <set>

using namespace Velmo;
using GigE::Internal::CGvcpClient;
using GigE::Internal::CUdpSocket;
using GigE::Internal::ERequest;
using GigE::Internal::SRegisterAnswer;
using Test::CGvcpResponder;
using namespace std::chrono_literals;

namespace
{

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t Value = 0x00020000;
constexpr std::uint32_t Lie = 0xDEADBEEF;
constexpr auto Timeout = 100ms;

using Answers = std::vector<Gvcp::Bytes>;

Gvcp::Bytes Answer(const Gvcp::SCommand& command, std::uint32_t value = Value)
{
    return Gvcp::EncodeReadRegAck(command.requestId, Gvcp::EStatus::Success, {value});
}

SRegisterAnswer ReadVersion(int attempts = 2)
{
    CGvcpClient client;
    EXPECT_TRUE(client.Open(Loopback, Loopback)) << client.GetError();
    return client.ReadRegister(Gvbs::Version, Timeout, attempts);
}

/** What a read gives when the camera answers so. */
SRegisterAnswer ReadFrom(const CGvcpResponder::Answer& answer, int attempts = 2)
{
    const CGvcpResponder camera("127.0.0.1", answer);
    return ReadVersion(attempts);
}

void ExpectTruth(const SRegisterAnswer& answer)
{
    EXPECT_EQ(answer.result, ERequest::Answered);
    EXPECT_EQ(answer.value, Value);
}

} // namespace

TEST(GvcpClient, silenceEndsAfterAllAttempts)
{
    std::atomic<int> asked{0};
    const auto start = std::chrono::steady_clock::now();
    const SRegisterAnswer answer = ReadFrom(
        [&asked](const Gvcp::SCommand&)
        {
            ++asked;
            return Answers();
        },
        3);
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(answer.result, ERequest::Silent);
    EXPECT_EQ(asked, 3);
    EXPECT_GE(took, 3 * Timeout);
    EXPECT_LT(took, 3 * Timeout + 1s);
}

TEST(GvcpClient, aRequestIsRepeatedUnderTheSameIdentifierAndALateAnswerTaken)
{
    std::set<std::uint16_t> ids;
    Answers late;
    ExpectTruth(ReadFrom(
        [&](const Gvcp::SCommand& command)
        {
            ids.insert(command.requestId);
            const Answers before = late;
            late = {Answer(command)};
            return before; // to the first one, when the second has come
        },
        2));
    EXPECT_EQ(ids.size(), 1U);
    EXPECT_EQ(ids.count(0), 0U);
}

TEST(GvcpClient, answersToOtherRequestsAreIgnored)
{
    const auto foreign = [](const Gvcp::SCommand& command)
    {
        return Gvcp::EncodeReadRegAck(static_cast<std::uint16_t>(command.requestId - 1), Gvcp::EStatus::Success, {Lie});
    };
    ExpectTruth(ReadFrom([&](const Gvcp::SCommand& command) { return Answers{foreign(command), Answer(command)}; }));
    EXPECT_EQ(ReadFrom([&](const Gvcp::SCommand& command) { return Answers{foreign(command)}; }).result,
              ERequest::Silent);
}

TEST(GvcpClient, answersOfAnotherKindAreIgnored)
{
    ExpectTruth(ReadFrom(
        [](const Gvcp::SCommand& command)
        {
            return Answers{
                Gvcp::EncodeReadMemAck(command.requestId, Gvcp::EStatus::Success, Gvbs::Version, {1, 2, 3, 4}),
                Gvcp::EncodeWriteRegAck(command.requestId, Gvcp::EStatus::AccessDenied, 0), Answer(command)};
        }));
}

TEST(GvcpClient, truncatedAndPaddedAnswersAreIgnored)
{
    for (std::size_t bytes = 0; bytes < Gvcp::HeaderBytes + 4; ++bytes)
    {
        ExpectTruth(ReadFrom(
            [bytes](const Gvcp::SCommand& command)
            {
                Gvcp::Bytes cut = Answer(command, Lie);
                cut.resize(bytes);
                Gvcp::Bytes empty = Gvcp::EncodeReadRegAck(command.requestId, Gvcp::EStatus::Success, {});
                return Answers{cut, empty, Answer(command)};
            }));
    }
}

TEST(GvcpClient, aDuplicateDoesNotAnswerTheNextRequest)
{
    std::atomic<std::uint32_t> reads{0};
    const CGvcpResponder camera("127.0.0.1",
                                [&reads](const Gvcp::SCommand& command)
                                {
                                    const Gvcp::Bytes answer = Answer(command, ++reads);
                                    return Answers{answer, answer, answer};
                                });
    CGvcpClient client;
    ASSERT_TRUE(client.Open(Loopback, Loopback));
    for (std::uint32_t read = 1; read <= 20; ++read)
    {
        ASSERT_EQ(client.ReadRegister(Gvbs::Version, 1s, 1).value, read);
    }
}

TEST(GvcpClient, answersFromAnotherAddressOrPortAreIgnored)
{
    const auto answer = [](const Gvcp::SCommand& command)
    {
        return Answers{Answer(command, Lie)};
    };
    for (const auto& [address, port] :
         {std::pair("127.0.0.2", Gvcp::Port), std::pair("127.0.0.1", std::uint16_t{3957})})
    {
        const CGvcpResponder liar("127.0.0.1", answer, address, port);
        EXPECT_EQ(ReadVersion().result, ERequest::Silent) << address << ":" << port;
    }
}

TEST(GvcpClient, aRefusalIsAnAnswer)
{
    const SRegisterAnswer answer = ReadFrom(
        [](const Gvcp::SCommand& command) {
            return Answers{
                Gvcp::EncodeErrorAck(command.requestId, Gvcp::ECommand::ReadRegAck, Gvcp::EStatus::AccessDenied)};
        });
    EXPECT_EQ(answer.result, ERequest::Refused);
    EXPECT_EQ(answer.status, static_cast<std::uint16_t>(Gvcp::EStatus::AccessDenied));
}

TEST(GvcpClient, aCameraThatAsksForMoreTimeGetsItAndIsLeftInPeace)
{
    CUdpSocket camera;
    ASSERT_TRUE(camera.Bind(Loopback, Gvcp::Port)) << camera.GetError();
    CGvcpClient client;
    ASSERT_TRUE(client.Open(Loopback, Loopback));
    auto answer = std::async(std::launch::async, [&] { return client.ReadRegister(Gvbs::Version, Timeout, 4); });
    pollfd entry{camera.GetDescriptor(), POLLIN, 0};
    ASSERT_EQ(poll(&entry, 1, 5000), 1);
    std::uint8_t data[64];
    std::uint32_t ip = 0;
    std::uint16_t port = 0;
    Gvcp::SCommand command;
    const std::size_t bytes = camera.Receive(data, sizeof data, ip, port);
    ASSERT_EQ(Gvcp::ParseCommand(data, bytes, command), Gvcp::EParseResult::Ok);
    camera.Send(Gvcp::EncodePendingAck(command.requestId, 3000), ip, port);
    EXPECT_EQ(poll(&entry, 1, 3 * static_cast<int>(Timeout.count())), 0) << "it asked again";
    camera.Send(Answer(command), ip, port);
    ExpectTruth(answer.get());
}

TEST(GvcpClient, aCameraThatAsksForMoreTimeForEverIsGivenUp)
{
    std::atomic<int> asked{0};
    const auto start = std::chrono::steady_clock::now();
    const SRegisterAnswer answer = ReadFrom(
        [&asked](const Gvcp::SCommand& command)
        {
            ++asked;
            return Answers(500, Gvcp::EncodePendingAck(command.requestId, 0xFFFF));
        },
        4);
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(answer.result, ERequest::Pending);
    EXPECT_EQ(asked, 1) << "who works on it is not asked again";
    EXPECT_GE(took, CGvcpClient::MostPatience);
    EXPECT_LT(took, CGvcpClient::MostPatience + 1s);
}
