// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "streams.h"

#include "camerapool/camerainfolist.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "hostkit/cameranames.h"
#include "hostkit/host.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHash>
#include <QTimer>

#include <functional>
#include <stdexcept>

namespace Benchmarks
{

namespace
{

using HostKit::CameraInfoPtr;
using Plugin::CameraPool::ICameraInfo;
using Plugin::CameraPool::ICameraStatusService;

constexpr int PatienceMs = 60000;

void runLoop(int milliseconds, const std::function<bool()>& isDone)
{
    const QDeadlineTimer deadline(milliseconds, Qt::PreciseTimer);
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.start(milliseconds);
    while (!deadline.hasExpired() && !isDone())
    {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void waitFor(const char* what, const std::function<bool()>& isDone)
{
    runLoop(PatienceMs, isDone);
    if (!isDone())
    {
        throw std::runtime_error(std::string("Not within a minute: ") + what);
    }
}

QVector<CameraInfoPtr> camerasOf(HostKit::CHost& host)
{
    QVector<CameraInfoPtr> result;
    for (const auto& layer : host.enumeration().enumerate())
    {
        for (const auto& record : layer->getCameraInfoList().toBaseInfoVector())
        {
            result.append(record.objectCast<ICameraInfo>());
        }
    }
    return result;
}

/** Counts what the status service tells. */
class CReceiver : public QObject
{
public:
    explicit CReceiver(ICameraStatusService& status)
    {
        connect(&status, &ICameraStatusService::cameraImageGrabbed, this,
                [this](const CameraInfoPtr& info, const Velmo::CGrabResultPtr& result)
                { count(info.data(), result->GetBlockID(), true); });
        connect(&status, &ICameraStatusService::cameraImageGrabFailed, this,
                [this](const CameraInfoPtr&) { ++m_failures; });
    }
    std::uint64_t images() const { return sum(&CBlockCounter::images); }
    std::uint64_t losses() const { return m_failures + sum(&CBlockCounter::losses); }
    bool haveAll(int cameras, std::uint64_t images) const
    {
        int enough = 0;
        for (const auto& counter : m_counters)
        {
            enough += counter.images() >= images ? 1 : 0;
        }
        return enough == cameras;
    }

private:
    void count(const ICameraInfo* pInfo, std::uint64_t blockId, bool succeeded)
    {
        m_counters[pInfo].add(blockId, succeeded);
    }
    std::uint64_t sum(std::uint64_t (CBlockCounter::*value)() const) const
    {
        std::uint64_t result = 0;
        for (const auto& counter : m_counters)
        {
            result += (counter.*value)();
        }
        return result;
    }

    QHash<const ICameraInfo*, CBlockCounter> m_counters;
    std::uint64_t m_failures = 0;
};

} // namespace

SStreamFigures streamThroughThePlugin(int cameras, int seconds)
{
    HostKit::CHost host(QStringLiteral(PLUGIN_FOLDER));
    if (!host.start(QStringLiteral("en")))
    {
        throw std::runtime_error(host.errors().join('\n').toStdString());
    }
    CReceiver receiver(host.status());
    waitFor("the cameras are found", [&] { return camerasOf(host).size() == cameras; });
    const auto infos = camerasOf(host);
    for (const auto& info : infos)
    {
        if (!host.control().open(info, false))
        {
            throw std::runtime_error(info->errorString().toStdString());
        }
    }
    for (const auto& info : infos)
    {
        host.stream().startGrabbing(info);
    }
    constexpr std::uint64_t SteadyImages = 2;
    waitFor("every camera streams", [&] { return receiver.haveAll(cameras, SteadyImages); });
    CStreamWindow window;
    window.begin(receiver.images(), receiver.losses());
    runLoop(seconds * 1000, [] { return false; });
    const auto figures = window.end(receiver.images(), receiver.losses());
    host.stream().stopGrabbingAll();
    for (const auto& info : infos)
    {
        host.control().close(QSharedPointer<Plugin::CameraPool::IBaseInfo>(info));
    }
    host.stop();
    return figures;
}

} // namespace Benchmarks
