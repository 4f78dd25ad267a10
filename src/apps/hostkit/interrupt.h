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
 * main thread while it lives. A second Ctrl-C ends the program at once, as it would without this, unless setPatient()
 * says otherwise. One object at a time.
 */
class HOSTKIT_EXPORT CInterrupt : public QObject
{
    Q_OBJECT
public:
    explicit CInterrupt(QObject* parent = nullptr);
    ~CInterrupt() override;
    bool wasRaised() const { return m_raised; }
    /** Patient: every further Ctrl-C is told with raised(), and none ends the program. Main thread. */
    void setPatient(bool isPatient);

signals:
    void raised();

private:
    void onReadable();
    /** The action for each of the signals. */
    void install(void (*handler)(int), int flags) const;

    std::unique_ptr<QSocketNotifier> m_notifier;
    bool m_raised = false;
    bool m_isHangupTaken = false;
};

} // namespace HostKit
