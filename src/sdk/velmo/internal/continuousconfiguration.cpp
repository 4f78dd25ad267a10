// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/continuousconfiguration.h"

#include "velmo/instantcamera.h"

namespace Velmo::Internal
{

namespace
{

void SetIfWritable(const GenApi::CEnumerationPtr& node, const char* symbolic)
{
    if (node.IsValid() && GenApi::IsWritable(node.Get()))
    {
        GenApi::IEnumEntry* pEntry = node->GetEntryByName(symbolic);
        if (GenApi::IsAvailable(pEntry))
        {
            node->FromString(symbolic);
        }
    }
}

} // namespace

void CContinuousConfiguration::OnOpened(CInstantCamera& camera)
{
    GenApi::INodeMap& nodeMap = camera.GetNodeMap();
    const GenApi::CEnumerationPtr mode(nodeMap.GetNode("TriggerMode"));
    const GenApi::CEnumerationPtr selector(nodeMap.GetNode("TriggerSelector"));
    if (selector.IsValid() && GenApi::IsWritable(selector.Get()))
    {
        const GenICam::gcstring before = selector->ToString();
        GenApi::EnumEntryList entries;
        selector->GetEntries(entries);
        for (GenApi::IEnumEntry* pEntry : entries)
        {
            if (GenApi::IsAvailable(pEntry))
            {
                selector->FromString(pEntry->GetSymbolic());
                SetIfWritable(mode, "Off");
            }
        }
        selector->FromString(before);
    }
    else
    {
        SetIfWritable(mode, "Off");
    }
    SetIfWritable(GenApi::CEnumerationPtr(nodeMap.GetNode("AcquisitionMode")), "Continuous");
}

} // namespace Velmo::Internal
