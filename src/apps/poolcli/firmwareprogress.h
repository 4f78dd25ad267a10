// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/idevicefirmwareupdate.h"

#include <QObject>

namespace PoolCli
{

/**
 * Shows how an update proceeds: on a terminal a bar for each step, elsewhere a line for each. Times are estimates.
 *
 * Main thread; the job's signals, emitted on the thread that applies the update, come queued.
 */
class CFirmwareProgress : public QObject
{
    Q_OBJECT
public:
    explicit CFirmwareProgress(const Plugin::CameraPool::IDeviceFirmwareUpdate& job);
    /** What is printed next begins a line of its own. */
    void endBar();

private:
    using EStep = Plugin::CameraPool::EFirmwareUpdateStep;

    void onBegin(unsigned int estimatedMs);
    void onStepBegin(EStep step, unsigned int estimatedMs, const QString& description);
    void onPercent(double percent);
    void onStepDone();
    void draw(double percent);

    const bool m_isDrawn;
    QString m_step;
    int m_percent = 0; // drawn last
    bool m_isBarOpen = false;
};

/** What a step is called where the package does not say. */
QString firmwareStepName(Plugin::CameraPool::EFirmwareUpdateStep step);
/** "90 s", "0.2 s"; "" for 0, which is not known. */
QString estimatedTime(unsigned int timeMs);

} // namespace PoolCli
