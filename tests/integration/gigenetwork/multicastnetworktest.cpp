// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "support/gigemonitor.h"
#include "support/networknamespace.h"
#include "transports/gige/gigetransport.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Velmo;
using Test::CCameraProgram;
using Test::CGigEClient;
using Test::CGigEMonitor;
using Test::CPeerNamespace;
using Test::CStreamBuffers;
using Test::Execute;
using Test::WriteConfig;
using Transport::EResultStatus;
using Transport::SStreamResult;

namespace
{

/** A simulated camera at the far end of a cable. */
class MulticastNetwork : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
        m_far.Visit(
            [this]
            {
                m_pCamera = std::make_unique<CCameraProgram>(std::vector<std::string>{
                    "--interface", "vb", "--config",
                    WriteConfig("\"AcquisitionMode\": \"MultiFrame\", \"AcquisitionFrameCount\": 100",
                                "\"frameRate\": 50")});
            });
        GigE::SetAdapters({"va"});
    }
    void TearDown() override { GigE::SetAdapters({}); }

    CPeerNamespace m_far;
    std::unique_ptr<CCameraProgram> m_pCamera;
    CGigEClient m_client;
};

} // namespace

TEST_F(MulticastNetwork, theControllerAndTwoMonitorsSeeEveryImageThatComesThroughTheCable)
{
    const auto pDevice = m_client.Open("GC-1");
    Transport::IStream& stream = *pDevice->GetStream(0);
    stream.Open();
    GenApi::CEnumerationPtr(stream.GetNodeMap()->GetNode("TransmissionType"))->FromString("Multicast");
    EXPECT_EQ(GenApi::CIntegerPtr(stream.GetNodeMap()->GetNode("DestinationAddr"))->ToString(), "239.255.77.2");
    CStreamBuffers controller(stream, 100);
    stream.Start();
    CGigEMonitor first;
    CGigEMonitor second;
    first.Start(100);
    second.Start(100);
    Execute(*pDevice, "AcquisitionStart");
    for (std::uint64_t image = 1; image <= 100; ++image)
    {
        for (const SStreamResult& result : {controller.Next(), first.Next(), second.Next()})
        {
            ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription << " at " << image;
            ASSERT_EQ(result.blockId, image);
        }
    }
    EXPECT_EQ(first.Statistic("StreamLostFrameCount"), 0);
    EXPECT_EQ(second.Statistic("StreamLostFrameCount"), 0);
}
