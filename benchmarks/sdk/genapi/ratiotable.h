// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Benchmarks
{

/** Prints the usual report, and at the end how often dearer each benchmark is than another of the same run. */
class CRatioTable : public benchmark::ConsoleReporter
{
public:
    struct SRatio
    {
        std::string name;
        std::string reference;
        double work; // how much more there is to do than in the reference
    };

    explicit CRatioTable(std::vector<SRatio> ratios);

    void ReportRuns(const std::vector<Run>& runs) override;
    void Print();

private:
    std::vector<SRatio> m_ratios;
    std::map<std::string, double> m_nanoseconds; // CPU time of one iteration, by name
};

} // namespace Benchmarks
