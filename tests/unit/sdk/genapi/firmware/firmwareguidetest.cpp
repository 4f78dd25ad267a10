// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include "genapi/firmwarepackagewriter.h"

#include <iterator>

namespace
{

/** The example of the guide for camera makers, as it stands there. */
std::string GuideExample()
{
    std::ifstream file(FIRMWARE_GUIDE, std::ios::binary);
    const std::string guide{std::istreambuf_iterator<char>(file), {}};
    const std::string fence = "```xml\n";
    const std::size_t begin = guide.find(fence) + fence.size();
    return guide.substr(begin, guide.find("```", begin) - begin);
}

using FirmwareGuide = CFirmwareApplyTest;

} // namespace

TEST_F(FirmwareGuide, itsExampleMakesAPackageThatUpdatesACamera)
{
    folder.Write(MainFile, MainBytes());
    GenApi::CFirmwarePackageWriter().WritePackage(folder.Write("control.xml", GuideExample()).c_str(),
                                                  folder.Path("example.guf").c_str());
    CUpdateList list;
    GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(folder.Path("example.guf").c_str(), list);
    ASSERT_EQ(list.updates.size(), 1U);
    Apply(list.updates[0]);
    EXPECT_EQ(camera.RunningVersion(), "Fw 2.1.0 build 8");
    EXPECT_EQ(list.updates[0].ExtractVersionFromDeviceFirmwareVersion(camera.RunningVersion()), "2.1.0");
}
