// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/imagedecompressor.h"
#include "codec/encoder.h"
#include "codec/pixellayout.h"
#include "protocols/chunks.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace
{

using Velmo::CGrabResultPtr;
using Velmo::CImageDecompressor;
using Velmo::SCompressionInfo;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t Mono8 = 0x01080001;
constexpr std::uint32_t Width = 320;
constexpr std::uint32_t Height = 200;
constexpr std::uint32_t OtherChunk = 0x77;

/** A grab result over bytes of the test. */
class CFakeResult final : public Velmo::CGrabResultData
{
public:
    CFakeResult(const Bytes& payload, Velmo::EPayloadType type)
    {
        m_result.payloadType = type;
        m_result.payloadBytes = payload.size();
        m_result.pixelType = Mono8;
        m_result.width = Width;
        m_result.height = Height;
        m_pBuffer = payload.data();
        m_bufferBytes = payload.size();
        m_succeeded = true;
    }

private:
    void Recycle() override { delete this; }
};

CGrabResultPtr MakeResult(const Bytes& payload, Velmo::EPayloadType type = Velmo::EPayloadType::ChunkData)
{
    return CGrabResultPtr(new CFakeResult(payload, type));
}

Bytes MakeImage()
{
    Bytes image(std::size_t{Width} * Height);
    std::mt19937 noise(3);
    for (std::size_t i = 0; i < image.size(); ++i)
    {
        image[i] = static_cast<std::uint8_t>(i / Width + i % Width / 3 + noise() % 8);
    }
    return image;
}

class ImageDecompressor : public ::testing::Test
{
protected:
    explicit ImageDecompressor(Velmo::Codec::EMode mode = Velmo::Codec::EMode::Lossless, double percent = 100.0)
        : m_encoder(Velmo::Codec::MakeDescriptor(mode, Mono8, Width, Height, percent)),
          m_descriptor(Velmo::Codec::EncodeDescriptor(m_encoder.GetDescriptor())),
          m_decompressor(m_descriptor.data(), m_descriptor.size())
    {
        const auto frame = m_encoder.Encode(m_image.data());
        m_frame.assign(frame.pData, frame.pData + frame.bytes);
    }

    Bytes MakePayload(Velmo::Chunks::EByteOrder order = Velmo::Chunks::EByteOrder::Big) const
    {
        Bytes payload;
        Velmo::Chunks::Append(payload, Velmo::Chunks::CompressedImageChunkId, m_frame.data(), m_frame.size(), order);
        const std::array<std::uint8_t, 8> value{};
        Velmo::Chunks::Append(payload, OtherChunk, value.data(), value.size(), order);
        return payload;
    }

    Velmo::ECompressionStatus Decompress(const Bytes& payload)
    {
        m_decoded.assign(m_image.size(), 0xAA);
        return m_decompressor.Decompress(m_decoded.data(), m_decoded.size(), payload.data(), payload.size());
    }

    const Bytes m_image = MakeImage();
    Velmo::Codec::CEncoder m_encoder;
    const Bytes m_descriptor;
    const CImageDecompressor m_decompressor;
    Bytes m_frame;
    Bytes m_decoded;
};

class ImageDecompressorLossy : public ImageDecompressor
{
protected:
    ImageDecompressorLossy() : ImageDecompressor(Velmo::Codec::EMode::FixedRatio, 25.0) {}
};

class ImageDecompressorOverflow : public ImageDecompressor
{
protected:
    ImageDecompressorOverflow() : ImageDecompressor(Velmo::Codec::EMode::FixedRatio, 0.2) {}
};

TEST(ImageDecompressorDescriptor, onesThatCannotBeUsedAreRefusedWithTheReason)
{
    const std::string text = "this is no descriptor, but it is just long enough";
    EXPECT_THROW(CImageDecompressor(nullptr, 0), GenICam::InvalidArgumentException);
    EXPECT_THROW(CImageDecompressor(text.data(), 12), GenICam::InvalidArgumentException);
    try
    {
        const CImageDecompressor decompressor(text.data(), text.size());
        FAIL() << "no exception";
    }
    catch (const GenICam::InvalidArgumentException& error)
    {
        EXPECT_NE(std::string(error.GetDescription()).find("identifying number at byte 0"), std::string::npos);
    }
}

TEST_F(ImageDecompressor, tellsWhatItWasBuiltFrom)
{
    Bytes copy(100);
    std::size_t bytes = copy.size();
    m_decompressor.GetCompressionDescriptor(copy.data(), &bytes);
    copy.resize(bytes);
    EXPECT_EQ(copy, m_descriptor);
    bytes = 0;
    m_decompressor.GetCompressionDescriptorHash(nullptr, &bytes);
    EXPECT_EQ(bytes, 16U);
    EXPECT_EQ(m_decompressor.GetCompressionMode(), Velmo::CompressionMode_Lossless);
    EXPECT_EQ(m_decompressor.GetImageSizeForDecompression(), m_image.size());
    EXPECT_EQ(m_decompressor.GetPixelType(), Mono8);
    EXPECT_EQ(m_decompressor.GetWidth(), Width);
    EXPECT_EQ(m_decompressor.GetHeight(), Height);
    EXPECT_EQ(m_decompressor.GetNumStrips(), 1U);
}

TEST_F(ImageDecompressor, describesTheCompressedImageOfAResult)
{
    const Bytes payload = MakePayload();
    SCompressionInfo info;
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, MakeResult(payload)));
    EXPECT_TRUE(info.hasCompressedImage);
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_Ok);
    EXPECT_FALSE(info.lossy);
    EXPECT_EQ(info.maxError, 0U);
    EXPECT_EQ(info.pixelType, Mono8);
    EXPECT_EQ(info.width, Width);
    EXPECT_EQ(info.height, Height);
    EXPECT_EQ(info.strips, 1U);
    EXPECT_EQ(info.compressedImageBytes, m_frame.size());
    EXPECT_EQ(info.decompressedImageBytes, m_image.size());
    EXPECT_EQ(info.decompressedPayloadBytes, m_image.size() + payload.size() - m_frame.size());
}

TEST_F(ImageDecompressorLossy, tellsTheErrorThatTheCameraMade)
{
    SCompressionInfo info;
    const Bytes payload = MakePayload();
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, MakeResult(payload)));
    EXPECT_TRUE(info.lossy);
    EXPECT_GT(info.maxError, 0U);
    ASSERT_EQ(Decompress(payload), Velmo::CompressionStatus_Ok);
    for (std::size_t i = 0; i < m_image.size(); ++i)
    {
        ASSERT_LE(std::abs(m_image[i] - m_decoded[i]), static_cast<int>(info.maxError));
    }
}

TEST_F(ImageDecompressorOverflow, isAStatusOfTheImage)
{
    SCompressionInfo info;
    const Bytes payload = MakePayload();
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, MakeResult(payload)));
    EXPECT_FALSE(info.hasCompressedImage);
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_BufferOverflow);
    EXPECT_EQ(Decompress(payload), Velmo::CompressionStatus_BufferOverflow);
}

TEST_F(ImageDecompressor, uncompressedResultsCarryNoInformation)
{
    SCompressionInfo info;
    info.width = 77;
    Bytes imageChunk;
    Velmo::Chunks::Append(imageChunk, Velmo::Chunks::ImageChunkId, m_image.data(), m_image.size(),
                          Velmo::Chunks::EByteOrder::Big);
    const Bytes compressed = MakePayload();
    EXPECT_FALSE(CImageDecompressor::GetCompressionInfo(info, CGrabResultPtr()));
    EXPECT_FALSE(CImageDecompressor::GetCompressionInfo(info, MakeResult(m_image, Velmo::EPayloadType::Image)));
    EXPECT_FALSE(CImageDecompressor::GetCompressionInfo(info, MakeResult(compressed, Velmo::EPayloadType::Image)));
    EXPECT_FALSE(CImageDecompressor::GetCompressionInfo(info, MakeResult(imageChunk)));
    EXPECT_FALSE(CImageDecompressor::GetCompressionInfo(info, MakeResult(m_image)));
    EXPECT_EQ(info.width, 77U);
    EXPECT_EQ(Decompress(imageChunk), Velmo::CompressionStatus_NotCompressed);
    EXPECT_EQ(m_decompressor.Decompress(m_decoded.data(), m_decoded.size(), CGrabResultPtr()),
              Velmo::CompressionStatus_NotCompressed);
    EXPECT_EQ(m_decompressor.Decompress(m_decoded.data(), m_decoded.size(), nullptr, 99),
              Velmo::CompressionStatus_NotCompressed);
}

TEST_F(ImageDecompressor, aCompressedImageHasNoBytesToShowAsTheyAre)
{
    const Bytes compressed = MakePayload();
    EXPECT_EQ(MakeResult(compressed)->GetImageSize(), 0U);
    Bytes plain;
    Velmo::Chunks::Append(plain, Velmo::Chunks::ImageChunkId, m_image.data(), m_image.size(),
                          Velmo::Chunks::EByteOrder::Big);
    EXPECT_EQ(MakeResult(plain)->GetImageSize(), m_image.size());
}

TEST_F(ImageDecompressor, anUncompressedImageThatBeginsLikeACompressedOneIsNone)
{
    Bytes image = m_image;
    std::copy(m_frame.begin(), m_frame.begin() + 88, image.begin());
    Bytes payload;
    Velmo::Chunks::Append(payload, Velmo::Chunks::ImageChunkId, image.data(), image.size(),
                          Velmo::Chunks::EByteOrder::Big);
    SCompressionInfo info;
    EXPECT_FALSE(CImageDecompressor::GetCompressionInfo(info, MakeResult(payload)));
}

TEST_F(ImageDecompressor, decodesChunkDataOfEitherByteOrderAndBareImages)
{
    for (const auto order : {Velmo::Chunks::EByteOrder::Big, Velmo::Chunks::EByteOrder::Little})
    {
        ASSERT_EQ(Decompress(MakePayload(order)), Velmo::CompressionStatus_Ok);
        EXPECT_TRUE(m_decoded == m_image);
    }
    ASSERT_EQ(Decompress(m_frame), Velmo::CompressionStatus_Ok);
    EXPECT_TRUE(m_decoded == m_image);
    const Bytes payload = MakePayload();
    m_decoded.assign(m_image.size(), 0);
    ASSERT_EQ(m_decompressor.Decompress(m_decoded.data(), m_decoded.size(), MakeResult(payload)),
              Velmo::CompressionStatus_Ok);
    EXPECT_TRUE(m_decoded == m_image);
}

TEST_F(ImageDecompressor, byteOrderThatIsNotThePayloadsIsNoCompressedImage)
{
    // Read backwards in the wrong order the last chunk is longer than the payload; what is left begins like an image.
    const Bytes payload = MakePayload(Velmo::Chunks::EByteOrder::Little);
    SCompressionInfo info;
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, MakeResult(payload), Velmo::Endianness_Big));
    EXPECT_NE(info.compressionStatus, Velmo::CompressionStatus_Ok);
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, MakeResult(payload), Velmo::Endianness_Little));
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_Ok);
}

TEST_F(ImageDecompressor, whatIsWrongHasAStatusOfItsOwn)
{
    Bytes flipped = MakePayload();
    flipped[m_frame.size() / 2] ^= 1U;
    EXPECT_EQ(Decompress(flipped), Velmo::CompressionStatus_Corrupt);
    Bytes head = MakePayload();
    head[20] ^= 1U;
    SCompressionInfo info;
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, MakeResult(head)));
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_Corrupt);
    EXPECT_FALSE(info.hasCompressedImage);

    const Bytes half(m_frame.begin(), m_frame.begin() + static_cast<std::ptrdiff_t>(m_frame.size() / 2));
    EXPECT_EQ(Decompress(half), Velmo::CompressionStatus_Truncated);
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(info, MakeResult(half)));
    EXPECT_EQ(info.compressionStatus, Velmo::CompressionStatus_Truncated);
    EXPECT_FALSE(info.hasCompressedImage);

    Bytes version = m_frame;
    version[4] = 2;
    EXPECT_EQ(Decompress(version), Velmo::CompressionStatus_Unsupported);

    Bytes small(m_image.size() - 1);
    EXPECT_EQ(m_decompressor.Decompress(small.data(), small.size(), m_frame.data(), m_frame.size()),
              Velmo::CompressionStatus_TargetTooSmall);
    EXPECT_EQ(m_decompressor.Decompress(m_decoded.data(), m_image.size(), m_frame.data(), m_frame.size(), 1, 1),
              Velmo::CompressionStatus_NoSuchStrip);

    const Bytes other = Velmo::Codec::EncodeDescriptor(
        Velmo::Codec::MakeDescriptor(Velmo::Codec::EMode::Lossless, Mono8, Height, Width));
    const CImageDecompressor stranger(other.data(), other.size());
    m_decoded.resize(m_image.size());
    EXPECT_EQ(stranger.Decompress(m_decoded.data(), m_decoded.size(), m_frame.data(), m_frame.size()),
              Velmo::CompressionStatus_WrongDescriptor);
}

} // namespace
