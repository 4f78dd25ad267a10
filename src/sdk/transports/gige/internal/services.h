// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/lifeprobe.h"
#include "transports/gige/internal/openlist.h"
#include "transports/gige/internal/reaper.h"

namespace Velmo::GigE::Internal
{

/** What the transport and its devices share; lives as long as any of them. */
struct SServices
{
    COpenList openCameras;
    CReaper reaper;
    CLifeProbe probe;
};

} // namespace Velmo::GigE::Internal
