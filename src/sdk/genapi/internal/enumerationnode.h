// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/enumentrynode.h"
#include "genapi/internal/numbernode.h"

namespace GenApi
{
namespace Internal
{

/** One of several named values. */
class CEnumerationNode final : public CNumberNode, public IEnumeration
{
public:
    using CNumberNode::CNumberNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void GetEntries(EnumEntryList& entries) override;
    void GetSymbolics(GenICam::gcstring_vector& symbolics) override;
    void SetIntValue(std::int64_t value, bool verify) override;
    std::int64_t GetIntValue(bool verify, bool ignoreCache) override;
    IEnumEntry* GetEntryByName(const GenICam::gcstring& symbolic) override;
    IEnumEntry* GetEntry(std::int64_t value) override;
    IEnumEntry* GetCurrentEntry(bool verify, bool ignoreCache) override;
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override { return CNumberNode::IsValueCacheValid(); }

    void WriteNumber(const SFormulaValue& value, bool verify) override;

protected:
    EAccessMode SourceMode() override;

private:
    CEnumEntryNode* FindEntry(std::int64_t value);
    void RequireAvailable(CNode& entry) const;

    const SEnumerationPart& Part() const { return *Description().enumeration; }
};

} // namespace Internal
} // namespace GenApi
