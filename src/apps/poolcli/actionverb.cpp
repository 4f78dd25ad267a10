// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "camerapool/icameraactioncommandsservice.h"
#include "camerapool/itransportlayerinfo.h"
#include "camerapool/tltypes.h"
#include "protocols/gvcp.h"
#include "transport/infos.h"

#include <algorithm>

namespace PoolCli
{
namespace
{

using Plugin::CameraPool::SGigEActionCommandResult;
using Results = QVector<SGigEActionCommandResult>;

/** One camera of the result: one that is known, or one that answered. */
struct SRow
{
    QString address;
    QString name;
    bool isNamed = false; // on the command line
    bool isAnswered = false;
    bool isRefused = false;
};

QString property(const HostKit::CameraInfoPtr& camera, const char* key)
{
    return QString::fromUtf8(camera->getVelmoDeviceInfo().Get(key).c_str());
}

/** Whether a datagram to that address reaches the camera. */
bool isReached(const HostKit::CameraInfoPtr& camera, const QString& address)
{
    std::uint32_t target = 0;
    std::uint32_t ip = 0;
    std::uint32_t mask = 0;
    Velmo::Gvcp::ParseIp(address.toStdString(), target);
    if (!Velmo::Gvcp::ParseIp(property(camera, Velmo::Key::IpAddress).toStdString(), ip))
    {
        return false;
    }
    const bool hasMask = Velmo::Gvcp::ParseIp(property(camera, Velmo::Key::SubnetMask).toStdString(), mask);
    constexpr std::uint32_t everywhere = 0xFFFFFFFF;
    return target == everywhere || target == ip || (hasMask && target == (ip | ~mask));
}

QVector<SRow> expectedCameras(CSession& session, const SOptions& options)
{
    session.waitForDiscovery(options.discoveryTimeoutMs);
    const bool areNamed = !options.cameras.isEmpty();
    const auto cameras =
        areNamed ? session.camerasCalled(options.cameras, options.discoveryTimeoutMs) : session.cameras();
    QVector<SRow> rows;
    for (const auto& camera : cameras)
    {
        const QString address = property(camera, Velmo::Key::IpAddress);
        const bool isGigE = camera->getTLType() == Plugin::CameraPool::TLTypeGigE && !address.isEmpty();
        if (areNamed && !isGigE)
        {
            throw CRefusal(CTexts::tr("%1 is no GigE Vision camera; action commands do not reach it.")
                               .arg(camera->getFriendlyName()));
        }
        if (areNamed || (isGigE && isReached(camera, options.action.address)))
        {
            SRow row;
            row.address = address;
            row.name = camera->getFriendlyName();
            row.isNamed = areNamed;
            rows.append(row);
        }
    }
    return rows;
}

/** Sends the command; throws CRefusal when it did not get out. */
Results send(CSession& session, const SActionOptions& action, int expected)
{
    // Cameras that are not known may answer first; all that answer in time have room.
    constexpr int roomForOthers = 256;
    Results results(expected + roomForOthers);
    const auto room = static_cast<unsigned int>(results.size());
    unsigned int count = room;
    auto& service = session.host().actions();
    const bool isDone = action.what == QLatin1String("schedule")
                            ? service.schedule(action.deviceKey, action.groupKey, action.groupMask, action.time,
                                               results, action.address, action.timeoutMs, &count)
                            : service.issue(action.deviceKey, action.groupKey, action.groupMask, results,
                                            action.address, action.timeoutMs, &count);
    // Without room left all had answered, and without answers asked for there are none to miss: sending failed.
    if (!isDone && (count == room || action.timeoutMs == 0))
    {
        throw CRefusal(CTexts::tr("The action command could not be sent to %1: perhaps no network adapter in use leads "
                                  "there. The reason is in the debug log (QT_LOGGING_RULES=\"default.debug=true\").")
                           .arg(action.address));
    }
    return results;
}

void enterAnswers(const Results& results, QVector<SRow>& rows)
{
    for (const SGigEActionCommandResult& result : results)
    {
        const QString address = QString::fromLatin1(result.deviceAddress);
        auto row =
            std::find_if(rows.begin(), rows.end(), [&address](const SRow& other) { return other.address == address; });
        if (row == rows.end())
        {
            SRow other;
            other.address = address;
            rows.append(other);
            row = rows.end() - 1;
        }
        row->isAnswered = true;
        row->isRefused = result.hasError;
    }
}

void printAnswersAsJson(const SActionOptions& action, const QVector<SRow>& rows)
{
    QJsonArray cameras;
    for (const SRow& row : rows)
    {
        QJsonObject camera{{"address", row.address}, {"name", row.name}, {"named", row.isNamed}};
        if (action.timeoutMs != 0)
        {
            camera.insert(QStringLiteral("answer"), !row.isAnswered ? QStringLiteral("silent")
                                                    : row.isRefused ? QStringLiteral("refused")
                                                                    : QStringLiteral("accepted"));
        }
        cameras.append(camera);
    }
    printJson(QJsonObject{{"address", action.address}, {"answers_asked", action.timeoutMs != 0}, {"cameras", cameras}});
}

void printAnswers(const SActionOptions& action, const QVector<SRow>& rows)
{
    if (action.timeoutMs == 0)
    {
        printLine(CTexts::tr("Sent to %1; no answers asked for.").arg(action.address));
        return;
    }
    QVector<QVector<QString>> table{{CTexts::tr("ADDRESS"), CTexts::tr("NAME"), CTexts::tr("ANSWER")}};
    for (const SRow& row : rows)
    {
        table.append({row.address, printable(row.name),
                      !row.isAnswered ? CTexts::tr("silent")
                      : row.isRefused ? CTexts::tr("refused")
                                      : CTexts::tr("accepted")});
    }
    printTable(table);
}

int runCommand(CSession& session, const SOptions& options)
{
    QVector<SRow> rows = expectedCameras(session, options);
    enterAnswers(send(session, options.action, rows.size()), rows);
    options.json ? printAnswersAsJson(options.action, rows) : printAnswers(options.action, rows);
    if (options.action.timeoutMs == 0)
    {
        return ExitDone;
    }
    const auto isAny = [&rows](auto condition)
    {
        return std::any_of(rows.cbegin(), rows.cend(), condition);
    };
    if (isAny([](const SRow& row) { return row.isRefused; }))
    {
        throw CRefusal(CTexts::tr("Cameras refused the action command. Their reasons are in the debug log "
                                  "(QT_LOGGING_RULES=\"velmo.gige.debug=true\")."));
    }
    if (isAny([](const SRow& row) { return row.isNamed && !row.isAnswered; }))
    {
        throw CRefusal(CTexts::tr("Cameras stayed silent: no application has them open, their keys or masks do not "
                                  "fit, or the command or its answer was lost."));
    }
    if (!isAny([](const SRow& row) { return row.isAnswered; }))
    {
        throw CRefusal(CTexts::tr("No camera answered the action command: no application has one open, or their keys "
                                  "or masks do not fit."));
    }
    return ExitDone;
}

int runSupport(CSession& session, const SOptions& options)
{
    const auto cameras = session.camerasCalled(options.cameras, options.discoveryTimeoutMs);
    QVector<QVector<QString>> table{
        {CTexts::tr("NAME"), CTexts::tr("ADDRESS"), CTexts::tr("ACTION"), CTexts::tr("SCHEDULED")}};
    QJsonArray array;
    int exitCode = ExitDone;
    const auto word = [](bool isSupported)
    {
        return isSupported ? CTexts::tr("yes") : CTexts::tr("no");
    };
    for (const auto& camera : cameras)
    {
        try
        {
            const COpenCamera open(session, camera);
            const bool isSupported = session.host().actions().isSupported(camera);
            const bool isScheduled = session.host().actions().isScheduledSupported(camera);
            const QString address = property(camera, Velmo::Key::IpAddress);
            table.append({printable(camera->getFriendlyName()), address, word(isSupported), word(isScheduled)});
            array.append(QJsonObject{{"name", camera->getFriendlyName()},
                                     {"address", address},
                                     {"action", isSupported},
                                     {"scheduled", isScheduled}});
        }
        catch (const CRefusal& e)
        {
            printError(QString::fromUtf8(e.what())); // the other cameras are told of all the same
            exitCode = ExitRefused;
        }
    }
    options.json ? printJson(array) : printTable(table);
    return exitCode;
}

} // namespace

int runAction(CSession& session, const SOptions& options)
{
    return options.action.what == QLatin1String("support") ? runSupport(session, options)
                                                           : runCommand(session, options);
}

} // namespace PoolCli
