// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/softwarenodemap.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace Velmo::Internal
{

/** The instant camera's own node map: its settings, and what can be read of its state. Threads: any. */
class CCameraSettings
{
public:
    /** What the read-only nodes show. */
    enum class EStatus
    {
        QueuedBuffers,
        GrabbedImages,
        FailedImages,
        SkippedImages
    };
    using ReadStatus = std::function<std::int64_t(EStatus)>;

    explicit CCameraSettings(const ReadStatus& readStatus);
    ~CCameraSettings();

    GenApi::INodeMap& GetNodeMap() { return *m_parameters.Get(); }
    GenApi::INode* GetNode(const char* name) { return m_parameters.Get()->GetNode(name); }
    /** Locks the settings that an open camera, or a running grab, no longer lets change. */
    void SetOpen(bool open) { m_parameters.Set("IsOpen", open ? 1 : 0); }
    void SetGrabbing(bool grabbing) { m_parameters.Set("IsGrabbing", grabbing ? 1 : 0); }

private:
    Transport::CSoftwareNodeMap m_parameters;
};

/** A node map without features, for what a device does not have. */
std::unique_ptr<Transport::CSoftwareNodeMap> MakeEmptyNodeMap();

} // namespace Velmo::Internal
