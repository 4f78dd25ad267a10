// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/fakecamera.h"
#include "support/gigeclient.h"
#include "support/lossycable.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using namespace Velmo;
using Test::CFakeCamera;
using Test::CGigEClient;
using Test::CLossyCable;
using Test::CPeerNamespace;
using Test::CRunningStream;
using Test::SetFloat;
using Test::SFakeCameraPlace;
using ::testing::HasSubstr;
using Transport::EResultStatus;
using Transport::SStreamResult;

namespace
{

/** A camera at the far end of a cable that loses what the test says. */
class GigELoss : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"va"}); }
    void TearDown() override { GigE::SetAdapters({}); }

    std::unique_ptr<IVelmoDevice> OpenBehind(CLossyCable::Loses loses)
    {
        m_pCable =
            std::make_unique<CLossyCable>("va", "192.168.77.1/24", m_far, "vb", "192.168.77.2/24", std::move(loses));
        m_pCamera = std::make_unique<CFakeCamera>("GV77", SFakeCameraPlace{"192.168.77.2", &m_far, 0});
        auto pDevice = m_client.Open("GV77");
        SetFloat(*pDevice, "AcquisitionFrameRate", 20.0);
        return pDevice;
    }

    /** Enough time for all that is asked for again, however busy the machine. */
    static void AwaitPackets(IVelmoDevice& device)
    {
        Transport::IStream& stream = *device.GetStream(0);
        stream.Open();
        constexpr std::int64_t patienceUs = 4000000;
        GenApi::CIntegerPtr(stream.GetNodeMap()->GetNode("FrameRetention"))->SetValue(patienceUs);
    }

    CPeerNamespace m_far;
    std::unique_ptr<CLossyCable> m_pCable;
    std::unique_ptr<CFakeCamera> m_pCamera;
    CGigEClient m_client;
};

constexpr unsigned int everyNth = 40; // a few packets of each image
constexpr std::size_t plenty = 100;   // buffers: none is missing while an image waits for its packets
constexpr unsigned int firstBlock = 65401;

} // namespace

TEST_F(GigELoss, lostPacketsAreAskedForAgainAndEveryImageIsComplete)
{
    const auto pDevice = OpenBehind([](unsigned int, unsigned int packet, int attempt)
                                    { return attempt == 0 && packet % everyNth == 7; });
    AwaitPackets(*pDevice);
    CRunningStream run(*pDevice, plenty);
    constexpr int images = 20;
    for (int image = 0; image < images; ++image)
    {
        const SStreamResult result = run.Next();
        ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription << " at " << image;
        ASSERT_EQ(result.blockId, firstBlock + static_cast<unsigned int>(image));
    }
    EXPECT_GE(m_pCable->CountLost(), 4u * images);
    EXPECT_GE(m_pCable->CountAskedFor(), 4u * images);
    EXPECT_GE(run.Statistic("StreamPacketResendRequestCount"), 4 * images);
    EXPECT_GE(run.Statistic("StreamPacketResendCount"), 4 * images);
    EXPECT_EQ(run.Statistic("StreamIncompleteFrameCount"), 0);
    EXPECT_EQ(run.Statistic("StreamLostFrameCount"), 0);
    EXPECT_GE(run.Statistic("StreamDeliveredFrameCount"), images);
}

TEST_F(GigELoss, lossOfTheRepetitionToo)
{
    const auto pDevice = OpenBehind([](unsigned int, unsigned int packet, int attempt)
                                    { return attempt < 2 && packet % everyNth == 7; });
    AwaitPackets(*pDevice);
    CRunningStream run(*pDevice, plenty);
    for (int image = 0; image < 10; ++image)
    {
        const SStreamResult result = run.Next();
        ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription << " at " << image;
    }
}

TEST_F(GigELoss, anImageThatStaysIncompleteFailsInWordsAndTheStreamGoesOn)
{
    const auto pDevice =
        OpenBehind([](unsigned int block, unsigned int packet, int) { return block % 5 == 0 && packet == 33; });
    CRunningStream run(*pDevice, 10);
    int failed = 0;
    for (unsigned int block = firstBlock; block < firstBlock + 20; ++block)
    {
        const SStreamResult result = run.Next();
        EXPECT_EQ(result.blockId, block);
        EXPECT_EQ(result.status, block % 5 == 0 ? EResultStatus::Failed : EResultStatus::Ok) << block;
        if (result.status == EResultStatus::Failed)
        {
            ++failed;
            EXPECT_THAT(result.errorDescription, HasSubstr("incomplete"));
            EXPECT_NE(result.errorCode, 0u);
        }
    }
    EXPECT_EQ(failed, 4);
    EXPECT_GE(run.Statistic("StreamPacketResendRequestCount"), 4);
    EXPECT_GE(run.Statistic("StreamIncompleteFrameCount"), 4);
    EXPECT_GE(run.Statistic("StreamPacketMissingCount"), 4);
    EXPECT_EQ(run.Statistic("StreamLostFrameCount"), 0);
}

TEST_F(GigELoss, anImageOfWhichNothingArrivesIsCountedAsLost)
{
    const auto pDevice = OpenBehind([](unsigned int block, unsigned int, int) { return block == firstBlock + 3; });
    CRunningStream run(*pDevice, 10);
    SStreamResult result;
    while (result.blockId < firstBlock + 6)
    {
        result = run.Next();
        EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
        EXPECT_NE(result.blockId, firstBlock + 3);
    }
    EXPECT_EQ(run.Statistic("StreamLostFrameCount"), 1);
}

TEST_F(GigELoss, withoutResendNothingIsAskedFor)
{
    const auto pDevice = OpenBehind([](unsigned int, unsigned int packet, int) { return packet == 33; });
    Transport::IStream& stream = *pDevice->GetStream(0);
    stream.Open();
    GenApi::CBooleanPtr(stream.GetNodeMap()->GetNode("EnableResend"))->SetValue(false);
    CRunningStream run(*pDevice, 10);
    for (int image = 0; image < 3; ++image)
    {
        EXPECT_EQ(run.Next().status, EResultStatus::Failed);
    }
    EXPECT_EQ(run.Statistic("StreamPacketResendRequestCount"), 0);
    EXPECT_EQ(m_pCable->CountAskedFor(), 0u);
}
