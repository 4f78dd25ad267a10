// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using FirmwareApply = CFirmwareApplyTest;

TEST_F(FirmwareApply, everyKindOfStepIsReportedInItsOrderAndTheNewFirmwareRuns)
{
    Apply(Load(GoodParts()));
    EXPECT_THAT(observer.notes,
                ElementsAre("begin", "step 0", "done 0", "step 1", "done 1", "step 2", "done 2", "step 5", "done 5",
                            "step 3", "done 3", "step 6", "done 6", "step 4", "done 4", "end"));
    EXPECT_THAT(device.calls, ElementsAre("prepare", "reset 3000 500", "cleanup"));
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(camera.RunningVersion(), "Fw 2.1.0 build 8");
    EXPECT_FALSE(camera.isOpen);
    EXPECT_EQ(observer.version, "2.1.0");
    EXPECT_THAT(observer.descriptions,
                ElementsAre("(null)", "(null)", "(null)", "Uploading", "(null)", "(null)", "(null)"));
}
