// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// The way of an image from a camera's signals through the pool, against the same three queued signals bare.
// Prints one line per figure: name, bare, relayed, ratio; medians of the runs. Usage: camerapool_relaybench [runs]

#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/camerapool.h"
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
#include <thread>
#include <vector>

#include <pthread.h>
#include <sys/resource.h>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

namespace
{

using Clock = std::chrono::steady_clock;

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

double cpuMicroseconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto micro = [](const timeval& t)
    {
        return static_cast<double>(t.tv_sec) * 1e6 + static_cast<double>(t.tv_usec);
    };
    return micro(usage.ru_utime) + micro(usage.ru_stime);
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

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

struct SThroughput
{
    double imagesPerSecond = 0;
    double cpuMicrosecondsPerImage = 0;
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
    const double cpuBefore = cpuMicroseconds();
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
    return {s_throughputImages / seconds, (cpuMicroseconds() - cpuBefore) / s_throughputImages};
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

void print(const char* name, const std::vector<double>& bare, const std::vector<double>& relayed)
{
    const double b = median(bare);
    const double r = median(relayed);
    std::printf("%-28s bare %12.2f  relayed %12.2f  ratio %.3f\n", name, b, r, r / b);
}

void compareThroughput(const SWay& bare, const SWay& relayed, int runs)
{
    std::vector<double> bareRate;
    std::vector<double> relayedRate;
    std::vector<double> bareCpu;
    std::vector<double> relayedCpu;
    for (int i = 0; i < runs; ++i)
    {
        const SThroughput b = measureThroughput(bare);
        const SThroughput r = measureThroughput(relayed);
        bareRate.push_back(b.imagesPerSecond);
        relayedRate.push_back(r.imagesPerSecond);
        bareCpu.push_back(b.cpuMicrosecondsPerImage);
        relayedCpu.push_back(r.cpuMicrosecondsPerImage);
    }
    print("images per second", bareRate, relayedRate);
    print("CPU us per image", bareCpu, relayedCpu);
}

void compareLatency(const SWay& bare, const SWay& relayed, int runs, int imagesPerSecond)
{
    std::vector<double> bareP50;
    std::vector<double> relayedP50;
    std::vector<double> bareP99;
    std::vector<double> relayedP99;
    for (int i = 0; i < runs; ++i)
    {
        const SLatency b = measureLatency(bare, imagesPerSecond);
        const SLatency r = measureLatency(relayed, imagesPerSecond);
        bareP50.push_back(b.p50Us);
        relayedP50.push_back(r.p50Us);
        bareP99.push_back(b.p99Us);
        relayedP99.push_back(r.p99Us);
    }
    char name[64];
    std::snprintf(name, sizeof(name), "p50 us at %d/s", imagesPerSecond);
    print(name, bareP50, relayedP50);
    std::snprintf(name, sizeof(name), "p99 us at %d/s", imagesPerSecond);
    print(name, bareP99, relayedP99);
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

    for (const int cameras : {1, 50})
    {
        CCameraPool pool(nullptr);
        for (int i = 0; i < cameras; ++i)
        {
            pool.announceDevice(cameraRecord(i));
        }
        const auto camera = qSharedPointerObjectCast<CCamera>(pool.findDevice(cameraRecord(0)));
        int relayedNumber = 0;
        std::function<void(int)> onRelayedArrival;
        QObject::connect(&pool, &CCameraPool::cameraStatisticUpdated, &pool,
                         [&](const CameraInfoPtr&, int number) { relayedNumber = number; });
        QObject::connect(&pool, &CCameraPool::cameraImageGrabbed, &pool, [&] { onRelayedArrival(relayedNumber); });
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
        std::printf("one of %d cameras, medians of %d runs\n", cameras, runs);
        compareThroughput(bare, relayed, runs);
        compareLatency(bare, relayed, runs, 1000);
        compareLatency(bare, relayed, runs, 5000);
        QCoreApplication::removePostedEvents(camera.data());
    }
    return 0;
}
