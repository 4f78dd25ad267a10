// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbersource.h"

#include <unordered_map>

namespace GenApi
{
namespace Internal
{

/** A value of the node's own, another node's, or one of several chosen by an index. */
class CValueSource final : public CNumberSource
{
public:
    using CNumberSource::CNumberSource;
    SFormulaValue Read(bool ignoreCache) override;
    void Write(const SFormulaValue& value, bool verify) override;
    SFormulaValue Min() override;
    SFormulaValue Max() override;
    bool Inc(SFormulaValue& inc) override;
    EAccessMode Mode() override;
    bool IsLocked() override;
    bool IsCacheValid() override;
    CNumberNode* Target() override;

private:
    /** Null when the index chooses nothing. */
    const SSource* FindChosen();
    const SSource& Chosen();

    std::unordered_map<const SSource*, SFormulaValue> m_written; // constants that were written since
};

} // namespace Internal
} // namespace GenApi
