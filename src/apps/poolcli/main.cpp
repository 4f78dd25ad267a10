// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "hostkit/host.h"
#include "hostkit/sdklog.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTranslator>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <map>
#include <system_error>

namespace
{

using PoolCli::CSession;
using PoolCli::SOptions;

/** Output that is lost is a failure, unless its reader has gone, who has seen enough. */
void checkOutput()
{
    const int error = PoolCli::outputError();
    if (error != 0 && error != EPIPE)
    {
        throw PoolCli::CRefusal(
            PoolCli::CTexts::tr("%1 could not be written: %2")
                .arg(QStringLiteral("stdout"), QString::fromStdString(std::generic_category().message(error))));
    }
}

int runVerb(const SOptions& options)
{
    static const std::map<QString, int (*)(CSession&, const SOptions&)> verbs{
        {QStringLiteral("list"), PoolCli::runList},         {QStringLiteral("watch"), PoolCli::runWatch},
        {QStringLiteral("info"), PoolCli::runInfo},         {QStringLiteral("features"), PoolCli::runFeatures},
        {QStringLiteral("get"), PoolCli::runGet},           {QStringLiteral("set"), PoolCli::runSet},
        {QStringLiteral("grab"), PoolCli::runGrab},         {QStringLiteral("snapshot"), PoolCli::runSnapshot},
        {QStringLiteral("stats"), PoolCli::runStats},       {QStringLiteral("interfaces"), PoolCli::runInterfaces},
        {QStringLiteral("chunks"), PoolCli::runChunks},     {QStringLiteral("action"), PoolCli::runAction},
        {QStringLiteral("monitor"), PoolCli::runMonitor},   {QStringLiteral("network"), PoolCli::runNetwork},
        {QStringLiteral("firmware"), PoolCli::runFirmware}, {QStringLiteral("events"), PoolCli::runEvents},
    };
    try
    {
        if (options.firmware.what == QLatin1String("create"))
        {
            QTranslator translator;
            HostKit::CHost::installTexts(options.language, translator);
            return PoolCli::runFirmwareCreate(options);
        }
        CSession session(options.language);
        const int code = verbs.at(options.verb)(session, options);
        checkOutput();
        return code;
    }
    catch (const std::exception& e)
    {
        PoolCli::printError(QString::fromUtf8(e.what()));
        return PoolCli::ExitRefused;
    }
}

} // namespace

int main(int argc, char** argv)
{
    // Queued signals, three for each image, cost half as much with Qt's own event dispatcher.
    if (std::getenv("QT_NO_GLIB") == nullptr)
    {
        qputenv("QT_NO_GLIB", "1");
    }
    // Debug messages are for who asks for them, with QT_LOGGING_RULES.
    if (std::getenv("QT_LOGGING_RULES") == nullptr)
    {
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    }
    HostKit::forwardSdkLog();
    // A reader that has seen enough ends the verb, which then leaves its cameras as Ctrl-C does; see outputError().
    std::signal(SIGPIPE, SIG_IGN);
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("CameraPool"));
    QCoreApplication::setApplicationName(QStringLiteral("poolcli"));
    SOptions options;
    int exitCode = 0;
    if (!PoolCli::parseCommandLine(argc, argv, options, exitCode))
    {
        return exitCode;
    }
    return runVerb(options);
}
