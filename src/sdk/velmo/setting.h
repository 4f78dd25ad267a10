// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodes.h"
#include "velmo/velmo_export.h"

namespace Velmo
{

/** A parameter of the instant camera's own node map. Errors: those of the node. Threads: any. */
template <class Node, class Value> class CSetting
{
public:
    void Attach(GenApi::INode* pNode) { m_node = GenApi::CPointer<Node>(pNode); }
    bool IsValid() const { return m_node.IsValid(); }
    void SetValue(Value value) { m_node->SetValue(value); }
    Value GetValue() const { return m_node->GetValue(); }
    /** False instead of an exception. */
    bool TrySetValue(Value value)
    {
        try
        {
            SetValue(value);
            return true;
        }
        catch (const GenICam::GenericException&)
        {
            return false;
        }
    }

private:
    GenApi::CPointer<Node> m_node;
};

using CIntegerSetting = CSetting<GenApi::IInteger, std::int64_t>;
using CBooleanSetting = CSetting<GenApi::IBoolean, bool>;

} // namespace Velmo
