// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"

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
