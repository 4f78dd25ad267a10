// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwareclock.h"

#include <chrono>
#include <thread>

namespace GenApi
{
namespace Internal
{

IFirmwareClock::~IFirmwareClock() = default;
CFirmwareClock::~CFirmwareClock() = default;

std::int64_t CFirmwareClock::NowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void CFirmwareClock::PassMs(std::int64_t milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace Internal
} // namespace GenApi
