// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "blockcounter.h"

#include "support/figures.h"

#include <filesystem>
#include <iterator>

namespace Benchmarks
{

namespace
{

int entriesOf(const char* folder)
{
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()));
}

} // namespace

void CStreamWindow::begin(std::uint64_t images, std::uint64_t losses)
{
    m_images = images;
    m_losses = losses;
    m_start = nowMicroseconds();
    m_cpu = processCpuMicroseconds();
}

SStreamFigures CStreamWindow::end(std::uint64_t images, std::uint64_t losses) const
{
    SStreamFigures figures;
    figures.images = images - m_images;
    figures.losses = losses - m_losses;
    figures.seconds = (nowMicroseconds() - m_start) / 1e6;
    figures.cpuMicroseconds = processCpuMicroseconds() - m_cpu;
    figures.threads = entriesOf("/proc/self/task");
    figures.descriptors = entriesOf("/proc/self/fd");
    return figures;
}

} // namespace Benchmarks
