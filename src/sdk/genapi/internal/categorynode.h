// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"

namespace GenApi
{
namespace Internal
{

/** A group of features. */
class CCategoryNode final : public CNode, public ICategory
{
public:
    using CNode::CNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void GetFeatures(FeatureList& features) const override;
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override { return true; }

protected:
    EAccessMode SourceMode() override;
};

} // namespace Internal
} // namespace GenApi
