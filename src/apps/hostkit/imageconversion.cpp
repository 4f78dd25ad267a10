// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/imageconversion.h"

#include "hostkit/internal/texts.h"
#include "hostkit/pixelformat.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cstring>
#include <vector>

namespace HostKit
{
namespace
{

/** One 16-bit sample a pixel from a stream of bits, least significant first. */
void unpackLsb(const std::uint8_t* pLine, std::uint16_t* pOut, std::size_t samples, unsigned int bits)
{
    std::uint32_t window = 0;
    unsigned int have = 0;
    const std::uint32_t mask = (1U << bits) - 1U;
    for (std::size_t sample = 0; sample < samples; ++sample)
    {
        while (have < bits)
        {
            window |= static_cast<std::uint32_t>(*pLine++) << have;
            have += 8;
        }
        pOut[sample] = static_cast<std::uint16_t>(window & mask);
        window >>= bits;
        have -= bits;
    }
}

/** GigE Vision 12-bit packing: the high eight bits of each sample are whole bytes around the shared low nibbles. */
void unpackGigE12(const std::uint8_t* pLine, std::uint16_t* pOut, std::size_t samples)
{
    for (std::size_t sample = 0; sample < samples; ++sample)
    {
        const std::uint8_t* pGroup = pLine + sample / 2 * 3;
        const bool second = (sample % 2) != 0;
        const unsigned int high = second ? pGroup[2] : pGroup[0];
        const unsigned int low = second ? pGroup[1] >> 4U : pGroup[1] & 0x0FU;
        pOut[sample] = static_cast<std::uint16_t>((high << 4U) | low);
    }
}

/** The samples as a matrix of one or three channels, deep ones shifted to 16 bits. Does not copy 8-bit images. */
cv::Mat toMatrix(const SRawImage& image, const SPixelFormat& format)
{
    const int rows = static_cast<int>(image.height);
    const int columns = static_cast<int>(image.width);
    const int channels = static_cast<int>(format.samplesPerPixel);
    const std::size_t stride = format.lineBytes(image.width) + image.paddingX;
    auto* pData = static_cast<std::uint8_t*>(const_cast<void*>(image.pData));
    if (format.significantBits <= 8)
    {
        return {rows, columns, CV_MAKETYPE(CV_8U, channels), pData, stride};
    }
    cv::Mat deep(rows, columns, CV_MAKETYPE(CV_16U, channels));
    const std::size_t samples = std::size_t{image.width} * format.samplesPerPixel;
    for (int row = 0; row < rows; ++row)
    {
        const std::uint8_t* pLine = pData + static_cast<std::size_t>(row) * stride;
        auto* pOut = deep.ptr<std::uint16_t>(row);
        switch (format.packing)
        {
        case EPacking::Whole:
            std::memcpy(pOut, pLine, samples * 2);
            break;
        case EPacking::LsbPacked:
            unpackLsb(pLine, pOut, samples, format.significantBits);
            break;
        case EPacking::GigE12Packed:
            unpackGigE12(pLine, pOut, samples);
            break;
        }
    }
    if (format.significantBits < 16)
    {
        deep *= 1 << (16U - format.significantBits);
    }
    return deep;
}

/** PFNC names the first two pixels of the first line, OpenCV those of the second. */
int demosaicCode(EPixelLayout layout)
{
    switch (layout)
    {
    case EPixelLayout::BayerRG:
        return cv::COLOR_BayerBG2RGB;
    case EPixelLayout::BayerGB:
        return cv::COLOR_BayerGR2RGB;
    case EPixelLayout::BayerGR:
        return cv::COLOR_BayerGB2RGB;
    case EPixelLayout::BayerBG:
        return cv::COLOR_BayerRG2RGB;
    default:
        return -1;
    }
}

void copyLines(const cv::Mat& matrix, QImage& picture)
{
    for (int row = 0; row < matrix.rows; ++row)
    {
        std::memcpy(picture.scanLine(row), matrix.ptr(row), static_cast<std::size_t>(matrix.cols) * matrix.elemSize());
    }
}

QImage fromMatrix(const cv::Mat& matrix, EPixelLayout layout)
{
    const bool deep = matrix.depth() == CV_16U;
    if (layout == EPixelLayout::Mono)
    {
        QImage picture(matrix.cols, matrix.rows, deep ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8);
        copyLines(matrix, picture);
        return picture;
    }
    cv::Mat colour = matrix;
    if (matrix.channels() == 1)
    {
        cv::cvtColor(matrix, colour, demosaicCode(layout));
    }
    else if (layout == EPixelLayout::BGR)
    {
        cv::cvtColor(matrix, colour, cv::COLOR_BGR2RGB);
    }
    QImage picture(matrix.cols, matrix.rows, deep ? QImage::Format_RGBX64 : QImage::Format_RGB888);
    if (deep)
    {
        cv::Mat wide;
        cv::cvtColor(colour, wide, cv::COLOR_RGB2RGBA);
        copyLines(wide, picture);
    }
    else
    {
        copyLines(colour, picture);
    }
    return picture;
}

QString decodingError(Velmo::ECompressionStatus status)
{
    switch (status)
    {
    case Velmo::CompressionStatus_BufferOverflow:
        return CTexts::tr("The camera could not make the image as small as it was told to.");
    case Velmo::CompressionStatus_Truncated:
        return CTexts::tr("Bytes are missing at the end of the compressed image.");
    case Velmo::CompressionStatus_Corrupt:
        return CTexts::tr("The compressed image is damaged.");
    case Velmo::CompressionStatus_Unsupported:
        return CTexts::tr("The image is compressed in a way that is not known here.");
    case Velmo::CompressionStatus_WrongDescriptor:
        return CTexts::tr("The image was compressed under other settings than those that the camera told.");
    default:
        return CTexts::tr("The compressed image cannot be decoded (status %1).").arg(static_cast<int>(status));
    }
}

} // namespace

QImage toPicture(const SRawImage& image, QString& error)
{
    constexpr std::uint32_t sideLimit = 65536;
    SPixelFormat format;
    if (!describePixelFormat(image.pixelType, format))
    {
        error = CTexts::tr("The pixel format 0x%1 cannot be shown.").arg(image.pixelType, 8, 16, QLatin1Char('0'));
        return {};
    }
    if (image.width == 0 || image.height == 0 || image.width > sideLimit || image.height > sideLimit)
    {
        error = CTexts::tr("An image of %1 x %2 pixels cannot be shown.").arg(image.width).arg(image.height);
        return {};
    }
    const std::size_t line = format.lineBytes(image.width);
    const std::size_t needed = (line + image.paddingX) * (image.height - 1) + line;
    if (image.pData == nullptr || image.bytes < needed)
    {
        error = CTexts::tr("The image holds %1 bytes where its %2 x %3 pixels of %4 need %5.")
                    .arg(image.bytes)
                    .arg(image.width)
                    .arg(image.height)
                    .arg(format.name)
                    .arg(needed);
        return {};
    }
    const bool bayer = demosaicCode(format.layout) >= 0;
    if (bayer && (image.width < 4 || image.height < 4))
    {
        error = CTexts::tr("An image of %1 x %2 pixels cannot be shown.").arg(image.width).arg(image.height);
        return {};
    }
    return fromMatrix(toMatrix(image, format), format.layout);
}

QImage toPicture(const Velmo::CGrabResultPtr& result, QString& error)
{
    if (!result.IsValid())
    {
        error = CTexts::tr("There is no image.");
        return {};
    }
    if (!result->GrabSucceeded())
    {
        error = QString::fromUtf8(result->GetErrorDescription().c_str());
        return {};
    }
    return toPicture({result->GetBuffer(), result->GetPayloadSize(), result->GetPixelType(), result->GetWidth(),
                      result->GetHeight(), result->GetPaddingX()},
                     error);
}

QImage toPicture(const Velmo::CGrabResultPtr& result, const Velmo::CImageDecompressor* pDecompressor, QString& error)
{
    Velmo::SCompressionInfo compression;
    if (!result.IsValid() || !result->GrabSucceeded() ||
        !Velmo::CImageDecompressor::GetCompressionInfo(compression, result))
    {
        return toPicture(result, error);
    }
    if (compression.compressionStatus != Velmo::CompressionStatus_Ok)
    {
        error = decodingError(compression.compressionStatus);
        return {};
    }
    if (pDecompressor == nullptr)
    {
        error = CTexts::tr("The image is compressed, and the camera did not tell how.");
        return {};
    }
    std::vector<std::uint8_t> pixels(pDecompressor->GetImageSizeForDecompression());
    const auto status = pDecompressor->Decompress(pixels.data(), pixels.size(), result);
    if (status != Velmo::CompressionStatus_Ok)
    {
        error = decodingError(status);
        return {};
    }
    return toPicture({pixels.data(), pixels.size(), pDecompressor->GetPixelType(), pDecompressor->GetWidth(),
                      pDecompressor->GetHeight(), 0},
                     error);
}

} // namespace HostKit
