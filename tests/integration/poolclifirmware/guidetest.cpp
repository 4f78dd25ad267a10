// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

namespace
{

using PoolCliTest::SOutcome;

QString document(const char* name)
{
    QFile file(QStringLiteral(DOCUMENTS "/") + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll());
}

/** The document's fenced blocks of that kind that contain the text. */
QStringList blocks(const char* name, const char* kind, const char* text)
{
    const QRegularExpression block(QStringLiteral("^```%1\\n(.*?)^```$").arg(QString::fromLatin1(kind)),
                                   QRegularExpression::MultilineOption |
                                       QRegularExpression::DotMatchesEverythingOption);
    const QString all = document(name);
    QStringList found;
    for (auto match = block.globalMatch(all); match.hasNext();)
    {
        const QString content = match.next().captured(1);
        if (content.contains(QString::fromLatin1(text)))
        {
            found.append(content);
        }
    }
    return found;
}

/** Types what the documents print, in a folder that looks like a built source tree. */
class FirmwareGuide : public PoolCliTest::PoolCliProgram
{
protected:
    void SetUp() override
    {
        PoolCliProgram::SetUp();
        const QDir tree(m_folder.path());
        ASSERT_TRUE(tree.mkpath(QStringLiteral("build/release/bin")));
        ASSERT_TRUE(QFile::link(QStringLiteral(DOCUMENTS "/examples"), tree.filePath(QStringLiteral("examples"))));
        ASSERT_TRUE(
            QFile::link(QStringLiteral(GIGECAMERA), tree.filePath(QStringLiteral("build/release/bin/gigecamera"))));
        // The real one installs and builds first.
        script("run", "#!/bin/sh\n[ \"$1\" = -- ] || exit 2\nshift\nexec " POOLCLI " \"$@\"\n");
        script("poolcli", "#!/bin/sh\nexec " POOLCLI " \"$@\"\n");
    }
    void script(const char* name, const QByteArray& text) const
    {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        ASSERT_TRUE(file.setPermissions(file.permissions() | QFileDevice::ExeOwner));
    }
    QByteArray file(const char* name) const
    {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    }
    SOutcome type(const QString& commands) const
    {
        QProcess shell;
        prepare(shell);
        QProcessEnvironment environment = shell.processEnvironment();
        environment.remove(QStringLiteral("CAMERAPOOL_EMULATION_FILE")); // the two cameras that everybody has
        environment.insert(QStringLiteral("PATH"), m_folder.path() + QLatin1Char(':') + m_folder.path() +
                                                       QStringLiteral("/build/release/bin:") +
                                                       environment.value("PATH"));
        shell.setProcessEnvironment(environment);
        shell.start(QStringLiteral("bash"), {QStringLiteral("-euc"), commands});
        constexpr int limitMs = 100000;
        EXPECT_TRUE(shell.waitForFinished(limitMs));
        return {shell.exitCode(), shell.readAllStandardOutput(), shell.readAllStandardError()};
    }
    void expectUpdated(const SOutcome& outcome)
    {
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.out.contains("Example of an older version")) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.out.contains("firmware 1.0.0 -> 2.0.0 (upgrade)")) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.out.endsWith("has firmware 2.0.0 now.\n")) << outcome.out.toStdString();
        EXPECT_EQ(outcome.err, QByteArray());
    }
};

TEST_F(FirmwareGuide, updatesAnEmulatedCameraAsPrinted)
{
    const QStringList trial = blocks("docs/guides/firmware.md", "sh", "firmware create");
    ASSERT_EQ(trial.size(), 1);
    expectUpdated(type(trial.first()));
    const QStringList use = blocks("docs/guides/firmware.md", "sh", "camera.guf");
    ASSERT_EQ(use.size(), 1);
    expectUpdated(type(QStringLiteral("cp build/example.guf camera.guf\n") + use.first()));
}

TEST_F(FirmwareGuide, readmesLinesDoWhatTheySay)
{
    const QStringList lines = blocks("README.md", "", "firmware create");
    ASSERT_EQ(lines.size(), 1);
    expectUpdated(type(lines.first()));
}

TEST_F(FirmwareGuide, packageIsMadeAsPrinted)
{
    const QStringList control = blocks("docs/guides/firmwarepackages.md", "xml", "<FirmwarePackage");
    ASSERT_EQ(control.size(), 1);
    script("control.xml", control.first().toUtf8());
    script("main.bin", "new firmware");
    const QString command = QRegularExpression(QStringLiteral("`(poolcli firmware create [^`]*)`"))
                                .match(document("docs/guides/firmwarepackages.md"))
                                .captured(1);
    ASSERT_FALSE(command.isEmpty());
    const SOutcome made = type(command + QStringLiteral("\npoolcli firmware list main-2.1.0.guf\n"));
    EXPECT_EQ(made.exitCode, 0) << made.err.toStdString();
    EXPECT_TRUE(made.out.contains("2.1.0    Faster readout")) << made.out.toStdString();
}

TEST_F(FirmwareGuide, packageIsTriedAsPrinted)
{
    script("control.xml", blocks("docs/guides/firmwarepackages.md", "xml", "<FirmwarePackage").value(0).toUtf8());
    const QStringList trial = blocks("docs/guides/firmwarepackages.md", "sh", "firmware update");
    ASSERT_EQ(trial.size(), 1);
    const SOutcome updated = type(trial.first());
    EXPECT_EQ(updated.exitCode, 0) << updated.err.toStdString();
    EXPECT_TRUE(updated.out.contains("Testcam 12 (T-1): firmware 1.0.0 -> 2.1.0 (upgrade)"))
        << updated.out.toStdString();
    EXPECT_TRUE(updated.out.endsWith("has firmware 2.1.0 now.\n")) << updated.out.toStdString();
    EXPECT_EQ(updated.err, QByteArray());
    const QString cameras = QString::fromUtf8(file("testcam.json")).trimmed();
    ASSERT_TRUE(cameras.endsWith(QStringLiteral("}]}"))) << cameras.toStdString();
    const QString fault = QRegularExpression(QStringLiteral("`(\"faults\": [^`]*)`"))
                              .match(document("docs/guides/firmwarepackages.md"))
                              .captured(1);
    script("testcam.json", (cameras.chopped(3) + QStringLiteral(", ") + fault + QStringLiteral("}]}")).toUtf8());
    const SOutcome unplugged = type(trial.first().split('\n').filter(QStringLiteral("firmware update")).join(""));
    EXPECT_EQ(unplugged.exitCode, 1) << unplugged.out.toStdString();
    EXPECT_TRUE(unplugged.err.contains("The camera keeps the firmware that it has")) << unplugged.err.toStdString();
}

} // namespace
