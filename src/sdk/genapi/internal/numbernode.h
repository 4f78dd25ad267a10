// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbersource.h"

#include <memory>
#include <string>

namespace GenApi
{
namespace Internal
{

inline bool IsTrue(const SFormulaValue& value)
{
    return value.isFloat ? value.real != 0.0 : value.integer != 0;
}
/** Rounded to the nearest integer; RuntimeException that names the node when no 64-bit integer can hold it. */
std::int64_t ToInteger(const SFormulaValue& value, const CNode& node);
double ToFloat(const SFormulaValue& value);
/** The constant, or the value of the node, which must be readable. */
SFormulaValue Resolve(CNodeMap& map, const SSource& source);
std::int64_t ResolveInteger(CNodeMap& map, const SSource& source);

/**
 * A node that other nodes can use as a number: integers, floating-point numbers, booleans, enumerations, commands.
 *
 * The functions are called with the node map's lock held and leave checks of the access mode to their callers, because
 * a node's access mode contains those of the nodes it is made of.
 */
class CNumberNode : public CNode, public virtual IValue
{
public:
    CNumberNode(CNodeMap& map, NodeIndex index);

    /** In the node's own type: an integer, or a floating-point number for Float kinds. */
    virtual SFormulaValue ReadNumber(bool ignoreCache);
    virtual void WriteNumber(const SFormulaValue& value, bool verify);
    std::int64_t ReadInteger(bool ignoreCache) { return ToInteger(ReadNumber(ignoreCache), *this); }
    SFormulaValue MinNumber();
    SFormulaValue MaxNumber();
    bool IncNumber(SFormulaValue& inc);
    ERepresentation Representation();
    std::string Unit();
    EDisplayNotation Notation();
    /** Below 0 when the description says nothing. */
    std::int64_t Precision();

    bool IsValueCacheValid() const override;
    void Drop() override;
    CRegisterAccess* Register() override { return m_source->Register(); }

protected:
    CNumberSource& Source() { return *m_source; }
    EAccessMode SourceMode() override { return m_source->Mode(); }
    bool IsSourceLocked() override { return m_source->IsLocked(); }

private:
    void CheckLimits(const SFormulaValue& value);
    void CheckInteger(std::int64_t value);
    void CheckFloat(double value);

    const std::unique_ptr<CNumberSource> m_source;
};

} // namespace Internal
} // namespace GenApi
