// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"

#include <memory>

namespace GenApi
{
namespace Internal
{

class CNumberNode;

/** Where a number node gets its value: other nodes, a register, a formula. Used with the node map's lock held. */
class CNumberSource
{
public:
    explicit CNumberSource(CNode& node) : m_node(node) {}
    virtual ~CNumberSource();
    CNumberSource(const CNumberSource&) = delete;
    CNumberSource& operator=(const CNumberSource&) = delete;

    virtual SFormulaValue Read(bool ignoreCache) = 0;
    virtual void Write(const SFormulaValue& value, bool verify) = 0;
    virtual SFormulaValue Min();
    virtual SFormulaValue Max();
    /** False when any value between the limits will do. */
    virtual bool Inc(SFormulaValue& inc);
    virtual EAccessMode Mode() = 0;
    virtual bool IsLocked() { return false; }
    virtual bool IsCacheValid() = 0;
    virtual void Drop() {}
    /** The node the value comes from at the moment; null if it comes from none. */
    virtual CNumberNode* Target() { return nullptr; }
    virtual CRegisterAccess* Register() { return nullptr; }

protected:
    CNode& Node() { return m_node; }
    const SNodeDescription& Description() const { return m_node.Description(); }
    const SNumberPart& Part() const { return *m_node.Description().number; }
    CNodeMap& Map() const { return m_node.Map(); }
    bool IsFloat() const { return IsFloatKind(m_node.Description().kind); }

private:
    CNode& m_node;
};

/** The source that the node's kind has. */
std::unique_ptr<CNumberSource> MakeNumberSource(CNode& node);

} // namespace Internal
} // namespace GenApi
