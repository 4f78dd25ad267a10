// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/infos.h"

#include <gtest/gtest.h>

using namespace Velmo;

TEST(Infos, absentPropertyIsEmptyAndNotAvailable)
{
    const CDeviceInfo info;
    GenICam::gcstring value = "untouched";
    EXPECT_FALSE(info.GetPropertyValue("SerialNumber", value));
    EXPECT_EQ("untouched", value);
    EXPECT_EQ("", info.GetSerialNumber());
    EXPECT_FALSE(info.IsUserDefinedNameAvailable());
}

TEST(Infos, propertyNamesAreSorted)
{
    CDeviceInfo info;
    info.SetVendorName("v");
    info.SetModelName("m");
    GenICam::gcstring_vector names;
    EXPECT_EQ(2, info.GetPropertyNames(names));
    EXPECT_EQ((GenICam::gcstring_vector{"ModelName", "VendorName"}), names);
}

TEST(Infos, subsetNeedsEveryPropertyWithTheSameValue)
{
    CDeviceInfo info;
    info.SetSerialNumber("1");
    info.SetModelName("m");
    CDeviceInfo wanted;
    EXPECT_TRUE(wanted.IsSubset(info));
    wanted.SetSerialNumber("1");
    EXPECT_TRUE(wanted.IsSubset(info));
    EXPECT_FALSE(info.IsSubset(wanted));
    wanted.SetSerialNumber("2");
    EXPECT_FALSE(wanted.IsSubset(info));
}
