// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbersource.h"
#include "genapi/internal/registeraccess.h"

namespace GenApi
{
namespace Internal
{

/** A number in the bytes of a register: an integer, some bits of one, or a floating-point number. */
class CRegisterSource final : public CNumberSource
{
public:
    explicit CRegisterSource(CNode& node);
    SFormulaValue Read(bool ignoreCache) override;
    void Write(const SFormulaValue& value, bool verify) override;
    SFormulaValue Min() override;
    SFormulaValue Max() override;
    EAccessMode Mode() override { return m_access.Mode(); }
    bool IsCacheValid() override { return m_access.IsCacheValid(); }
    void Drop() override { m_access.Drop(); }
    CRegisterAccess* Register() override { return &m_access; }

private:
    struct SBits
    {
        int first; // counted from the least significant bit
        int count;
    };
    SBits Bits(std::int64_t length) const;
    const SRegisterPart& Reg() const { return *Description().reg; }
    void CheckLength(std::int64_t length) const;
    SFormulaValue DecodeFloat(std::uint64_t raw, std::size_t length) const;
    std::uint64_t EncodeFloat(double value, std::size_t length) const;

    CRegisterAccess m_access;
};

} // namespace Internal
} // namespace GenApi
