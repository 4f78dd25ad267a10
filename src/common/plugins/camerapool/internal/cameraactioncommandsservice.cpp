// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraactioncommandsservice.h"

#include "camerapool/deviceclasses.h"
#include "camerapool/internal/tlhandle.h"
#include "genapi/exceptions.h"
#include "parametercollection/vmcamera.h"

#include <QtDebug>

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

namespace Plugin::CameraPool::Internal
{

namespace
{

using ParameterCollection::CParameter;
using ParameterCollection::VMCamera;
using CollectionPtr = QSharedPointer<ParameterCollection::IParameterCollection>;

bool offersActions(const VMCamera& camera)
{
    return camera.ActionDeviceKey.isAvailable() && camera.ActionGroupKey.isAvailable() &&
           camera.ActionGroupMask.isAvailable() && camera.ActionSelector.isAvailable();
}

/** Two names that one feature goes by, the older and the newer. */
QString eitherName(const CParameter& older, const CParameter& newer)
{
    return QStringLiteral("%1|%2").arg(older.name(), newer.name());
}

bool offersEither(const CollectionPtr& collection, const QString& names)
{
    const QStringList all = names.split(QLatin1Char('|'));
    return std::any_of(all.cbegin(), all.cend(),
                       [&](const QString& name) { return CParameter(collection, name).isAvailable(); });
}

void appendResults(QVector<SGigEActionCommandResult>& results, const Velmo::GigEActionCommandResult* raw,
                   unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i)
    {
        SGigEActionCommandResult result;
        result.hasError = raw[i].Status != 0;
        qstrncpy(result.deviceAddress, raw[i].DeviceAddress, sizeof result.deviceAddress);
        results.append(result);
    }
}

} // namespace

CCameraActionCommandsService::CCameraActionCommandsService(QPointer<CCameraPool> pool, QObject* parent)
    : ICameraActionCommandsService(parent), m_pool(std::move(pool))
{
}

CCameraActionCommandsService::~CCameraActionCommandsService() = default;

CollectionPtr CCameraActionCommandsService::getParameterColllection(QSharedPointer<ICameraInfo> info)
{
    const auto device = m_pool ? m_pool->findDevice(info) : QSharedPointer<IDevice>();
    return device.isNull() ? CollectionPtr() : device->getParameterCollection();
}

bool CCameraActionCommandsService::isSupported(QSharedPointer<ICameraInfo> info)
{
    const auto collection = getParameterColllection(info);
    return !collection.isNull() && offersActions(VMCamera(collection));
}

bool CCameraActionCommandsService::isScheduledSupported(QSharedPointer<ICameraInfo> info)
{
    const auto collection = getParameterColllection(info);
    if (collection.isNull())
    {
        return false;
    }
    const VMCamera camera(collection);
    return offersActions(camera) && offersEither(collection, eitherName(camera.GevIEEE1588, camera.PtpEnable)) &&
           offersEither(collection, eitherName(camera.GevIEEE1588DataSetLatch, camera.PtpDataSetLatch));
}

bool CCameraActionCommandsService::issue(unsigned int deviceKey, unsigned int groupKey, unsigned int groupMask,
                                         QVector<SGigEActionCommandResult>& results, const QString& broadcastAddress,
                                         unsigned int timeoutMs, unsigned int* numResults)
{
    return send(
        [&, address = broadcastAddress.toUtf8()](Velmo::IGigETransportLayer& tl, Velmo::GigEActionCommandResult* raw) {
            return tl.IssueActionCommand(deviceKey, groupKey, groupMask, address.constData(), timeoutMs, numResults,
                                         raw);
        },
        results, numResults);
}

bool CCameraActionCommandsService::schedule(unsigned int deviceKey, unsigned int groupKey, unsigned int groupMask,
                                            unsigned long long actionTime, QVector<SGigEActionCommandResult>& results,
                                            const QString& broadcastAddress, unsigned int timeoutMs,
                                            unsigned int* numResults)
{
    return send(
        [&, address = broadcastAddress.toUtf8()](Velmo::IGigETransportLayer& tl, Velmo::GigEActionCommandResult* raw)
        {
            return tl.IssueScheduledActionCommand(deviceKey, groupKey, groupMask, actionTime, address.constData(),
                                                  timeoutMs, numResults, raw);
        },
        results, numResults);
}

bool CCameraActionCommandsService::send(const Command& command, QVector<SGigEActionCommandResult>& results,
                                        unsigned int* numResults)
{
    bool isDone = false;
    try
    {
        TlHandle tl(Velmo::CTlFactory::GetInstance().CreateTl(DeviceClass::GigE));
        const auto room = static_cast<unsigned int>(results.size());
        const auto raw = std::make_unique<Velmo::GigEActionCommandResult[]>(room);
        if (numResults != nullptr)
        {
            // The SDK takes the number for the size of the array.
            *numResults = std::min(*numResults, room);
        }
        if (auto* pGigE = dynamic_cast<Velmo::IGigETransportLayer*>(tl.get()))
        {
            isDone = command(*pGigE, raw.get());
        }
        else if (numResults != nullptr)
        {
            *numResults = 0;
        }
        tl.reset();
        results.resize(0); // keeps the capacity
        appendResults(results, raw.get(), numResults == nullptr ? 0 : std::min(*numResults, room));
    }
    catch (const GenICam::GenericException& e)
    {
        qDebug("%s", e.GetDescription());
    }
    catch (const std::exception& e)
    {
        qDebug("%s", e.what());
    }
    catch (...)
    {
        qDebug("%s", "Unknown exception while an action command was sent.");
    }
    return isDone;
}

} // namespace Plugin::CameraPool::Internal
