// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/openlist.h"

namespace Velmo::GigE::Internal
{

/** What the transport and its devices share; lives as long as any of them. */
struct SServices
{
    COpenList openCameras;
};

} // namespace Velmo::GigE::Internal
