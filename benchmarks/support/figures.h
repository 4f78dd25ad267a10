// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Benchmarks
{

/** Of a list that is not empty. */
double median(std::vector<double> values);
/** The value below which that share (0..1) of the list lies; nearest rank. */
double percentile(std::vector<double> values, double share);

/** A clock that only goes forward. */
double nowMicroseconds();
/** Processor time of all threads of the process so far, user and system. */
double processCpuMicroseconds();
/** Processor time that the calling thread spends on the work: other programs on the machine do not count. */
double costMicroseconds(const std::function<void()>& work);
/** Keeps the compiler from leaving out what nobody looks at. */
void keep(std::size_t value);

/**
 * The figures of one program: rows of a Markdown table that tools/benchmarks collects. Each row is printed at once.
 *
 * A row with a bound tells how often dearer (or, for rates, how near) the measured value is; a row with a goal tells
 * whether it is kept.
 */
class CFigures
{
public:
    enum class EGoal
    {
        None,
        AtMost,
        AtLeast
    };
    struct SRow
    {
        std::string what;
        double value = 0;
        std::string unit;
        std::string boundName; // "": there is none
        double bound = 0;
        EGoal goal = EGoal::None;
        double goalValue = 0;
        bool goalIsOfRatio = true; // else of the value itself
    };

    /** Prints the title and the head of the table. */
    explicit CFigures(const std::string& title);

    void add(const SRow& row);
    /** False when a goal was missed. */
    bool allKept() const { return m_allKept; }

private:
    bool m_allKept = true;
};

} // namespace Benchmarks
