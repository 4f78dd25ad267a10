// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"
#include "genapi/internal/registeraccess.h"

#include <memory>
#include <string>

namespace GenApi
{
namespace Internal
{

/** A text: its own, another node's, or that of a register, where it ends at the first zero byte. */
class CStringNode : public CNode, public IString
{
public:
    CStringNode(CNodeMap& map, NodeIndex index);
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void SetValue(const GenICam::gcstring& value, bool verify) override;
    GenICam::gcstring GetValue(bool verify, bool ignoreCache) override;
    std::int64_t GetMaxLength() override;
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override;

    std::string ReadText(bool ignoreCache);
    void WriteText(const std::string& text);
    std::int64_t MaxLength();
    void Drop() override;
    CRegisterAccess* Register() override { return m_access.get(); }

protected:
    EAccessMode SourceMode() override;
    bool IsSourceLocked() override;

private:
    CStringNode* Target();

    const std::unique_ptr<CRegisterAccess> m_access;
    std::string m_text;
};

} // namespace Internal
} // namespace GenApi
