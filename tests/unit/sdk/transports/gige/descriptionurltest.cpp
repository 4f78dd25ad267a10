// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/descriptionurl.h"

#include <gtest/gtest.h>

using namespace Velmo::GigE::Internal;

TEST(GigEDescriptionUrl, namesFileAddressAndLengthInTheCamera)
{
    for (const char* url : {"Local:camera.zip;A0000;1f40", "local:///camera.zip;0xa0000;0x1F40",
                            "LOCAL:camera.zip;000A0000;1F40?SchemaVersion=1.1.0"})
    {
        SDescriptionPlace place;
        ASSERT_TRUE(ParseDescriptionUrl(url, place)) << url;
        EXPECT_EQ(place.fileName, "camera.zip");
        EXPECT_EQ(place.address, 0xA0000U);
        EXPECT_EQ(place.bytes, 0x1F40U);
    }
}

TEST(GigEDescriptionUrl, otherPlacesAndBrokenTextsAreNone)
{
    for (const char* url : {"", "Local:", "Local:camera.xml", "Local:camera.xml;100", "Local:camera.xml;100;",
                            "Local:camera.xml;100;0", "Local:camera.xml;xyz;10", "Local:camera.xml;1;100000000",
                            "Local:camera.xml;-1;10", "File:///camera.xml", "http://example.org/camera.xml"})
    {
        SDescriptionPlace place;
        place.bytes = 7;
        EXPECT_FALSE(ParseDescriptionUrl(url, place)) << url;
        EXPECT_EQ(place.bytes, 7U) << url;
    }
}
