// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "protocols/chunks.h"
#include "simulator/cameramodel.h"
#include "simulator/pixelformats.h"
#include "velmo/imagedecompressor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <string>
#include <vector>

namespace
{

using Simulator::CCameraModel;
using Velmo::CImageDecompressor;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t TimestampChunkId = 0x10;

class CSteppingClock final : public Simulator::IClock
{
public:
    std::int64_t NowNs() const override { return m_nowNs; }
    void Set(std::int64_t ns) { m_nowNs = ns; }

private:
    std::atomic<std::int64_t> m_nowNs{1'000'000'000};
};

class CModelPort final : public GenApi::IPort
{
public:
    explicit CModelPort(CCameraModel& model) : m_model(model) {}
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }
    void Read(void* buffer, std::int64_t address, std::int64_t length) override
    {
        m_model.Read(buffer, address, length);
    }
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override
    {
        m_model.Write(buffer, address, length);
    }

private:
    CCameraModel& m_model;
};

class CLastPayload final : public Simulator::IFrameSink
{
public:
    bool OnFrame(const Simulator::SFrame& frame) override
    {
        payload.assign(frame.data, frame.data + frame.bytes);
        payload.insert(payload.end(), frame.tail, frame.tail + frame.tailBytes);
        isChunkData = frame.payload == Simulator::EFramePayload::ChunkData;
        return true;
    }
    Bytes payload;
    bool isChunkData = false;
};

Simulator::SCameraConfig MakeConfig()
{
    Simulator::SCameraConfig config;
    config.serialNumber = "C-1";
    config.sensorWidth = 320;
    config.sensorHeight = 240;
    config.pixelFormats = {"Mono8", "Mono10", "Mono12", "Mono16", "BayerRG8", "BayerRG12", "RGB8"};
    config.frameRate = 100.0;
    config.features = {{"TestPattern", "NoisyScene"}};
    return config;
}

/** A camera as the SDK sees it, driven by hand. */
class CameraCompression : public ::testing::Test
{
protected:
    CameraCompression() { m_camera.AddSink(&m_sink); }

    void SetUp() override
    {
        const std::string xml = m_camera.GetDescription();
        m_map = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap("C-1");
        m_map->Connect(&m_port);
    }

    void Set(const std::string& feature, const std::string& value)
    {
        GenApi::CValuePtr(m_map->GetNode(feature))->FromString(value);
    }
    std::int64_t Get(const std::string& feature) { return GenApi::CIntegerPtr(m_map->GetNode(feature))->GetValue(); }
    Bytes GetDescriptor()
    {
        std::size_t bytes = 0;
        CImageDecompressor::GetCompressionDescriptor(nullptr, &bytes, *m_map);
        Bytes descriptor(bytes);
        CImageDecompressor::GetCompressionDescriptor(descriptor.data(), &bytes, *m_map);
        return descriptor;
    }
    Bytes GetHash()
    {
        std::size_t bytes = 0;
        CImageDecompressor::GetCompressionDescriptorHash(nullptr, &bytes, *m_map);
        Bytes hash(bytes);
        CImageDecompressor::GetCompressionDescriptorHash(hash.data(), &bytes, *m_map);
        return hash;
    }

    /** The payload of the first image of an acquisition. */
    Bytes Grab(int images = 1)
    {
        Set("AcquisitionStart", "1");
        for (int i = 0; i < images; ++i)
        {
            m_clock.Set(std::max(m_camera.Produce(), m_clock.NowNs()));
            m_camera.Produce();
        }
        Set("AcquisitionStop", "1");
        return m_sink.payload;
    }

    CSteppingClock m_clock;
    CLastPayload m_sink;
    CCameraModel m_camera{MakeConfig(), nullptr, m_clock};
    CModelPort m_port{m_camera};
    std::unique_ptr<GenApi::INodeMap> m_map;
};

TEST_F(CameraCompression, isOffAtFirst)
{
    EXPECT_EQ(CImageDecompressor::GetCompressionMode(*m_map), Velmo::CompressionMode_Off);
    EXPECT_TRUE(GetDescriptor().empty());
    EXPECT_TRUE(GetHash().empty());
    EXPECT_EQ(CImageDecompressor::GetImageSizeForDecompression(*m_map), 320U * 240U);
    EXPECT_EQ(Grab().size(), 320U * 240U);
    EXPECT_FALSE(m_sink.isChunkData);
}

TEST_F(CameraCompression, losslessImagesOfEveryFormatAreThoseSentUncompressed)
{
    for (const Simulator::SPixelFormat& format : Simulator::PixelFormats())
    {
        Set("PixelFormat", std::string(format.name));
        Set("ImageCompressionMode", "Off");
        const Bytes image = Grab();
        Set("ImageCompressionMode", "Lossless");
        EXPECT_EQ(CImageDecompressor::GetCompressionMode(*m_map), Velmo::CompressionMode_Lossless);
        ASSERT_EQ(CImageDecompressor::GetImageSizeForDecompression(*m_map), image.size());
        const Bytes descriptor = GetDescriptor();
        const CImageDecompressor decompressor(descriptor.data(), descriptor.size());
        const Bytes payload = Grab();
        EXPECT_TRUE(m_sink.isChunkData);
        EXPECT_LT(payload.size(), image.size());
        EXPECT_LE(payload.size(), static_cast<std::size_t>(Get("PayloadSize")));
        Bytes decoded(image.size());
        ASSERT_EQ(decompressor.Decompress(decoded.data(), decoded.size(), payload.data(), payload.size()),
                  Velmo::CompressionStatus_Ok)
            << format.name;
        EXPECT_TRUE(decoded == image) << format.name;
    }
}

TEST_F(CameraCompression, fixedRatioIsKeptAndTheErrorTold)
{
    const Bytes image = Grab();
    Set("ImageCompressionMode", "FixedRatio");
    Set("ImageCompressionRatio", "30");
    const Bytes descriptor = GetDescriptor();
    const CImageDecompressor decompressor(descriptor.data(), descriptor.size());
    const Bytes payload = Grab();
    EXPECT_LE(payload.size(), static_cast<std::size_t>(Get("PayloadSize")));
    Velmo::SCompressionInfo info;
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, payload.data(), payload.size()));
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_Ok);
    EXPECT_TRUE(info.lossy);
    EXPECT_LE(info.compressedImageBytes * 100, image.size() * 30);
    EXPECT_EQ(info.decompressedImageBytes, image.size());
    Bytes decoded(image.size());
    ASSERT_EQ(decompressor.Decompress(decoded.data(), decoded.size(), payload.data(), payload.size()),
              Velmo::CompressionStatus_Ok);
    for (std::size_t i = 0; i < image.size(); ++i)
    {
        ASSERT_LE(std::abs(image[i] - decoded[i]), static_cast<int>(info.maxError));
    }
    EXPECT_EQ(CImageDecompressor::GetCompressionMode(*m_map), Velmo::CompressionMode_FixedRatio);
}

TEST_F(CameraCompression, payloadSizeFollowsModeRatioAndChunks)
{
    const std::int64_t raw = Get("PayloadSize");
    Set("ImageCompressionMode", "FixedRatio");
    Set("ImageCompressionRatio", "50");
    EXPECT_EQ(Get("PayloadSize"), raw / 2 + 8);
    Set("ImageCompressionRatio", "25");
    EXPECT_EQ(Get("PayloadSize"), raw / 4 + 8);
    Set("ChunkModeActive", "1");
    Set("ChunkSelector", "Timestamp");
    Set("ChunkEnable", "1");
    EXPECT_EQ(Get("PayloadSize"), raw / 4 + 8 + 16);
    Set("ImageCompressionMode", "Lossless");
    EXPECT_GT(Get("PayloadSize"), raw);
}

TEST_F(CameraCompression, otherChunksTravelWithTheCompressedImage)
{
    Set("ImageCompressionMode", "Lossless");
    Set("ChunkModeActive", "1");
    Set("ChunkSelector", "Timestamp");
    Set("ChunkEnable", "1");
    const Bytes payload = Grab();
    Velmo::Chunks::SChunk chunk;
    constexpr auto Big = Velmo::Chunks::EByteOrder::Big;
    EXPECT_TRUE(Velmo::Chunks::Find(payload.data(), payload.size(), Big, TimestampChunkId, chunk));
    EXPECT_FALSE(Velmo::Chunks::Find(payload.data(), payload.size(), Big, Velmo::Chunks::ImageChunkId, chunk));
    Velmo::SCompressionInfo info;
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, payload.data(), payload.size()));
    EXPECT_TRUE(info.hasCompressedImage);
}

TEST_F(CameraCompression, descriptorAndHashFollowTheSettings)
{
    Set("ImageCompressionMode", "Lossless");
    const Bytes descriptor = GetDescriptor();
    const Bytes hash = GetHash();
    EXPECT_EQ(hash.size(), 16U);
    const CImageDecompressor decompressor(descriptor.data(), descriptor.size());
    EXPECT_EQ(decompressor.GetWidth(), 320U);
    EXPECT_EQ(decompressor.GetHeight(), 240U);

    for (const auto& [feature, value] : {std::pair("Width", "160"),
                                         {"Height", "100"},
                                         {"PixelFormat", "Mono16"},
                                         {"ImageCompressionMode", "FixedRatio"},
                                         {"ImageCompressionRatio", "40"}})
    {
        const Bytes before = GetDescriptor();
        const Bytes hashBefore = GetHash();
        Set(feature, value);
        EXPECT_NE(GetDescriptor(), before) << feature;
        EXPECT_NE(GetHash(), hashBefore) << feature;
    }
    // Images of the new settings are not for the old decompressor.
    const Bytes payload = Grab();
    Bytes decoded(320U * 240U * 2U);
    EXPECT_EQ(decompressor.Decompress(decoded.data(), decoded.size(), payload.data(), payload.size()),
              Velmo::CompressionStatus_WrongDescriptor);
}

TEST_F(CameraCompression, modeAndRatioAreLockedWhileTheStreamIs)
{
    m_camera.SetTransportLocked(true);
    EXPECT_THROW(m_camera.SetFeature("ImageCompressionMode", "Lossless"), GenICam::AccessException);
    EXPECT_THROW(m_camera.SetFeature("ImageCompressionRatio", "20"), GenICam::AccessException);
    EXPECT_THROW(Set("ImageCompressionMode", "Lossless"), GenICam::AccessException);
    m_camera.SetTransportLocked(false);
    EXPECT_NO_THROW(m_camera.SetFeature("ImageCompressionMode", "Lossless"));
    EXPECT_THROW(m_camera.SetFeature("ImageCompressionDescriptor", "x"), GenICam::GenericException);
    EXPECT_EQ(m_camera.GetFeature("ImageCompressionDescriptor").size(), 48U);
}

TEST_F(CameraCompression, aFailedImageIsATruncatedOne)
{
    Set("ImageCompressionMode", "Lossless");
    Set("FaultFailEveryNth", "1");
    const Bytes payload = Grab();
    Velmo::SCompressionInfo info;
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, payload.data(), payload.size()));
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_Truncated);
    EXPECT_FALSE(info.hasCompressedImage);
}

TEST_F(CameraCompression, anImageThatDoesNotFitTheRatioIsAnOverflow)
{
    Set("ImageCompressionMode", "FixedRatio");
    Set("ImageCompressionRatio", "5");
    Set("Width", "32"); // the head of a compressed image alone is longer than that part of it
    Set("Height", "32");
    const Bytes payload = Grab();
    EXPECT_LE(payload.size(), static_cast<std::size_t>(Get("PayloadSize")));
    Velmo::SCompressionInfo info;
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, payload.data(), payload.size()));
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_BufferOverflow);
}

TEST_F(CameraCompression, everyImageOfAMovingSceneIsDecoded)
{
    Set("ImageCompressionMode", "FixedRatio");
    Set("ImageCompressionRatio", "40");
    const Bytes descriptor = GetDescriptor();
    const CImageDecompressor decompressor(descriptor.data(), descriptor.size());
    for (int images = 1; images <= 5; ++images)
    {
        const Bytes payload = Grab(images);
        Bytes decoded(decompressor.GetImageSizeForDecompression());
        EXPECT_EQ(decompressor.Decompress(decoded.data(), decoded.size(), payload.data(), payload.size()),
                  Velmo::CompressionStatus_Ok);
    }
}

} // namespace
