// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "utils/utils_export.h"

#include <memory>

/**
 * Frame and byte rate of a stream over a sliding window of time.
 *
 * Threads: the add functions from one thread at a time and computeResult from any other at the same time; no locks
 * that a producer could wait for, no allocation after construction.
 */
class UTILS_EXPORT FpsStatistic
{
public:
    FpsStatistic();
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
