// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/descriptor.h"
#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"
#include "codec/pixellayout.h"

#include <cstdlib>
#include <vector>

using namespace Velmo::Codec;

namespace
{

void Parse(const std::vector<std::uint8_t>& bytes)
{
    SDescriptor descriptor;
    if (!ParseDescriptor(bytes.data(), bytes.size(), descriptor).empty())
    {
        return;
    }
    const bool isGood = descriptor.imageBytes != 0 && descriptor.imageBytes <= MaxImageBytes &&
                        descriptor.strips >= 1 && descriptor.strips <= descriptor.height &&
                        EncodeDescriptor(descriptor) == bytes;
    if (!isGood)
    {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::uint8_t> bytes(data, data + size);
    Parse(bytes);
    if (size == DescriptorBytes)
    {
        // With a checksum that fits the fuzzer reaches the fields.
        Internal::Store(bytes.data(), DescriptorBytes - 8, Internal::Checksum(bytes.data(), DescriptorBytes - 8));
        Parse(bytes);
    }
    return 0;
}
