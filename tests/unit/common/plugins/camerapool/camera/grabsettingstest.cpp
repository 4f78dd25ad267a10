// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/grabsettings.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"

#include <QFile>
#include <QSettings>

#include <gtest/gtest.h>

#include <sys/stat.h>

using Plugin::CameraPool::Internal::SGrabSettings;

namespace
{

class GrabSettings : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QSettings().remove(QStringLiteral("Grab"));
        SGrabSettings::read(); // what an earlier test left is told anew
        m_log.clear();
    }
    void TearDown() override { QSettings().remove(QStringLiteral("Grab")); }

    static void set(const char* key, const QVariant& value)
    {
        QSettings().setValue(QStringLiteral("Grab/") + QLatin1String(key), value);
    }
    static QVariant get(const char* key) { return QSettings().value(QStringLiteral("Grab/") + QLatin1String(key)); }

    ::Test::CMessageLog m_log;
};

TEST_F(GrabSettings, defaultsAreUsedAndNothingIsLoggedWhenNoneAreThere)
{
    const SGrabSettings settings = SGrabSettings::read();
    EXPECT_EQ(settings.minNumBuffers, 10);
    EXPECT_EQ(settings.maxNumBuffers, 450);
    EXPECT_EQ(settings.usedBufferMemoryBytes, 8388608U);
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(GrabSettings, whatIsThereIsRead)
{
    set("MinNumBuffersContinuousShot", 3);
    set("MaxNumBuffersContinuousShot", 7);
    set("UsedBufferMemory", 4294967295U);
    const SGrabSettings settings = SGrabSettings::read();
    EXPECT_EQ(settings.minNumBuffers, 3);
    EXPECT_EQ(settings.maxNumBuffers, 7);
    EXPECT_EQ(settings.usedBufferMemoryBytes, 4294967295U);
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(GrabSettings, aNegativeMinimumBecomesOneBufferAndIsLogged)
{
    set("MinNumBuffersContinuousShot", -4);
    EXPECT_EQ(SGrabSettings::read().minNumBuffers, 1);
    EXPECT_TRUE(m_log.warnings().contains(
        "The setting Grab/MinNumBuffersContinuousShot has the unusable value \"-4\"; 1 is used."));
}

TEST_F(GrabSettings, aMaximumBelowTheMinimumBecomesTheMinimumAndIsLogged)
{
    set("MinNumBuffersContinuousShot", 20);
    set("MaxNumBuffersContinuousShot", 5);
    const SGrabSettings settings = SGrabSettings::read();
    EXPECT_EQ(settings.minNumBuffers, 20);
    EXPECT_EQ(settings.maxNumBuffers, 20);
    EXPECT_EQ(m_log.warnings().size(), 1);
}

TEST_F(GrabSettings, anAbsurdNumberOfBuffersIsLimited)
{
    set("MinNumBuffersContinuousShot", 2000000000);
    const SGrabSettings settings = SGrabSettings::read();
    EXPECT_EQ(settings.minNumBuffers, 65535);
    EXPECT_EQ(settings.maxNumBuffers, 65535);
}

TEST_F(GrabSettings, aTextWhereANumberBelongsGivesTheDefaultAndIsLogged)
{
    set("MinNumBuffersContinuousShot", "many");
    set("MaxNumBuffersContinuousShot", "");
    set("UsedBufferMemory", "8 MiB");
    const SGrabSettings settings = SGrabSettings::read();
    EXPECT_EQ(settings.minNumBuffers, 10);
    EXPECT_EQ(settings.maxNumBuffers, 450);
    EXPECT_EQ(settings.usedBufferMemoryBytes, 8388608U);
    EXPECT_EQ(m_log.warnings().size(), 3);
}

TEST_F(GrabSettings, aNegativeMemoryGivesTheDefaultAndNotFourGigabytes)
{
    set("UsedBufferMemory", -1);
    EXPECT_EQ(SGrabSettings::read().usedBufferMemoryBytes, 8388608U);
    EXPECT_EQ(m_log.warnings().size(), 1);
}

TEST_F(GrabSettings, whatIsUnusableIsToldOnceUntilItChanges)
{
    set("MaxNumBuffersContinuousShot", "banana");
    SGrabSettings::read(); // of the first camera
    SGrabSettings::read(); // of the second one
    EXPECT_EQ(m_log.warnings().size(), 1);
    set("MaxNumBuffersContinuousShot", "apple");
    SGrabSettings::read();
    EXPECT_EQ(m_log.warnings().size(), 2);
    set("MaxNumBuffersContinuousShot", 450);
    SGrabSettings::read();
    set("MaxNumBuffersContinuousShot", "apple");
    SGrabSettings::read();
    EXPECT_EQ(m_log.warnings().size(), 3);
}

TEST_F(GrabSettings, writingMakesAllThreeExplicit)
{
    SGrabSettings::read().write();
    EXPECT_EQ(get("MinNumBuffersContinuousShot").toInt(), 10);
    EXPECT_EQ(get("MaxNumBuffersContinuousShot").toInt(), 450);
    EXPECT_EQ(get("UsedBufferMemory").toUInt(), 8388608U);
}

TEST_F(GrabSettings, writingWhatIsThereAlreadyLeavesTheFileAlone)
{
    // Every write of the file replaces it by another one.
    const auto fileNumber = []
    {
        struct stat status
        {
        };
        EXPECT_EQ(stat(QFile::encodeName(QSettings().fileName()).constData(), &status), 0);
        return status.st_ino;
    };
    SGrabSettings settings;
    settings.write();
    const auto first = fileNumber();
    settings.write();
    EXPECT_EQ(fileNumber(), first);
    settings.minNumBuffers = 11;
    settings.write();
    EXPECT_NE(fileNumber(), first);
    EXPECT_EQ(get("MinNumBuffersContinuousShot").toInt(), 11);
}

TEST_F(GrabSettings, writingLeavesWhatMakesNoSenseAsItWasFound)
{
    set("MinNumBuffersContinuousShot", -4);
    set("MaxNumBuffersContinuousShot", "plenty");
    SGrabSettings::read().write();
    EXPECT_EQ(get("MinNumBuffersContinuousShot").toString(), QStringLiteral("-4"));
    EXPECT_EQ(get("MaxNumBuffersContinuousShot").toString(), QStringLiteral("plenty"));
    EXPECT_EQ(get("UsedBufferMemory").toUInt(), 8388608U);
}

TEST_F(GrabSettings, writingLeavesAMaximumBelowTheMinimumAsItWasFound)
{
    set("MinNumBuffersContinuousShot", 20);
    set("MaxNumBuffersContinuousShot", 5);
    SGrabSettings::read().write();
    EXPECT_EQ(get("MinNumBuffersContinuousShot").toInt(), 20);
    EXPECT_EQ(get("MaxNumBuffersContinuousShot").toInt(), 5);
}

TEST_F(GrabSettings, aTextWithCommasIsLoggedAndKeptWhole)
{
    set("UsedBufferMemory", QStringList{QStringLiteral("8"), QStringLiteral("388"), QStringLiteral("608")});
    EXPECT_EQ(SGrabSettings::read().usedBufferMemoryBytes, 8388608U);
    EXPECT_TRUE(m_log.warnings().contains(
        "The setting Grab/UsedBufferMemory has the unusable value \"8,388,608\"; 8388608 is used."));
    SGrabSettings::read().write();
    EXPECT_EQ(get("UsedBufferMemory").toStringList().size(), 3);
}

TEST_F(GrabSettings, buffersAreWhatTheMemoryHoldsWithinTheLimits)
{
    const SGrabSettings settings;
    EXPECT_EQ(settings.buffersFor(1000000), 10);
    EXPECT_EQ(settings.buffersFor(10000), 450);
    EXPECT_EQ(settings.buffersFor(100000), 83);
    EXPECT_EQ(settings.buffersFor(1), 450);
    EXPECT_EQ(settings.buffersFor(1ULL << 40U), 10);
}

} // namespace
