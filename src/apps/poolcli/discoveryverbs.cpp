// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "transport/infos.h"

#include <QTime>
#include <QTimer>

namespace PoolCli
{
namespace
{

using Plugin::CameraPool::IBaseInfo;
using Plugin::CameraPool::ICameraInfo;
using Plugin::CameraPool::ICameraStatusService;

QString property(const ICameraInfo& camera, const char* key)
{
    return QString::fromUtf8(camera.getVelmoDeviceInfo().Get(key).c_str());
}

QJsonObject describe(const ICameraInfo& camera)
{
    QJsonObject object{{"friendly_name", camera.getFriendlyName()}, {"full_name", camera.getFullName()},
                       {"vendor", camera.getVendorName()},          {"model", camera.getModelName()},
                       {"serial", camera.getSerialNumber()},        {"user_name", camera.getUserDefinedName()},
                       {"version", camera.getCameraVersion()},      {"type", camera.getTLType()}};
    for (const auto& [name, key] :
         {std::pair{"ip_address", Velmo::Key::IpAddress}, std::pair{"access", Velmo::Key::AccessStatus}})
    {
        const QString value = property(camera, key);
        if (!value.isEmpty())
        {
            object.insert(QLatin1String(name), value);
        }
    }
    return object;
}

/** Prints one event of the watch verb. */
class CEventPrinter
{
public:
    explicit CEventPrinter(bool json) : m_json(json) {}
    void print(const char* event, const QSharedPointer<IBaseInfo>& info) const
    {
        const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz"));
        const QString name = info.isNull() ? QString() : info->getFriendlyName();
        const QString fullName = info.isNull() ? QString() : info->getFullName();
        if (m_json)
        {
            printJsonLine(
                {{"time", time}, {"event", QLatin1String(event)}, {"friendly_name", name}, {"full_name", fullName}});
        }
        else
        {
            printLine(
                QStringLiteral("%1  %2  %3").arg(time, QString::fromLatin1(event).leftJustified(16), printable(name)));
        }
    }

private:
    bool m_json;
};

} // namespace

int runList(CSession& session, const SOptions& options)
{
    session.waitForDiscovery(options.discoveryTimeoutMs);
    const auto cameras = session.cameras();
    if (options.json)
    {
        QJsonArray array;
        for (const auto& camera : cameras)
        {
            array.append(describe(*camera));
        }
        printJson(array);
        return ExitDone;
    }
    if (cameras.isEmpty())
    {
        printLine(CTexts::tr("No camera found."));
        return ExitDone;
    }
    QVector<QVector<QString>> rows{{CTexts::tr("NAME"), CTexts::tr("MODEL"), CTexts::tr("SERIAL"),
                                    CTexts::tr("USER NAME"), CTexts::tr("TYPE"), CTexts::tr("ADDRESS")}};
    for (const auto& camera : cameras)
    {
        rows.append({printable(camera->getFriendlyName()), printable(camera->getModelName()),
                     printable(camera->getSerialNumber()), printable(camera->getUserDefinedName()), camera->getTLType(),
                     property(*camera, Velmo::Key::IpAddress)});
    }
    printTable(rows);
    return ExitDone;
}

int runWatch(CSession& session, const SOptions& options)
{
    const CEventPrinter printer(options.json);
    QObject receiver;
    auto& status = session.host().status();
    const auto show = [&](auto signal, const char* event)
    {
        QObject::connect(&status, signal, &receiver,
                         [&printer, event](const auto& info) { printer.print(event, info); });
    };
    show(&ICameraStatusService::deviceConnected, "connected");
    show(&ICameraStatusService::deviceDisconnected, "disconnected");
    show(&ICameraStatusService::deviceOpened, "opened");
    show(&ICameraStatusService::deviceClosed, "closed");
    show(&ICameraStatusService::cameraConnectionLost, "connection lost");
    if (!options.json)
    {
        printLine(CTexts::tr("Watching; Ctrl-C ends."));
    }
    // A person who watches wants to see a plugged camera sooner than the periodic pass would show it.
    QTimer passes;
    QObject::connect(&passes, &QTimer::timeout, &receiver, [&] { session.host().enumeration().triggerEnumeration(); });
    constexpr int passIntervalMs = 1000;
    passes.start(passIntervalMs);
    session.waitUntil([] { return false; }, options.durationMs > 0 ? options.durationMs : -1);
    return ExitDone;
}

int runInfo(CSession& session, const SOptions& options)
{
    const auto camera = session.camera(options.cameras.value(0), options.discoveryTimeoutMs);
    QJsonObject object = describe(*camera);
    QJsonObject properties;
    GenICam::gcstring_vector names;
    camera->getVelmoDeviceInfo().GetPropertyNames(names);
    for (const auto& name : names)
    {
        properties.insert(QString::fromUtf8(name.c_str()), property(*camera, name.c_str()));
    }
    if (options.json)
    {
        object.insert(QStringLiteral("properties"), properties);
        printJson(object);
        return ExitDone;
    }
    QVector<QVector<QString>> rows{{CTexts::tr("PROPERTY"), CTexts::tr("VALUE")}};
    for (auto it = properties.constBegin(); it != properties.constEnd(); ++it)
    {
        rows.append({it.key(), printable(it.value().toString())});
    }
    printTable(rows);
    return ExitDone;
}

} // namespace PoolCli
