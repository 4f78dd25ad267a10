// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace HostKit
{

/**
 * Turns Ctrl-C (SIGINT), SIGTERM and, where it is not ignored, SIGHUP (the terminal was closed) into a signal of the
 * main thread while it lives. A second Ctrl-C ends the program at once, as it would without this. One object at a time.
 */
class HOSTKIT_EXPORT CInterrupt : public QObject
{
    Q_OBJECT
public:
    explicit CInterrupt(QObject* parent = nullptr);
    ~CInterrupt() override;
    bool wasRaised() const { return m_raised; }

signals:
    void raised();

private:
    void onReadable();

    std::unique_ptr<QSocketNotifier> m_notifier;
    bool m_raised = false;
    bool m_isHangupTaken = false;
};

} // namespace HostKit
