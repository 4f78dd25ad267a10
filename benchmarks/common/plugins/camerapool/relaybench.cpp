// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// The way of an image from a camera's signals through the pool, against the same three queued signals bare.
// Prints one row per figure; medians of the runs. Usage: camerapool_relaybench [runs]

#include "barechain.h"
#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/camerapool.h"
#include "camerapool/internal/statusservice.h"
#include "sdk/genapi/allocations.h"
#include "support/figures.h"
#include "unit/common/plugins/camerapool/testing/baresignals.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <pthread.h>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

namespace
{

using Clock = std::chrono::steady_clock;
using EGoal = Benchmarks::CFigures::EGoal;

constexpr int s_throughputImages = 40000;

/** One way for an image: how it is emitted, and where it arrives. */
struct SWay
{
    std::function<void(int number)> emitImage; // on the grab thread
    std::function<void(std::function<void(int number)>)> onArrival;
};

/** Pins the thread, or with a negative number lets it run anywhere again. */
void pin(int cpu)
{
    cpu_set_t cpus;
    CPU_ZERO(&cpus);
    for (int i = 0; i < static_cast<int>(std::thread::hardware_concurrency()); ++i)
    {
        if (cpu < 0 || i == cpu)
        {
            CPU_SET(static_cast<unsigned>(i), &cpus);
        }
    }
    pthread_setaffinity_np(pthread_self(), sizeof(cpus), &cpus);
}

/** Serves the event loop until it is quit. */
void serve(QEventLoop& loop)
{
    QTimer::singleShot(60000, &loop,
                       []
                       {
                           std::fprintf(stderr, "images did not arrive\n");
                           std::exit(1);
                       });
    loop.exec();
}

struct SThroughput
{
    double imagesPerSecond = 0;
    double cpuMicrosecondsPerImage = 0;
    double allocationsPerImage = 0;
};

SThroughput measureThroughput(const SWay& way)
{
    QEventLoop loop;
    way.onArrival(
        [&loop](int number)
        {
            if (number == s_throughputImages)
            {
                loop.quit();
            }
        });
    pin(0);
    const double cpuBefore = Benchmarks::processCpuMicroseconds();
    const std::uint64_t allocationsBefore = Benchmarks::AllocationCount();
    const auto start = Clock::now();
    std::thread grabThread(
        [&]
        {
            pin(static_cast<int>(std::thread::hardware_concurrency()) - 1);
            for (int i = 1; i <= s_throughputImages; ++i)
            {
                way.emitImage(i);
            }
        });
    serve(loop);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    grabThread.join();
    pin(-1);
    return {s_throughputImages / seconds, (Benchmarks::processCpuMicroseconds() - cpuBefore) / s_throughputImages,
            static_cast<double>(Benchmarks::AllocationCount() - allocationsBefore) / s_throughputImages};
}

struct SLatency
{
    double p50Us = 0;
    double p99Us = 0;
};

SLatency measureLatency(const SWay& way, int imagesPerSecond)
{
    const int images = imagesPerSecond / 2;
    std::vector<Clock::time_point> emitted(static_cast<std::size_t>(images) + 1);
    std::vector<double> microseconds;
    microseconds.reserve(static_cast<std::size_t>(images));
    QEventLoop loop;
    way.onArrival(
        [&](int number)
        {
            const auto now = Clock::now();
            microseconds.push_back(
                std::chrono::duration<double, std::micro>(now - emitted[static_cast<std::size_t>(number)]).count());
            if (number == images)
            {
                loop.quit();
            }
        });
    std::thread grabThread(
        [&]
        {
            auto next = Clock::now();
            for (int i = 1; i <= images; ++i)
            {
                next += std::chrono::nanoseconds(1000000000 / imagesPerSecond);
                std::this_thread::sleep_until(next);
                emitted[static_cast<std::size_t>(i)] = Clock::now();
                way.emitImage(i);
            }
        });
    serve(loop);
    grabThread.join();
    std::sort(microseconds.begin(), microseconds.end());
    return {microseconds[microseconds.size() / 2], microseconds[microseconds.size() * 99 / 100]};
}

struct SComparison
{
    Benchmarks::CFigures& figures;
    std::string relayedName;
    std::string bareName;
    bool hasGoals;
    int runs;

    void add(const std::string& what, const std::string& unit, const std::vector<double>& bare,
             const std::vector<double>& relayed, EGoal goal = EGoal::None, double goalValue = 0) const
    {
        figures.add({what + ", " + relayedName, Benchmarks::median(relayed), unit, bareName, Benchmarks::median(bare),
                     hasGoals ? goal : EGoal::None, goalValue});
    }
};

void compareThroughput(const SWay& bare, const SWay& relayed, const SComparison& comparison)
{
    std::vector<SThroughput> b;
    std::vector<SThroughput> r;
    for (int i = 0; i < comparison.runs; ++i)
    {
        b.push_back(measureThroughput(bare));
        r.push_back(measureThroughput(relayed));
    }
    const auto all = [](const std::vector<SThroughput>& runs, double SThroughput::*member)
    {
        std::vector<double> values;
        for (const SThroughput& run : runs)
        {
            values.push_back(run.*member);
        }
        return values;
    };
    constexpr auto rate = &SThroughput::imagesPerSecond;
    constexpr auto cost = &SThroughput::cpuMicrosecondsPerImage;
    constexpr auto allocations = &SThroughput::allocationsPerImage;
    comparison.add("throughput", "images/s", all(b, rate), all(r, rate), EGoal::AtLeast, 0.95);
    comparison.add("processor time of an image", "us", all(b, cost), all(r, cost));
    comparison.add("allocations of an image", "", all(b, allocations), all(r, allocations));
}

void compareLatency(const SWay& bare, const SWay& relayed, const SComparison& comparison, int imagesPerSecond)
{
    std::vector<double> bareP50;
    std::vector<double> relayedP50;
    std::vector<double> bareP99;
    std::vector<double> relayedP99;
    for (int i = 0; i < comparison.runs; ++i)
    {
        const SLatency b = measureLatency(bare, imagesPerSecond);
        const SLatency r = measureLatency(relayed, imagesPerSecond);
        bareP50.push_back(b.p50Us);
        relayedP50.push_back(r.p50Us);
        bareP99.push_back(b.p99Us);
        relayedP99.push_back(r.p99Us);
    }
    const std::string at = " at " + std::to_string(imagesPerSecond) + "/s";
    comparison.add("latency p50" + at, "us", bareP50, relayedP50, EGoal::AtMost, 1.2);
    comparison.add("latency p99" + at, "us", bareP99, relayedP99, EGoal::AtMost, 2.0);
}

QSharedPointer<CCameraInfo> cameraRecord(int index)
{
    Velmo::CDeviceInfo info;
    info.SetFullName("bench/" + std::to_string(index));
    return CCameraInfo::fromDeviceInfo(info);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;

    ::Test::CBareSender sender;
    QObject bareContext;
    int arrivedNumber = 0;
    std::function<void(int)> onBareArrival;
    QObject::connect(
        &sender, &::Test::CBareSender::statistic, &bareContext, [&](int number) { arrivedNumber = number; },
        Qt::QueuedConnection);
    QObject::connect(
        &sender, &::Test::CBareSender::image, &bareContext, [&] { onBareArrival(arrivedNumber); },
        Qt::QueuedConnection);
    QObject::connect(
        &sender, &::Test::CBareSender::timeout, &bareContext, [](int64_t) {}, Qt::QueuedConnection);
    const SWay bare{[&](int number)
                    {
                        emit sender.statistic(number, 0, 30.0, 1000, CCompressionStatistic());
                        emit sender.image(Velmo::CGrabResultPtr());
                        emit sender.timeout(number);
                    },
                    [&](std::function<void(int)> handler)
                    {
                        onBareArrival = std::move(handler);
                    }};

    Benchmarks::CFigures figures("From a camera's signals to the status service's");
    {
        ::Test::CBareSender start;
        Benchmarks::CBareService service;
        const Benchmarks::CBareChain chain(start, service);
        int number = 0;
        std::function<void(int)> onArrival;
        using Benchmarks::CBareService;
        QObject::connect(&service, &CBareService::statistic, &service, [&](const auto&, int n) { number = n; });
        QObject::connect(&service, &CBareService::image, &service, [&] { onArrival(number); });
        const SWay hops{[&](int n)
                        {
                            emit start.statistic(n, 0, 30.0, 1000, CCompressionStatistic());
                            emit start.image(Velmo::CGrabResultPtr());
                            emit start.timeout(n);
                        },
                        [&](std::function<void(int)> handler)
                        {
                            onArrival = std::move(handler);
                        }};
        compareThroughput(bare, hops, {figures, "the same hops doing nothing", "bare signals", false, runs});
    }
    for (const int cameras : {1, 50})
    {
        CCameraPool pool(nullptr);
        CStatusService status(&pool, nullptr, nullptr);
        for (int i = 0; i < cameras; ++i)
        {
            pool.announceDevice(cameraRecord(i));
        }
        const auto camera = qSharedPointerObjectCast<CCamera>(pool.findDevice(cameraRecord(0)));
        int relayedNumber = 0;
        std::function<void(int)> onRelayedArrival;
        QObject::connect(&status, &ICameraStatusService::cameraStatisticUpdated, &status,
                         [&](const CameraInfoPtr&, int number) { relayedNumber = number; });
        QObject::connect(&status, &ICameraStatusService::cameraImageGrabbed, &status,
                         [&] { onRelayedArrival(relayedNumber); });
        const SWay relayed{[&](int number)
                           {
                               emit camera->cameraStatisticChanged(number, 0, 30.0, 1000, CCompressionStatistic());
                               emit camera->cameraImageGrabbed(Velmo::CGrabResultPtr());
                               emit camera->invokeTimeout(number);
                           },
                           [&](std::function<void(int)> handler)
                           {
                               onRelayedArrival = std::move(handler);
                           }};
        const SComparison comparison{figures, "one of " + std::to_string(cameras), "bare signals", true, runs};
        compareThroughput(bare, relayed, comparison);
        for (const int imagesPerSecond : {1000, 5000})
        {
            compareLatency(bare, relayed, comparison, imagesPerSecond);
        }
        QCoreApplication::removePostedEvents(camera.data());
    }
    return 0;
}
