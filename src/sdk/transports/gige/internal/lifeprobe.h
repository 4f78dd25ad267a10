// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/removal.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace Velmo::GigE::Internal
{

/**
 * Asks every open camera twice a second for a harmless register; any answer, a refusal too, is life. Four questions
 * without an answer are a removal, and so is the engine's word; it is reported on the probe's thread, two to two and a
 * half seconds after death. Threads: any. Must not be destroyed by a removal handler.
 */
class CLifeProbe
{
public:
    CLifeProbe();
    ~CLifeProbe();
    CLifeProbe(const CLifeProbe&) = delete;
    CLifeProbe& operator=(const CLifeProbe&) = delete;

    /** Returns an identifier for the rest; 0 when the adapter's address cannot be bound. */
    std::uint64_t Watch(std::uint32_t adapterIp, std::uint32_t deviceIp, std::shared_ptr<CRemoval> pRemoval);
    void Forget(std::uint64_t id);

private:
    struct SCamera;
    using Cameras = std::map<std::uint64_t, std::shared_ptr<SCamera>>;

    void Run();
    void Wake();
    void Wait(const Cameras& cameras, std::chrono::milliseconds timeout);
    void Ask(const Cameras& cameras);

    std::mutex m_mutex; // guards the map, the identifier and the stop flag; not held while anything is asked or told
    Cameras m_cameras;
    std::uint64_t m_lastId = 0;
    bool m_isStopping = false;
    int m_wakeDescriptor = -1;
    std::thread m_thread;
};

} // namespace Velmo::GigE::Internal
