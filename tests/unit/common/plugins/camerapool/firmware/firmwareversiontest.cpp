// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/firmwareversion.h"

#include <gtest/gtest.h>

namespace
{

using namespace Plugin::CameraPool::Internal;
using Components = std::array<std::int32_t, 4>;

TEST(FirmwareVersion, needsOneToThreeGroupsWithAPointAndMayEndWithALastOne)
{
    for (const char* const text : {"1.", "4.2.17", "1.2.3.4", "1.2.3.", "999999999.999999999", "0.0"})
    {
        EXPECT_TRUE(isComparableFirmwareVersion(QString::fromLatin1(text))) << text;
    }
    for (const char* const text : {"", "5", "1.2.3.4.5", "1.2.3.4.", ".1", "1..2", "v1.2", "1.2 ", " 1.2", "1.2\n",
                                   "1,2", "1234567890.1", "-1.2"})
    {
        EXPECT_FALSE(isComparableFirmwareVersion(QString::fromLatin1(text))) << text;
    }
}

TEST(FirmwareVersion, hasFourComponentsThoseMissingZero)
{
    const SFirmwareVersion whole = parseFirmwareVersion(QStringLiteral("1.20.300.4000"));
    EXPECT_EQ(whole.components, (Components{1, 20, 300, 4000}));
    EXPECT_FALSE(whole.isShort);
    const SFirmwareVersion three = parseFirmwareVersion(QStringLiteral("4.2.17"));
    EXPECT_EQ(three.components, (Components{4, 2, 17, 0}));
    EXPECT_TRUE(three.isShort);
    EXPECT_EQ(parseFirmwareVersion(QStringLiteral("7.")).components, (Components{7, 0, 0, 0}));
    EXPECT_TRUE(parseFirmwareVersion(QStringLiteral("1.2.3.")).isShort);
    EXPECT_EQ(parseFirmwareVersion(QStringLiteral("999999999.010")).components, (Components{999999999, 10, 0, 0}));
}

} // namespace
