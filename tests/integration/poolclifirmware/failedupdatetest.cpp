// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolclifirmware/poolclifirmware.h"

namespace
{

using PoolCliTest::SOutcome;

/** Packages of their own, for the camera of the fixture with firmware 1.7.0. */
class FailedUpdate : public PoolCliTest::PoolCliFirmware
{
protected:
    SOutcome updateOwn() const { return firmware({"update", path("own.guf"), "FW-A"}); }
    /** Refused with these two lines on stderr, which begin and end so. */
    static void expectIncomplete(const SOutcome& outcome, const char* reason, const char* consequence)
    {
        EXPECT_EQ(outcome.exitCode, 1) << outcome.out.toStdString();
        const QList<QByteArray> lines = outcome.err.split('\n');
        ASSERT_EQ(lines.size(), 3) << outcome.err.toStdString();
        EXPECT_TRUE(lines[0].startsWith("poolcli: The update of ")) << lines[0].toStdString();
        EXPECT_TRUE(lines[0].contains(" did not complete: ")) << lines[0].toStdString();
        EXPECT_TRUE(lines[0].contains(reason)) << lines[0].toStdString();
        EXPECT_EQ(lines[1], consequence);
    }

    static constexpr const char* notKnown = "Which firmware the camera has is not known: switch it off and on, look "
                                            "for it with 'poolcli list', and update it again.";
};

TEST_F(FailedUpdate, afterTheRestartTellsTheNewVersion)
{
    makePackage(QByteArray(upload) + activate + restart + R"(<FeatureAssert feature="Gain" equals="7"/>)");
    expectIncomplete(updateOwn(), "'Gain' is to be '7'", "The camera has firmware 2.0.0.");
}

TEST_F(FailedUpdate, byAPreconditionHasWrittenNothing)
{
    makePackage(upload, R"(<FeatureAssert feature="DeviceTemperature" max="10"><Description>
                           <Text>It must be cold</Text></Description></FeatureAssert>)");
    expectIncomplete(updateOwn(), "It must be cold: The camera does not fulfil", "Nothing was written to the camera.");
}

TEST_F(FailedUpdate, inTheUploadSaysOnlyOnceWhatTheCameraHas)
{
    makePackage(QByteArray(upload) + activate);
    writeCamera(R"(, "faults": {"powerLossAtFileOperation": 3})");
    const SOutcome outcome = updateOwn();
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err.count('\n'), 1) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.endsWith("The camera keeps the firmware that it has; apply the update again\n"))
        << outcome.err.toStdString();
}

TEST_F(FailedUpdate, whoseCameraDoesNotComeBackSaysWhatToDo)
{
    makePackage(restart);
    writeCamera(R"(, "faults": {"afterReset": "otherSerial"})");
    expectIncomplete(updateOwn(), "Could not rediscover device after reset.", notKnown);
}

TEST_F(FailedUpdate, byALossOfPowerAtAnyWriteTellsWhatIsKnown)
{
    makePackage(QByteArray(R"(<FeatureWrite feature="Gain" value="1"/>)") + restart);
    int written = 0;
    int restarted = 0;
    int unreachable = 0;
    SOutcome outcome;
    for (int write = 1; write < 20 && outcome.exitCode != 0; ++write)
    {
        SCOPED_TRACE("write " + std::to_string(write));
        writeCamera(R"(, "faults": {"powerLossAtWrite": )" + QByteArray::number(write) + "}");
        outcome = updateOwn();
        if (outcome.err.contains("was updated, but cannot be reached: "))
        {
            ++unreachable;
            EXPECT_EQ(outcome.exitCode, 1);
            EXPECT_FALSE(outcome.out.contains("has firmware")) << outcome.out.toStdString();
        }
        else if (outcome.exitCode != 0 && outcome.out.contains("Writing a feature"))
        {
            expectIncomplete(outcome, "lost its power", notKnown);
            ++(outcome.out.contains("Restarting the camera") ? restarted : written);
        }
    }
    EXPECT_TRUE(outcome.out.endsWith("has firmware 1.7.0 now.\n")) << outcome.err.toStdString();
    EXPECT_EQ(written, 1);
    EXPECT_EQ(restarted, 1);
    EXPECT_GE(unreachable, 1) << "between the last step and the end";
}

} // namespace
