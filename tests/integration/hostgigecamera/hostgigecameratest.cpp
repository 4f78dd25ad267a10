// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/iimagedecompressorservice.h"
#include "hostongigecamera.h"
#include "parametercollection/parameters.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/gvcppeer.h"
#include "support/waitbox.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QSignalSpy>
#include <QTest>

#include <mutex>
#include <vector>

namespace
{

using HostGigECamera::HostOnGigECamera;
using HostGigECamera::limitMs;
using HostKit::CameraInfoPtr;
using Plugin::CameraPool::ICameraStatusService;

constexpr std::size_t imageBytes = 640 * 480;

struct SChunkValues
{
    std::int64_t frameId = 0;
    std::int64_t timestamp = 0;
    double exposureUs = 0;
};

TEST_F(HostOnGigECamera, chunkValuesAreThoseOfTheirImages)
{
    constexpr int wanted = 100;
    start(
        R"("ExposureTime": 1250, "ChunkModeActive": true, "ChunkEnable[Timestamp]": true, "ChunkEnable[FrameID]": true,
             "ChunkEnable[ExposureTime]": true)");
    std::mutex mutex; // guards seen
    std::vector<SChunkValues> seen;
    const GenApi::CIntegerPtr frameId(m_pNodes->GetNode("ChunkFrameID"));
    const GenApi::CIntegerPtr timestamp(m_pNodes->GetNode("ChunkTimestamp"));
    const GenApi::CFloatPtr exposure(m_pNodes->GetNode("ChunkExposureTime"));
    const auto handle =
        m_pNodes->GetNode("ChunkFrameID")
            ->RegisterCallback(
                [&](GenApi::INode* node)
                {
                    if (GenApi::IsReadable(node))
                    {
                        const std::lock_guard<std::mutex> lock(mutex);
                        seen.push_back({frameId->GetValue(), timestamp->GetValue(), exposure->GetValue()});
                    }
                });
    QMap<std::uint64_t, std::uint64_t> timestamps; // of the results, by block
    QObject receiver;
    QObject::connect(&m_pHost->status(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const CameraInfoPtr&, const Velmo::CGrabResultPtr& result)
                     {
                         EXPECT_EQ(result->GetPayloadType(), Velmo::EPayloadType::ChunkData);
                         EXPECT_EQ(result->GetWidth(), 640U);
                         EXPECT_EQ(result->GetImageSize(), imageBytes);
                         timestamps.insert(result->GetBlockID(), result->GetTimeStamp());
                     });
    m_pHost->stream().startGrabbing(m_info);
    ASSERT_TRUE(QTest::qWaitFor([&] { return timestamps.size() >= wanted; }, limitMs));
    m_pHost->stream().stopGrabbing(m_info);
    m_pNodes->GetNode("ChunkFrameID")->DeregisterCallback(handle);
    int matched = 0;
    for (const SChunkValues& values : seen)
    {
        EXPECT_EQ(values.exposureUs, 1250.0);
        const auto result = timestamps.constFind(static_cast<std::uint64_t>(values.frameId));
        if (result != timestamps.constEnd())
        {
            ++matched;
            EXPECT_EQ(result.value(), static_cast<std::uint64_t>(values.timestamp));
        }
    }
    EXPECT_GE(matched, wanted);
}

TEST_F(HostOnGigECamera, eventsReachTheCallbacksAndTheParameters)
{
    constexpr std::size_t wanted = 30;
    start(R"("EventNotification[ExposureEnd]": "On")");
    const ParameterCollection::CParameter status(m_parameters, QStringLiteral("@EventGrabber/Status"));
    EXPECT_EQ(status.toString(), QStringLiteral("Open"));
    ::Test::CWaitBox<std::int64_t> frames;
    m_pNodes->GetNode("EventExposureEndFrameID")
        ->RegisterCallback(
            [&](GenApi::INode* node)
            {
                if (GenApi::IsReadable(node)) // the begin of a grab invalidates all nodes
                {
                    frames.Put(GenApi::CIntegerPtr(node)->GetValue());
                }
            });
    m_pHost->stream().startGrabbing(m_info);
    ASSERT_TRUE(QTest::qWaitFor([&] { return frames.Await(0).size() >= wanted; }, limitMs));
    m_pHost->stream().stopGrabbing(m_info);
    const ParameterCollection::CIntegerParameter frame(m_parameters, QStringLiteral("EventExposureEndFrameID"));
    EXPECT_GE(frame.value(), static_cast<std::int64_t>(wanted));
    m_pHost->control().close(m_info); // ends the callbacks
    const std::vector<std::int64_t> seen = frames.Await(0);
    for (std::size_t i = 0; i < seen.size(); ++i)
    {
        ASSERT_EQ(seen[i], static_cast<std::int64_t>(i + 1));
    }
}

TEST_F(HostOnGigECamera, compressedImagesAreDecoded)
{
    start(R"("ImageCompressionMode": "Lossless", "TestPattern": "NoisyScene")");
    int decoded = 0;
    QObject receiver;
    QObject::connect(&m_pHost->status(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const CameraInfoPtr&, const Velmo::CGrabResultPtr& result)
                     {
                         const auto decompressor = m_pHost->decompressors().getImageDecompressor(m_info);
                         ASSERT_FALSE(decompressor.isNull());
                         std::vector<unsigned char> pixels(decompressor->GetImageSizeForDecompression());
                         EXPECT_EQ(pixels.size(), imageBytes);
                         EXPECT_LT(result->GetPayloadSize(), imageBytes);
                         EXPECT_EQ(decompressor->Decompress(pixels.data(), pixels.size(), result),
                                   Velmo::CompressionStatus_Ok);
                         ++decoded;
                     });
    QSignalSpy failed(&m_pHost->status(), &ICameraStatusService::cameraImageGrabFailed);
    m_pHost->stream().startGrabbing(m_info);
    EXPECT_TRUE(QTest::qWaitFor([&] { return decoded >= 20; }, limitMs));
    m_pHost->stream().stopGrabbing(m_info);
    EXPECT_EQ(failed.count(), 0);
}

TEST_F(HostOnGigECamera, aMonitorGrabsWhatAnotherApplicationStreamsByMulticast)
{
    constexpr int wanted = 50;
    constexpr std::uint32_t cameraIp = 0x7F000001;
    constexpr std::uint32_t group = 0xEFFF0A0C; // 239.255.10.12
    find(R"("AcquisitionMode": "MultiFrame", "AcquisitionFrameCount": 60)");
    ::Test::CGvcpPeer controller(cameraIp, group);
    controller.OpenStream(1500);
    controller.Write(Velmo::Gvbs::HeartbeatTimeout, 3 * limitMs);
    ASSERT_TRUE(m_pHost->control().open(m_info, true)) << m_info->errorString().toStdString();
    int images = 0;
    int failed = 0;
    QObject receiver;
    QObject::connect(&m_pHost->status(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const auto&, const Velmo::CGrabResultPtr& result)
                     { result->GrabSucceeded() ? ++images : ++failed; });
    m_pHost->stream().startGrabbing(m_info);
    ASSERT_TRUE(m_pHost->status().isCameraGrabbing(m_info)) << m_info->errorString().toStdString();
    controller.Write(static_cast<std::uint32_t>(Simulator::Register::AcquisitionStart), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return images >= wanted; }, limitMs)) << images;
    EXPECT_EQ(failed, 0);
    m_pHost->stream().stopGrabbing(m_info);
    EXPECT_EQ(controller.Read(static_cast<std::uint32_t>(Simulator::Register::AcquisitionMode)), 1U)
        << "the monitor changed the acquisition mode";
}

TEST_F(HostOnGigECamera, aMonitorOfAUnicastStreamSaysWhyItDoesNotGrab)
{
    find("");
    ::Test::CGvcpPeer controller;
    controller.OpenStream(1500);
    controller.Write(Velmo::Gvbs::HeartbeatTimeout, 3 * limitMs);
    ASSERT_TRUE(m_pHost->control().open(m_info, true)) << m_info->errorString().toStdString();
    m_pHost->stream().startGrabbing(m_info);
    EXPECT_FALSE(m_pHost->status().isCameraGrabbing(m_info));
    EXPECT_TRUE(m_info->errorString().contains(QStringLiteral("ask the controlling application for multicast")))
        << m_info->errorString().toStdString();
}

} // namespace
