// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/framegrabbertimer.h"

#include <QTimerEvent>

namespace Plugin::CameraPool::Internal
{

CFrameGrabberTimer::CFrameGrabberTimer(QObject* parent) : QTimer(parent)
{
    setSingleShot(true);
}

CFrameGrabberTimer::~CFrameGrabberTimer() = default;

void CFrameGrabberTimer::postpone(int intervalMs)
{
    m_sinceLastStart.start();
    if (!isActive() || intervalMs != m_intervalMs)
    {
        m_intervalMs = intervalMs;
        start(intervalMs);
    }
}

void CFrameGrabberTimer::timerEvent(QTimerEvent* pEvent)
{
    const qint64 leftMs = m_intervalMs - m_sinceLastStart.elapsed();
    // A coarse timer may come up to one twentieth of its interval early.
    if (pEvent->timerId() == timerId() && leftMs > m_intervalMs / 20)
    {
        start(static_cast<int>(leftMs));
        return;
    }
    QTimer::timerEvent(pEvent);
}

} // namespace Plugin::CameraPool::Internal
