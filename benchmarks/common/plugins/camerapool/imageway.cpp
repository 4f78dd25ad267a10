// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "imageway.h"

#include "sdk/genapi/allocations.h"
#include "support/figures.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include <malloc.h>
#include <pthread.h>

namespace Benchmarks
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr int s_throughputImages = 40000;

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
    QTimer deadline; // goes with this run; a left-over one would cost later runs
    QObject::connect(&deadline, &QTimer::timeout,
                     []
                     {
                         std::fprintf(stderr, "images did not arrive\n");
                         std::exit(1);
                     });
    deadline.start(60000);
    loop.exec();
}

/** Processor time of the calling thread, microseconds. */
double sendAll(const std::function<void(int number)>& sendImage)
{
    return costMicroseconds(
        [&]
        {
            for (int i = 1; i <= s_throughputImages; ++i)
            {
                sendImage(i);
            }
        });
}

} // namespace

SThroughput measureThroughput(const SWay& way)
{
    QEventLoop loop;
    int arrived = 0;
    way.whenArrived(
        [&loop, &arrived]
        {
            if (++arrived == s_throughputImages)
            {
                loop.quit();
            }
        });
    pin(0);
    malloc_trim(0); // images in plenty wait in the queue at times: what they leave in the heap would slow the next run
    const double cpuBefore = processCpuMicroseconds();
    const std::uint64_t allocationsBefore = AllocationCount();
    const auto start = Clock::now();
    double grabMicroseconds = 0;
    std::thread grabThread(
        [&]
        {
            pin(static_cast<int>(std::thread::hardware_concurrency()) - 1);
            grabMicroseconds = sendAll(way.sendImage);
        });
    serve(loop);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    grabThread.join();
    pin(-1);
    return {s_throughputImages / seconds, (processCpuMicroseconds() - cpuBefore) / s_throughputImages,
            grabMicroseconds / s_throughputImages,
            static_cast<double>(AllocationCount() - allocationsBefore) / s_throughputImages};
}

SLatency measureLatency(const SWay& way, int imagesPerSecond)
{
    const int images = imagesPerSecond / 2;
    std::vector<Clock::time_point> sentAt(static_cast<std::size_t>(images) + 1);
    std::vector<double> microseconds;
    microseconds.reserve(static_cast<std::size_t>(images));
    QEventLoop loop;
    way.whenArrived(
        [&]
        {
            const auto now = Clock::now();
            const auto sent = sentAt[microseconds.size() + 1];
            microseconds.push_back(std::chrono::duration<double, std::micro>(now - sent).count());
            if (microseconds.size() == static_cast<std::size_t>(images))
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
                sentAt[static_cast<std::size_t>(i)] = Clock::now();
                way.sendImage(i);
            }
        });
    serve(loop);
    grabThread.join();
    std::sort(microseconds.begin(), microseconds.end());
    return {microseconds[microseconds.size() / 2], microseconds[microseconds.size() * 99 / 100]};
}

double measureSending(const std::function<void(int number)>& sendImage)
{
    double microseconds = 0;
    std::thread grabThread([&] { microseconds = sendAll(sendImage); });
    grabThread.join();
    return microseconds / s_throughputImages;
}

} // namespace Benchmarks
