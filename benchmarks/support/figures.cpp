// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/figures.h"

#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

namespace Benchmarks
{

namespace
{

std::string number(double value)
{
    char text[32];
    const double size = std::fabs(value);
    const int decimals = size == 0 || size >= 100 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : 4;
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

double microseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

double threadCpuMicroseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

} // namespace

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

double percentile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    return values[std::min(values.size() - 1, rank == 0 ? 0 : rank - 1)];
}

double nowMicroseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::micro>(now).count();
}

double processCpuMicroseconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return microseconds(usage.ru_utime) + microseconds(usage.ru_stime);
}

double costMicroseconds(const std::function<void()>& work)
{
    const double start = threadCpuMicroseconds();
    work();
    return threadCpuMicroseconds() - start;
}

void keep(std::size_t value)
{
    static std::atomic<std::size_t> kept{0};
    kept.store(value, std::memory_order_relaxed);
}

CFigures::CFigures(const std::string& title)
{
    std::printf("\n### %s\n\n| What | Measured | Bound | Ratio | Goal | Kept |\n|---|---|---|---|---|---|\n",
                title.c_str());
    std::fflush(stdout);
}

void CFigures::add(const SRow& row)
{
    const double ratio = row.boundName.empty() ? 0 : row.value / row.bound;
    const double judged = row.goalIsOfRatio ? ratio : row.value;
    std::string goal;
    std::string kept;
    if (row.goal != EGoal::None)
    {
        const bool atMost = row.goal == EGoal::AtMost;
        const bool isKept = atMost ? judged <= row.goalValue : judged >= row.goalValue;
        m_allKept = m_allKept && isKept;
        goal = (atMost ? "at most " : "at least ") + number(row.goalValue) + (row.goalIsOfRatio ? "x" : " " + row.unit);
        kept = isKept ? "yes" : "**no**";
    }
    const std::string bound = row.boundName.empty() ? "" : row.boundName + ": " + number(row.bound) + " " + row.unit;
    std::printf("| %s | %s %s | %s | %s | %s | %s |\n", row.what.c_str(), number(row.value).c_str(), row.unit.c_str(),
                bound.c_str(), row.boundName.empty() ? "" : number(ratio).c_str(), goal.c_str(), kept.c_str());
    std::fflush(stdout);
}

} // namespace Benchmarks
