// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/eventhandlers.h"

namespace Velmo::Internal
{

/** What a new instant camera does to a camera it opened: images one after the other, without triggers. A feature that
 *  is absent or not writable (a monitor's) stays as it is. */
class CContinuousConfiguration final : public CConfigurationEventHandler
{
public:
    void OnOpened(CInstantCamera& camera) override;
};

} // namespace Velmo::Internal
