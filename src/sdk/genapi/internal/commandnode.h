// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/numbernode.h"

namespace GenApi
{
namespace Internal
{

/** A command: executing writes its value; it is done when the device has changed that value. */
class CCommandNode final : public CNumberNode, public ICommand
{
public:
    using CNumberNode::CNumberNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void Execute(bool verify) override;
    bool IsDone(bool verify) override;
    /** "1" while the command runs, else "0". */
    GenICam::gcstring ToString(bool verify, bool ignoreCache) override;
    /** "1", "true" and "Execute" execute; "0" and "false" do nothing. */
    void FromString(const GenICam::gcstring& text, bool verify) override;
    bool IsValueCacheValid() const override { return CNumberNode::IsValueCacheValid(); }

    void WriteNumber(const SFormulaValue& value, bool verify) override;
    void Poll() override;

private:
    bool UpdateDone();

    bool m_isExecuting = false;
};

} // namespace Internal
} // namespace GenApi
