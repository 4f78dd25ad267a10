// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/imageconversion.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>

#include <vector>

namespace
{

using HostKit::SRawImage;
using HostKit::toPicture;

SRawImage raw(const std::vector<std::uint8_t>& bytes, std::uint32_t type, std::uint32_t width, std::uint32_t height,
              std::uint32_t padding = 0)
{
    return {bytes.data(), bytes.size(), type, width, height, padding};
}

QImage savedAndRead(const QImage& picture)
{
    QBuffer file;
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(picture.save(&file, "PNG"));
    QImage read;
    EXPECT_TRUE(read.loadFromData(file.data(), "PNG"));
    return read;
}

TEST(ImageConversion, mono8KeepsEveryPixelAndDropsLinePadding)
{
    QString error;
    const QImage picture = toPicture(raw({1, 2, 99, 3, 4, 99}, 0x01080001, 2, 2, 1), error);
    ASSERT_FALSE(picture.isNull()) << error.toStdString();
    EXPECT_EQ(picture.format(), QImage::Format_Grayscale8);
    EXPECT_EQ(qGray(picture.pixel(1, 0)), 2);
    EXPECT_EQ(qGray(picture.pixel(0, 1)), 3);
}

TEST(ImageConversion, whatFollowsTheImageIsLeftOut)
{
    QString error;
    const QImage picture = toPicture(raw({1, 2, 3, 4, 0, 0, 0, 1, 0, 0, 0, 4}, 0x01080001, 2, 2), error);
    ASSERT_FALSE(picture.isNull()) << error.toStdString();
    EXPECT_EQ(picture.height(), 2);
    EXPECT_EQ(qGray(picture.pixel(1, 1)), 4);
}

TEST(ImageConversion, mono12IsSixteenBitsInThePngWithTheSamplesShiftedUp)
{
    QString error;
    const QImage picture = toPicture(raw({0xFF, 0x0F, 0x01, 0x00}, 0x01100005, 2, 1), error);
    ASSERT_EQ(picture.format(), QImage::Format_Grayscale16) << error.toStdString();
    const QImage read = savedAndRead(picture);
    ASSERT_EQ(read.format(), QImage::Format_Grayscale16);
    const auto* pLine = reinterpret_cast<const quint16*>(read.constScanLine(0));
    EXPECT_EQ(pLine[0], 0xFFF0);
    EXPECT_EQ(pLine[1], 0x0010);
}

TEST(ImageConversion, packedTwelveBitFormatsUnpackToTheSameSamples)
{
    QString error;
    const std::vector<quint16> expected{0x1230, 0xABC0};
    for (const auto& [type, bytes] :
         {std::pair<std::uint32_t, std::vector<std::uint8_t>>{0x010C0047, {0x23, 0xC1, 0xAB}},
          {0x010C0006, {0x12, 0xC3, 0xAB}}})
    {
        const QImage picture = toPicture(raw(bytes, type, 2, 1), error);
        ASSERT_FALSE(picture.isNull()) << error.toStdString();
        const auto* pLine = reinterpret_cast<const quint16*>(picture.constScanLine(0));
        EXPECT_EQ(pLine[0], expected[0]) << std::hex << type;
        EXPECT_EQ(pLine[1], expected[1]) << std::hex << type;
    }
}

TEST(ImageConversion, bayerPatternsOfAUniformRedSceneAreRed)
{
    // Samples under a red filter are 200, all others 0.
    const auto scene = [](int redX, int redY)
    {
        std::vector<std::uint8_t> bytes(64, 0);
        for (int y = redY; y < 8; y += 2)
        {
            for (int x = redX; x < 8; x += 2)
            {
                bytes[static_cast<std::size_t>(y * 8 + x)] = 200;
            }
        }
        return bytes;
    };
    struct SCase
    {
        std::uint32_t type;
        int redX;
        int redY;
    };
    for (const SCase& c :
         {SCase{0x01080009, 0, 0}, SCase{0x01080008, 1, 0}, SCase{0x0108000A, 0, 1}, SCase{0x0108000B, 1, 1}})
    {
        QString error;
        const QImage picture = toPicture(raw(scene(c.redX, c.redY), c.type, 8, 8), error);
        ASSERT_EQ(picture.format(), QImage::Format_RGB888) << error.toStdString();
        EXPECT_EQ(picture.pixel(4, 4), qRgb(200, 0, 0)) << std::hex << c.type;
    }
}

TEST(ImageConversion, deepColourKeepsSixteenBitsAChannel)
{
    QString error;
    const QImage picture = toPicture(raw({0x34, 0x12, 0x00, 0x00, 0xFF, 0xFF}, 0x02300033, 1, 1), error);
    ASSERT_EQ(picture.format(), QImage::Format_RGBX64) << error.toStdString();
    const QImage read = savedAndRead(picture).convertToFormat(QImage::Format_RGBX64);
    const auto* pPixel = reinterpret_cast<const quint16*>(read.constScanLine(0));
    EXPECT_EQ(pPixel[0], 0x1234);
    EXPECT_EQ(pPixel[2], 0xFFFF);
}

TEST(ImageConversion, bgrIsTurnedToRgb)
{
    QString error;
    const QImage picture = toPicture(raw({1, 2, 3}, 0x02180015, 1, 1), error);
    ASSERT_FALSE(picture.isNull()) << error.toStdString();
    EXPECT_EQ(picture.pixel(0, 0), qRgb(3, 2, 1));
}

TEST(ImageConversion, tooFewBytesAreRefusedWithTheNumbers)
{
    QString error;
    EXPECT_TRUE(toPicture(raw({1, 2, 3}, 0x01080001, 2, 2), error).isNull());
    EXPECT_TRUE(error.contains(QStringLiteral("3"))) << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("Mono8"))) << error.toStdString();
}

TEST(ImageConversion, anUnknownPixelFormatIsRefusedByItsNumber)
{
    QString error;
    EXPECT_TRUE(toPicture(raw({1, 2, 3, 4}, 0x01080FFF, 2, 2), error).isNull());
    EXPECT_TRUE(error.contains(QStringLiteral("01080fff"))) << error.toStdString();
}

TEST(ImageConversion, absurdSizesAreRefused)
{
    QString error;
    EXPECT_TRUE(toPicture(raw({1}, 0x01080001, 0, 1), error).isNull());
    EXPECT_TRUE(toPicture(raw({1}, 0x01080001, 0xFFFFFFFF, 0xFFFFFFFF), error).isNull());
}

TEST(ImageConversion, anInvalidResultIsRefused)
{
    QString error;
    EXPECT_TRUE(toPicture(Velmo::CGrabResultPtr(), error).isNull());
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
