// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/options.h"
#include "poolcli/session.h"

#include "camerapool/compressionstatistic.h"
#include "hostkit/camerastatistics.h"
#include "velmo/grabresult.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace PoolCli
{

/** What one camera of a grab has done so far. */
struct SGrabCount
{
    HostKit::CameraInfoPtr camera;
    qint64 images = 0;
    qint64 failed = 0;
    qint64 missing = 0;         // gaps in the camera's frame numbers that no failed image explains
    qint64 failedSinceLast = 0; // since the last good image
    qint64 bytes = 0;
    quint64 lastBlockId = 0;
    double fps = 0.0;
    quint64 bytesPerSecond = 0;
    bool lost = false;
    bool isRefused = false; // it did not start
    QString refusal;        // why not
    bool stopped = false;   // as many images as were asked for
    CCompressionStatistic compression;
    Velmo::CGrabResultPtr last;
    QString picture; // the file that its last image was written to
};

/**
 * Grabs from several open cameras at once and shows a live line for each. Main thread.
 *
 * On a terminal the lines are drawn over; elsewhere a line a camera and second is printed, with --json none.
 */
class CGrabSession
{
public:
    CGrabSession(CSession& session, const QVector<HostKit::CameraInfoPtr>& cameras, const SOptions& options);

    /** Called for each good image instead of the live line. */
    using ImageObserver = std::function<void(const Velmo::CGrabResultPtr&)>;

    /** With --json, prints what the cameras' source nodes tell, each second, instead of a summary. */
    void showStatistics();
    void setImageObserver(ImageObserver observer) { m_observer = std::move(observer); }
    /** Starts, waits for the end (images, time, Ctrl-C, no camera left), stops. A camera that does not start is told by
     * printFailures(). */
    void run();
    /** For the summary: the camera's picture is in that file. */
    void setPicture(const HostKit::CameraInfoPtr& camera, const QString& file);
    void printSummary() const;
    /** Says on stderr what makes exitCode() ExitRefused. */
    void printFailures();
    const QVector<SGrabCount>& counts() const { return m_counts; }
    /** ExitRefused when there was no camera, one did not start or was lost, gave no image at all though nobody ended
     * the grab early, or only compressed ones that cannot be decoded (when the images are what was asked for). */
    int exitCode();

private:
    void connectSignals();
    SGrabCount* countOf(const HostKit::CameraInfoPtr& camera);
    void onImage(SGrabCount& count, const Velmo::CGrabResultPtr& result);
    bool isOver() const;
    bool isBarren(const SGrabCount& count);
    bool isUndecodable(const SGrabCount& count) const;
    void showLive();
    QJsonObject describe(const SGrabCount& count) const;

    CSession& m_session;
    SOptions m_options;
    QVector<SGrabCount> m_counts;
    QObject m_receiver;
    QTimer m_liveTimer;
    QElapsedTimer m_elapsed;
    bool m_statisticsOnly = false;
    std::vector<std::unique_ptr<HostKit::CCameraStatistics>> m_statistics; // in the order of m_counts
    ImageObserver m_observer;
    bool m_drawn = false;
};

} // namespace PoolCli
