// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/categorynode.h"

#include "genapi/internal/nodemap.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{

EAccessMode CCategoryNode::SourceMode()
{
    const NodeIndices& features = Description().features;
    const auto isImplemented = [this](NodeIndex feature)
    {
        return IsImplemented(Map().Node(feature).AvailableMode());
    };
    const bool isEmpty = !features.empty() && std::none_of(features.begin(), features.end(), isImplemented);
    return isEmpty ? EAccessMode::NI : EAccessMode::RO;
}

void CCategoryNode::GetFeatures(FeatureList& features) const
{
    features.clear();
    Map().Run(
        [&]
        {
            for (const NodeIndex index : Description().features)
            {
                CNode& feature = Map().Node(index);
                if (IsImplemented(feature.AvailableMode()))
                {
                    features.push_back(&feature);
                }
            }
        });
}

GenICam::gcstring CCategoryNode::ToString(bool, bool)
{
    return GetDisplayName();
}

void CCategoryNode::FromString(const GenICam::gcstring&, bool)
{
    ThrowAccess("writable", EAccessMode::RO);
}

} // namespace Internal
} // namespace GenApi
