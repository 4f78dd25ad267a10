// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/firmwareapply.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "camerapool/idevicefirmwareupdateservice.h"
#include "genapi/firmwarepackagewriter.h"

#include <QMetaEnum>
#include <QSocketNotifier>
#include <QVersionNumber>

#include <algorithm>
#include <unistd.h>

namespace PoolCli
{
namespace
{

using Plugin::CameraPool::EFirmwareUpdateDirection;
using Plugin::CameraPool::IFirmwareUpdateInfo;
using UpdateInfoPtr = QSharedPointer<IFirmwareUpdateInfo>;
using UpdateInfos = QVector<UpdateInfoPtr>;
using JobPtr = QSharedPointer<Plugin::CameraPool::IDeviceFirmwareUpdate>;

/** Throws the reader's exceptions, whose texts name the file. */
UpdateInfos readPackage(CSession& session, const SOptions& options)
{
    return session.host().firmware().getUpdates(options.firmware.file, QString());
}

QJsonArray describe(const UpdateInfos& updates)
{
    QJsonArray array;
    for (const auto& update : updates)
    {
        array.append(QJsonObject{{"version", update->getVersion()},
                                 {"description", update->getDescription()},
                                 {"release_notes", update->getReleaseNotes()},
                                 {"file", update->getUpdateFilename()}});
    }
    return array;
}

void printUpdates(const UpdateInfos& updates)
{
    QVector<QVector<QString>> table{{CTexts::tr("VERSION"), CTexts::tr("DESCRIPTION"), CTexts::tr("RELEASE NOTES")}};
    for (const auto& update : updates)
    {
        table.append({printable(update->getVersion()), printable(update->getDescription().simplified()),
                      printable(update->getReleaseNotes().simplified())});
    }
    printTable(table);
}

/** Why the camera is not to be had. The service only says that it is not; opening it says more. */
QString reasonOf(CSession& session, const HostKit::CameraInfoPtr& camera)
{
    const QString reason = camera->errorString();
    try
    {
        const COpenCamera open(session, camera);
        return camera->getFriendlyName() + QLatin1String(": ") + reason;
    }
    catch (const CRefusal& e)
    {
        return QString::fromUtf8(e.what());
    }
}

struct SMatches
{
    UpdateInfos updates; // newest first
    bool areSorted = false;
};

SMatches matchesOf(CSession& session, const HostKit::CameraInfoPtr& camera, const UpdateInfos& updates)
{
    SMatches matches;
    camera->clearError();
    if (!session.host().firmware().getUpdatesMatchingTheDevice(camera, updates, matches.updates, matches.areSorted))
    {
        throw CRefusal(reasonOf(session, camera));
    }
    return matches;
}

QString noneFits(const SOptions& options, const HostKit::CameraInfoPtr& camera)
{
    return CTexts::tr("No update in %1 is for the camera %2.").arg(options.firmware.file, camera->getFriendlyName());
}

QString severalOf(const QString& version, const HostKit::CameraInfoPtr& camera)
{
    return CTexts::tr("Several updates to version %1 fit %2; take a package that holds one of them only.")
        .arg(version, camera->getFriendlyName());
}

int runFirmwareList(CSession& session, const SOptions& options)
{
    const auto updates = readPackage(session, options);
    options.json ? printJson(describe(updates)) : printUpdates(updates);
    return ExitDone;
}

int runMatch(CSession& session, const SOptions& options)
{
    const auto updates = readPackage(session, options);
    const auto camera = session.camera(options.cameras.value(0), options.discoveryTimeoutMs);
    const auto matches = matchesOf(session, camera, updates);
    if (options.json)
    {
        printJson(describe(matches.updates));
    }
    if (matches.updates.isEmpty())
    {
        throw CRefusal(noneFits(options, camera));
    }
    if (!options.json)
    {
        printUpdates(matches.updates);
    }
    return ExitDone;
}

/** As the plugin orders them: by up to four numbers, of which one that is not there counts as 0. */
bool areEquallyNew(const UpdateInfoPtr& first, const UpdateInfoPtr& second)
{
    const auto versionOf = [](const UpdateInfoPtr& update)
    {
        return QVersionNumber::fromString(update->getVersion()).normalized();
    };
    return versionOf(first) == versionOf(second);
}

/** The newest one. Throws when that cannot be told. */
UpdateInfoPtr newestOf(const SMatches& matches, const HostKit::CameraInfoPtr& camera)
{
    const UpdateInfoPtr newest = matches.updates.first();
    if (matches.updates.size() == 1)
    {
        return newest;
    }
    if (!matches.areSorted)
    {
        throw CRefusal(CTexts::tr("Several updates fit %1, and their versions cannot be compared; name one with "
                                  "--version ('poolcli firmware match' lists them).")
                           .arg(camera->getFriendlyName()));
    }
    const UpdateInfoPtr next = matches.updates.at(1);
    if (areEquallyNew(newest, next))
    {
        throw CRefusal(newest->getVersion() == next->getVersion()
                           ? severalOf(newest->getVersion(), camera)
                           : CTexts::tr("Several updates that fit %1 are equally new (%2 and %3); name one with "
                                        "--version.")
                                 .arg(camera->getFriendlyName(), newest->getVersion(), next->getVersion()));
    }
    return newest;
}

UpdateInfoPtr chooseUpdate(const SMatches& matches, const SOptions& options, const HostKit::CameraInfoPtr& camera)
{
    if (matches.updates.isEmpty())
    {
        throw CRefusal(noneFits(options, camera));
    }
    const QString& version = options.firmware.version;
    if (version.isEmpty())
    {
        return newestOf(matches, camera);
    }
    UpdateInfos named;
    std::copy_if(matches.updates.cbegin(), matches.updates.cend(), std::back_inserter(named),
                 [&](const UpdateInfoPtr& update) { return update->getVersion() == version; });
    if (named.size() != 1)
    {
        throw CRefusal(named.isEmpty() ? CTexts::tr("No update to version %1 fits %2; 'poolcli firmware match' lists "
                                                    "those that do.")
                                             .arg(version, camera->getFriendlyName())
                                       : severalOf(version, camera));
    }
    return named.first();
}

QString describe(EFirmwareUpdateDirection direction)
{
    switch (direction)
    {
    case EFirmwareUpdateDirection::Upgrade:
        return CTexts::tr("upgrade");
    case EFirmwareUpdateDirection::Downgrade:
        return CTexts::tr("downgrade");
    case EFirmwareUpdateDirection::Sidegrade:
        return CTexts::tr("the same version again");
    case EFirmwareUpdateDirection::Unknown:
        break;
    }
    return CTexts::tr("not known whether newer");
}

/** For programs, in every language. */
QString nameOf(EFirmwareUpdateDirection direction)
{
    return QString::fromLatin1(QMetaEnum::fromType<EFirmwareUpdateDirection>().valueToKey(static_cast<int>(direction)))
        .toLower();
}

/** One line typed by the user; null when Ctrl-C or the end of the input came instead. */
QString readAnswer(CSession& session)
{
    QString answer;
    bool isAnswered = false;
    QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier,
                     [&]
                     {
                         constexpr std::size_t longestAnswer = 256;
                         char line[longestAnswer];
                         const auto length = read(STDIN_FILENO, line, sizeof line);
                         answer =
                             length > 0 ? QString::fromLocal8Bit(line, static_cast<int>(length)).trimmed() : QString();
                         isAnswered = true;
                         notifier.setEnabled(false);
                     });
    session.waitUntil([&] { return isAnswered; }, -1);
    return answer;
}

/** Throws unless the user wants to go back to an older version, or one that may be older. */
void askBeforeDowngrade(CSession& session, const SOptions& options, EFirmwareUpdateDirection direction)
{
    const bool isAsked =
        direction == EFirmwareUpdateDirection::Downgrade || direction == EFirmwareUpdateDirection::Unknown;
    if (!isAsked || options.firmware.isAgreed)
    {
        return;
    }
    if (isatty(STDIN_FILENO) == 0)
    {
        throw CRefusal(CTexts::tr("This may be a downgrade, and there is no terminal to ask on; agree with --yes."));
    }
    const QString question =
        CTexts::tr("The camera would get an older version, or one that may be older. Go on? [y/N]");
    options.json ? printError(question) : printLine(question);
    const QString answer = readAnswer(session).toLower();
    if (answer != QLatin1String("y") && answer != QLatin1String("yes"))
    {
        throw CRefusal(CTexts::tr("Nothing was changed."));
    }
}

int runUpdate(CSession& session, const SOptions& options)
{
    const auto updates = readPackage(session, options);
    const auto camera = session.camera(options.cameras.value(0), options.discoveryTimeoutMs);
    const auto chosen = chooseUpdate(matchesOf(session, camera, updates), options, camera);
    camera->clearError();
    const JobPtr job = session.host().firmware().update(camera, chosen);
    if (job.isNull())
    {
        throw CRefusal(reasonOf(session, camera));
    }
    const QString before = job->getDeviceVersion();
    const auto direction = job->getFirmwareUpdateDirection();
    if (!options.json)
    {
        printLine(CTexts::tr("%1: firmware %2 -> %3 (%4)")
                      .arg(printable(camera->getFriendlyName()), printable(before), printable(chosen->getVersion()),
                           describe(direction)));
    }
    askBeforeDowngrade(session, options, direction);
    applyUpdate(session, *job, !options.json);
    if (options.json)
    {
        printJson(QJsonObject{{"camera", camera->getFriendlyName()},
                              {"version_before", before},
                              {"version", job->getDeviceVersion()},
                              {"direction", nameOf(direction)}});
        return ExitDone;
    }
    printLine(CTexts::tr("%1 has firmware %2 now.")
                  .arg(printable(camera->getFriendlyName()), printable(job->getDeviceVersion())));
    return ExitDone;
}

} // namespace

int runFirmware(CSession& session, const SOptions& options)
{
    if (options.firmware.what == QLatin1String("list"))
    {
        return runFirmwareList(session, options);
    }
    return options.firmware.what == QLatin1String("match") ? runMatch(session, options) : runUpdate(session, options);
}

int runFirmwareCreate(const SOptions& options)
{
    const QByteArray description = options.firmware.description.toUtf8();
    const QByteArray package = options.firmware.file.toUtf8();
    try
    {
        GenApi::CFirmwarePackageWriter().WritePackage(description.constData(), package.constData());
    }
    catch (const GenICam::GenericException& e)
    {
        throw CRefusal(QString::fromUtf8(e.GetDescription()));
    }
    printLine(CTexts::tr("%1 was made.").arg(printable(options.firmware.file)));
    return ExitDone;
}

} // namespace PoolCli
