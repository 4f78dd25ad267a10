// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"

namespace GenApi
{
namespace Internal
{

/** One named value of an enumeration. */
class CEnumEntryNode final : public CNode, public IEnumEntry
{
public:
    using CNode::CNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    std::int64_t GetValue() const override { return Description().entry->value; }
    GenICam::gcstring GetSymbolic() const override { return Description().entry->symbolic; }
    double GetNumericValue() const override;
    bool IsSelfClearing() const override { return Description().entry->isSelfClearing; }
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override { return true; }
};

} // namespace Internal
} // namespace GenApi
