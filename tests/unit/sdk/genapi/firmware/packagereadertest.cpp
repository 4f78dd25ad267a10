// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include "genapi/internal/firmwarepackage.h"

#include <gmock/gmock.h>

using GenApi::Internal::ReadFirmwarePackage;
using GenApi::Internal::SFirmwareLimits;
using ::testing::AllOf;
using ::testing::HasSubstr;

namespace
{

/** "Kind: text" of the exception that reading throws; empty when the package is good. */
std::string Refusal(const std::string& package, const SFirmwareLimits& limits = {})
{
    try
    {
        ReadFirmwarePackage("dir/x.guf", package, limits);
    }
    catch (const GenICam::GenericException& e)
    {
        return std::string(e.GetKind()) + ": " + e.GetDescription();
    }
    return {};
}

std::string Good()
{
    return MakePackage(GoodParts());
}

/** A package whose inner archive holds these files beside a good control file. */
std::string WithPayload(const std::vector<SZipFile>& payload)
{
    return MakePackage(ControlXml(GoodParts()), payload);
}

/** The inner archive of a good package after a change of its bytes. */
template <class Change> std::string WithInner(std::string inner, Change change)
{
    change(inner);
    return MakeZip({{"package.zip", inner, ZIP_CM_STORE}});
}

std::string GoodInner()
{
    return MakeZip({{"control.xml", ControlXml(GoodParts())}, {MainFile, MainBytes()}});
}

/** Changes 16 bits of the local (at offset localAt) and of the central (centralAt) header of the last file. */
void PatchHeaders(std::string& zip, std::size_t localAt, std::size_t centralAt, std::uint16_t value)
{
    const std::size_t local = zip.rfind("PK\x03\x04");
    const std::size_t central = zip.rfind("PK\x01\x02");
    for (const std::size_t at : {local + localAt, central + centralAt})
    {
        zip[at] = static_cast<char>(value & 0xFF);
        zip[at + 1] = static_cast<char>(value >> 8);
    }
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to)
{
    ASSERT_NE(text.find(from), std::string::npos);
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    {
        text.replace(at, from.size(), to);
    }
}

} // namespace

TEST(FirmwarePackage, aGoodOneYieldsControlPayloadAndChecksum)
{
    const auto package = ReadFirmwarePackage("x.guf", Good(), {});
    EXPECT_EQ(package.sha256, GenApi::Internal::Sha256(Good()));
    EXPECT_EQ(package.control.updates.size(), 1U);
    EXPECT_EQ(package.payload.at(MainFile), MainBytes());
}

TEST(FirmwarePackage, aTextThatIsNoArchiveIsRefused)
{
    EXPECT_THAT(Refusal("firmware"), AllOf(HasSubstr("FormatException: The firmware package 'dir/x.guf'"),
                                           HasSubstr("no sound ZIP archive")));
    EXPECT_THAT(Refusal(""), HasSubstr("it is empty"));
}

TEST(FirmwarePackage, anArchiveWithoutThePackageIsRefused)
{
    EXPECT_THAT(Refusal(MakeZip({{"readme.txt", "hello"}})), HasSubstr("it holds no 'package.zip'"));
}

TEST(FirmwarePackage, filesBesideThePackageAreRefused)
{
    EXPECT_THAT(Refusal(MakeZip({{"package.zip", GoodInner()}, {"readme.txt", "hello"}})),
                HasSubstr("it holds files beside 'package.zip'"));
}

TEST(FirmwarePackage, anInnerArchiveThatIsNoneIsRefused)
{
    EXPECT_THAT(Refusal(MakeZip({{"package.zip", "not a zip"}})),
                HasSubstr("'dir/x.guf', package.zip: it is no sound"));
}

TEST(FirmwarePackage, aMissingControlFileIsRefused)
{
    EXPECT_THAT(Refusal(MakeZip({{"package.zip", MakeZip({{MainFile, MainBytes()}})}})),
                HasSubstr("the file 'control.xml' is missing"));
}

TEST(FirmwarePackage, aListedFileThatIsMissingIsRefused)
{
    EXPECT_THAT(Refusal(WithPayload({})), HasSubstr("the file 'main.bin' is missing"));
}

TEST(FirmwarePackage, aFileThatIsNotListedIsRefused)
{
    EXPECT_THAT(Refusal(WithPayload({{MainFile, MainBytes()}, {"extra.bin", "x"}})),
                HasSubstr("the file 'extra.bin' is not listed"));
}

TEST(FirmwarePackage, aFileOfAnotherSizeIsRefused)
{
    EXPECT_THAT(Refusal(WithPayload({{MainFile, "short"}})),
                HasSubstr("the file 'main.bin' has 5 bytes; control.xml says 1003"));
}

TEST(FirmwarePackage, aFileWithAnotherChecksumIsRefused)
{
    std::string bytes = MainBytes();
    bytes[500] = static_cast<char>(bytes[500] ^ 1);
    EXPECT_THAT(Refusal(WithPayload({{MainFile, bytes}})), HasSubstr("its SHA-256 checksum is not the one"));
}

TEST(FirmwarePackage, namesThatLeadElsewhereAreRefused)
{
    for (const std::string name : {"../main.bin", "/etc/passwd", "a/../../b", "a//b", "./a", "folder/", "C:\\a.bin",
                                   "a\\b", "with space", "new\nline", "..", "caf\xC3\xA9"})
    {
        EXPECT_THAT(Refusal(WithPayload({{name, "x"}})), HasSubstr("FormatException")) << name;
        EXPECT_THAT(Refusal(WithPayload({{name, "x"}})), HasSubstr("may name a file elsewhere")) << name;
    }
}

TEST(FirmwarePackage, aNameBeyondTheLimitIsRefused)
{
    EXPECT_THAT(Refusal(WithPayload({{std::string(201, 'a'), "x"}})), HasSubstr("is longer than 200 bytes"));
}

TEST(FirmwarePackage, twoFilesOfOneNameAreRefused)
{
    const std::string inner = MakeZip({{"control.xml", ControlXml(GoodParts())}, {"aaaa.bin", "1"}, {"bbbb.bin", "2"}});
    EXPECT_THAT(Refusal(WithInner(inner, [](std::string& zip) { ReplaceAll(zip, "bbbb.bin", "aaaa.bin"); })),
                HasSubstr("package.zip: it holds more than one file of the same name"));
    EXPECT_THAT(Refusal(WithInner(inner, [](std::string& zip) { ReplaceAll(zip, "bbbb.bin", "AAAA.bin"); })),
                HasSubstr("more than one file named 'AAAA.bin'"));
}

TEST(FirmwarePackage, encryptedFilesAreRefused)
{
    EXPECT_THAT(Refusal(WithPayload({{MainFile, MainBytes(), ZIP_CM_DEFLATE, ZIP_EM_AES_256}})),
                HasSubstr("the file 'main.bin' is encrypted"));
}

TEST(FirmwarePackage, aPasswordFlagWithoutEncryptionIsRefused)
{
    constexpr std::size_t LocalFlags = 6; // APPNOTE.TXT, 4.3.7
    constexpr std::size_t CentralFlags = 8;
    EXPECT_THAT(
        Refusal(WithInner(GoodInner(), [&](std::string& zip) { PatchHeaders(zip, LocalFlags, CentralFlags, 1); })),
        HasSubstr("the file 'main.bin' is encrypted"));
}

TEST(FirmwarePackage, unusualCompressionIsRefused)
{
    constexpr std::size_t LocalMethod = 8; // APPNOTE.TXT, 4.3.7
    constexpr std::size_t CentralMethod = 10;
    constexpr std::uint16_t Lzma = 14;
    EXPECT_THAT(
        Refusal(WithInner(GoodInner(), [&](std::string& zip) { PatchHeaders(zip, LocalMethod, CentralMethod, Lzma); })),
        HasSubstr("the file 'main.bin' is packed with method 14"));
}

TEST(FirmwarePackage, aCompressionBombIsRefusedBeforeItIsUnpacked)
{
    const std::string zeros(std::size_t{8} << 20, '\0');
    SControlParts parts = GoodParts();
    parts.files += FileElement("zeros.bin", zeros);
    const std::string bomb = MakePackage(ControlXml(parts), {{MainFile, MainBytes()}, {"zeros.bin", zeros}});
    EXPECT_LT(bomb.size(), zeros.size() / 100);
    SFirmwareLimits limits;
    limits.payloadBytes = std::size_t{1} << 20;
    EXPECT_THAT(Refusal(bomb, limits),
                AllOf(HasSubstr("OutOfRangeException"), HasSubstr("bytes in all files together")));
    limits.payloadBytes = std::size_t{64} << 20;
    EXPECT_EQ(Refusal(bomb, limits), "");
}

TEST(FirmwarePackage, aBombInPlaceOfTheInnerArchiveIsRefused)
{
    SFirmwareLimits limits;
    limits.innerBytes = 100000;
    EXPECT_THAT(Refusal(MakeZip({{"package.zip", std::string(1000000, '\0')}}), limits),
                HasSubstr("'package.zip' is larger than the 100000 bytes"));
}

TEST(FirmwarePackage, aBombInPlaceOfTheControlFileIsRefused)
{
    EXPECT_THAT(Refusal(MakePackage(std::string(std::size_t{2} << 20, ' '), {})),
                HasSubstr("'control.xml' is larger than the 1048576 bytes"));
}

TEST(FirmwarePackage, aFileThatUnpacksToMoreThanTheDirectoryClaimsIsRefused)
{
    constexpr std::size_t LocalSize = 22; // APPNOTE.TXT, 4.3.7: uncompressed size, its lower half
    constexpr std::size_t CentralSize = 24;
    SControlParts parts = GoodParts();
    parts.files = "<File name=\"main.bin\" size=\"10\" sha256=\"" + GenApi::Internal::Sha256("0123456789") + "\"/>";
    const std::string inner = MakeZip({{"control.xml", ControlXml(parts)}, {MainFile, MainBytes()}});
    EXPECT_THAT(Refusal(WithInner(inner, [&](std::string& zip) { PatchHeaders(zip, LocalSize, CentralSize, 10); })),
                ::testing::AnyOf(HasSubstr("larger than the 10 bytes"), HasSubstr("is damaged")));
}

TEST(FirmwarePackage, moreFilesThanTheLimitAreRefused)
{
    std::vector<SZipFile> payload{{MainFile, MainBytes()}};
    for (int i = 0; i < 10; ++i)
    {
        payload.push_back({"f" + std::to_string(i), "x"});
    }
    SFirmwareLimits limits;
    limits.files = 5;
    EXPECT_THAT(Refusal(WithPayload(payload), limits), AllOf(HasSubstr("OutOfRangeException"), HasSubstr("12 files")));
}

TEST(FirmwarePackage, aFileLargerThanTheLimitIsRefused)
{
    SFirmwareLimits limits;
    limits.packageBytes = Good().size() - 1;
    EXPECT_THAT(Refusal(Good(), limits), HasSubstr("is larger than"));
    limits.packageBytes = Good().size();
    EXPECT_EQ(Refusal(Good(), limits), "");
}

TEST(FirmwarePackage, everyTruncatedOneIsRefused)
{
    const std::string good = Good();
    for (std::size_t length = 0; length < good.size(); ++length)
    {
        EXPECT_NE(Refusal(good.substr(0, length)), "") << length << " of " << good.size() << " bytes";
    }
}

TEST(FirmwarePackage, noSingleChangedByteAltersWhatIsWritten)
{
    const std::string good = Good();
    for (std::size_t i = 0; i < good.size(); ++i)
    {
        std::string changed = good;
        changed[i] = static_cast<char>(changed[i] ^ 0x20);
        if (Refusal(changed).empty())
        {
            EXPECT_EQ(ReadFirmwarePackage("x.guf", changed, {}).payload.at(MainFile), MainBytes()) << "byte " << i;
        }
    }
}

TEST(FirmwareFile, whatIsNotThereOrNoFileIsToldApart)
{
    const CScratchFolder folder;
    CUpdateList list;
    const GenApi::CFirmwareUpdater updater;
    EXPECT_THROW(updater.ReadFirmwareUpdateInfos(folder.Path("none.guf").c_str(), list),
                 GenICam::FileNotFoundException);
    EXPECT_THROW(updater.ReadFirmwareUpdateInfos(folder.Path("").c_str(), list), GenICam::FileIOException);
    EXPECT_THROW(updater.ReadFirmwareUpdateInfos("", list), GenICam::InvalidArgumentException);
    EXPECT_THROW(updater.ReadFirmwareUpdateInfos(nullptr, list), GenICam::InvalidArgumentException);
    const std::string name = folder.Write("empty.guf", "");
    EXPECT_THROW(updater.ReadFirmwareUpdateInfos(name.c_str(), list), GenICam::FormatException);
    EXPECT_TRUE(list.updates.empty());
}

TEST(FirmwareChecksum, isThatOfTheStandards)
{
    // FIPS 180-4's example, and the check value of CRC-32 in the usual catalogue.
    EXPECT_EQ(GenApi::Internal::Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(GenApi::Internal::Sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(GenApi::Internal::Crc32("123456789"), 0xCBF43926U);
}
