// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"
#include "genapi/internal/registeraccess.h"

#include <cstdint>
#include <string>

namespace GenApi
{
namespace Internal
{

// What IRegister does for every kind of register node; each takes the node map's lock.
void SetRegister(CNode& node, const std::uint8_t* data, std::int64_t length, bool verify);
void GetRegister(CNode& node, std::uint8_t* data, std::int64_t length, bool verify, bool ignoreCache);
std::int64_t RegisterLength(CNode& node);
std::int64_t RegisterAddress(CNode& node);

/** Makes a node that reads its value from a register one whose bytes can be had, too. */
template <class Base> class CRegisterMixin final : public Base, public IRegister
{
public:
    using Base::Base;
    EAccessMode GetAccessMode() const override { return Base::GetAccessMode(); }
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override { return Base::ToString(verify, ignoreCache); }
    void FromString(const GenICam::gcstring& text, bool verify) override { Base::FromString(text, verify); }
    bool IsValueCacheValid() const override { return Base::IsValueCacheValid(); }
    void Set(const std::uint8_t* data, std::int64_t length, bool verify) override
    {
        SetRegister(*this, data, length, verify);
    }
    void Get(std::uint8_t* data, std::int64_t length, bool verify, bool ignoreCache) override
    {
        GetRegister(*this, data, length, verify, ignoreCache);
    }
    std::int64_t GetLength() override { return RegisterLength(*this); }
    std::int64_t GetAddress() override { return RegisterAddress(*this); }
};

/** A register that is nothing but its bytes. */
class CRegisterNode final : public CNode, public IRegister
{
public:
    CRegisterNode(CNodeMap& map, NodeIndex index);
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void Set(const std::uint8_t* data, std::int64_t length, bool verify) override;
    void Get(std::uint8_t* data, std::int64_t length, bool verify, bool ignoreCache) override;
    std::int64_t GetLength() override { return RegisterLength(*this); }
    std::int64_t GetAddress() override { return RegisterAddress(*this); }
    /** "0x" and two hexadecimal digits for each byte. */
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override;

    void Drop() override;
    CRegisterAccess* Register() override { return &m_access; }

protected:
    EAccessMode SourceMode() override { return m_access.Mode(); }

private:
    CRegisterAccess m_access;
};

} // namespace Internal
} // namespace GenApi
