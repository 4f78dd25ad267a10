// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"
#include "codecimages.h"

#include <gtest/gtest.h>

namespace Velmo::Codec::Test
{

namespace
{

constexpr std::uint32_t Width = 33;
constexpr std::uint32_t Height = 20;
constexpr std::uint64_t Guard = 0xA5;

/** A small frame of two strips, one of which is stored raw. */
class CodecHostileFrame : public ::testing::Test
{
protected:
    CodecHostileFrame()
    {
        m_descriptor.strips = 2;
        const Bytes noise = MakeRandom(m_image.size() / 2);
        std::copy(noise.begin(), noise.end(), m_image.begin() + Width * (Height / 2));
        m_frame = EncodeOnce(m_descriptor, m_image);
    }

    /** Decodes from memory that ends where the frame ends into memory with guards around. */
    EResult DecodeGuarded(const Bytes& frame, bool* pIsImage = nullptr)
    {
        constexpr std::size_t Margin = 64;
        const Bytes exact(frame.begin(), frame.end());
        Bytes target(m_image.size() + 2 * Margin, Guard);
        const EResult result = DecodeFrame(exact.data(), exact.size(), m_descriptor, HashOf(m_descriptor),
                                           {target.data() + Margin, m_image.size()});
        for (std::size_t i = 0; i < Margin; ++i)
        {
            EXPECT_EQ(target[i], Guard);
            EXPECT_EQ(target[target.size() - 1 - i], Guard);
        }
        if (pIsImage != nullptr)
        {
            *pIsImage = std::equal(m_image.begin(), m_image.end(), target.begin() + Margin);
        }
        return result;
    }

    /** The frame with fields changed and checksums of header and table that fit again: what a stranger would send. */
    template <class T> Bytes Forged(std::size_t offset, T value) const
    {
        Bytes forged = m_frame;
        Internal::Store(forged.data(), offset, value);
        const std::size_t tableBytes = 2 * StripEntryBytes;
        Internal::Store(forged.data(), 72, Internal::Checksum(forged.data() + FrameHeaderBytes, tableBytes));
        Internal::Store(forged.data(), 80, Internal::Checksum(forged.data(), 80));
        return forged;
    }

    SDescriptor m_descriptor = MakeDescriptor(EMode::Lossless, Mono8, Width, Height);
    Bytes m_image = MakeScene(Mono8, Width, Height, 0.0);
    Bytes m_frame;
};

} // namespace

TEST_F(CodecHostileFrame, theUnharmedFrameIsGood)
{
    bool isImage = false;
    EXPECT_EQ(DecodeGuarded(m_frame, &isImage), EResult::Ok);
    EXPECT_TRUE(isImage);
}

TEST_F(CodecHostileFrame, everyTruncationIsNoticed)
{
    for (std::size_t bytes = 0; bytes < m_frame.size(); ++bytes)
    {
        const EResult result = DecodeGuarded({m_frame.begin(), m_frame.begin() + static_cast<std::ptrdiff_t>(bytes)});
        EXPECT_EQ(result, bytes < 4 ? EResult::NotAFrame : EResult::Truncated) << bytes;
    }
}

TEST_F(CodecHostileFrame, everyBitFlipIsNoticed)
{
    for (std::size_t bit = 0; bit < m_frame.size() * 8; ++bit)
    {
        Bytes flipped = m_frame;
        flipped[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        EXPECT_NE(DecodeGuarded(flipped), EResult::Ok) << "bit " << bit;
    }
}

TEST_F(CodecHostileFrame, fillingUpToAlignmentIsAllowedAndNoMore)
{
    Bytes longer = m_frame;
    for (std::size_t i = 1; i <= AlignmentSlack; ++i)
    {
        longer.push_back(0);
        EXPECT_EQ(DecodeGuarded(longer), EResult::Ok);
    }
    longer.push_back(0);
    EXPECT_EQ(DecodeGuarded(longer), EResult::Corrupt);
}

TEST_F(CodecHostileFrame, anotherDescriptorIsRefused)
{
    Bytes target(m_image.size() * 4);
    for (const SDescriptor& other : {MakeDescriptor(EMode::Lossless, Mono8, Height, Width),
                                     MakeDescriptor(EMode::Lossless, BayerRG8, Width, Height),
                                     MakeDescriptor(EMode::FixedRatio, Mono8, Width, Height, 99.0)})
    {
        EXPECT_EQ(Decode(other, m_frame, target), EResult::WrongDescriptor);
    }
    // Also when the hash is made to fit.
    const SDescriptor larger = MakeDescriptor(EMode::Lossless, Mono8, Width, Height + 1);
    EXPECT_EQ(DecodeFrame(m_frame.data(), m_frame.size(), larger, HashOf(m_descriptor), {target.data(), target.size()}),
              EResult::WrongDescriptor);
}

TEST_F(CodecHostileFrame, aTargetThatIsTooSmallIsRefused)
{
    Bytes target(m_image.size() - 1);
    EXPECT_EQ(Decode(m_descriptor, m_frame, target), EResult::TargetTooSmall);
    EXPECT_EQ(DecodeFrame(m_frame.data(), m_frame.size(), m_descriptor, HashOf(m_descriptor), {nullptr, 1U << 20U}),
              EResult::TargetTooSmall);
}

TEST_F(CodecHostileFrame, stripsThatAreNotThereAreRefused)
{
    Bytes target(m_image.size());
    for (const auto& [first, count] : {std::pair(2U, 1U),
                                       {0U, 3U},
                                       {1U, 2U},
                                       {0U, 0U},
                                       {2U, AllStrips},
                                       {AllStrips, AllStrips},
                                       {1U, AllStrips - 1}})
    {
        EXPECT_EQ(DecodeFrame(m_frame.data(), m_frame.size(), m_descriptor, HashOf(m_descriptor),
                              {target.data(), target.size(), first, count}),
                  EResult::NoSuchStrip)
            << first << ' ' << count;
    }
}

TEST_F(CodecHostileFrame, forgedHeadersAreRefused)
{
    EXPECT_EQ(DecodeGuarded(Forged<std::uint16_t>(4, 2)), EResult::Unsupported); // version
    EXPECT_EQ(DecodeGuarded(Forged<std::uint16_t>(8, 2)), EResult::Unsupported); // codec
    EXPECT_EQ(DecodeGuarded(Forged<std::uint16_t>(10, 1)), EResult::Corrupt);    // lossy without an error
    EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(12, 1)), EResult::Corrupt);    // overflow with strips
    EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(16, Mono16)), EResult::Corrupt);
    EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(20, 0xFFFFFFFF)), EResult::Corrupt);
    EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(24, 0)), EResult::Corrupt);
    for (const std::uint32_t strips : {0U, 1U, 3U, 20U, 21U, 0xFFFFFFFFU})
    {
        EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(28, strips)), EResult::Corrupt) << strips;
    }
    EXPECT_EQ(DecodeGuarded(Forged<std::uint64_t>(32, ~std::uint64_t{0})), EResult::Corrupt);
    EXPECT_EQ(DecodeGuarded(Forged<std::uint64_t>(40, ~std::uint64_t{0})), EResult::Corrupt);
    EXPECT_EQ(DecodeGuarded(Forged<std::uint64_t>(40, m_frame.size() + 1)), EResult::Truncated);
    EXPECT_EQ(DecodeGuarded(Forged<std::uint64_t>(40, m_frame.size() - 1)), EResult::Corrupt);
}

TEST_F(CodecHostileFrame, forgedTablesAreRefused)
{
    constexpr std::size_t First = FrameHeaderBytes;
    for (const std::uint32_t bytes : {0U, 1U, 330U, 331U, 0x7FFFFFFFU, 0xFFFFFFFFU})
    {
        EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(First, bytes)), EResult::Corrupt) << bytes;
    }
    EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(First + 4, 0)), EResult::Corrupt); // raw, but shorter than the strip
    EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(First + 4, 2)), EResult::Corrupt); // no such coding
    EXPECT_EQ(DecodeGuarded(Forged<std::uint64_t>(First + 8, 0)), EResult::Corrupt); // checksum
    EXPECT_EQ(DecodeGuarded(Forged<std::uint32_t>(First + StripEntryBytes + 4, 1)), EResult::Corrupt); // not zstd
}

TEST_F(CodecHostileFrame, forgedStripsNeverLeaveTheImage)
{
    // The checksum of the strip fits too: zstd itself meets the changed bytes.
    const std::size_t begin = FrameHeaderBytes + 2 * StripEntryBytes;
    const auto bytes = Internal::Load<std::uint32_t>(m_frame.data(), FrameHeaderBytes);
    for (std::size_t bit = 0; bit < bytes * 8U; ++bit)
    {
        const Bytes good = m_frame;
        m_frame[begin + bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        const std::uint64_t checksum = Internal::Checksum(m_frame.data() + begin, bytes);
        const EResult result = DecodeGuarded(Forged(FrameHeaderBytes + 8, checksum));
        EXPECT_TRUE(result == EResult::Ok || result == EResult::Corrupt);
        m_frame = good;
    }
}

} // namespace Velmo::Codec::Test
