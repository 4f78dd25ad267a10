// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/grabsession.h"

#include "poolcli/texts.h"

#include "poolcli/output.h"

#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"

#include <algorithm>

namespace PoolCli
{
namespace
{

using Plugin::CameraPool::ICameraStatusService;

/** Whether there was an image that can be decoded: others have no ratio. */
bool hasRatio(const CCompressionStatistic& compression)
{
    return compression.losslessCount > 0 || compression.lossyCount > 0;
}

/** Ratios in per cent of the image's size without compression. */
QJsonObject toJson(const CCompressionStatistic& compression)
{
    QJsonObject object{{"lossless", static_cast<qint64>(compression.losslessCount)},
                       {"lossy", static_cast<qint64>(compression.lossyCount)},
                       {"failed", static_cast<qint64>(compression.failedCount)}};
    if (hasRatio(compression))
    {
        object.insert(QStringLiteral("ratio"), compression.compressionRatio);
        object.insert(QStringLiteral("min_ratio"), compression.minCompressionRatio);
        object.insert(QStringLiteral("max_ratio"), compression.maxCompressionRatio);
    }
    return object;
}

QString toText(const CCompressionStatistic& compression)
{
    if (!hasRatio(compression))
    {
        return CTexts::tr(", compressed, %1 not decodable").arg(compression.failedCount);
    }
    return CTexts::tr(", compressed to %1% (%2% to %3%), %4 lossless, %5 lossy, %6 not decodable")
        .arg(compression.compressionRatio, 0, 'f', 1)
        .arg(compression.minCompressionRatio, 0, 'f', 1)
        .arg(compression.maxCompressionRatio, 0, 'f', 1)
        .arg(compression.losslessCount)
        .arg(compression.lossyCount)
        .arg(compression.failedCount);
}

} // namespace

CGrabSession::CGrabSession(CSession& session, const QVector<HostKit::CameraInfoPtr>& cameras, const SOptions& options)
    : m_session(session), m_options(options)
{
    for (const auto& camera : cameras)
    {
        SGrabCount count;
        count.camera = camera;
        m_counts.append(count);
    }
    connectSignals();
}

SGrabCount* CGrabSession::countOf(const HostKit::CameraInfoPtr& camera)
{
    const auto found =
        std::find_if(m_counts.begin(), m_counts.end(), [&](const SGrabCount& count) { return count.camera == camera; });
    return found == m_counts.end() ? nullptr : &*found;
}

void CGrabSession::connectSignals()
{
    auto& status = m_session.host().status();
    QObject::connect(&status, &ICameraStatusService::cameraImageGrabbed, &m_receiver,
                     [this](const auto& camera, const Velmo::CGrabResultPtr& result)
                     {
                         if (SGrabCount* pCount = countOf(camera))
                         {
                             onImage(*pCount, result);
                         }
                     });
    QObject::connect(&status, &ICameraStatusService::cameraImageGrabFailed, &m_receiver,
                     [this](const auto& camera)
                     {
                         if (SGrabCount* pCount = countOf(camera); pCount != nullptr && !pCount->stopped)
                         {
                             ++pCount->failed;
                             ++pCount->failedSinceLast;
                         }
                     });
    QObject::connect(&status, &ICameraStatusService::cameraStatisticUpdated, &m_receiver,
                     [this](const auto& camera, int, int, double fps, std::uint64_t bps, const auto& compression)
                     {
                         if (SGrabCount* pCount = countOf(camera))
                         {
                             pCount->fps = fps;
                             pCount->bytesPerSecond = bps;
                             pCount->compression = compression;
                         }
                     });
    // An enumeration that misses the camera may come before the news of its loss, which then never arrives.
    QObject::connect(&status, &ICameraStatusService::deviceDisconnected, &m_receiver,
                     [this](const auto& device)
                     {
                         SGrabCount* pCount = countOf(device.template objectCast<Plugin::CameraPool::ICameraInfo>());
                         if (pCount != nullptr && !pCount->stopped)
                         {
                             pCount->lost = true;
                         }
                     });
    QObject::connect(&status, &ICameraStatusService::cameraConnectionLost, &m_receiver,
                     [this](const auto& camera)
                     {
                         if (SGrabCount* pCount = countOf(camera))
                         {
                             pCount->lost = true;
                         }
                     });
}

void CGrabSession::onImage(SGrabCount& count, const Velmo::CGrabResultPtr& result)
{
    if (count.stopped || !result.IsValid())
    {
        return;
    }
    ++count.images;
    count.bytes += static_cast<qint64>(result->GetPayloadSize());
    const quint64 id = result->GetBlockID();
    if (count.lastBlockId != 0 && id > count.lastBlockId + 1)
    {
        const auto gap = static_cast<qint64>(id - count.lastBlockId - 1);
        count.missing += std::max<qint64>(0, gap - count.failedSinceLast);
    }
    count.failedSinceLast = 0;
    count.lastBlockId = id;
    count.last = result;
    if (m_observer)
    {
        m_observer(result);
    }
    if (m_options.images > 0 && count.images >= m_options.images)
    {
        count.stopped = true;
        m_session.host().stream().stopGrabbing(count.camera);
    }
}

bool CGrabSession::isOver() const
{
    return std::all_of(m_counts.begin(), m_counts.end(),
                       [](const SGrabCount& count) { return count.stopped || count.lost || count.isRefused; });
}

void CGrabSession::run()
{
    for (SGrabCount& count : m_counts)
    {
        count.camera->clearError();
        m_session.host().stream().startGrabbing(count.camera);
        if (!m_session.host().status().isCameraGrabbing(count.camera))
        {
            count.refusal = count.camera->errorString();
            count.isRefused = true;
        }
        // It grabs: what was noted on the way, such as that it cannot compress, is no reason for missing images.
        count.camera->clearError();
    }
    m_elapsed.start();
    QObject::connect(&m_liveTimer, &QTimer::timeout, &m_receiver, [this] { showLive(); });
    constexpr int drawnIntervalMs = 200;
    constexpr int printedIntervalMs = 1000;
    m_liveTimer.start(canDraw() && !m_statisticsOnly ? drawnIntervalMs : printedIntervalMs);
    m_session.waitUntil([this] { return isOver(); }, m_options.durationMs > 0 ? m_options.durationMs : -1);
    m_liveTimer.stop();
    for (const SGrabCount& count : m_counts)
    {
        m_session.host().stream().stopGrabbing(count.camera);
    }
    showLive();
}

QJsonObject CGrabSession::describe(const SGrabCount& count) const
{
    QJsonObject object{{"camera", count.camera->getFriendlyName()},
                       {"full_name", count.camera->getFullName()},
                       {"images", count.images},
                       {"failed", count.failed},
                       {"missing", count.missing},
                       {"bytes", count.bytes},
                       {"fps", count.fps},
                       {"bytes_per_second", static_cast<qint64>(count.bytesPerSecond)},
                       {"connection_lost", count.lost}};
    if (count.compression.compressionEnabled)
    {
        object.insert(QStringLiteral("compression"), toJson(count.compression));
    }
    if (!count.picture.isEmpty())
    {
        object.insert(QStringLiteral("picture"), count.picture);
    }
    return object;
}

void CGrabSession::setPicture(const HostKit::CameraInfoPtr& camera, const QString& file)
{
    if (SGrabCount* pCount = countOf(camera))
    {
        pCount->picture = file;
    }
}

void CGrabSession::showStatistics()
{
    m_statisticsOnly = true;
    for (const SGrabCount& count : m_counts)
    {
        m_statistics.push_back(std::make_unique<HostKit::CCameraStatistics>(m_session.host(), count.camera));
    }
}

void CGrabSession::showLive()
{
    if (m_observer || (m_options.json && !m_statisticsOnly))
    {
        return;
    }
    if (m_options.json)
    {
        for (const auto& statistics : m_statistics)
        {
            const QJsonObject latest = statistics->latest();
            if (!latest.isEmpty())
            {
                printJsonLine(latest);
            }
        }
        return;
    }
    const bool draw = canDraw() && !m_statisticsOnly;
    if (draw && m_drawn)
    {
        // Back over the lines drawn before.
        printLine(QStringLiteral("\x1b[%1A\x1b[1A").arg(m_counts.size()));
    }
    constexpr double bytesPerMegabyte = 1e6;
    for (const SGrabCount& count : m_counts)
    {
        QString line = CTexts::tr("%1: %2 images, %3 failed, %4 missing, %5 fps, %6 MB/s")
                           .arg(printable(count.camera->getFriendlyName()))
                           .arg(count.images)
                           .arg(count.failed)
                           .arg(count.missing)
                           .arg(count.fps, 0, 'f', 1)
                           .arg(static_cast<double>(count.bytesPerSecond) / bytesPerMegabyte, 0, 'f', 1);
        if (count.compression.compressionEnabled)
        {
            line += toText(count.compression);
        }
        if (count.lost)
        {
            line += CTexts::tr(" (connection lost)");
        }
        // Cut at the terminal's edge: a line that went on in the next would not be drawn over.
        printLine(draw ? QStringLiteral("\x1b[?7l") + line + QStringLiteral("\x1b[K\x1b[?7h") : line);
    }
    m_drawn = true;
}

void CGrabSession::printSummary() const
{
    if (!m_options.json || m_statisticsOnly || m_observer)
    {
        return;
    }
    QJsonArray array;
    for (const SGrabCount& count : m_counts)
    {
        array.append(describe(count));
    }
    printJson(array);
}

bool CGrabSession::isBarren(const SGrabCount& count)
{
    return count.images == 0 && !m_session.isToEnd();
}

bool CGrabSession::isUndecodable(const SGrabCount& count) const
{
    // Whoever looks at something else of the images has it all the same.
    return !m_observer && !m_statisticsOnly && count.images > 0 && count.compression.compressionEnabled &&
           count.compression.failedCount > 0 && !hasRatio(count.compression);
}

void CGrabSession::printFailures()
{
    for (const SGrabCount& count : m_counts)
    {
        const QString name = printable(count.camera->getFriendlyName());
        if (count.isRefused)
        {
            printError(CTexts::tr("%1 does not start grabbing: %2").arg(name, count.refusal));
        }
        else if (count.lost)
        {
            printError(CTexts::tr("%1: the connection to the camera was lost.").arg(name));
        }
        else if (isBarren(count))
        {
            const QString reason = count.camera->errorString();
            printError(CTexts::tr("%1 gave no image: %2")
                           .arg(name, reason.isEmpty() ? CTexts::tr("none arrived in time.") : reason));
        }
        else if (isUndecodable(count))
        {
            printError(CTexts::tr("%1: none of its compressed images can be decoded.").arg(name));
        }
    }
}

int CGrabSession::exitCode()
{
    const bool bad = std::any_of(m_counts.begin(), m_counts.end(),
                                 [this](const SGrabCount& count)
                                 { return count.isRefused || count.lost || isBarren(count) || isUndecodable(count); });
    return bad || m_counts.isEmpty() ? ExitRefused : ExitDone;
}

} // namespace PoolCli
