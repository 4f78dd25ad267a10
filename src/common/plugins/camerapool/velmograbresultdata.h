// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"
#include "dataprocessingcore/nodedata.h"
#include "velmo/grabresult.h"

namespace Plugin::CameraPool
{

/**
 * A grab result as node data: what output port 0 of a camera source node gives.
 *
 * Shares the stream's buffer: a consumer that keeps the data keeps the buffer from its stream.
 */
class CAMERAPOOL_EXPORT CVelmoGrabResultData : public Plugin::DataProcessingCore::CNodeData
{
public:
    CVelmoGrabResultData();
    explicit CVelmoGrabResultData(const Velmo::CGrabResultPtr& grabResult);
    ~CVelmoGrabResultData() override;

    /** ("velmo Grab Result", "VGR") */
    static Plugin::DataProcessingCore::SNodeDataType dataType();
    Plugin::DataProcessingCore::SNodeDataType type() const override;
    /** Not valid when the camera gave none. */
    const Velmo::CGrabResultPtr& grabResult() const { return m_grabResult; }

private:
    Velmo::CGrabResultPtr m_grabResult;
};

} // namespace Plugin::CameraPool
