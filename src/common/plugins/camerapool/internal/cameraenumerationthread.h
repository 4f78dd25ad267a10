// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/itransportlayerinfo.h"

#include <QMutex>
#include <QThread>
#include <QVector>
#include <QWaitCondition>

namespace Plugin::CameraPool::Internal
{

/**
 * The thread that enumerates, one pass at a time, whenever it is asked to.
 *
 * Holds one initialization of the SDK. Requests that come while a pass runs give one further pass together; those
 * that come while the thread does not run are forgotten. Threads: functions from the one that made it; signals are
 * emitted on this thread.
 */
class CAMERAPOOL_TEST_EXPORT CCameraEnumerationThread : public QThread
{
    Q_OBJECT
public:
    explicit CCameraEnumerationThread(QObject* parent);
    /** Stops, and waits for the end of a pass. */
    ~CCameraEnumerationThread() override;

    /** Starts, or takes back a stop that has not come into effect. */
    void enable();
    /** False takes back a request that waits for the end of a pass; a thread that sleeps is woken all the same.
     *  Returns at once. */
    void doEnumerationAsync(bool request);
    /** Returns when the thread has ended, or after 30 seconds; then it ends with the pass it is in. */
    void stop();

signals:
    void enumerationStarted();
    void enumerationFinished(QVector<TransportLayerInfoPtr> result);

protected:
    void run() override;

private:
    /** False when the thread is to end. */
    bool waitForRequest();

    QMutex m_mutex; // guards the members below
    QWaitCondition m_condition;
    bool m_stopRequested = false;
    bool m_requestPending = false;
    bool m_isWaiting = false;
    bool m_isWoken = false;
    bool m_isLeaving = false;
};

} // namespace Plugin::CameraPool::Internal
