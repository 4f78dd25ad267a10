// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

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

    explicit CCameraSettings(ReadStatus readStatus);
    ~CCameraSettings();

    GenApi::INodeMap& GetNodeMap() { return *m_nodeMap; }
    GenApi::INode* GetNode(const char* name) { return m_nodeMap->GetNode(name); }
    /** Locks the settings that an open camera, or a running grab, no longer lets change. */
    void SetOpen(bool open) { SetState("IsOpen", open); }
    void SetGrabbing(bool grabbing) { SetState("IsGrabbing", grabbing); }

private:
    void SetState(const char* node, bool value);

    GenApi::CMemoryPort m_memory;
    std::unique_ptr<GenApi::INodeMap> m_nodeMap;
};

/** A node map without features, for what a device does not have. */
std::unique_ptr<GenApi::INodeMap> MakeEmptyNodeMap();

} // namespace Velmo::Internal
