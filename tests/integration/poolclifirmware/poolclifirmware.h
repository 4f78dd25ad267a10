// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "integration/poolcli/poolcliprogram.h"

namespace PoolCliTest
{

/** The real program with the example package, made as the guide says. */
class PoolCliFirmware : public PoolCliTest::PoolCliProgram
{
protected:
    void SetUp() override
    {
        PoolCliProgram::SetUp();
        writeCamera(QByteArray());
        ASSERT_TRUE(QFile::copy(QStringLiteral(EXAMPLE "/control.xml"), path("control.xml")));
        for (const char* const version : {"1.5.0", "2.0.0"})
        {
            const QString file = path((std::string("emumono-") + version + ".bin").c_str());
            ASSERT_EQ(QProcess::execute(QStringLiteral(GIGECAMERA),
                                        {"--make-firmware", version, "EmuMono1280", file, "--firmware-size", "4000"}),
                      0);
        }
        const SOutcome outcome = firmware({"create", path("control.xml"), path("e.guf")});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    }
    void writeCamera(const QByteArray& more) const
    {
        writeData(R"({"cameras": [{"serial": "FW-A", "firmware": "1.7.0", "bootTimeMs": 20)" + more + "}]}");
    }
    QString path(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    SOutcome firmware(const QStringList& arguments) const { return run(QStringList{"firmware"} + arguments); }
    SOutcome update(const QStringList& more) const
    {
        return firmware(QStringList{"update", path("e.guf"), "FW-A"} + more);
    }
    QString write(const char* name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QByteArray package() const
    {
        QFile file(path("e.guf"));
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        return file.readAll();
    }
    static QStringList versions(const SOutcome& outcome)
    {
        QStringList all;
        const auto updates = outcome.json().array();
        for (const auto& value : updates)
        {
            all.append(value.toObject().value("version").toString());
        }
        return all;
    }
    static void expectRefused(const SOutcome& outcome, const char* reason)
    {
        EXPECT_EQ(outcome.exitCode, 1) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.err.contains(reason)) << outcome.err.toStdString();
    }
};

} // namespace PoolCliTest
