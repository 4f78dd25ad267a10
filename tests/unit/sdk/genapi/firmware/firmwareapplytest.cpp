// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <stdexcept>

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

TEST_F(FirmwareApply, theTimesOfEveryStepAreThoseEstimatedAndAddUpToTheTotal)
{
    SControlParts parts = GoodParts();
    parts.steps = "<FeatureWrite feature=\"UpdateMode\" value=\"1\" estimatedTimeMs=\"1234\"/>"
                  "<DeviceReset expectedTimeMs=\"3000\"/><DeviceReset expectedTimeMs=\"3000\" estimatedTimeMs=\"50\"/>";
    Apply(Load(parts));
    EXPECT_THAT(std::vector<unsigned int>(observer.estimates.begin() + 2, observer.estimates.end()),
                ElementsAre(1234, 3000, 50));
    EXPECT_EQ(observer.endTimes, observer.estimates);
    EXPECT_EQ(observer.totalMs, std::accumulate(observer.estimates.begin(), observer.estimates.end(), 0U));
}

TEST_F(FirmwareApply, laterUploadsAreEstimatedByTheMeasuredRate)
{
    const std::string first(8192, 'a');
    const std::string second(4096, 'b');
    SControlParts parts = GoodParts();
    parts.files = FileElement("first.bin", first) + FileElement("second.bin", second);
    parts.steps = "<FileUpload file=\"first.bin\" deviceFile=\"FirmwareUpdate\" verify=\"none\"/>"
                  "<FileUpload file=\"second.bin\" deviceFile=\"FirmwareUpdate\" verify=\"none\"/>";
    camera.onWrite = [this](std::int64_t address)
    {
        clock.now += address == CFirmwareCamera::Buffer ? 8 : 0;
    };
    Apply(Load(MakePackage(ControlXml(parts), {{"first.bin", first}, {"second.bin", second}})));
    // 64 bytes in 8 ms, and 100 ms for opening and closing.
    EXPECT_EQ(observer.estimates.at(3), 100U + 4096 / 8);
}

TEST_F(FirmwareApply, anEstimateBeyondAllNumbersIsTheLargestNumber)
{
    SControlParts parts = GoodParts();
    parts.steps.clear();
    for (int i = 0; i < 60; ++i)
    {
        parts.steps += "<DeviceReset expectedTimeMs=\"86400000\"/>";
    }
    Apply(Load(parts));
    EXPECT_EQ(observer.totalMs, std::numeric_limits<unsigned int>::max());
}

TEST_F(FirmwareApply, everyStepReportsProgressUpToOneHundredPerCent)
{
    Apply(Load(GoodParts()));
    for (const std::vector<double>& percents : observer.percents)
    {
        ASSERT_FALSE(percents.empty());
        EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
        EXPECT_EQ(percents.back(), 100);
    }
    EXPECT_GT(observer.percents.at(3).size(), 10U) << "the upload";
}

TEST_F(FirmwareApply, worksWithoutAnObserver)
{
    GenApi::Internal::RunFirmwareUpdate(Load(GoodParts()), device, nullptr, clock, {});
    EXPECT_EQ(camera.RunningVersion(), "Fw 2.1.0 build 8");
}

TEST_F(FirmwareApply, anInvalidInfoIsRefusedAndCleanedUp)
{
    EXPECT_THROW(Apply(GenApi::CFirmwareUpdateInfo()), GenICam::InvalidArgumentException);
    EXPECT_THAT(observer.notes, ElementsAre("error"));
    EXPECT_THAT(device.calls, ElementsAre("cleanup"));
}

TEST_F(FirmwareApply, aCameraThatIsNotMeantGetsNothing)
{
    const auto update = Load(GoodParts());
    camera.PutText(CFirmwareCamera::Model, "Othercam 12");
    EXPECT_EQ(Failure(update), "The update 'testcam-2.1.0' is not for the camera 'Testcam (4711)'");
    EXPECT_EQ(camera.writes, 0);
    EXPECT_THAT(observer.notes, ElementsAre("begin", "step 0", "error"));
    EXPECT_THAT(device.calls, ElementsAre("prepare", "cleanup"));
}

TEST_F(FirmwareApply, aFailedPreconditionWritesNothing)
{
    camera.Put(CFirmwareCamera::Temperature, 71);
    EXPECT_EQ(Failure(Load(GoodParts())),
              "The camera does not fulfil what the update asks for: 'DeviceTemperature' is to "
              "be at most 70; it is '71'");
    EXPECT_EQ(camera.writes, 0);
    EXPECT_EQ(observer.error, Failure(Load(GoodParts())));
}

TEST_F(FirmwareApply, aFailedPreconditionBeginsWithWhatItsMakerSaysOfIt)
{
    SControlParts parts = GoodParts();
    parts.preconditions = "<FeatureAssert feature=\"DeviceTemperature\" max=\"70\"><Description>"
                          "<Text>The camera must not be too hot</Text></Description></FeatureAssert>";
    camera.Put(CFirmwareCamera::Temperature, 71);
    EXPECT_EQ(Failure(Load(parts)), "The camera must not be too hot: The camera does not fulfil what the update asks "
                                    "for: 'DeviceTemperature' is to be at most 70; it is '71'");
}

TEST_F(FirmwareApply, whateverTheCameraLacksIsFoundBeforeAnythingIsWritten)
{
    const std::string before = "<FeatureWrite feature=\"UpdateMode\" value=\"1\"/>";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"<FeatureWrite feature=\"None\" value=\"1\"/>", "has no feature 'None'"},
        {"<FeatureExecute feature=\"None\"/>", "has no feature 'None'"},
        {"<FeatureAssert feature=\"None\" equals=\"1\"/>", "has no feature 'None'"},
        {"<FeatureExecute feature=\"UpdateMode\"/>", "'UpdateMode' is no command"},
        {"<FeatureWrite feature=\"FirmwareActivate\" value=\"1\"/>", "'FirmwareActivate' is a command"},
        {"<FeatureWrite feature=\"FileOpenMode\" value=\"Append\"/>", "'FileOpenMode' has no entry 'Append'"},
        {"<FileUpload file=\"main.bin\" deviceFile=\"None\"/>", "'FileSelector' has no entry 'None'"},
        {"<FileUpload file=\"main.bin\" deviceFile=\"FirmwareUpdate\" verify=\"crc32\" crcFeature=\"None\"/>",
         "has no feature 'None'"}};
    for (const auto& [step, text] : cases)
    {
        EXPECT_THAT(FailureOf(before + step), HasSubstr(text)) << step;
        EXPECT_EQ(camera.writes, 0) << step;
    }
}

TEST_F(FirmwareApply, featuresThatAppearAfterAResetAreLookedForThen)
{
    const std::string reg = "<Integer Name=\"Late\"><Value>5</Value></Integer>";
    device.xmlAfterReset = FirmwareCameraXml(reg);
    const std::string steps = "<DeviceReset/><FeatureAssert feature=\"Late\" equals=\"0x5\" afterReset=\"true\"/>";
    EXPECT_EQ(FailureOf(steps), "");
    device.xmlAfterReset = device.xml;
    EXPECT_THAT(FailureOf(steps), HasSubstr("has no feature 'Late'"));
    EXPECT_THAT(FailureOf("<DeviceReset/><FeatureAssert feature=\"Late\" equals=\"5\"/>"), HasSubstr("has no feature"));
    EXPECT_EQ(device.calls.back(), "cleanup");
    EXPECT_EQ(std::count(device.calls.begin(), device.calls.end(), "reset 30000 0"), 2);
}

TEST_F(FirmwareApply, aPackageThatChangedSinceItWasReadIsRefused)
{
    const auto update = Load(GoodParts());
    SControlParts other = GoodParts();
    other.updates.replace(other.updates.find("Better"), 6, "Worse!");
    folder.Write("test.guf", MakePackage(other));
    EXPECT_THAT(Failure(update), HasSubstr("has changed since it was read"));
    EXPECT_EQ(camera.writes, 0);
    EXPECT_THAT(observer.notes, ElementsAre("begin", "step 0", "done 0", "step 1", "error"));
    folder.Write("test.guf", "gone bad");
    EXPECT_THAT(Failure(update), HasSubstr("no sound ZIP archive"));
    std::filesystem::remove(folder.Path("test.guf"));
    EXPECT_THAT(Failure(update), HasSubstr("does not exist"));
    EXPECT_EQ(camera.writes, 0);
}

TEST_F(FirmwareApply, anAssertionIsLookedAtUntilItHolds)
{
    int looks = 0;
    camera.onRead = [&](std::int64_t address)
    {
        if (address == CFirmwareCamera::UpdateMode && ++looks == 4)
        {
            camera.Put(CFirmwareCamera::UpdateMode, 9);
        }
    };
    EXPECT_EQ(FailureOf("<FeatureAssert feature=\"UpdateMode\" min=\"9\" timeoutMs=\"1000\" pollMs=\"100\"/>"), "");
    EXPECT_GE(looks, 4);
    EXPECT_THAT(std::vector<std::int64_t>(clock.waits), ::testing::Each(100));
}

TEST_F(FirmwareApply, anAssertionThatNeverHoldsEndsWithItsTime)
{
    const std::int64_t begin = clock.now;
    EXPECT_EQ(
        FailureOf("<FeatureAssert feature=\"UpdateMode\" equals=\"9\" timeoutMs=\"250\" pollMs=\"100\"/>"),
        "The camera does not fulfil what the update asks for: 'UpdateMode' is to be '9'; it is '0', after 250 ms");
    EXPECT_EQ(observer.kind, "TimeoutException");
    EXPECT_EQ(clock.now - begin, 250);
    EXPECT_THAT(clock.waits, ElementsAre(100, 100, 50));
}

TEST_F(FirmwareApply, aCameraThatCannotBeReadYetIsWaitedFor)
{
    camera.onRead = [this](std::int64_t address)
    {
        if (address == CFirmwareCamera::UpdateMode && clock.waits.size() < 3)
        {
            GENICAM_THROW(TimeoutException, "no answer");
        }
    };
    EXPECT_EQ(FailureOf("<FeatureAssert feature=\"UpdateMode\" equals=\"0\" timeoutMs=\"1000\"/>"), "");
    clock.waits.clear();
    camera.onRead = [](std::int64_t address)
    {
        if (address == CFirmwareCamera::UpdateMode)
        {
            GENICAM_THROW(TimeoutException, "no answer");
        }
    };
    EXPECT_THAT(FailureOf("<FeatureAssert feature=\"UpdateMode\" equals=\"0\" timeoutMs=\"1000\"/>"),
                HasSubstr("it cannot be read: no answer"));
}

TEST_F(FirmwareApply, valuesAreComparedAsTheirKindAsks)
{
    camera.Put(CFirmwareCamera::UpdateMode, 255);
    const auto fails = [this](const std::string& attributes)
    {
        return !FailureOf("<FeatureAssert feature=\"UpdateMode\" " + attributes + "/>").empty();
    };
    EXPECT_FALSE(fails("equals=\"255\""));
    EXPECT_FALSE(fails("equals=\"0xFF\""));
    EXPECT_TRUE(fails("equals=\"254\""));
    EXPECT_FALSE(fails("matches=\"2[0-9]+\""));
    EXPECT_TRUE(fails("matches=\"2\"")) << "the whole text must match";
    EXPECT_FALSE(fails("min=\"255\" max=\"255\""));
    EXPECT_TRUE(fails("min=\"255.5\""));
    EXPECT_TRUE(fails("max=\"254.5\""));
    EXPECT_FALSE(FailureOf("<FeatureAssert feature=\"DeviceModelName\" min=\"1\"/>").empty()) << "a text is no number";
}

TEST_F(FirmwareApply, aCommandIsWaitedForAndThenGivenUp)
{
    camera.onRead = [this](std::int64_t address)
    {
        if (address == CFirmwareCamera::Slow && clock.waits.size() >= 5)
        {
            camera.Put(CFirmwareCamera::Slow, 0);
        }
    };
    EXPECT_EQ(FailureOf("<FeatureExecute feature=\"SlowCommand\" timeoutMs=\"1000\"/>"), "");
    EXPECT_EQ(clock.waits.size(), 5U);
    camera.onRead = nullptr;
    EXPECT_EQ(FailureOf("<FeatureExecute feature=\"SlowCommand\" timeoutMs=\"50\"/>"),
              "The camera has not finished the command 'SlowCommand' after 50 ms");
    EXPECT_EQ(observer.kind, "TimeoutException");
}

TEST_F(FirmwareApply, whatTheDeviceThrowsReachesObserverAndCallerUnchanged)
{
    device.onPrepare = []
    {
        GENICAM_THROW(AccessException, "The camera is in use");
    };
    EXPECT_EQ(Failure(Load(GoodParts())), "The camera is in use");
    EXPECT_EQ(observer.error, "The camera is in use");
    EXPECT_EQ(observer.kind, "AccessException");
    EXPECT_THAT(device.calls, ElementsAre("prepare", "cleanup"));
}

TEST_F(FirmwareApply, anObserverEndsTheUpdateBetweenAnyTwoCalls)
{
    const auto update = Load(GoodParts());
    Apply(update);
    const std::vector<std::string> all = observer.notes;
    for (std::size_t last = 0; last < all.size(); ++last)
    {
        observer.notes.clear();
        device.calls.clear();
        camera.Restart();
        observer.onNote = [&](const std::string&)
        {
            if (observer.notes.size() == last + 1)
            {
                throw std::runtime_error("the user had enough");
            }
        };
        EXPECT_THROW(Apply(update), std::runtime_error);
        std::vector<std::string> expected(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(last) + 1);
        if (expected.back() != "end")
        {
            expected.emplace_back("error");
            EXPECT_EQ(observer.error, "the user had enough");
        }
        EXPECT_EQ(observer.notes, expected);
        EXPECT_EQ(device.calls.back(), "cleanup");
        EXPECT_EQ(std::count(device.calls.begin(), device.calls.end(), "cleanup"), 1);
    }
}

TEST_F(FirmwareApply, anObserverThatEndsAnUploadLeavesTheFileClosed)
{
    observer.onProgress = [this](double)
    {
        if (camera.isOpen)
        {
            GENICAM_THROW(AccessException, "stop");
        }
    };
    EXPECT_EQ(Failure(Load(GoodParts())), "stop") << "not taken for a failure of the camera";
    EXPECT_FALSE(camera.isOpen);
    EXPECT_EQ(camera.operations.back(), "Close");
}

TEST_F(FirmwareApply, exceptionsOfNoKnownKindEndTheUpdateCleanly)
{
    observer.onNote = [](const std::string& note)
    {
        if (note == "step 2")
        {
            throw 5;
        }
    };
    EXPECT_THROW(Apply(Load(GoodParts())), int);
    EXPECT_EQ(observer.error, "The firmware update was ended for an unknown reason");
    EXPECT_EQ(device.calls.back(), "cleanup");
}

TEST_F(FirmwareApply, failuresWhileFailingHideNothing)
{
    device.onPrepare = []
    {
        GENICAM_THROW(AccessException, "first");
    };
    device.onCleanup = []
    {
        GENICAM_THROW(AccessException, "third");
    };
    observer.onNote = [](const std::string& note)
    {
        if (note == "error")
        {
            throw std::runtime_error("second");
        }
    };
    EXPECT_EQ(Failure(Load(GoodParts())), "first");
    EXPECT_EQ(device.calls.back(), "cleanup");
}

TEST_F(FirmwareApply, aFailedCleanupOfAGoodUpdateIsTold)
{
    device.onCleanup = []
    {
        GENICAM_THROW(AccessException, "not closed");
    };
    EXPECT_EQ(Failure(Load(GoodParts())), "not closed");
    EXPECT_EQ(observer.notes.back(), "end");
}
