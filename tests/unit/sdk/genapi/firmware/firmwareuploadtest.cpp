// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace
{

class FirmwareUpload : public CFirmwareApplyTest
{
protected:
    std::string Upload(const std::string& attributes = {}, const std::string& after = {})
    {
        return FailureOf("<FileUpload file=\"main.bin\" deviceFile=\"FirmwareUpdate\" " + attributes + "/>" + after);
    }
    std::size_t Count(const std::string& operation) const
    {
        return static_cast<std::size_t>(std::count(camera.operations.begin(), camera.operations.end(), operation));
    }
    static std::size_t Blocks()
    {
        return (MainBytes().size() + CFirmwareCamera::BufferBytes - 1) / CFirmwareCamera::BufferBytes;
    }
};

std::string Without(std::string xml, const std::string& entry)
{
    const std::size_t begin = xml.find("<EnumEntry Name=\"" + entry + "\">");
    const std::string end = "</EnumEntry>";
    xml.erase(begin, xml.find(end, begin) + end.size() - begin);
    return xml;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos);
    return text.replace(at, from.size(), to);
}

} // namespace

TEST_F(FirmwareUpload, goesInBlocksOfTheDeviceAndIsReadBack)
{
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(Count("Write"), Blocks());
    EXPECT_EQ(Count("Read"), Blocks());
    EXPECT_EQ(Count("Open"), 2U);
    EXPECT_EQ(Count("Close"), 2U);
    EXPECT_EQ(camera.Get(CFirmwareCamera::Selector), 1U);
}

TEST_F(FirmwareUpload, blocksThatTheDeviceTakesInPartAreContinued)
{
    camera.takesAtMost = 37;
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(Count("Write"), (MainBytes().size() + 36) / 37);
}

TEST_F(FirmwareUpload, aDeviceThatTakesNothingEndsIt)
{
    camera.takesAtMost = 0;
    EXPECT_THAT(Upload(), HasSubstr("the operation 'Write' of 64 bytes reports 0 bytes"));
    EXPECT_FALSE(camera.isOpen);
}

TEST_F(FirmwareUpload, aDeviceThatClaimsMoreThanItGotEndsIt)
{
    camera.afterOperation = [this]
    {
        if (camera.operations.back() == "Write")
        {
            camera.Put(CFirmwareCamera::Result, 65);
        }
    };
    EXPECT_THAT(Upload(), HasSubstr("reports 65 bytes"));
}

TEST_F(FirmwareUpload, operationsThatTakeTheirTimeAreWaitedFor)
{
    camera.busyReads = 3;
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_FALSE(clock.waits.empty());
}

TEST_F(FirmwareUpload, anOperationThatNeverEndsIsGivenUp)
{
    camera.busyReads = 1000000;
    EXPECT_THAT(Upload("timeoutMs=\"100\""), HasSubstr("'FileOperationExecute (Open)' after 100 ms"));
    EXPECT_EQ(observer.kind, "TimeoutException");
}

TEST_F(FirmwareUpload, anAccessThatFailsForAMomentIsRepeated)
{
    int failures = 0;
    camera.onWrite = [&](std::int64_t address)
    {
        if (address == CFirmwareCamera::Buffer && camera.file.size() == 640 && failures < 2)
        {
            ++failures;
            GENICAM_THROW(TimeoutException, "no acknowledge");
        }
    };
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(failures, 2);
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_THAT(clock.waits, ElementsAre(200, 200));
}

TEST_F(FirmwareUpload, anAccessThatFailsForGoodEndsItAfterThreeTries)
{
    int tries = 0;
    camera.onWrite = [&](std::int64_t address)
    {
        if (address == CFirmwareCamera::Buffer)
        {
            ++tries;
            GENICAM_THROW(TimeoutException, "no acknowledge");
        }
    };
    EXPECT_THAT(Upload(), HasSubstr("The upload failed: no acknowledge"));
    EXPECT_EQ(tries, 3);
    EXPECT_FALSE(camera.isOpen);
}

TEST_F(FirmwareUpload, theUserIsToldWhatAFailureMeansForTheCamera)
{
    camera.takesAtMost = 0;
    EXPECT_THAT(Upload({}, "<FeatureExecute feature=\"FirmwareActivate\" activates=\"true\"/>"),
                HasSubstr("The camera keeps the firmware that it has; apply the update again"));
    EXPECT_THAT(Upload("activates=\"true\""), HasSubstr("leave it switched on and apply the update again"));
    EXPECT_THAT(Upload(), HasSubstr("leave it switched on and apply the update again"));
}

TEST_F(FirmwareUpload, aReasonThatIsASentenceGetsNoSecondFullStop)
{
    camera.onWrite = [](std::int64_t address)
    {
        if (address == CFirmwareCamera::Buffer)
        {
            GENICAM_THROW(RuntimeException, "The camera lost its power.");
        }
    };
    EXPECT_EQ(Upload(), "The upload failed: The camera lost its power. The camera may be without working firmware; "
                        "leave it switched on and apply the update again");
}

TEST_F(FirmwareUpload, aFileThatWasLeftOpenIsClosedFirst)
{
    camera.isOpen = true;
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(camera.operations.at(0), "Open");
    EXPECT_EQ(camera.operations.at(1), "Close");
}

TEST_F(FirmwareUpload, aFileThatDoesNotOpenIsToldWithTheMode)
{
    camera.afterOperation = [this]
    {
        if (camera.operations.back() == "Open")
        {
            camera.Put(CFirmwareCamera::Status, 1);
        }
    };
    EXPECT_THAT(Upload(),
                HasSubstr("'FirmwareUpdate' cannot be opened with the mode 'Write': the camera reports 'Failure'"));
}

TEST_F(FirmwareUpload, aFileThatDoesNotCloseIsAFailure)
{
    camera.closesWell = false;
    EXPECT_THAT(Upload(), HasSubstr("cannot be closed"));
}

TEST_F(FirmwareUpload, aBlockThatTheDeviceRefusesIsNotRepeated)
{
    int refused = 0;
    camera.afterOperation = [&]
    {
        if (camera.operations.back() == "Write" && camera.Get(CFirmwareCamera::Offset) == 128)
        {
            ++refused;
            camera.Put(CFirmwareCamera::Status, 1);
        }
    };
    EXPECT_THAT(Upload(), HasSubstr("cannot be written at offset 128: the camera reports 'Failure'"));
    EXPECT_EQ(refused, 1);
    EXPECT_FALSE(camera.isOpen);
}

TEST_F(FirmwareUpload, whatWasStoredWrongIsFoundByReadingBack)
{
    camera.afterOperation = [this]
    {
        if (camera.operations.back() == "Close" && camera.file.size() > 700)
        {
            camera.file[700] = static_cast<char>(camera.file[700] ^ 4);
        }
    };
    EXPECT_THAT(Upload(), HasSubstr("differs from what was uploaded, at offset 700"));
    EXPECT_EQ(Upload("verify=\"none\""), "");
}

TEST_F(FirmwareUpload, aFileThatIsLongerOrShorterAfterwardsIsAFailure)
{
    camera.afterOperation = [this]
    {
        if (camera.operations.back() == "Close")
        {
            camera.file += "x";
        }
    };
    EXPECT_THAT(Upload(), HasSubstr("has 1004 bytes after the upload of 1003"));
    camera.file.clear();
    camera.afterOperation = [this]
    {
        if (camera.operations.back() == "Close")
        {
            camera.file.resize(1000);
        }
    };
    EXPECT_THAT(Upload(), HasSubstr("has 1000 bytes after the upload of 1003"));
}

TEST_F(FirmwareUpload, aChecksumOfTheDeviceIsCompared)
{
    EXPECT_EQ(Upload("verify=\"crc32\" crcFeature=\"FileCrc\""), "");
    EXPECT_EQ(Count("Read"), 0U);
    camera.crcError = 1;
    EXPECT_THAT(Upload("verify=\"crc32\" crcFeature=\"FileCrc\""),
                HasSubstr("was not stored as uploaded: 'FileCrc' is"));
}

TEST_F(FirmwareUpload, whatCannotBeReadIsNotReadBackUnlessThePackageInsists)
{
    device.xml = Without(FirmwareCameraXml(), "Read");
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(Count("Read"), 0U);
    const int writes = camera.writes;
    EXPECT_THAT(Upload("verify=\"readBack\""), HasSubstr("has no entry 'Read'"));
    EXPECT_EQ(camera.writes, writes);
}

TEST_F(FirmwareUpload, anInterruptedOneIsContinuedBehindWhatIsThere)
{
    camera.file = MainBytes().substr(0, 640);
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(Count("Write"), Blocks() - 10);
}

TEST_F(FirmwareUpload, itIsContinuedWithoutAModeOfItsOwnWhereOpeningKeepsTheFile)
{
    device.xml = Without(FirmwareCameraXml(), "ReadWrite");
    camera.truncatesOnOpen = false;
    camera.file = MainBytes().substr(0, 640);
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(Count("Write"), Blocks() - 10);
}

TEST_F(FirmwareUpload, itBeginsAnewWhereOpeningEmptiesTheFile)
{
    device.xml = Without(FirmwareCameraXml(), "ReadWrite");
    camera.file = MainBytes().substr(0, 640);
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(Count("Write"), Blocks());
}

TEST_F(FirmwareUpload, whatIsNotTheBeginningOfTheNewFileIsOverwritten)
{
    camera.truncatesOnOpen = false;
    camera.file = MainBytes().substr(0, 640);
    camera.file[3] = '?';
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
    EXPECT_EQ(Count("Write"), Blocks());
}

TEST_F(FirmwareUpload, theSameFileAgainIsOnlyVerified)
{
    camera.truncatesOnOpen = false;
    camera.file = MainBytes();
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(Count("Write"), 0U);
}

TEST_F(FirmwareUpload, aSizeThatBlocksCannotMakeUpIsRefusedBeforeTheFirstBlock)
{
    device.xml = Replaced(FirmwareCameraXml(), "<Inc>1</Inc>", "<Inc>4</Inc>");
    EXPECT_THAT(Upload(), HasSubstr("takes multiples of 4 bytes only; the update's file has 1003"));
    EXPECT_EQ(Count("Write"), 0U);
    EXPECT_FALSE(camera.isOpen);
}

TEST_F(FirmwareUpload, worksWithoutTheSizeOfTheFile)
{
    device.xml = Replaced(FirmwareCameraXml(), "\"FileSize\"", "\"SizeOfSomething\"");
    camera.file = MainBytes().substr(0, 640);
    EXPECT_EQ(Upload(), "");
    EXPECT_EQ(camera.file, MainBytes());
}

TEST_F(FirmwareUpload, anEmptyFileIsStillAFile)
{
    SControlParts parts = GoodParts();
    parts.files = FileElement("empty.bin", "");
    parts.steps = "<FileUpload file=\"empty.bin\" deviceFile=\"FirmwareUpdate\"/>";
    camera.file = "old";
    EXPECT_EQ(Failure(Load(MakePackage(ControlXml(parts), {{"empty.bin", ""}}))), "");
    EXPECT_EQ(camera.file, "");
}

TEST_F(FirmwareUpload, aCameraWhosePowerGoesAtAnyWriteCanBeUpdatedAgain)
{
    const auto update = Load(GoodParts());
    Apply(update);
    const int writes = camera.writes;
    ASSERT_GT(writes, 50);
    for (const bool truncates : {true, false})
    {
        for (int k = 0; k < writes; ++k)
        {
            CFirmwareCamera fresh;
            fresh.truncatesOnOpen = truncates;
            CFirmwareDevice own(fresh);
            CRecordingObserver told;
            fresh.failingWrite = k;
            EXPECT_THROW(GenApi::Internal::RunFirmwareUpdate(update, own, &told, clock, {}), GenICam::GenericException);
            EXPECT_EQ(told.notes.back(), "error") << "write " << k;
            EXPECT_EQ(own.calls.back(), "cleanup") << "write " << k;
            fresh.Restart();
            CRecordingObserver again;
            EXPECT_NO_THROW(GenApi::Internal::RunFirmwareUpdate(update, own, &again, clock, {})) << "write " << k;
            EXPECT_EQ(again.notes.back(), "end") << "write " << k;
            EXPECT_EQ(fresh.RunningVersion(), "Fw 2.1.0 build 8") << "write " << k;
            EXPECT_EQ(fresh.file, MainBytes()) << "write " << k;
        }
    }
}

TEST_F(FirmwareUpload, aCameraThatLosesASingleWriteEitherCopesOrFailsCleanly)
{
    const auto update = Load(GoodParts());
    Apply(update);
    const int writes = camera.writes;
    for (int k = 0; k < writes; ++k)
    {
        CFirmwareCamera fresh;
        CFirmwareDevice own(fresh);
        CRecordingObserver told;
        fresh.onWrite = [&](std::int64_t)
        {
            if (fresh.writes == k + 1)
            {
                GENICAM_THROW(TimeoutException, "lost");
            }
        };
        try
        {
            GenApi::Internal::RunFirmwareUpdate(update, own, &told, clock, {});
            EXPECT_EQ(fresh.RunningVersion(), "Fw 2.1.0 build 8") << "write " << k;
        }
        catch (const GenICam::GenericException&)
        {
            EXPECT_EQ(told.notes.back(), "error") << "write " << k;
            EXPECT_EQ(fresh.RunningVersion(), "Fw 1.0.0 build 7") << "write " << k;
        }
        EXPECT_EQ(own.calls.back(), "cleanup") << "write " << k;
    }
}
