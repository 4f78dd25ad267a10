// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbernode.h"

namespace GenApi
{
namespace Internal
{

/** Every node that is an integer. */
class CIntegerNode : public CNumberNode, public IInteger
{
public:
    using CNumberNode::CNumberNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void SetValue(std::int64_t value, bool verify) override;
    std::int64_t GetValue(bool verify, bool ignoreCache) override;
    std::int64_t GetMin() override;
    std::int64_t GetMax() override;
    EIncMode GetIncMode() override;
    std::int64_t GetInc() override;
    ERepresentation GetRepresentation() override;
    GenICam::gcstring GetUnit() override;
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override { return CNumberNode::IsValueCacheValid(); }
};

} // namespace Internal
} // namespace GenApi
