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
    /** The package own.guf with an update to 2.0.0, which fits every camera. */
    void makePackage(const QByteArray& steps, const QByteArray& preconditions = {}) const
    {
        write("own.xml", R"(<FirmwarePackage xmlns="urn:camerapool:firmwarepackage" version="1.0">
            <Files><File name="emumono-2.0.0.bin"/></Files>
            <Procedures><Procedure id="all"><Preconditions>)" +
                             preconditions + "</Preconditions><Steps>" + steps + R"(</Steps></Procedure></Procedures>
            <Updates><Update id="u" procedure="all"><Condition feature="DeviceModelName" matches=".*"/>
            <Info key="Version"><Text>2.0.0</Text></Info></Update></Updates></FirmwarePackage>)");
        const SOutcome outcome = firmware({"create", path("own.xml"), path("own.guf")});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    }
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
    static constexpr const char* upload = R"(<FileUpload file="emumono-2.0.0.bin" deviceFile="FirmwareUpdate"/>)";
    static constexpr const char* activate = R"(<FeatureExecute feature="FirmwareActivate" activates="true"/>)";
    static constexpr const char* restart = R"(<DeviceReset waitTimeMs="1000"/>)";
};

} // namespace PoolCliTest
