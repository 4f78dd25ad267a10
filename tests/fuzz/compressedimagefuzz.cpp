// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/decoder.h"
#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"

#include <cstdlib>
#include <cstring>
#include <vector>

using namespace Velmo::Codec;

namespace
{

constexpr std::uint32_t Mono8 = 0x01080001;
constexpr std::uint32_t Mono12 = 0x01100005;
constexpr std::uint32_t RGB8 = 0x02180014;
constexpr std::uint8_t Guard = 0x5A;
constexpr std::size_t Margin = 32;

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

SDescriptor DescriptorOf(std::uint8_t kind)
{
    SDescriptor descriptor = MakeDescriptor(EMode::Lossless,
                                            kind % 3 == 0   ? Mono8
                                            : kind % 3 == 1 ? Mono12
                                                            : RGB8,
                                            24, 20);
    descriptor.strips = 2;
    return descriptor;
}

void Decode(const std::vector<std::uint8_t>& frame, const SDescriptor& descriptor, const DescriptorHash& hash)
{
    std::vector<std::uint8_t> image(descriptor.imageBytes + 2 * Margin, Guard);
    DecodeFrame(frame.data(), frame.size(), descriptor, hash, {image.data() + Margin, descriptor.imageBytes});
    for (std::size_t i = 0; i < Margin; ++i)
    {
        Require(image[i] == Guard && image[image.size() - 1 - i] == Guard);
    }
}

/** Makes checksums, hash and sizes fit, so that the fuzzer comes past them. */
void Mend(std::vector<std::uint8_t>& frame, const DescriptorHash& hash)
{
    using namespace Internal;
    if (frame.size() < FrameHeaderBytes + 2 * StripEntryBytes)
    {
        return;
    }
    std::uint8_t* const p = frame.data();
    std::memcpy(p + 56, hash.data(), hash.size());
    std::size_t begin = FrameHeaderBytes + 2 * StripEntryBytes;
    for (std::size_t entry = FrameHeaderBytes; entry < FrameHeaderBytes + 2 * StripEntryBytes; entry += StripEntryBytes)
    {
        const auto bytes = Load<std::uint32_t>(p, entry);
        if (bytes > frame.size() - begin)
        {
            break;
        }
        Store(p, entry + 8, Checksum(p + begin, bytes));
        begin += bytes;
    }
    Store(p, 72, Checksum(p + FrameHeaderBytes, 2 * StripEntryBytes));
    Store(p, 80, Checksum(p, 80));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
    {
        return 0;
    }
    const SDescriptor descriptor = DescriptorOf(data[0]);
    const std::vector<std::uint8_t> bytes = EncodeDescriptor(descriptor);
    const DescriptorHash hash = HashDescriptor(bytes.data(), bytes.size());
    std::vector<std::uint8_t> frame(data + 1, data + size);
    Decode(frame, descriptor, hash);
    Mend(frame, hash);
    Decode(frame, descriptor, hash);
    return 0;
}
