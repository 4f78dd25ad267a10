// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/descriptor.h"
#include "codec/encoder.h"
#include "hostkit/imageconversion.h"
#include "protocols/chunks.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

using HostKit::toPicture;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t Mono8 = 0x01080001;
constexpr std::uint32_t Width = 64;
constexpr std::uint32_t Height = 48;

/** A grab result over bytes of the test. */
class CFakeResult final : public Velmo::CGrabResultData
{
public:
    CFakeResult(const Bytes& payload, Velmo::EPayloadType type)
    {
        m_result.payloadType = type;
        m_result.pixelType = Mono8;
        m_result.width = Width;
        m_result.height = Height;
        m_result.payloadBytes = payload.size();
        m_pBuffer = payload.data();
        m_bufferBytes = payload.size();
        m_succeeded = true;
    }

private:
    void Recycle() override { delete this; }
};

/** One image, as it is and compressed. */
class DecodedPicture : public testing::Test
{
protected:
    DecodedPicture()
        : m_encoder(Velmo::Codec::MakeDescriptor(Velmo::Codec::EMode::Lossless, Mono8, Width, Height, 100.0)),
          m_descriptor(Velmo::Codec::EncodeDescriptor(m_encoder.GetDescriptor())),
          m_decompressor(m_descriptor.data(), m_descriptor.size())
    {
        for (std::size_t i = 0; i < m_image.size(); ++i)
        {
            m_image[i] = static_cast<std::uint8_t>(i % Width + i / Width);
        }
        const auto frame = m_encoder.Encode(m_image.data());
        Velmo::Chunks::Append(m_payload, Velmo::Chunks::CompressedImageChunkId, frame.pData, frame.bytes,
                              Velmo::Chunks::EByteOrder::Big);
    }
    Velmo::CGrabResultPtr compressed() const
    {
        return Velmo::CGrabResultPtr(new CFakeResult(m_payload, Velmo::EPayloadType::ChunkData));
    }

    Bytes m_image = Bytes(std::size_t{Width} * Height);
    Velmo::Codec::CEncoder m_encoder;
    Bytes m_descriptor;
    Velmo::CImageDecompressor m_decompressor;
    Bytes m_payload;
    QString m_error;
};

TEST_F(DecodedPicture, ofACompressedImageHasItsPixels)
{
    const QImage picture = toPicture(compressed(), &m_decompressor, m_error);
    ASSERT_FALSE(picture.isNull()) << m_error.toStdString();
    ASSERT_EQ(picture.size(), QSize(Width, Height));
    for (std::uint32_t row = 0; row < Height; ++row)
    {
        ASSERT_TRUE(std::equal(m_image.begin() + row * Width, m_image.begin() + (row + 1) * Width,
                               picture.constScanLine(static_cast<int>(row))))
            << row;
    }
}

TEST_F(DecodedPicture, ofAnImageThatIsNotCompressedNeedsNoDecompressor)
{
    const Velmo::CGrabResultPtr plain(new CFakeResult(m_image, Velmo::EPayloadType::Image));
    EXPECT_FALSE(toPicture(plain, nullptr, m_error).isNull()) << m_error.toStdString();
    EXPECT_FALSE(toPicture(plain, &m_decompressor, m_error).isNull()) << m_error.toStdString();
}

TEST_F(DecodedPicture, withoutADecompressorACompressedImageIsRefused)
{
    EXPECT_TRUE(toPicture(compressed(), nullptr, m_error).isNull());
    EXPECT_TRUE(m_error.contains(QStringLiteral("compressed"))) << m_error.toStdString();
}

TEST_F(DecodedPicture, ofADamagedImageIsRefusedWithTheReason)
{
    m_payload[m_payload.size() / 2] ^= 0x55;
    EXPECT_TRUE(toPicture(compressed(), &m_decompressor, m_error).isNull());
    EXPECT_TRUE(m_error.contains(QStringLiteral("damaged"))) << m_error.toStdString();
}

TEST_F(DecodedPicture, ofAnotherDescriptorIsRefusedWithTheReason)
{
    const auto other = Velmo::Codec::EncodeDescriptor(
        Velmo::Codec::MakeDescriptor(Velmo::Codec::EMode::Lossless, Mono8, Width, Height * 2, 100.0));
    const Velmo::CImageDecompressor wrong(other.data(), other.size());
    EXPECT_TRUE(toPicture(compressed(), &wrong, m_error).isNull());
    EXPECT_TRUE(m_error.contains(QStringLiteral("other settings"))) << m_error.toStdString();
}

} // namespace
