// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/session.h"

#include "poolcli/output.h"
#include "poolcli/texts.h"

#include "camerapool/camerainfolist.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/itransportlayerinfo.h"
#include "camerapool/tltypes.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>

namespace PoolCli
{
CSession::CSession(const QString& language) : m_host(HostKit::CHost::defaultPluginFolder())
{
    if (!m_host.start(language))
    {
        throw CRefusal(m_host.errors().join(QLatin1Char('\n')));
    }
    QObject::connect(&m_host.enumeration(), &Plugin::CameraPool::ICameraEnumerationService::enumerationChanged,
                     &m_interrupt, [this] { m_discovered = true; });
}

bool CSession::isToEnd() const
{
    return m_interrupt.wasRaised() || outputError() != 0;
}

bool CSession::waitUntil(const std::function<bool()>& condition, int timeoutMs)
{
    if (condition() || isToEnd() || timeoutMs == 0)
    {
        return condition();
    }
    QEventLoop loop;
    // Checked whenever all events have been handled: the one place that no change of the condition can slip past.
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &loop,
                     [&]
                     {
                         if (condition() || outputError() != 0)
                         {
                             loop.quit();
                         }
                     });
    QObject::connect(&m_interrupt, &HostKit::CInterrupt::raised, &loop, &QEventLoop::quit);
    if (timeoutMs > 0)
    {
        QTimer::singleShot(timeoutMs, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    }
    loop.exec();
    return condition();
}

void CSession::waitForDiscovery(int timeoutMs)
{
    waitUntil([this] { return m_discovered; }, timeoutMs);
}

QVector<HostKit::CameraInfoPtr> CSession::cameras()
{
    QVector<HostKit::CameraInfoPtr> result;
    const auto layers = m_host.enumeration().enumerate();
    for (const auto& layer : layers)
    {
        const auto records = layer->getCameraInfoList().toBaseInfoVector();
        for (const auto& record : records)
        {
            if (const auto camera = record.objectCast<Plugin::CameraPool::ICameraInfo>())
            {
                result.append(camera);
            }
        }
    }
    return result;
}

HostKit::CameraInfoPtr CSession::camera(const QString& name, int timeoutMs)
{
    waitForDiscovery(timeoutMs);
    if (name.isEmpty())
    {
        const auto all = cameras();
        if (all.size() != 1)
        {
            throw CRefusal(all.isEmpty() ? CTexts::tr("There is no camera.")
                                         : CTexts::tr("There are %1 cameras; name one of them.").arg(all.size()));
        }
        return all.first();
    }
    QString error;
    HostKit::CameraInfoPtr found;
    waitUntil([&] { return !(found = HostKit::findByName(cameras(), name, error)).isNull(); },
              m_discovered ? 0 : timeoutMs);
    if (found.isNull())
    {
        throw CRefusal(error);
    }
    return found;
}

QVector<HostKit::CameraInfoPtr> CSession::camerasCalled(const QStringList& names, int timeoutMs)
{
    QVector<HostKit::CameraInfoPtr> result;
    if (names.isEmpty())
    {
        waitForDiscovery(timeoutMs);
        result = cameras();
        if (result.isEmpty())
        {
            throw CRefusal(CTexts::tr("There is no camera."));
        }
        return result;
    }
    for (const QString& name : names)
    {
        const auto found = camera(name, timeoutMs);
        if (!result.contains(found))
        {
            result.append(found);
        }
    }
    return result;
}

QVector<HostKit::InterfaceInfoPtr> CSession::interfaces()
{
    QVector<HostKit::InterfaceInfoPtr> result;
    const auto layers = m_host.enumeration().enumerate();
    for (const auto& layer : layers)
    {
        const auto records = layer->getInterfaceInfoList().toBaseInfoVector();
        for (const auto& record : records)
        {
            const auto info = record.objectCast<Plugin::CameraPool::IInterfaceInfo>();
            // Two transport layers that use the same identifier share the record.
            if (info && !result.contains(info))
            {
                result.append(info);
            }
        }
    }
    return result;
}

HostKit::InterfaceInfoPtr CSession::interfaceCalled(const QString& name, int timeoutMs)
{
    waitForDiscovery(timeoutMs);
    QString error;
    const auto found = HostKit::findInterface(interfaces(), name, error);
    if (found.isNull())
    {
        throw CRefusal(error);
    }
    return found;
}

HostKit::InterfaceInfoPtr CSession::interfaceOf(const HostKit::CameraInfoPtr& camera)
{
    const auto found = HostKit::interfaceOf(interfaces(), *camera);
    if (found.isNull() && camera->getTLType() == Plugin::CameraPool::TLTypeCamEmu)
    {
        throw CRefusal(
            CTexts::tr("%1 is on no interface: an emulated camera is on one when its data name it (\"interface\").")
                .arg(camera->getFriendlyName()));
    }
    if (found.isNull())
    {
        throw CRefusal(CTexts::tr("%1 is on no interface that could be opened; 'poolcli interfaces' lists those.")
                           .arg(camera->getFriendlyName()));
    }
    return found;
}

void CSession::open(const DeviceInfoPtr& device, bool monitorMode)
{
    device->clearError();
    if (!m_host.control().open(device, monitorMode))
    {
        const QString reason = device->errorString();
        throw CRefusal(
            CTexts::tr("%1 could not be opened: %2")
                .arg(device->getFriendlyName(), reason.isEmpty() ? CTexts::tr("it is in exclusive use.") : reason));
    }
}

void CSession::close(const DeviceInfoPtr& device)
{
    m_host.control().close(device);
}

QSharedPointer<ParameterCollection::IParameterCollection> CSession::parameters(const DeviceInfoPtr& device)
{
    auto collection = m_host.parameters().getParameterCollection(device);
    if (collection.isNull())
    {
        throw CRefusal(CTexts::tr("%1 has no parameters.").arg(device->getFriendlyName()));
    }
    return collection;
}

} // namespace PoolCli
