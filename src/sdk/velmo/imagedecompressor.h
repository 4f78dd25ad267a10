// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/grabresult.h"

#include <cstddef>
#include <cstdint>

namespace Velmo
{

enum EEndianness
{
    Endianness_Little = 0,
    Endianness_Big = 1,
    Endianness_Auto = 2
};
enum ECompressionStatus
{
    CompressionStatus_Ok = 0,
    CompressionStatus_BufferOverflow,
    CompressionStatus_Error
};

/** What a grab result tells of its compression. */
struct SCompressionInfo
{
    bool hasCompressedImage = false;
    ECompressionStatus compressionStatus = CompressionStatus_Ok;
    bool lossy = false;
    std::uint32_t pixelType = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::size_t decompressedImageBytes = 0;
    std::size_t decompressedPayloadBytes = 0;
};

class VELMO_EXPORT CImageDecompressor
{
public:
    /** False when the result carries no compression information: this SDK has no codec yet. Threads: any. */
    static bool GetCompressionInfo(SCompressionInfo& info, const CGrabResultPtr& result,
                                   EEndianness endianness = Endianness_Auto);
};

} // namespace Velmo
