// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "fakes.h"
#include "fileclient.h"
#include "genapi/exceptions.h"
#include "simulator/registers.h"

#include <gtest/gtest.h>

#include <numeric>

using SimulatorTest::CFileClient;
using SimulatorTest::SRig;

namespace
{

std::vector<std::uint8_t> Bytes(std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

/** A camera with its user file, open for writing. */
struct SOpenUserFile
{
    explicit SOpenUserFile(std::uint32_t mode = CFileClient::ModeWrite) : status(file.DoOpen(mode)) {}
    SRig rig;
    CFileClient file{rig.camera, CFileClient::UserFile1};
    const std::string status;
};

} // namespace

TEST(FileAccess, whatIsWrittenIsReadBackAtAnyOffset)
{
    SOpenUserFile open(CFileClient::ModeReadWrite);
    ASSERT_EQ(open.status, "Success");
    EXPECT_EQ(open.file.DoWrite(0, Bytes(512)), "Success");
    EXPECT_EQ(open.file.Result(), 512U);
    EXPECT_EQ(open.file.DoWrite(512, Bytes(100)), "Success");
    EXPECT_EQ(open.file.Size(), 612U);
    EXPECT_EQ(open.file.DoRead(510, 4), "Success");
    EXPECT_EQ(open.file.Buffer(), (std::vector<std::uint8_t>{255, 0, 1, 2}));
}

TEST(FileAccess, readingPastTheEndBringsWhatThereIs)
{
    SOpenUserFile open(CFileClient::ModeReadWrite);
    ASSERT_EQ(open.file.DoWrite(0, Bytes(10)), "Success");
    EXPECT_EQ(open.file.DoRead(8, 512), "Success");
    EXPECT_EQ(open.file.Buffer(), (std::vector<std::uint8_t>{9, 10}));
    EXPECT_EQ(open.file.DoRead(10, 512), "Success");
    EXPECT_EQ(open.file.Result(), 0U);
    EXPECT_EQ(open.file.DoRead(11, 1), "Failure");
}

TEST(FileAccess, aFileHasNoHoles)
{
    SOpenUserFile open;
    EXPECT_EQ(open.file.DoWrite(1, Bytes(4)), "Failure");
    EXPECT_EQ(open.file.Result(), 0U);
    EXPECT_EQ(open.file.Size(), 0U);
}

TEST(FileAccess, whatDoesNotFitIsAnOverflow)
{
    SOpenUserFile open;
    constexpr std::uint32_t capacity = 64 * 1024;
    for (std::uint32_t at = 0; at + 512 < capacity; at += 512)
    {
        ASSERT_EQ(open.file.DoWrite(at, Bytes(512)), "Success");
    }
    EXPECT_EQ(open.file.DoWrite(capacity - 512, Bytes(500)), "Success");
    EXPECT_EQ(open.file.DoWrite(capacity - 12, Bytes(20)), "Overflow");
    EXPECT_EQ(open.file.Result(), 12U);
    EXPECT_EQ(open.file.Size(), capacity);
}

TEST(FileAccess, theModeSaysWhatMayBeDone)
{
    SRig rig;
    CFileClient file(rig.camera, CFileClient::UserFile1);
    EXPECT_EQ(file.DoOpen(CFileClient::ModeRead), "Failure") << "there is no such file yet";
    ASSERT_EQ(file.DoOpen(CFileClient::ModeWrite), "Success");
    ASSERT_EQ(file.DoWrite(0, Bytes(4)), "Success");
    EXPECT_EQ(file.DoRead(0, 4), "Failure");
    ASSERT_EQ(file.Do(CFileClient::Close), "Success");
    ASSERT_EQ(file.DoOpen(CFileClient::ModeRead), "Success");
    EXPECT_EQ(file.DoRead(0, 4), "Success");
    EXPECT_EQ(file.Buffer(), Bytes(4));
    EXPECT_EQ(file.DoWrite(0, Bytes(4)), "Failure");
}

TEST(FileAccess, writeStartsANewFileAndReadWriteGoesOn)
{
    SRig rig;
    CFileClient file(rig.camera, CFileClient::UserFile1);
    ASSERT_EQ(file.Upload(Bytes(20)), "Success");
    ASSERT_EQ(file.DoOpen(CFileClient::ModeReadWrite), "Success");
    EXPECT_EQ(file.Size(), 20U);
    ASSERT_EQ(file.Do(CFileClient::Close), "Success");
    ASSERT_EQ(file.DoOpen(CFileClient::ModeWrite), "Success");
    EXPECT_EQ(file.Size(), 0U);
}

TEST(FileAccess, operationsOutOfOrderFail)
{
    SRig rig;
    CFileClient file(rig.camera, CFileClient::UserFile1);
    EXPECT_EQ(file.Do(CFileClient::Close), "Failure");
    EXPECT_EQ(file.DoRead(0, 0), "Failure");
    EXPECT_EQ(file.DoWrite(0, Bytes(1)), "Failure");
    ASSERT_EQ(file.DoOpen(CFileClient::ModeWrite), "Success");
    EXPECT_EQ(file.DoOpen(CFileClient::ModeWrite), "Failure");
    EXPECT_EQ(file.Do(CFileClient::Delete), "Failure") << "it is open";
    EXPECT_EQ(file.Do(CFileClient::Close), "Success");
    EXPECT_EQ(file.Do(CFileClient::Delete), "Success");
}

TEST(FileAccess, aDeletedFileIsGone)
{
    SRig rig;
    CFileClient file(rig.camera, CFileClient::UserFile1);
    ASSERT_EQ(file.Upload(Bytes(20)), "Success");
    ASSERT_EQ(file.Do(CFileClient::Delete), "Success");
    EXPECT_EQ(file.Size(), 0U);
    EXPECT_EQ(file.DoOpen(CFileClient::ModeRead), "Failure");
}

TEST(FileAccess, filesAreApartAndEachHasItsOwnMode)
{
    SRig rig;
    CFileClient user(rig.camera, CFileClient::UserFile1);
    CFileClient firmware(rig.camera, CFileClient::FirmwareUpdate);
    ASSERT_EQ(user.DoOpen(CFileClient::ModeWrite), "Success");
    EXPECT_EQ(firmware.DoOpen(CFileClient::ModeRead), "Failure");
    EXPECT_EQ(user.DoWrite(0, Bytes(7)), "Success");
    EXPECT_EQ(user.Size(), 7U);
    EXPECT_EQ(firmware.Size(), 0U);
}

TEST(FileAccess, theBufferIsWrittenInAnyParts)
{
    SOpenUserFile open(CFileClient::ModeReadWrite);
    const std::vector<std::uint8_t> bytes = Bytes(8);
    open.rig.camera.Write(bytes.data() + 4, Simulator::Register::FileAccessBuffer + 4, 4);
    open.rig.camera.Write(bytes.data(), Simulator::Register::FileAccessBuffer, 4);
    open.file.Put(Simulator::Register::FileAccessLength, 8);
    ASSERT_EQ(open.file.Do(CFileClient::Write), "Success");
    ASSERT_EQ(open.file.DoRead(0, 8), "Success");
    EXPECT_EQ(open.file.Buffer(), bytes);
}

TEST(FileAccess, moreThanTheBufferIsRefused)
{
    SOpenUserFile open;
    EXPECT_THROW(open.file.Put(Simulator::Register::FileAccessLength, 513), GenICam::OutOfRangeException);
    const std::vector<std::uint8_t> bytes(Simulator::Register::FileAccessBufferBytes + 4);
    EXPECT_THROW(open.rig.camera.Write(bytes.data(), Simulator::Register::FileAccessBuffer,
                                       static_cast<std::int64_t>(bytes.size())),
                 GenICam::AccessException);
}

TEST(FileAccess, theUserFileSurvivesAReset)
{
    const auto flash = std::make_shared<Simulator::SFlash>();
    {
        SRig rig(SRig::Small(), flash);
        CFileClient file(rig.camera, CFileClient::UserFile1);
        ASSERT_EQ(file.Upload(Bytes(20)), "Success");
    }
    SRig rig(SRig::Small(), flash);
    CFileClient file(rig.camera, CFileClient::UserFile1);
    ASSERT_EQ(file.DoOpen(CFileClient::ModeRead), "Success");
    ASSERT_EQ(file.DoRead(0, 512), "Success");
    EXPECT_EQ(file.Buffer(), Bytes(20));
}

TEST(FileAccess, anApplicationThatLeavesLeavesNoOpenFile)
{
    SOpenUserFile open;
    open.rig.camera.AbandonFiles();
    EXPECT_EQ(open.file.DoOpen(CFileClient::ModeWrite), "Success");
}

TEST(FileAccess, anOperationFailsWhenTheFaultSaysSo)
{
    SOpenUserFile open;
    open.rig.camera.SetFeature("FaultFileFailure", "2");
    EXPECT_EQ(open.file.DoWrite(0, Bytes(4)), "Success");
    EXPECT_EQ(open.file.DoWrite(4, Bytes(4)), "Failure");
    EXPECT_EQ(open.file.Result(), 0U);
    EXPECT_EQ(open.file.Size(), 4U);
    EXPECT_EQ(open.file.DoWrite(4, Bytes(4)), "Success") << "it strikes once";
}

TEST(FileAccess, aWriteIsCutShortWhenTheFaultSaysSo)
{
    SOpenUserFile open;
    open.rig.camera.SetFeature("FaultFileShortWrite", "1");
    EXPECT_EQ(open.file.DoWrite(0, Bytes(10)), "Success");
    EXPECT_EQ(open.file.Result(), 5U);
    EXPECT_EQ(open.file.Size(), 5U);
    EXPECT_EQ(open.file.DoWrite(5, Bytes(10)), "Success");
    EXPECT_EQ(open.file.Result(), 10U);
}

TEST(FileAccess, faultsComeFromTheData)
{
    Simulator::SCameraConfig config = SRig::Small();
    config.faults.fileFailure = 1;
    SRig rig(config);
    CFileClient file(rig.camera, CFileClient::UserFile1);
    EXPECT_EQ(rig.camera.GetFaults().fileFailure, 1U);
    EXPECT_EQ(file.DoOpen(CFileClient::ModeWrite), "Failure");
    EXPECT_EQ(rig.camera.GetFaults().fileFailure, 0U);
}
