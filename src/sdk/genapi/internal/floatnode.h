// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbernode.h"

namespace GenApi
{
namespace Internal
{

/** Every node that is a floating-point number. */
class CFloatNode : public CNumberNode, public IFloat
{
public:
    using CNumberNode::CNumberNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void SetValue(double value, bool verify) override;
    double GetValue(bool verify, bool ignoreCache) override;
    double GetMin() override;
    double GetMax() override;
    bool HasInc() override;
    double GetInc() override;
    ERepresentation GetRepresentation() override;
    GenICam::gcstring GetUnit() override;
    EDisplayNotation GetDisplayNotation() const override;
    std::int64_t GetDisplayPrecision() const override;
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override { return CNumberNode::IsValueCacheValid(); }
};

} // namespace Internal
} // namespace GenApi
