// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/packetsizesearch.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Velmo::GigE::Internal;

namespace
{

/** A path that lets packets up to a size through, and counts what was tried. */
class CPath
{
public:
    explicit CPath(std::uint32_t carries) : m_carries(carries) {}

    std::uint32_t Search(const SPacketSizes& sizes, std::uint32_t limitBytes)
    {
        return SearchPacketSize(sizes, limitBytes,
                                [this](std::uint32_t bytes)
                                {
                                    m_tried.push_back(bytes);
                                    return bytes <= m_carries;
                                });
    }
    int CountLost() const
    {
        int lost = 0;
        for (const std::uint32_t bytes : m_tried)
        {
            lost += bytes > m_carries ? 1 : 0;
        }
        return lost;
    }
    const std::vector<std::uint32_t>& Tried() const { return m_tried; }

private:
    std::uint32_t m_carries;
    std::vector<std::uint32_t> m_tried;
};

} // namespace

TEST(PacketSizeSearch, oneTestIsEnoughWhereTheWholeLimitPasses)
{
    CPath path(9000);
    EXPECT_EQ(path.Search({576, 16384, 4}, 9000), 9000u);
    EXPECT_EQ(path.Tried(), std::vector<std::uint32_t>{9000});
}

TEST(PacketSizeSearch, findsTheLargestOfEveryPath)
{
    for (std::uint32_t carries = 576; carries <= 9000; ++carries)
    {
        CPath path(carries);
        ASSERT_EQ(path.Search({576, 16384, 4}, 9000), carries / 4 * 4) << carries;
        ASSERT_LE(path.Tried().size(), 15u) << carries;
    }
}

TEST(PacketSizeSearch, switchWithoutJumboFramesCostsFewTimeouts)
{
    CPath path(1500);
    EXPECT_EQ(path.Search({576, 16384, 4}, 9000), 1500u);
    EXPECT_LE(path.CountLost(), 12);
}

TEST(PacketSizeSearch, keepsToTheSizesThatTheCameraKnows)
{
    CPath path(8190);
    EXPECT_EQ(path.Search({600, 8000, 16}, 9000), 600u + 7400 / 16 * 16);
    for (const std::uint32_t bytes : path.Tried())
    {
        EXPECT_EQ((bytes - 600) % 16, 0u) << bytes;
    }
    CPath narrow(1501);
    EXPECT_EQ(narrow.Search({600, 8000, 16}, 9000), 600u + 901 / 16 * 16);
}

TEST(PacketSizeSearch, nothingArrivesIsToldApart)
{
    CPath path(0);
    EXPECT_EQ(path.Search({576, 16384, 4}, 9000), 0u);
    EXPECT_LE(path.Tried().size(), 3u) << "each costs a time-out";
    CPath single(0);
    EXPECT_EQ(single.Search({1000, 1000, 4}, 9000), 0u);
    EXPECT_EQ(single.Tried(), std::vector<std::uint32_t>{1000});
}

TEST(PacketSizeSearch, limitBelowTheSmallestSizeTriesThatOneOnly)
{
    CPath path(1500);
    EXPECT_EQ(path.Search({1400, 9000, 4}, 1280), 1400u);
    EXPECT_EQ(path.Tried(), std::vector<std::uint32_t>{1400});
}

TEST(PacketSizeSearch, incrementOfNothingIsTakenForOne)
{
    CPath path(1497);
    EXPECT_EQ(path.Search({576, 1600, 0}, 1500), 1497u);
}

TEST(PacketSizeSearch, largestSizeIsWithinLimitAndRange)
{
    EXPECT_EQ(LargestPacketSize({576, 16384, 4}, 1499), 1496u);
    EXPECT_EQ(LargestPacketSize({576, 1400, 4}, 9000), 1400u);
    EXPECT_EQ(LargestPacketSize({576, 1400, 4}, 100), 576u);
}
