// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraenumerationservice.h"

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/interfaceinfo.h"
#include "camerapool/internal/transportlayerinfo.h"

#include <QMutexLocker>
#include <QScopedValueRollback>
#include <QTimer>

#include <utility>

namespace Plugin::CameraPool::Internal
{

namespace
{

constexpr int FirstPassDelayMs = 100;
constexpr int PassIntervalMs = 10000;
constexpr int ForcedPassDelayMs = 50;

unsigned int changeCountOf(const TransportLayerInfoPtr& record)
{
    const auto* const pRecord = qobject_cast<const CTransportLayerInfo*>(record.data());
    return pRecord != nullptr ? pRecord->changeCount() : 0;
}

} // namespace

CCameraEnumerationService::CCameraEnumerationService(QPointer<CCameraPool> cameraPool,
                                                     QPointer<CInterfacePool> interfacePool, QObject* parent)
    : ICameraEnumerationService(parent), m_thread(new CCameraEnumerationThread(this)), m_pTimer(new QTimer(this)),
      m_cameraPool(std::move(cameraPool)), m_interfacePool(std::move(interfacePool))
{
    connect(m_pTimer, &QTimer::timeout, this, &CCameraEnumerationService::triggerEnumeration);
    connect(m_thread, &CCameraEnumerationThread::enumerationFinished, this,
            &CCameraEnumerationService::onEnumerationFinished);
    if (m_cameraPool)
    {
        connect(m_cameraPool, &CCameraPool::cameraConnectionLost, this, &CCameraEnumerationService::removeDevice);
    }
    m_thread->enable();
    QTimer::singleShot(FirstPassDelayMs, Qt::PreciseTimer, this, &CCameraEnumerationService::triggerEnumeration);
    m_pTimer->start(PassIntervalMs);
}

CCameraEnumerationService::~CCameraEnumerationService()
{
    // While this is still a whole service: the thread emits until it has ended.
    delete m_thread;
}

QVector<TransportLayerInfoPtr> CCameraEnumerationService::enumerate()
{
    const QMutexLocker locker(&m_mutex);
    return m_lastResult;
}

QVector<TransportLayerInfoPtr> CCameraEnumerationService::enumerate(QString)
{
    return {};
}

QVector<CameraInfoPtr> CCameraEnumerationService::getOpenCameras()
{
    return m_cameraPool ? m_cameraPool->getOpenCameras() : QVector<CameraInfoPtr>();
}

bool CCameraEnumerationService::isEnumerationEnabled() const
{
    return m_thread && m_thread->isRunning();
}

void CCameraEnumerationService::triggerEnumeration()
{
    const QMutexLocker locker(&m_mutex);
    if (m_thread)
    {
        m_thread->doEnumerationAsync(true);
    }
}

void CCameraEnumerationService::setEnumerationEnabled(bool enabled)
{
    const QMutexLocker locker(&m_mutex);
    setEnabledLocked(enabled);
}

void CCameraEnumerationService::setEnabledLocked(bool enabled)
{
    if (enabled && m_disableAfterOnePass)
    {
        forgetDisableOnceLocked();
    }
    if (!m_thread)
    {
        return;
    }
    if (enabled)
    {
        m_thread->enable();
    }
    else
    {
        m_thread->stop();
    }
}

void CCameraEnumerationService::forgetDisableOnceLocked()
{
    m_disableAfterOnePass = false;
    if (m_thread)
    {
        disconnect(m_thread, &CCameraEnumerationThread::enumerationFinished, this,
                   &CCameraEnumerationService::disableOnce);
    }
}

void CCameraEnumerationService::forceUpdate()
{
    const QMutexLocker locker(&m_mutex);
    if (m_thread && !m_thread->isRunning())
    {
        m_thread->enable();
        m_disableAfterOnePass = true;
        connect(m_thread, &CCameraEnumerationThread::enumerationFinished, this, &CCameraEnumerationService::disableOnce,
                Qt::UniqueConnection);
    }
    QTimer::singleShot(ForcedPassDelayMs, this, &CCameraEnumerationService::triggerEnumeration);
}

void CCameraEnumerationService::disableOnce()
{
    const QMutexLocker locker(&m_mutex);
    if (m_disableAfterOnePass)
    {
        forgetDisableOnceLocked();
        setEnabledLocked(false);
    }
}

void CCameraEnumerationService::removeDevice(const CameraInfoPtr& info)
{
    const auto result = enumerate();
    bool isRemoved = false;
    for (const auto& record : result)
    {
        auto* const pRecord = qobject_cast<CTransportLayerInfo*>(record.data());
        isRemoved = (pRecord != nullptr && pRecord->removeCamera(info)) || isRemoved;
    }
    if (isRemoved)
    {
        onEnumerationFinished(result);
    }
}

void CCameraEnumerationService::onEnumerationFinished(QVector<TransportLayerInfoPtr> result)
{
    {
        const QMutexLocker locker(&m_mutex);
        if (isSameAsLastLocked(result))
        {
            return;
        }
        storeLocked(result);
    }
    notifyEnumerationChanged();
}

bool CCameraEnumerationService::isSameAsLastLocked(const QVector<TransportLayerInfoPtr>& result) const
{
    if (result.size() != m_lastResult.size())
    {
        return false;
    }
    for (int i = 0; i < result.size(); ++i)
    {
        if (result.at(i) != m_lastResult.at(i) || result.at(i)->haveContainedCamerasChanged() ||
            changeCountOf(result.at(i)) != m_lastChangeCounts.at(i))
        {
            return false;
        }
    }
    return true;
}

void CCameraEnumerationService::storeLocked(const QVector<TransportLayerInfoPtr>& result)
{
    m_lastResult = result;
    m_lastChangeCounts.clear();
    for (const auto& record : result)
    {
        m_lastChangeCounts.append(changeCountOf(record));
    }
    m_enumerationChanged = true;
}

void CCameraEnumerationService::notifyEnumerationChanged()
{
    {
        const QMutexLocker locker(&m_mutex);
        if (m_isAnnouncing)
        {
            return;
        }
    }
    const QScopedValueRollback<bool> announcing(m_isAnnouncing, true);
    while (true)
    {
        {
            const QMutexLocker locker(&m_mutex);
            if (!std::exchange(m_enumerationChanged, false))
            {
                return;
            }
        }
        announce();
        emit enumerationChanged();
    }
}

void CCameraEnumerationService::announce()
{
    const auto transportLayers = enumerate();
    const auto forBoth = [this](void (ADevicePool::*tell)())
    {
        if (m_cameraPool)
        {
            (m_cameraPool->*tell)();
        }
        if (m_interfacePool)
        {
            (m_interfacePool->*tell)();
        }
    };
    forBoth(&ADevicePool::beginAnnounce);
    for (const auto& transportLayer : transportLayers)
    {
        if (m_interfacePool)
        {
            m_interfacePool->announceDevices(transportLayer->getInterfaceInfoList().toBaseInfoVector());
        }
        if (m_cameraPool)
        {
            m_cameraPool->announceDevices(transportLayer->getCameraInfoList().toBaseInfoVector());
        }
    }
    forBoth(&ADevicePool::endAnnounce);
}

} // namespace Plugin::CameraPool::Internal
