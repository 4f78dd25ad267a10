// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/dependencygraph.h"

#include "genapi/internal/references.h"

#include <algorithm>
#include <unordered_set>

namespace GenApi
{
namespace Internal
{
namespace
{

bool IsRead(ERole role)
{
    return role != ERole::Copy && role != ERole::Error && role != ERole::BlockPolling && role != ERole::Entry &&
           role != ERole::Port;
}

/** Values may be cached if nothing they are computed from is uncached; access modes if no condition is. */
class CCachability
{
public:
    explicit CCachability(SDescription& description)
        : m_description(description), m_value(description.nodes.size(), Unknown),
          m_access(description.nodes.size(), Unknown)
    {
    }

    void Run()
    {
        for (std::size_t i = 0; i < m_description.nodes.size(); ++i)
        {
            m_description.nodes[i].isValueCachable = IsValueCachable(static_cast<NodeIndex>(i));
            m_description.nodes[i].isAccessCachable = IsAccessCachable(static_cast<NodeIndex>(i));
        }
    }

private:
    static constexpr std::int8_t Unknown = -1;

    bool IsValueCachable(NodeIndex index)
    {
        std::int8_t& known = m_value[static_cast<std::size_t>(index)];
        if (known == Unknown)
        {
            const SNodeDescription& node = m_description.nodes[static_cast<std::size_t>(index)];
            bool isCachable = node.caching != ECachingMode::NoCache;
            VisitReferences(node,
                            [&](ERole role, NodeIndex target)
                            {
                                // Limits have sources of their own, which a value's cache does not watch.
                                if (role == ERole::VariableMin || role == ERole::VariableMax ||
                                    role == ERole::VariableInc)
                                {
                                    isCachable = false;
                                }
                                else if (ServesValue(role))
                                {
                                    isCachable = isCachable && IsValueCachable(target);
                                }
                            });
            known = isCachable ? 1 : 0;
        }
        return known == 1;
    }

    bool IsAccessCachable(NodeIndex index)
    {
        std::int8_t& known = m_access[static_cast<std::size_t>(index)];
        if (known == Unknown)
        {
            const SNodeDescription& node = m_description.nodes[static_cast<std::size_t>(index)];
            // A category is implemented if one of its features is; features do not report to their categories.
            bool isCachable = node.kind != ENodeKind::Category;
            VisitReferences(node,
                            [&](ERole role, NodeIndex target)
                            {
                                if (role == ERole::Implemented || role == ERole::Available || role == ERole::Index)
                                {
                                    isCachable = isCachable && IsValueCachable(target) && IsAccessCachable(target);
                                }
                                else if (role == ERole::Value || role == ERole::Entry || IsVariable(role))
                                {
                                    isCachable = isCachable && IsAccessCachable(target);
                                }
                            });
            known = isCachable ? 1 : 0;
        }
        return known == 1;
    }

    static bool IsVariable(ERole role)
    {
        return role == ERole::Variable || role == ERole::VariableMin || role == ERole::VariableMax ||
               role == ERole::VariableInc || role == ERole::VariableReg;
    }
    static bool ServesValue(ERole role)
    {
        return role == ERole::Value || role == ERole::Index || role == ERole::Address || role == ERole::Length ||
               IsVariable(role);
    }

    SDescription& m_description;
    std::vector<std::int8_t> m_value;
    std::vector<std::int8_t> m_access;
};

const NodeIndices& TerminalsOf(SDescription& description, NodeIndex start)
{
    const auto known = description.terminals.find(start);
    return known != description.terminals.end()
               ? known->second
               : description.terminals.emplace(start, FindTerminals(description, start)).first->second;
}

using Edges = std::vector<std::pair<NodeIndex, NodeIndex>>;

/** The changed node first, the node concerned second. */
Edges CollectEdges(SDescription& description)
{
    Edges edges;
    const auto invalidates = [&](NodeIndex changed, NodeIndex concerned)
    {
        edges.emplace_back(changed, concerned);
        for (const NodeIndex terminal : TerminalsOf(description, concerned))
        {
            edges.emplace_back(changed, terminal);
        }
    };
    for (std::size_t i = 0; i < description.nodes.size(); ++i)
    {
        const SNodeDescription& node = description.nodes[i];
        const auto index = static_cast<NodeIndex>(i);
        VisitReferences(node,
                        [&](ERole role, NodeIndex target)
                        {
                            if (IsRead(role) || role == ERole::Entry || role == ERole::Port)
                            {
                                edges.emplace_back(target, index);
                            }
                        });
        for (const NodeIndex selected : node.selected)
        {
            invalidates(index, selected);
        }
        for (const NodeIndex invalidator : node.invalidators)
        {
            invalidates(invalidator, index);
        }
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    return edges;
}

} // namespace

NodeIndices FindTerminals(const SDescription& description, NodeIndex start)
{
    NodeIndices terminals;
    NodeIndices open{start};
    std::unordered_set<NodeIndex> seen;
    while (!open.empty())
    {
        const NodeIndex index = open.back();
        open.pop_back();
        if (!seen.insert(index).second)
        {
            continue;
        }
        const SNodeDescription& node = description.nodes[static_cast<std::size_t>(index)];
        if (node.reg || node.kind == ENodeKind::Port)
        {
            terminals.push_back(index);
            continue;
        }
        const bool readsVariables = node.formula != nullptr && !IsConverterKind(node.kind);
        VisitReferences(node,
                        [&](ERole role, NodeIndex target)
                        {
                            if (role == ERole::Value || (readsVariables && role == ERole::Variable))
                            {
                                open.push_back(target);
                            }
                        });
    }
    return terminals;
}

void BuildDependencyGraph(SDescription& description)
{
    CCachability(description).Run();
    const Edges edges = CollectEdges(description);
    description.dependentsBegin.assign(description.nodes.size() + 1, 0);
    description.dependents.reserve(edges.size());
    for (const auto& [changed, concerned] : edges)
    {
        ++description.dependentsBegin[static_cast<std::size_t>(changed) + 1];
        description.dependents.push_back(concerned);
    }
    for (std::size_t i = 1; i < description.dependentsBegin.size(); ++i)
    {
        description.dependentsBegin[i] += description.dependentsBegin[i - 1];
    }
    for (const NodeIndex polled : description.polled)
    {
        TerminalsOf(description, polled);
    }
}

} // namespace Internal
} // namespace GenApi
