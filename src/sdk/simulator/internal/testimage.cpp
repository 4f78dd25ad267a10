// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/testimage.h"

#include "simulator/internal/settings.h"
#include "simulator/registers.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <tuple>

namespace Simulator::Internal
{

namespace
{

enum EPattern : std::uint32_t
{
    Scene = 0,
    Black = 1,
    White = 2,
    HorizontalRamp = 3,
    VerticalRamp = 4,
    VerticalRampMoving = 6,
    ColorBar = 9,
    NoisyScene = 64 // a pattern of our own: the only one that does not compress to almost nothing
};

constexpr std::uint32_t MovingLines = 2; // even, so that the colour phase of Bayer images stays
constexpr std::uint32_t ChannelShift = 85;
constexpr std::uint32_t FullScale8 = 255;

/** The sum of two dice, 0 to 14: the same for the same place. */
std::uint32_t Noise(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t hash = (x * 2654435761U) ^ (y * 2246822519U);
    hash = (hash ^ hash >> 15U) * 2246822519U;
    hash = (hash ^ hash >> 13U) * 3266489917U;
    return (hash >> 29U) + (hash >> 26U & 7U);
}

/** Level of a pattern, 0..255, at sensor coordinates; channel 0 red, 1 green, 2 blue. */
std::uint32_t Level(std::uint32_t pattern, std::uint32_t x, std::uint32_t y, std::uint32_t channel,
                    std::uint32_t sensorWidth)
{
    switch (pattern)
    {
    case Black:
        return 0;
    case White:
        return FullScale8;
    case HorizontalRamp:
        return x * 256U / sensorWidth;
    case VerticalRamp:
    case VerticalRampMoving:
        return y % 256U;
    case ColorBar:
    {
        // White, yellow, cyan, green, magenta, red, blue, black: the bits of the bar's number switch colours off.
        const std::uint32_t bar = std::min(x * 8U / sensorWidth, 7U);
        const std::uint32_t off = channel == 0 ? bar >> 1U & 1U : channel == 1 ? bar >> 2U & 1U : bar & 1U;
        return off != 0 ? 0 : FullScale8;
    }
    case NoisyScene:
    {
        // Soft light in both directions and noise of about 1 %, as of a small sensor; repeats with the line period.
        const std::uint32_t line = y % CTestImage::LinePeriod;
        const std::uint32_t light = x / 16U % 128U + (line < 128U ? line : 255U - line) / 2U;
        return 24U + light + channel * 4U + Noise(x * 3U + channel, line);
    }
    default:
        return (x + y + channel * ChannelShift) % 256U;
    }
}

std::uint32_t Channel(const SPixelFormat& format, std::uint32_t x, std::uint32_t y, std::uint32_t component)
{
    switch (format.layout)
    {
    case EPixelLayout::Rgb:
        return component;
    case EPixelLayout::BayerRG:
        return (x & 1U) + (y & 1U);
    case EPixelLayout::Mono:
        break;
    }
    return 0;
}

auto Tie(const SImageKey& k)
{
    return std::tie(k.pfnc, k.width, k.height, k.offsetX, k.offsetY, k.sensorWidth, k.pattern, k.isReversedX,
                    k.amplification, k.blackLevel);
}

std::uint32_t Sample(const SImageKey& key, std::uint32_t significant, std::uint32_t level, std::uint32_t x)
{
    const std::uint32_t deepBits = significant - 8;
    const std::uint32_t full = (1U << significant) - 1U;
    std::uint32_t value = level << deepBits | (level == 0 ? 0U : x & ((1U << deepBits) - 1U));
    if (level == FullScale8)
    {
        value = full;
    }
    if (key.amplification == 1.0 && key.blackLevel == 0.0)
    {
        return value;
    }
    return static_cast<std::uint32_t>(std::min(full * key.blackLevel + value * key.amplification, double(full)));
}

} // namespace

bool SImageKey::operator<(const SImageKey& other) const
{
    return Tie(*this) < Tie(other);
}

CTestImage::CTestImage(const SImageKey& key)
{
    const SPixelFormat& format = *FindPixelFormat(key.pfnc);
    m_lineBytes = std::size_t{key.width} * format.bytesPerPixel;
    m_frameBytes = m_lineBytes * key.height;
    m_linesPerFrame =
        key.pattern == Scene || key.pattern == VerticalRampMoving || key.pattern == NoisyScene ? MovingLines : 0;
    m_bytes.resize(m_frameBytes + m_lineBytes * LinePeriod);
    const std::size_t lines = m_bytes.size() / m_lineBytes;
    for (std::uint32_t line = 0; line < std::min<std::size_t>(lines, LinePeriod); ++line)
    {
        FillLine(key, format, line, m_bytes.data() + line * m_lineBytes);
    }
    for (std::size_t line = LinePeriod; line < lines; ++line)
    {
        std::memcpy(m_bytes.data() + line * m_lineBytes, m_bytes.data() + (line - LinePeriod) * m_lineBytes,
                    m_lineBytes);
    }
}

void CTestImage::FillLine(const SImageKey& key, const SPixelFormat& format, std::uint32_t line, std::uint8_t* out) const
{
    const std::uint32_t components = format.layout == EPixelLayout::Rgb ? 3 : 1;
    const std::uint32_t y = key.offsetY + line;
    for (std::uint32_t column = 0; column < key.width; ++column)
    {
        const std::uint32_t seen = key.isReversedX ? key.width - 1 - column : column;
        const std::uint32_t x = key.offsetX + seen;
        for (std::uint32_t component = 0; component < components; ++component)
        {
            // The colour filter stays where it is when the image is flipped.
            const std::uint32_t channel = Channel(format, key.offsetX + column, y, component);
            const std::uint32_t level = Level(key.pattern, x, y, channel, key.sensorWidth);
            const std::uint32_t value = Sample(key, format.significant, level, x);
            *out++ = static_cast<std::uint8_t>(value & 0xFFU);
            if (format.significant > 8)
            {
                *out++ = static_cast<std::uint8_t>(value >> 8U);
            }
        }
    }
}

std::shared_ptr<const CTestImage> CTestImage::Get(const SImageKey& key)
{
    static std::mutex mutex; // guards images
    static std::map<SImageKey, std::weak_ptr<const CTestImage>> images;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (auto entry = images.begin(); entry != images.end();)
        {
            entry = entry->second.expired() ? images.erase(entry) : std::next(entry);
        }
        if (const auto found = images.find(key); found != images.end())
        {
            if (auto image = found->second.lock())
            {
                return image;
            }
        }
    }
    auto image = std::make_shared<const CTestImage>(key);
    const std::lock_guard<std::mutex> lock(mutex);
    images[key] = image;
    return image;
}

const std::uint8_t* CTestImage::GetFrame(std::uint64_t frame, std::uint32_t phase) const
{
    const std::uint64_t line = m_linesPerFrame == 0 ? 0 : (frame * m_linesPerFrame + phase) % LinePeriod;
    return m_bytes.data() + line * m_lineBytes;
}

SImageKey MakeImageKey(const CSettings& settings, std::uint32_t sensorWidth)
{
    const CRegisterMemory& memory = settings.GetMemory();
    SImageKey key;
    key.pfnc = settings.GetFormat().pfnc;
    key.width = settings.GetWidth();
    key.height = settings.GetHeight();
    key.offsetX = static_cast<std::uint32_t>(memory.GetInteger(Register::OffsetX));
    key.offsetY = static_cast<std::uint32_t>(memory.GetInteger(Register::OffsetY));
    key.sensorWidth = sensorWidth;
    key.pattern = static_cast<std::uint32_t>(memory.GetInteger(Register::TestPattern));
    key.isReversedX = memory.GetInteger(Register::ReverseX) != 0;
    if (key.pattern == Scene) // test patterns do not pass the lens and the amplifier
    {
        key.amplification = settings.GetAmplification();
        key.blackLevel = memory.GetFloat(Register::BlackLevel) / 100.0;
    }
    return key;
}

} // namespace Simulator::Internal
