// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "ratiotable.h"

#include <cstdio>

namespace Benchmarks
{

CRatioTable::CRatioTable(std::vector<SRatio> ratios) : ConsoleReporter(OO_Tabular), m_ratios(std::move(ratios)) {}

void CRatioTable::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs)
    {
        const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
        const double seconds =
            isMedian ? run.cpu_accumulated_time : run.cpu_accumulated_time / static_cast<double>(run.iterations);
        if (!run.error_occurred && (isMedian || run.run_type == Run::RT_Iteration))
        {
            m_nanoseconds[run.run_name.str()] = seconds * 1e9;
        }
    }
}

void CRatioTable::Print()
{
    std::printf("\n%-28s %14s   %-24s %12s %8s\n", "what", "ns", "reference", "ns", "ratio");
    for (const SRatio& ratio : m_ratios)
    {
        const auto own = m_nanoseconds.find(ratio.name);
        const auto reference = m_nanoseconds.find(ratio.reference);
        if (own != m_nanoseconds.end() && reference != m_nanoseconds.end())
        {
            std::printf("%-28s %14.1f   %-24s %12.1f %8.2f\n", ratio.name.c_str(), own->second, ratio.reference.c_str(),
                        reference->second, own->second / reference->second / ratio.work);
        }
    }
    std::printf("Ratios of loading are per node.\n");
}

} // namespace Benchmarks
