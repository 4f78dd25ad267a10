// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbersource.h"

#include <array>
#include <optional>
#include <vector>

namespace GenApi
{
namespace Internal
{

/** What SwissKnives and converters share: evaluating a formula over the values of other nodes. */
class CFormulaSource : public CNumberSource
{
public:
    using CNumberSource::CNumberSource;

protected:
    /** own is the value a converter converts. Errors name the node. */
    SFormulaValue Evaluate(const SBoundFormula& formula, const SFormulaValue& own, bool ignoreCache);
    /** As Evaluate(); empty where the formula itself has no value, as a division by zero has none. */
    std::optional<SFormulaValue> TryEvaluate(const SBoundFormula& formula, const SFormulaValue& own);
    EAccessMode VariablesMode(const SBoundFormula& formula);

private:
    /** The values of a formula's variables; most formulas have few. */
    struct SValues
    {
        std::array<SFormulaValue, 8> few;
        std::vector<SFormulaValue> many;
        const SFormulaValue* data = nullptr;
    };
    void Gather(const SBoundFormula& formula, const SFormulaValue& own, bool ignoreCache, SValues& values);
    SFormulaValue Compute(const SBoundFormula& formula, const SValues& values) const;
    SFormulaValue ValueOf(const SVariable& variable, const SFormulaValue& own, bool ignoreCache);
};

/** A value computed by a formula. */
class CSwissKnifeSource final : public CFormulaSource
{
public:
    using CFormulaSource::CFormulaSource;
    SFormulaValue Read(bool ignoreCache) override;
    void Write(const SFormulaValue& value, bool verify) override;
    EAccessMode Mode() override;
    bool IsCacheValid() override { return m_isCached; }
    void Drop() override { m_isCached = false; }

private:
    bool m_isCached = false;
    SFormulaValue m_cached;
};

/** Another node's value, converted by one formula for reading and one for writing. */
class CConverterSource final : public CFormulaSource
{
public:
    using CFormulaSource::CFormulaSource;
    SFormulaValue Read(bool ignoreCache) override;
    void Write(const SFormulaValue& value, bool verify) override;
    SFormulaValue Min() override { return Limit(false); }
    SFormulaValue Max() override { return Limit(true); }
    EAccessMode Mode() override;
    bool IsLocked() override;
    bool IsCacheValid() override { return m_isCached; }
    void Drop() override { m_isCached = false; }

private:
    CNumberNode& Converted();
    /** The other node's limit, converted; empty where the formula has no value for it. */
    std::optional<SFormulaValue> End(bool atMax);
    /** The end that is this limit; the widest there is where the ends say nothing. */
    SFormulaValue Limit(bool isMax);

    bool m_isCached = false;
    SFormulaValue m_cached;
};

} // namespace Internal
} // namespace GenApi
