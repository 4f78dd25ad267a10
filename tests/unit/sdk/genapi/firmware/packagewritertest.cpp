// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include "genapi/firmwarepackagewriter.h"
#include "genapi/internal/firmwarepackage.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <ctime>

using ::testing::HasSubstr;

namespace
{

std::string ReadAll(const std::string& name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class FirmwareWriter : public ::testing::Test
{
protected:
    FirmwareWriter()
    {
        parts.files = "<File name=\"main.bin\"/>\n";
        folder.Write(MainFile, MainBytes());
    }

    void Write(const std::string& name)
    {
        GenApi::CFirmwarePackageWriter().WritePackage(folder.Write("control.xml", ControlXml(parts)).c_str(),
                                                      folder.Path(name).c_str());
    }
    std::string Refusal()
    {
        try
        {
            Write("out.guf");
        }
        catch (const GenICam::GenericException& e)
        {
            EXPECT_FALSE(std::filesystem::exists(folder.Path("out.guf")));
            EXPECT_FALSE(std::filesystem::exists(folder.Path("out.guf.part")));
            return std::string(e.GetKind()) + ": " + e.GetDescription();
        }
        return {};
    }

    CScratchFolder folder;
    SControlParts parts = GoodParts();
};

} // namespace

TEST_F(FirmwareWriter, fillsInSizesAndChecksumsSoThatTheReaderTakesIt)
{
    Write("out.guf");
    CUpdateList list;
    GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(folder.Path("out.guf").c_str(), list);
    ASSERT_EQ(list.updates.size(), 1U);
    EXPECT_STREQ(list.updates[0].GetInfo("Version", ""), "2.1.0");
    const auto package = GenApi::Internal::ReadFirmwarePackage("out.guf", ReadAll(folder.Path("out.guf")), {});
    EXPECT_EQ(package.payload.at(MainFile), MainBytes());
}

TEST_F(FirmwareWriter, theSameFilesGiveTheSameBytesAtAnyTimeAndPlace)
{
    Write("first.guf");
    // Another time zone and other file times.
    const char* const zone = std::getenv("TZ");
    const std::string before = zone == nullptr ? "" : zone;
    setenv("TZ", "TST-14", 1);
    tzset();
    std::filesystem::last_write_time(folder.Path(MainFile),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1000));
    Write("second.guf");
    zone == nullptr ? unsetenv("TZ") : setenv("TZ", before.c_str(), 1);
    tzset();
    EXPECT_EQ(ReadAll(folder.Path("first.guf")), ReadAll(folder.Path("second.guf")));
}

TEST_F(FirmwareWriter, keepsRightSizesAndRefusesWrongOnes)
{
    parts.files = FileElement(MainFile, MainBytes());
    EXPECT_EQ(Refusal(), "");
    std::filesystem::remove(folder.Path("out.guf"));
    parts.files = FileElement(MainFile, "other");
    EXPECT_THAT(Refusal(), HasSubstr("says that 'size' of the file 'main.bin' is '5'; it is '1003'"));
}

TEST_F(FirmwareWriter, refusesWhatTheReaderWouldRefuse)
{
    parts.steps = "<Explode/>";
    EXPECT_THAT(Refusal(), HasSubstr("control.xml', line 9"));
    parts = GoodParts();
    parts.files = "<File name=\"../main.bin\"/>";
    EXPECT_THAT(Refusal(), HasSubstr("FormatException"));
    parts.files = "<File name=\"main.bin\"/><File name=\"main.bin\"/>";
    EXPECT_THAT(Refusal(), HasSubstr("listed twice"));
    parts.files = "<File/>";
    EXPECT_THAT(Refusal(), HasSubstr("a file has no name"));
}

TEST_F(FirmwareWriter, saysWhichFileIsMissing)
{
    parts.files = "<File name=\"main.bin\"/><File name=\"none.bin\"/>";
    EXPECT_THAT(Refusal(), HasSubstr("FileNotFoundException: The file '"));
    EXPECT_THAT(Refusal(), HasSubstr("', which the control file '"));
    EXPECT_THAT(Refusal(), HasSubstr("none.bin'"));
    EXPECT_THROW(GenApi::CFirmwarePackageWriter().WritePackage(folder.Path("none.xml").c_str(), "x"),
                 GenICam::FileNotFoundException);
    EXPECT_THROW(GenApi::CFirmwarePackageWriter().WritePackage(nullptr, "x"), GenICam::InvalidArgumentException);
    EXPECT_THROW(GenApi::CFirmwarePackageWriter().WritePackage("x", ""), GenICam::InvalidArgumentException);
}

TEST_F(FirmwareWriter, aFailureToWriteLeavesTheOldPackage)
{
    Write("out.guf");
    const std::string before = ReadAll(folder.Path("out.guf"));
    parts.steps = "<Explode/>";
    EXPECT_THROW(Write("out.guf"), GenICam::FormatException);
    EXPECT_EQ(ReadAll(folder.Path("out.guf")), before);
    parts = GoodParts();
    EXPECT_THROW(Write("no/such/folder/out.guf"), GenICam::FileIOException);
}

TEST_F(FirmwareWriter, filesThatItIsMadeOfAreNotOverwritten)
{
    parts.files = "<File name=\"main.bin\"/><File name=\"out.guf.part\"/>";
    folder.Write("out.guf.part", "payload");
    std::filesystem::create_directory(folder.Path("sub"));
    const std::string control = ControlXml(parts);
    for (const char* const target : {"control.xml", "main.bin", "sub/../main.bin", "out.guf"})
    {
        try
        {
            Write(target);
            ADD_FAILURE() << target;
        }
        catch (const GenICam::InvalidArgumentException& e)
        {
            EXPECT_THAT(e.GetDescription(), HasSubstr("would overwrite the file '")) << target;
        }
        EXPECT_EQ(ReadAll(folder.Path("control.xml")), control) << target;
        EXPECT_EQ(ReadAll(folder.Path(MainFile)), MainBytes()) << target;
        EXPECT_EQ(ReadAll(folder.Path("out.guf.part")), "payload") << target;
    }
}
