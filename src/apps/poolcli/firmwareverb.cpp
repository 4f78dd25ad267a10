// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/firmwareprogress.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "camerapool/idevicefirmwareupdateservice.h"
#include "genapi/firmwarepackagewriter.h"

#include <QEventLoop>
#include <QMetaEnum>
#include <QSocketNotifier>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <unistd.h>

namespace PoolCli
{
namespace
{

using Plugin::CameraPool::EFirmwareUpdateDirection;
using Plugin::CameraPool::IDeviceFirmwareUpdate;
using Plugin::CameraPool::IFirmwareUpdateInfo;
using UpdateInfoPtr = QSharedPointer<IFirmwareUpdateInfo>;
using UpdateInfos = QVector<UpdateInfoPtr>;
using JobPtr = QSharedPointer<IDeviceFirmwareUpdate>;

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

UpdateInfoPtr chooseUpdate(const SMatches& matches, const SOptions& options, const HostKit::CameraInfoPtr& camera)
{
    if (matches.updates.isEmpty())
    {
        throw CRefusal(noneFits(options, camera));
    }
    const QString& version = options.firmware.version;
    if (version.isEmpty())
    {
        if (!matches.areSorted && matches.updates.size() > 1)
        {
            throw CRefusal(CTexts::tr("Several updates fit %1, and their versions cannot be compared; name one with "
                                      "--version ('poolcli firmware match' lists them).")
                               .arg(camera->getFriendlyName()));
        }
        return matches.updates.first();
    }
    UpdateInfos named;
    std::copy_if(matches.updates.cbegin(), matches.updates.cend(), std::back_inserter(named),
                 [&](const UpdateInfoPtr& update) { return update->getVersion() == version; });
    if (named.size() != 1)
    {
        throw CRefusal(
            named.isEmpty()
                ? CTexts::tr("No update to version %1 fits %2; 'poolcli firmware match' lists "
                             "those that do.")
                      .arg(version, camera->getFriendlyName())
                : CTexts::tr("Several updates to version %1 fit %2.").arg(version, camera->getFriendlyName()));
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

/** Keeps a second Ctrl-C from ending the program while it lives. */
class CPatience
{
public:
    explicit CPatience(HostKit::CInterrupt& interrupt) : m_interrupt(interrupt) { m_interrupt.setPatient(true); }
    ~CPatience() { m_interrupt.setPatient(false); }
    CPatience(const CPatience&) = delete;
    CPatience& operator=(const CPatience&) = delete;

private:
    HostKit::CInterrupt& m_interrupt;
};

/**
 * Applies the update on a thread of its own, so that signals are shown and Ctrl-C is heard meanwhile: it ends the
 * update before its next step, and however often it comes, never within one.
 *
 * A reader of the output that has gone is no reason to leave a camera half updated.
 */
bool applyUpdate(CSession& session, IDeviceFirmwareUpdate& job, bool isShown)
{
    std::optional<CFirmwareProgress> progress;
    if (isShown)
    {
        progress.emplace(job);
    }
    bool isDone = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] { isDone = job.apply(); }));
    const auto end = [&]
    {
        const bool isFirst = !thread->isInterruptionRequested();
        thread->requestInterruption();
        if (progress)
        {
            progress->endBar();
        }
        printError(isFirst
                       ? CTexts::tr("Interrupted: the update ends when the present step is done. Leave the camera "
                                    "switched on.")
                       : CTexts::tr("Still waiting for the end of the present step. Leave the camera switched on."));
    };
    const CPatience patience(session.interrupt());
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QObject::connect(&session.interrupt(), &HostKit::CInterrupt::raised, &loop, end);
    thread->start();
    if (session.interrupt().wasRaised())
    {
        end();
    }
    loop.exec();
    thread->wait();
    QCoreApplication::sendPostedEvents(); // what the last step told
    return isDone;
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
    camera->clearError();
    if (!applyUpdate(session, *job, !options.json))
    {
        throw CRefusal(
            CTexts::tr("The firmware of %1 was not updated: %2").arg(camera->getFriendlyName(), camera->errorString()));
    }
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
