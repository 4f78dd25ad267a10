// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraenumerationthread.h"

#include "camerapool/internal/enumerationlog.h"
#include "camerapool/transportlayerlist.h"
#include "velmo/velmo.h"

#include <QMutexLocker>

namespace Plugin::CameraPool::Internal
{

namespace
{

constexpr unsigned long StopTimeoutMs = 30000;

} // namespace

CCameraEnumerationThread::CCameraEnumerationThread(QObject* parent) : QThread(parent)
{
    setObjectName(QStringLiteral("CameraEnumerationThread"));
    qRegisterMetaType<TransportLayerInfoPtr>("TransportLayerInfoPtr");
    qRegisterMetaType<QVector<TransportLayerInfoPtr>>("QVector<TransportLayerInfoPtr>");
    Velmo::VelmoInitialize();
}

CCameraEnumerationThread::~CCameraEnumerationThread()
{
    stop();
    // A pass that hangs in a driver still uses the SDK and this object.
    wait();
    CTransportLayerList::releaseTeskProducer();
    Velmo::VelmoTerminate(true);
}

void CCameraEnumerationThread::enable()
{
    bool isLeaving = false;
    {
        const QMutexLocker locker(&m_mutex);
        m_stopRequested = false;
        isLeaving = m_isLeaving;
    }
    if (isLeaving)
    {
        wait();
        // Not left to run(): a second call before that would wait for a thread that is not to end.
        const QMutexLocker locker(&m_mutex);
        m_isLeaving = false;
    }
    start(QThread::InheritPriority);
}

void CCameraEnumerationThread::doEnumerationAsync(bool request)
{
    const QMutexLocker locker(&m_mutex);
    m_requestPending = request && isRunning();
    m_isWoken = m_isWaiting;
    m_condition.wakeAll();
}

void CCameraEnumerationThread::stop()
{
    if (!isRunning())
    {
        return;
    }
    {
        const QMutexLocker locker(&m_mutex);
        m_stopRequested = true;
        m_condition.wakeAll();
    }
    if (wait(StopTimeoutMs))
    {
        const QMutexLocker locker(&m_mutex);
        m_stopRequested = false;
    }
}

bool CCameraEnumerationThread::waitForRequest()
{
    const QMutexLocker locker(&m_mutex);
    m_isWaiting = true;
    while (!m_stopRequested && !m_requestPending && !m_isWoken)
    {
        if (!m_condition.wait(&m_mutex))
        {
            break;
        }
    }
    m_isWaiting = false;
    const bool isAsked = m_requestPending || m_isWoken;
    // Taken before the pass: what is asked for while it runs cannot be in its result.
    m_requestPending = false;
    m_isWoken = false;
    m_isLeaving = m_stopRequested || !isAsked;
    if (m_isLeaving)
    {
        m_stopRequested = false;
    }
    return !m_isLeaving;
}

void CCameraEnumerationThread::run()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_isLeaving = false;
    }
    qCDebug(enumerationLog, "CameraEnumerationThread started.");
    CTransportLayerList list;
    while (waitForRequest())
    {
        emit enumerationStarted();
        try
        {
            CTransportLayerList::refreshTransportLayerList(list, false, false, true);
        }
        catch (...)
        {
            qCDebug(enumerationLog, "CCameraEnumerationThread has errors.");
        }
        emit enumerationFinished(list);
    }
    qCDebug(enumerationLog, "CameraEnumerationThread ended");
}

} // namespace Plugin::CameraPool::Internal
