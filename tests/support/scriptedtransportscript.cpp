// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/scriptedtransportscript.h"

#include "genapi/exceptions.h"

#include <stdexcept>

namespace Test
{

namespace
{

void Throw(EFault fault, const std::string& text)
{
    switch (fault)
    {
    case EFault::None:
        return;
    case EFault::Runtime:
        GENICAM_THROW(RuntimeException, text);
    case EFault::Access:
        GENICAM_THROW(AccessException, text);
    case EFault::Logical:
        GENICAM_THROW(LogicalErrorException, text);
    case EFault::Timeout:
        GENICAM_THROW(TimeoutException, text);
    case EFault::BadAlloc:
        GENICAM_THROW(BadAllocException, text);
    case EFault::Standard:
        throw std::runtime_error(text);
    case EFault::Unknown:
        throw 42;
    }
}

} // namespace

void CScript::Pass(EStep step, const std::string& serialNumber)
{
    EFault fault = EFault::None;
    std::string text;
    std::function<void(const std::string&)> hook;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        SStep& entry = At(step);
        ++entry.total;
        ++entry.byCamera[serialNumber];
        hook = entry.hook;
        SFault& armed = entry.fault;
        if (armed.times != 0 && (armed.serialNumber.empty() || armed.serialNumber == serialNumber))
        {
            fault = armed.fault;
            text = armed.text;
            armed.times -= armed.times > 0 ? 1 : 0;
        }
        m_changed.notify_all();
    }
    if (hook)
    {
        hook(serialNumber);
    }
    Throw(fault, text);
}

void CScript::SetFault(EStep step, EFault fault, const std::string& text, const std::string& serialNumber, int times)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    At(step).fault = {fault, text, serialNumber, fault == EFault::None ? 0 : times};
}

void CScript::SetHook(EStep step, std::function<void(const std::string&)> hook)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    At(step).hook = std::move(hook);
}

unsigned int CScript::GetCount(EStep step, const std::string& serialNumber) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const SStep& entry = At(step);
    if (serialNumber.empty())
    {
        return entry.total;
    }
    const auto found = entry.byCamera.find(serialNumber);
    return found == entry.byCamera.end() ? 0 : found->second;
}

bool CScript::WaitForCount(EStep step, unsigned int count, unsigned int timeoutMs) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), [&] { return At(step).total >= count; });
}

void CScript::ResetCounts()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (SStep& entry : m_steps)
    {
        entry.total = 0;
        entry.byCamera.clear();
    }
}

} // namespace Test
