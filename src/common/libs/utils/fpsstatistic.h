// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "utils/utils_export.h"

#include <cstdint>
#include <functional>
#include <memory>

/**
 * Frame and byte rate of a stream over a sliding window of one second.
 *
 * A stream too slow to put three samples into one second is measured over up to five seconds, so that rates down to
 * half a frame per second are right. Silence longer than the stream's usual interval counts as time without images: the
 * rates fall with it, to 0 once the window holds fewer than two samples.
 *
 * Threads: samples from one thread at a time; addNoSample, reset and computeResult from any thread at any time. Nothing
 * blocks the thread that adds samples; no allocation after construction.
 */
class UTILS_EXPORT FpsStatistic
{
public:
    /** Nanoseconds of a steady clock; called on every thread that uses the statistic. */
    using Clock = std::function<std::int64_t()>;

    FpsStatistic();
    /** With a clock of the caller's, for tests and replays. */
    explicit FpsStatistic(Clock clock);
    ~FpsStatistic();
    FpsStatistic(const FpsStatistic&) = delete;
    FpsStatistic& operator=(const FpsStatistic&) = delete;

    /** Forgets all samples. */
    void reset();
    /** One image of that many bytes arrived now. */
    void addSample(unsigned int bytes);
    /** Time passed without an image. */
    void addNoSample();
    /** Frames per second and bytes per second over the window; both 0 with fewer than two samples in it. bps saturates.
     */
    void computeResult(double& fps, unsigned int& bps);

private:
    struct SPrivate;
    std::unique_ptr<SPrivate> m_p;
};
