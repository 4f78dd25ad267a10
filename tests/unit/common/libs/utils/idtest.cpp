// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/id.h"

#include <gtest/gtest.h>

#include <QSet>
#include <QVariant>

namespace
{

using Core::CId;

TEST(Id, withoutTextIsNotValid)
{
    EXPECT_FALSE(CId().isValid());
    EXPECT_FALSE(CId(static_cast<const char*>(nullptr)).isValid());
    EXPECT_FALSE(CId("").isValid());
}

TEST(Id, comparesWholeTexts)
{
    EXPECT_EQ(CId("camera 1"), CId(QStringLiteral("camera 1")));
    EXPECT_NE(CId("camera 1"), CId("camera 11"));
    EXPECT_NE(CId("camera"), CId("Camera"));
    EXPECT_TRUE(CId("a") < CId("b"));
}

TEST(Id, keepsUtf8)
{
    EXPECT_EQ(CId(QStringLiteral("Kam\u00e9ra")).toString(), QStringLiteral("Kam\u00e9ra"));
}

TEST(Id, worksInHashedContainersAndVariants)
{
    const QSet<CId> ids{CId("a"), CId("b"), CId("a")};
    EXPECT_EQ(ids.size(), 2);
    EXPECT_EQ(QVariant::fromValue(CId("a")).value<CId>(), CId("a"));
}

} // namespace
