// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstddef>
#include <memory>

namespace Simulator
{

class CCameraModel;

/**
 * Runs the acquisition of many cameras on few threads: each worker takes the camera whose frame is due first.
 *
 * Threads: any. A camera's Produce never runs twice at a time.
 */
class SIMULATOR_EXPORT CFramePump
{
public:
    /** The pump that the process shares; its threads start with the first camera and end with the last reference. */
    static std::shared_ptr<CFramePump> GetShared();

    /** workers 0: as many as there are processors, at most 4. */
    explicit CFramePump(std::size_t workers = 0);
    /** Cameras are detached. */
    ~CFramePump();
    CFramePump(const CFramePump&) = delete;
    CFramePump& operator=(const CFramePump&) = delete;

    /** Serves the camera until Detach; replaces its wake handler. Nothing for one that is attached. */
    void Attach(const std::shared_ptr<CCameraModel>& camera);
    /** After it returned no frame of the camera is made any more. Not from a frame sink. */
    void Detach(const std::shared_ptr<CCameraModel>& camera);

private:
    struct SPrivate;
    const std::shared_ptr<SPrivate> m_p;
};

} // namespace Simulator
