// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/eventlistener.h"
#include "poolcli/eventsettings.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "parametercollection/parameters.h"

namespace PoolCli
{
namespace
{

using Plugin::CameraPool::ICameraStatusService;

void show(const SSeenEvent& event, bool json)
{
    if (json)
    {
        QJsonObject values;
        for (const auto& [name, value] : event.values)
        {
            values.insert(name, value);
        }
        QJsonObject object{{"event", event.name}, {"timestamp", event.timestamp}, {"values", values}};
        object.insert(QStringLiteral("id"), event.id < 0 ? QJsonValue() : QJsonValue(event.id));
        printJsonLine(object);
        return;
    }
    QStringList parts{event.name};
    if (event.id >= 0)
    {
        parts.append(QStringLiteral("id=0x%1").arg(event.id, 4, 16, QLatin1Char('0')));
    }
    if (!event.timestamp.isEmpty())
    {
        parts.append(QStringLiteral("timestamp=%1").arg(event.timestamp));
    }
    for (const auto& [name, value] : event.values)
    {
        parts.append(QStringLiteral("%1=%2").arg(name, printable(value)));
    }
    printLine(parts.join(QStringLiteral("  ")));
}

/** Grabs while it lives, when it is asked to: most events are of images. */
class CGrabbing
{
public:
    CGrabbing(CSession& session, HostKit::CameraInfoPtr camera, bool isWanted)
        : m_session(session), m_camera(std::move(camera)), m_isWanted(isWanted)
    {
        if (!m_isWanted)
        {
            return;
        }
        m_camera->clearError();
        m_session.host().stream().startGrabbing(m_camera);
        if (!m_session.host().status().isCameraGrabbing(m_camera))
        {
            throw CRefusal(
                CTexts::tr("%1 did not start: %2").arg(m_camera->getFriendlyName(), m_camera->errorString()));
        }
    }
    ~CGrabbing()
    {
        if (m_isWanted)
        {
            m_session.host().stream().stopGrabbing(m_camera);
        }
    }
    CGrabbing(const CGrabbing&) = delete;
    CGrabbing& operator=(const CGrabbing&) = delete;

private:
    CSession& m_session;
    const HostKit::CameraInfoPtr m_camera;
    const bool m_isWanted;
};

/** True while the camera is there. */
class CConnection : public QObject
{
public:
    CConnection(CSession& session, const HostKit::CameraInfoPtr& camera)
    {
        auto& status = session.host().status();
        // An enumeration that misses the camera may come before the news of its loss, which then never arrives.
        QObject::connect(&status, &ICameraStatusService::deviceDisconnected, this,
                         [this, camera](const auto& device) { m_isLost = m_isLost || device == camera; });
        QObject::connect(&status, &ICameraStatusService::cameraConnectionLost, this,
                         [this, camera](const auto& info) { m_isLost = m_isLost || info == camera; });
    }
    bool isLost() const { return m_isLost; }

private:
    bool m_isLost = false;
};

qint64 droppedEvents(const CEventSettings::Collection& collection)
{
    return ParameterCollection::CIntegerParameter(collection, QStringLiteral("@EventGrabber/EventDroppedCount"))
        .valueOr(0);
}

/** Those to listen to; throws CRefusal when one that was named cannot be heard. */
QStringList listenableOf(const CEventListener& listener, const QStringList& named)
{
    for (const QString& name : named)
    {
        if (!listener.heard().contains(name))
        {
            throw CRefusal(CTexts::tr("The camera has no features that show the event %1.").arg(name));
        }
    }
    if (listener.heard().isEmpty())
    {
        throw CRefusal(CTexts::tr("The camera has no features that show its events."));
    }
    return listener.heard();
}

} // namespace

int runEvents(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    const auto collection = session.parameters(camera.info());
    const CConnection connection(session, camera.info());
    CEventSettings settings(collection);
    settings.check(options.arguments);
    const QStringList all = settings.names();
    CEventListener listener(*collection, all, options.arguments.isEmpty() ? all : options.arguments);
    settings.enable(listenableOf(listener, options.arguments));
    int shown = 0;
    {
        const CGrabbing grabbing(session, camera.info(), options.isToGrab);
        if (stdoutIsTerminal() && !options.json)
        {
            printLine(CTexts::tr("Waiting for %1; Ctrl-C ends.").arg(listener.heard().join(QStringLiteral(", "))));
        }
        applySettings(session, camera.info(), options);
        session.waitUntil(
            [&]
            {
                SSeenEvent event;
                while ((options.images == 0 || shown < options.images) && listener.take(event))
                {
                    show(event, options.json);
                    ++shown;
                }
                return connection.isLost() || (options.images > 0 && shown >= options.images);
            },
            options.durationMs > 0 ? options.durationMs : -1);
    }
    if (connection.isLost())
    {
        throw CRefusal(CTexts::tr("%1: the connection to the camera was lost.").arg(camera.info()->getFriendlyName()));
    }
    settings.restore();
    if (const qint64 dropped = droppedEvents(collection); dropped > 0)
    {
        printError(CTexts::tr("%1 events came faster than they could be handled and were dropped.").arg(dropped));
    }
    return ExitDone;
}

} // namespace PoolCli
