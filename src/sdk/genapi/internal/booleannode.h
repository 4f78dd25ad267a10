// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbernode.h"

namespace GenApi
{
namespace Internal
{

/** A truth value over an integer. To formulas and conditions it is 1 or 0, whatever stands for them in the device. */
class CBooleanNode final : public CNumberNode, public IBoolean
{
public:
    using CNumberNode::CNumberNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void SetValue(bool value, bool verify) override;
    bool GetValue(bool verify, bool ignoreCache) override;
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override { return CNumberNode::IsValueCacheValid(); }

    SFormulaValue ReadNumber(bool ignoreCache) override;
    void WriteNumber(const SFormulaValue& value, bool verify) override;

private:
    bool HasOwnValue() const { return Description().number->value.node == NoNode; }
};

} // namespace Internal
} // namespace GenApi
