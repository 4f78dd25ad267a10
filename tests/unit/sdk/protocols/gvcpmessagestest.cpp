// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"

#include <gtest/gtest.h>

using namespace Velmo::Gvcp;

namespace
{

SCommand Parsed(const Bytes& packet)
{
    SCommand command;
    EXPECT_EQ(ParseCommand(packet.data(), packet.size(), command), EParseResult::Ok);
    return command;
}

} // namespace

TEST(GvcpMessages, resendRequestHasTheStandardsLayout)
{
    EXPECT_EQ(EncodePacketResendCmd(6, {1, false, 0x0203, 4, 0xFFFFFF}),
              (Bytes{0x42, 0x00, 0x00, 0x40, 0, 12, 0, 6, 0, 1, 2, 3, 0, 0, 0, 4, 0, 0xFF, 0xFF, 0xFF}));
}

TEST(GvcpMessages, resendRequestsComeBackAsTheyWere)
{
    for (const bool isExtended : {false, true})
    {
        const std::uint64_t blockId = isExtended ? 0x100000002 : 0xFFFE;
        const Bytes packet = EncodePacketResendCmd(6, {0, isExtended, blockId, 17, 18});
        SPacketResend resend;
        ASSERT_EQ(ParsePacketResendCmd(Parsed(packet), resend), EParseResult::Ok);
        EXPECT_EQ(resend.isExtended, isExtended);
        EXPECT_EQ(resend.blockId, blockId);
        EXPECT_EQ(resend.firstPacketId, 17u);
        EXPECT_EQ(resend.lastPacketId, 18u);
    }
}

TEST(GvcpMessages, standardResendRequestKnowsTwentyFourBits)
{
    const Bytes packet = EncodePacketResendCmd(6, {0, false, 1, 0xAB000001, 0xFFFFFFFF});
    SPacketResend resend;
    ASSERT_EQ(ParsePacketResendCmd(Parsed(packet), resend), EParseResult::Ok);
    EXPECT_EQ(resend.firstPacketId, 1u);
    EXPECT_EQ(resend.lastPacketId, 0xFFFFFFu);
}

TEST(GvcpMessages, eventsComeBackAsTheyWere)
{
    for (const bool isExtended : {false, true})
    {
        SEvent event;
        event.id = 0x9001;
        event.streamChannel = 0;
        event.isExtended = isExtended;
        event.blockId = 12;
        event.timestamp = 0x1122334455667788;
        event.data = {1, 2, 3, 4};
        const Bytes plain = EncodeEventCmd(1, event, true);
        SEvent read;
        ASSERT_EQ(ParseEventCmd(Parsed(plain), read), EParseResult::Ok);
        EXPECT_EQ(read.id, 0x9001);
        EXPECT_EQ(read.blockId, 12u);
        EXPECT_EQ(read.timestamp, 0x1122334455667788u);
        EXPECT_TRUE(read.data.empty());
        const Bytes withData = EncodeEventDataCmd(1, event, false);
        ASSERT_EQ(ParseEventDataCmd(Parsed(withData), read), EParseResult::Ok);
        EXPECT_EQ(read.data, event.data);
    }
}

TEST(GvcpMessages, eventBeyondTheProtocolsPacketIsNotMade)
{
    SEvent event;
    event.data.assign(MaxPayloadBytes - 15, 0);
    EXPECT_TRUE(EncodeEventDataCmd(1, event, false).empty());
    event.data.resize(MaxPayloadBytes - 16);
    EXPECT_FALSE(EncodeEventDataCmd(1, event, false).empty());
}

TEST(GvcpMessages, actionHasItsTimeOnlyWhenScheduled)
{
    EXPECT_EQ(EncodeActionCmd(9, {1, 2, 3, false, 4}, false),
              (Bytes{0x42, 0x00, 0x01, 0x00, 0, 12, 0, 9, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3}));
    const Bytes scheduled = EncodeActionCmd(9, {1, 2, 3, true, 0x100000004}, true);
    EXPECT_EQ(scheduled[1], Flag::AckRequired | Flag::ScheduledAction);
    SAction action;
    ASSERT_EQ(ParseActionCmd(Parsed(scheduled), action), EParseResult::Ok);
    EXPECT_TRUE(action.isScheduled);
    EXPECT_EQ(action.time, 0x100000004u);
}

TEST(GvcpMessages, wrongLengthsAreRefused)
{
    const std::uint8_t payload[24] = {};
    for (const std::size_t bytes : {std::size_t{0}, std::size_t{11}, std::size_t{13}, std::size_t{24}})
    {
        SCommand command;
        command.pPayload = payload;
        command.payloadBytes = bytes;
        SPacketResend resend;
        EXPECT_EQ(ParsePacketResendCmd(command, resend), EParseResult::LengthMismatch) << bytes;
        SAction action;
        EXPECT_EQ(ParseActionCmd(command, action), EParseResult::LengthMismatch) << bytes;
    }
    SCommand command;
    command.pPayload = payload;
    command.payloadBytes = 15;
    SEvent event;
    EXPECT_EQ(ParseEventCmd(command, event), EParseResult::LengthMismatch);
}

TEST(GvcpMessages, answerIsToldByItsKindAndRequestWhateverItsStatus)
{
    const Bytes data = EncodePlainAck(0x1234, ECommand::ActionAck, EStatus::ActionLate);
    SAcknowledge ack;
    ASSERT_EQ(ParseAcknowledge(data.data(), data.size(), ack), EParseResult::Ok);
    EXPECT_TRUE(IsAnswer(ack, ECommand::ActionAck, 0x1234));
    EXPECT_FALSE(IsAnswer(ack, ECommand::ActionAck, 0x1235));
    EXPECT_FALSE(IsAnswer(ack, ECommand::EventAck, 0x1234));
}
