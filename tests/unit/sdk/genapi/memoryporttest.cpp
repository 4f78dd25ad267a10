// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/memoryport.h"

#include <gtest/gtest.h>

#include <limits>

namespace GenApi
{
namespace
{

TEST(MemoryPort, readsWhatWasWritten)
{
    CMemoryPort port(16);
    const std::uint32_t value = 0x01020304;
    port.Write(&value, 4, 4);
    std::uint32_t back = 0;
    port.Read(&back, 4, 4);
    EXPECT_EQ(back, value);
    EXPECT_EQ(port.Peek(4, 4), value);
}

TEST(MemoryPort, refusesAccessOutsideItsMemory)
{
    CMemoryPort port(16);
    char byte = 0;
    EXPECT_THROW(port.Read(&byte, 16, 1), GenICam::AccessException);
    EXPECT_THROW(port.Read(&byte, -1, 1), GenICam::AccessException);
    EXPECT_THROW(port.Write(&byte, std::numeric_limits<std::int64_t>::max(), 2), GenICam::AccessException);
    EXPECT_THROW(port.Read(&byte, 0, std::numeric_limits<std::int64_t>::max()), GenICam::AccessException);
    EXPECT_THROW(port.Poke(15, 0, 2), GenICam::AccessException);
}

TEST(MemoryPort, runsHooksOfTheRangesTouchedAndMayBeUsedByThem)
{
    CMemoryPort port(16);
    port.SetWriteHook(0, 4, [&](std::int64_t, std::int64_t) { port.Poke(8, port.Peek(0, 4) + 1, 4); });
    port.SetReadHook(12, 4, [&](std::int64_t, std::int64_t) { port.Poke(12, 77, 4); });
    const std::uint32_t value = 5;
    port.Write(&value, 4, 4);
    EXPECT_EQ(port.Peek(8, 4), 0U);
    port.Write(&value, 0, 4);
    EXPECT_EQ(port.Peek(8, 4), 6U);
    std::uint32_t back = 0;
    port.Read(&back, 12, 4);
    EXPECT_EQ(back, 77U);
}

TEST(MemoryPort, aFailedHookLeavesTheOldBytes)
{
    CMemoryPort port(16);
    port.Poke(0, 9, 4);
    port.SetWriteHook(0, 4, [](std::int64_t, std::int64_t) { GENICAM_THROW(OutOfRangeException, "no"); });
    const std::uint32_t value = 5;
    EXPECT_THROW(port.Write(&value, 0, 4), GenICam::OutOfRangeException);
    EXPECT_EQ(port.Peek(0, 4), 9U);
}

TEST(MemoryPort, textsEndAtTheirZeroOrTheirRoom)
{
    CMemoryPort port(16);
    port.PokeText(0, "abcdef", 4);
    EXPECT_EQ(port.PeekText(0, 4), "abcd");
    port.PokeText(0, "x", 4);
    EXPECT_EQ(port.PeekText(0, 4), "x");
    EXPECT_EQ(port.Peek(0, 4), 0x78U);
}

} // namespace
} // namespace GenApi
