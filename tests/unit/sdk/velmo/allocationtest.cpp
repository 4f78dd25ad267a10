// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"
#include "codec/encoder.h"
#include "protocols/chunks.h"
#include "velmo/imagedecompressor.h"

#include <cstdlib>
#include <new>

namespace
{

thread_local bool t_counting = false;
thread_local int t_allocations = 0;

} // namespace

// Not inlined: the compiler would take one half of a pair for a mismatch of the other.
__attribute__((noinline)) void* operator new(std::size_t bytes)
{
    t_allocations += t_counting ? 1 : 0;
    if (void* pMemory = std::malloc(bytes == 0 ? 1 : bytes))
    {
        return pMemory;
    }
    throw std::bad_alloc();
}

// The forms for arrays, too: a sanitizer's own do not come to the one above.
__attribute__((noinline)) void* operator new[](std::size_t bytes)
{
    return operator new(bytes);
}

__attribute__((noinline)) void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept
{
    try
    {
        return operator new(bytes);
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

__attribute__((noinline)) void operator delete[](void* pMemory) noexcept
{
    std::free(pMemory);
}

__attribute__((noinline)) void operator delete[](void* pMemory, std::size_t) noexcept
{
    std::free(pMemory);
}

__attribute__((noinline)) void operator delete(void* pMemory) noexcept
{
    std::free(pMemory);
}

__attribute__((noinline)) void operator delete(void* pMemory, std::size_t) noexcept
{
    std::free(pMemory);
}

using Allocation = Test::CCameraTest;

TEST_F(Allocation, noneForAnImageOnTheSteadyPath)
{
    Open();
    camera->RegisterImageEventHandler(nullptr, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
    Velmo::CImageEventHandler handler;
    camera->RegisterImageEventHandler(&handler, Velmo::RegistrationMode_Append, Velmo::Cleanup_None);
    camera->StartGrabbing();
    for (int image = 0; image < 200; ++image)
    {
        ASSERT_TRUE(transport->DeliverImage(serial));
        t_counting = image >= 100; // everything has grown to its size by then
        Velmo::CGrabResultPtr result;
        const bool taken = camera->RetrieveResult(5000, result);
        result.Release();
        t_counting = false;
        ASSERT_TRUE(taken);
    }
    EXPECT_EQ(0, t_allocations);
    camera->DeregisterImageEventHandler(&handler);
}

TEST_F(Allocation, noneForAnImageThatIsDecoded)
{
    using namespace Velmo;
    constexpr std::uint32_t bayerRG12 = 0x01100011;
    Codec::CEncoder encoder(Codec::MakeDescriptor(Codec::EMode::FixedRatio, bayerRG12, 700, 500, 50.0));
    const std::vector<std::uint8_t> image(encoder.GetDescriptor().imageBytes, 5);
    const Codec::SEncodedFrame frame = encoder.Encode(image.data());
    std::vector<std::uint8_t> payload;
    Chunks::Append(payload, Chunks::CompressedImageChunkId, frame.pData, frame.bytes, Chunks::EByteOrder::Big);
    const std::vector<std::uint8_t> descriptor = Codec::EncodeDescriptor(encoder.GetDescriptor());
    const CImageDecompressor decompressor(descriptor.data(), descriptor.size());
    std::vector<std::uint8_t> decoded(image.size());
    for (int round = 0; round < 3; ++round)
    {
        SCompressionInfo info;
        t_counting = true;
        const bool isCompressed = CImageDecompressor::GetCompressionInfo(info, payload.data(), payload.size());
        const int ofInfo = t_allocations;
        const auto status = decompressor.Decompress(decoded.data(), decoded.size(), payload.data(), payload.size());
        t_counting = false;
        EXPECT_TRUE(isCompressed);
        EXPECT_EQ(ofInfo, 0);
        EXPECT_EQ(status, CompressionStatus_Ok);
        // The first image of a thread takes the memory that the others use again.
        EXPECT_EQ(t_allocations, round == 0 ? 1 : 0);
        t_allocations = 0;
    }
    EXPECT_TRUE(decoded == image);
}
