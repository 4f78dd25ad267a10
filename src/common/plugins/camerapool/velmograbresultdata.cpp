// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/velmograbresultdata.h"

namespace Plugin::CameraPool
{

CVelmoGrabResultData::CVelmoGrabResultData() = default;

CVelmoGrabResultData::CVelmoGrabResultData(const Velmo::CGrabResultPtr& grabResult) : m_grabResult(grabResult) {}

CVelmoGrabResultData::~CVelmoGrabResultData() = default;

Plugin::DataProcessingCore::SNodeDataType CVelmoGrabResultData::dataType()
{
    return {QStringLiteral("velmo Grab Result"), QStringLiteral("VGR")};
}

Plugin::DataProcessingCore::SNodeDataType CVelmoGrabResultData::type() const
{
    return dataType();
}

} // namespace Plugin::CameraPool
