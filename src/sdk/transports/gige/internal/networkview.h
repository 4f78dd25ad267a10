// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/infos.h"
#include "transports/gige/internal/adapters.h"

namespace Velmo::GigE::Internal
{

/** What an interface sees of its transport. Threads: any. */
class INetworkView
{
public:
    virtual ~INetworkView() = default;
    /** The adapters that are searched. */
    virtual std::vector<SAdapter> GetAdapters() = 0;
    /** The cameras that the last search found on that adapter; searches when there was none. */
    virtual DeviceInfoList GetSeen(const SAdapter& adapter) = 0;
    /** Searches that adapter alone; takes at most half a second. */
    virtual DeviceInfoList Look(const SAdapter& adapter) = 0;
    /** Whether this process controls that camera. */
    virtual bool IsOpenHere(const CDeviceInfo& info) = 0;
};

} // namespace Velmo::GigE::Internal
