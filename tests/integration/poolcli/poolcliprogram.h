// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace PoolCliTest
{

struct SOutcome
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;

    QJsonDocument json() const { return QJsonDocument::fromJson(out); }
};

/** The program on emulated cameras alone, in a process of its own. */
class PoolCliProgram : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        writeData(R"({"cameras": [
            {"serial": "EMU-A", "model": "Mono", "userName": "left"},
            {"serial": "EMU-B", "model": "Deep"}]})");
    }

    void writeData(const QByteArray& text) const
    {
        // Renamed into place, so that a pass that runs now reads the old data or the new.
        const QString file = dataFile();
        QFile fresh(file + QStringLiteral(".new"));
        ASSERT_TRUE(fresh.open(QIODevice::WriteOnly));
        fresh.write(text);
        fresh.close();
        QFile::remove(file);
        ASSERT_TRUE(fresh.rename(file));
    }

    QString dataFile() const { return m_folder.filePath(QStringLiteral("cameras.json")); }

    void prepare(QProcess& process) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("CAMERAPOOL_EMULATION_FILE"), dataFile());
        environment.insert(QStringLiteral("CAMERAPOOL_GIGE_ADAPTERS"), m_gigeAdapters);
        if (!m_loggingRules.isEmpty())
        {
            environment.insert(QStringLiteral("QT_LOGGING_RULES"), m_loggingRules);
        }
        environment.insert(QStringLiteral("HOME"), m_folder.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.path());
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder.path());
    }

    SOutcome run(const QStringList& arguments) const
    {
        QProcess process;
        prepare(process);
        process.start(QStringLiteral(POOLCLI), arguments);
        constexpr int limitMs = 60000;
        EXPECT_TRUE(process.waitForFinished(limitMs)) << "poolcli does not end";
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    QTemporaryDir m_folder;
    QString m_gigeAdapters = QStringLiteral("none");
    QString m_loggingRules; // "": the program's own
};

} // namespace PoolCliTest
