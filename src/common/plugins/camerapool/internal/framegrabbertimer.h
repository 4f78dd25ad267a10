// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"

#include <QElapsedTimer>
#include <QTimer>

namespace Plugin::CameraPool::Internal
{

/**
 * A single-shot timer that is restarted far more often than it expires.
 *
 * Starting a QTimer anew takes it out of the dispatcher's list and allocates a new entry; postponing this one only
 * notes the time, and a run that ends too early goes on for what is left. timeout() is emitted one full interval after
 * the last start or postpone(). Threads: that of the object.
 */
class CAMERAPOOL_TEST_EXPORT CFrameGrabberTimer : public QTimer
{
    Q_OBJECT
public:
    explicit CFrameGrabberTimer(QObject* parent = nullptr);
    ~CFrameGrabberTimer() override;

    /** Starts the timer, or starts it anew while it runs, with that interval in milliseconds. */
    void postpone(int intervalMs);

protected:
    void timerEvent(QTimerEvent* pEvent) override;

private:
    QElapsedTimer m_sinceLastStart;
    int m_intervalMs = 0;
};

} // namespace Plugin::CameraPool::Internal
