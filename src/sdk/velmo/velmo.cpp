// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/velmo.h"

#include "genapi/exceptions.h"
#include "velmo/internal/registration.h"
#include "velmo/internal/tlhandles.h"
#include "velmo/internal/transportregistry.h"

#include <sched.h>

#include <atomic>
#include <cstdio>
#include <mutex>

namespace Velmo
{

namespace
{

std::mutex g_startMutex; // serialises start and end; held while transports are made, so that a second user waits
std::atomic<unsigned int> g_users{0};

} // namespace

void VelmoInitialize()
{
    const std::lock_guard<std::mutex> lock(g_startMutex);
    if (g_users.load() == 0)
    {
        Internal::RegisterBuiltInTransports(Internal::CTransportRegistry::GetInstance());
    }
    ++g_users;
}

void VelmoTerminate(bool shutDownLogging)
{
    const std::lock_guard<std::mutex> lock(g_startMutex);
    if (g_users.load() == 0)
    {
        GENICAM_THROW(LogicalErrorException, "VelmoTerminate was called more often than VelmoInitialize.");
    }
    if (--g_users == 0)
    {
        Internal::CTlHandles::GetInstance().DetachAll();
        Internal::CTransportRegistry::GetInstance().DropBuiltIns();
        if (shutDownLogging)
        {
            std::fflush(stderr);
        }
    }
}

unsigned int VelmoInitializationCount()
{
    return g_users.load();
}

bool GetRTThreadPriorityCapabilities(int* pMin, int* pMax)
{
    int lowest = sched_get_priority_min(SCHED_RR);
    int highest = sched_get_priority_max(SCHED_RR);
    const bool available = lowest >= 0 && highest >= lowest;
    if (!available)
    {
        lowest = 0;
        highest = 0;
    }
    if (pMin != nullptr)
    {
        *pMin = lowest;
    }
    if (pMax != nullptr)
    {
        *pMax = highest;
    }
    return available;
}

} // namespace Velmo
