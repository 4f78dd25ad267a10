// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/decoder.h"
#include "codec/encoder.h"
#include "codec/pixellayout.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

/** Images for the codec's tests. */
namespace Velmo::Codec::Test
{

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t Mono8 = 0x01080001;
constexpr std::uint32_t Mono10 = 0x01100003;
constexpr std::uint32_t Mono12 = 0x01100005;
constexpr std::uint32_t Mono16 = 0x01100007;
constexpr std::uint32_t BayerRG8 = 0x01080009;
constexpr std::uint32_t BayerRG12 = 0x01100011;
constexpr std::uint32_t RGB8 = 0x02180014;
constexpr std::uint32_t RGB16 = 0x02300033;

inline std::uint32_t SampleAt(const SPixelLayout& layout, const Bytes& image, std::size_t index)
{
    return layout.wordBytes == 1 ? image[index]
                                 : image[index * 2] | static_cast<std::uint32_t>(image[index * 2 + 1]) << 8U;
}

/** A soft scene of that much noise (standard deviation, part of the range); within the format's range. */
inline Bytes MakeScene(std::uint32_t pixelType, std::uint32_t width, std::uint32_t height, double noise,
                       unsigned int seed = 1)
{
    const SPixelLayout& layout = *FindPixelLayout(pixelType);
    Bytes image(ImageBytes(pixelType, width, height));
    std::mt19937 random(seed);
    std::normal_distribution<double> spread(0.0, noise * layout.maxSample);
    std::size_t index = 0;
    for (std::uint32_t y = 0; y < height; ++y)
    {
        for (std::uint32_t x = 0; x < width * layout.components; ++x, ++index)
        {
            const double level = 0.5 + 0.3 * std::sin(x / 97.0) * std::cos(y / 61.0) + 0.15 * (x % layout.distance);
            const double value = level * layout.maxSample + spread(random);
            const auto sample = static_cast<std::uint32_t>(std::clamp(value, 0.0, double(layout.maxSample)));
            std::memcpy(image.data() + index * layout.wordBytes, &sample, layout.wordBytes);
        }
    }
    return image;
}

inline Bytes MakeRandom(std::size_t bytes, unsigned int seed = 1)
{
    Bytes image(bytes);
    std::mt19937 random(seed);
    std::generate(image.begin(), image.end(), [&] { return static_cast<std::uint8_t>(random()); });
    return image;
}

inline Bytes EncodeOnce(const SDescriptor& descriptor, const Bytes& image)
{
    CEncoder encoder(descriptor);
    const SEncodedFrame frame = encoder.Encode(image.data());
    return {frame.pData, frame.pData + frame.bytes};
}

inline DescriptorHash HashOf(const SDescriptor& descriptor)
{
    const Bytes bytes = EncodeDescriptor(descriptor);
    return HashDescriptor(bytes.data(), bytes.size());
}

inline EResult Decode(const SDescriptor& descriptor, const Bytes& frame, Bytes& image)
{
    return DecodeFrame(frame.data(), frame.size(), descriptor, HashOf(descriptor), {image.data(), image.size()});
}

} // namespace Velmo::Codec::Test
