// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/scriptedtransport.h"

#include <array>
#include <condition_variable>
#include <map>
#include <mutex>

namespace Test
{

/** The faults, hooks and counters that a transport shares with its devices. Threads: any. */
class CScript
{
public:
    /** Counts the step, runs its hook, then throws its fault. */
    void Pass(EStep step, const std::string& serialNumber);
    void SetFault(EStep step, EFault fault, const std::string& text, const std::string& serialNumber, int times);
    void SetHook(EStep step, std::function<void(const std::string&)> hook);
    unsigned int GetCount(EStep step, const std::string& serialNumber) const;
    bool WaitForCount(EStep step, unsigned int count, unsigned int timeoutMs) const;
    void ResetCounts();

private:
    struct SFault
    {
        EFault fault = EFault::None;
        std::string text;
        std::string serialNumber;
        int times = 0;
    };
    struct SStep
    {
        unsigned int total = 0;
        std::map<std::string, unsigned int> byCamera;
        SFault fault;
        std::function<void(const std::string&)> hook;
    };
    SStep& At(EStep step) { return m_steps[static_cast<std::size_t>(step)]; }
    const SStep& At(EStep step) const { return m_steps[static_cast<std::size_t>(step)]; }

    mutable std::mutex m_mutex; // guards m_steps; never held while a hook runs
    mutable std::condition_variable m_changed;
    std::array<SStep, static_cast<std::size_t>(EStep::Count)> m_steps;
};

} // namespace Test
