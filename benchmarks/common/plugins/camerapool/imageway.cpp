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

/** When the images of one way were sent, by the grab thread, and arrived, by the main thread. */
class CArrivals
{
public:
    explicit CArrivals(std::size_t images) : m_images(images)
    {
        m_sentAt.reserve(images);
        m_microseconds.reserve(images);
    }

    void sent() { m_sentAt.push_back(Clock::now()); }
    /** An image arrives after it was sent, so its time is there, and nothing moves it: the room is reserved. */
    void arrived()
    {
        const auto now = Clock::now();
        const auto sentAt = *(m_sentAt.data() + m_microseconds.size());
        m_microseconds.push_back(std::chrono::duration<double, std::micro>(now - sentAt).count());
    }
    bool complete() const { return m_microseconds.size() == m_images; }
    SLatency latency()
    {
        std::sort(m_microseconds.begin(), m_microseconds.end());
        return {m_microseconds[m_microseconds.size() / 2], m_microseconds[m_microseconds.size() * 99 / 100]};
    }

private:
    std::size_t m_images;
    std::vector<Clock::time_point> m_sentAt;
    std::vector<double> m_microseconds;
};

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

std::array<SLatency, 2> measureLatencies(const std::array<SWay, 2>& ways, int imagesPerSecond)
{
    const auto images = static_cast<std::size_t>(imagesPerSecond) / 2;
    std::array<CArrivals, 2> arrivals{CArrivals(images), CArrivals(images)};
    QEventLoop loop;
    for (std::size_t i = 0; i < ways.size(); ++i)
    {
        ways[i].whenArrived(
            [&arrivals, &loop, i]
            {
                arrivals[i].arrived();
                if (arrivals[0].complete() && arrivals[1].complete())
                {
                    loop.quit();
                }
            });
    }
    std::thread grabThread(
        [&]
        {
            auto next = Clock::now();
            for (std::size_t i = 0; i < 2 * images; ++i)
            {
                next += std::chrono::nanoseconds(1000000000 / 2 / imagesPerSecond);
                std::this_thread::sleep_until(next);
                arrivals[i % 2].sent();
                ways[i % 2].sendImage(static_cast<int>(i / 2) + 1);
            }
        });
    serve(loop);
    grabThread.join();
    return {arrivals[0].latency(), arrivals[1].latency()};
}

double measureSending(const std::function<void(int number)>& sendImage)
{
    double microseconds = 0;
    std::thread grabThread([&] { microseconds = sendAll(sendImage); });
    grabThread.join();
    return microseconds / s_throughputImages;
}

} // namespace Benchmarks
