// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/firmware/firmwarefixture.h"
#include "utils/exceptions.h"

namespace
{

using ::Test::archiveOf;

/** What a host is told of a package that is none. */
class BadPackage : public ::Test::FirmwareFixture
{
protected:
    static std::string whole(const std::string& steps = oneWrite, const std::string& version = "1.0")
    {
        return archiveOf("package.zip", archiveOf("control.xml", controlOf({{version}}, steps)));
    }
    QString fileOf(const std::string& bytes) const
    {
        QFile file(m_folder.filePath(QStringLiteral("bäd.guf")));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        return file.fileName();
    }
    /** A FormatException that says which file it is, and so much of what is wrong with it. */
    void expectFormat(const std::string& bytes, const char* reason)
    {
        try
        {
            m_service->getUpdates(fileOf(bytes), QString());
            ADD_FAILURE() << "nothing was thrown, expected: " << reason;
        }
        catch (const Core::Exception::FormatException& e)
        {
            EXPECT_TRUE(e.message().contains(QStringLiteral("bäd.guf"))) << e.message().toStdString();
            EXPECT_TRUE(e.message().contains(QString::fromUtf8(reason))) << e.message().toStdString();
        }
    }
};

TEST_F(BadPackage, isNoArchive)
{
    expectFormat("no archive", "archive");
}

TEST_F(BadPackage, hasAnEmptyVersion)
{
    expectFormat(whole(oneWrite, ""), "the text is empty");
}

TEST_F(BadPackage, isTruncatedAnywhere)
{
    const std::string bytes = whole();
    for (std::size_t size = 0; size < bytes.size(); size += 7)
    {
        expectFormat(bytes.substr(0, size), "");
    }
}

TEST_F(BadPackage, hasAnEncryptedEntry)
{
    expectFormat(archiveOf("package.zip", archiveOf("control.xml", controlOf({{"1.0"}}, oneWrite), ZIP_EM_AES_256)),
                 "'control.xml' is encrypted");
}

TEST_F(BadPackage, lacksTheControlFile)
{
    expectFormat(archiveOf("package.zip", archiveOf("readme.txt", "nothing")), "control.xml");
}

TEST_F(BadPackage, hasAnUnknownStep)
{
    expectFormat(whole("<FeatureErase feature=\"Gain\"/>"), "FeatureErase");
}

TEST_F(BadPackage, hasAnExpressionThatDoesNotCompile)
{
    expectFormat(whole("<FeatureAssert feature=\"DeviceModelName\" matches=\"(\"/>"),
                 "The regular expression '(' is not valid");
}

TEST_F(BadPackage, oddVersionsAreReadAndComeLast)
{
    auto updates = read(updatesOf({"v1.0", "1..0", "1,0", "١.٢", "1234567890.0", "-1.0", "1.0"}));
    EXPECT_FALSE(m_service->sortFirmwareUpdateInfos(updates));
    // Digits of other scripts are digits, but no numbers.
    EXPECT_EQ(versionsOf(updates),
              (QStringList{"1.0", QString::fromUtf8("١.٢"), "v1.0", "1..0", "1,0", "1234567890.0", "-1.0"}));
}

} // namespace
