// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/evaluationcheck.h"

#include "genapi/internal/elementreader.h"
#include "genapi/internal/references.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{
namespace
{

enum EFacet : std::uint32_t
{
    FacetValue,
    FacetMin,
    FacetMax,
    FacetInc,
    FacetAvailable,
    FacetCount
};

constexpr std::uint32_t MaxDepth = 400;
constexpr double MaxCost = 1e8; // node evaluations without any cache

/** Vertex of the graph that is checked: one facet of one node. */
using Vertex = std::uint32_t;
using Vertices = std::vector<Vertex>;

Vertex VertexOf(NodeIndex node, EFacet facet)
{
    return static_cast<Vertex>(node) * FacetCount + facet;
}

EFacet FacetOf(ERole role)
{
    switch (role)
    {
    case ERole::VariableMin:
        return FacetMin;
    case ERole::VariableMax:
        return FacetMax;
    case ERole::VariableInc:
        return FacetInc;
    default:
        return FacetValue;
    }
}

bool IsVariable(ERole role)
{
    return role == ERole::Variable || role == ERole::VariableMin || role == ERole::VariableMax ||
           role == ERole::VariableInc || role == ERole::VariableReg;
}

bool ServesValue(ERole role)
{
    return role == ERole::Value || role == ERole::Copy || role == ERole::Index || role == ERole::Address ||
           role == ERole::Length || role == ERole::CommandValue || role == ERole::ChunkId || IsVariable(role);
}

void AddValueNeeds(const SNodeDescription& node, NodeIndex index, Vertices& needs)
{
    needs.push_back(VertexOf(index, FacetAvailable));
    VisitReferences(node,
                    [&needs](ERole role, NodeIndex target)
                    {
                        if (ServesValue(role))
                        {
                            needs.push_back(VertexOf(target, FacetOf(role)));
                        }
                    });
}

void AddAvailabilityNeeds(const SNodeDescription& node, Vertices& needs)
{
    VisitReferences(node,
                    [&needs](ERole role, NodeIndex target)
                    {
                        if (role == ERole::Implemented || role == ERole::Available || role == ERole::Index ||
                            role == ERole::ChunkId)
                        {
                            needs.push_back(VertexOf(target, FacetValue));
                        }
                        else if (role == ERole::Value || role == ERole::Entry || IsVariable(role))
                        {
                            needs.push_back(VertexOf(target, FacetAvailable));
                        }
                    });
}

void AddLimitNeeds(const SNodeDescription& node, EFacet facet, Vertices& needs)
{
    const ERole own = facet == FacetMin ? ERole::Min : facet == FacetMax ? ERole::Max : ERole::Inc;
    const bool isConverter = IsConverterKind(node.kind);
    const SNumberPart* number = node.number.get();
    const bool hasOwn = number != nullptr && (facet == FacetMin   ? number->min.IsGiven()
                                              : facet == FacetMax ? number->max.IsGiven()
                                                                  : number->inc.IsGiven());
    VisitReferences(node,
                    [&](ERole role, NodeIndex target)
                    {
                        if (role == own || role == ERole::Length)
                        {
                            needs.push_back(VertexOf(target, FacetValue));
                        }
                        else if (hasOwn)
                        {
                            return;
                        }
                        else if (role == ERole::Value && isConverter)
                        {
                            needs.push_back(VertexOf(target, FacetMin));
                            needs.push_back(VertexOf(target, FacetMax));
                        }
                        else if (role == ERole::Value)
                        {
                            needs.push_back(VertexOf(target, facet));
                        }
                        else if (role == ERole::Index || (isConverter && IsVariable(role)))
                        {
                            needs.push_back(VertexOf(target, FacetOf(role)));
                        }
                    });
}

class CEvaluationCheck
{
public:
    explicit CEvaluationCheck(const SDescription& description)
        : m_description(description), m_vertices(description.nodes.size() * FacetCount)
    {
    }

    void Run()
    {
        for (Vertex vertex = 0; vertex < m_vertices.size(); ++vertex)
        {
            if (m_vertices[vertex].state == EState::New)
            {
                Walk(vertex);
            }
        }
    }

private:
    enum class EState : std::uint8_t
    {
        New,
        Open,
        Done
    };
    struct SVertex
    {
        EState state = EState::New;
        std::uint32_t depth = 1;
        double cost = 1.0;
    };
    struct SFrame
    {
        Vertex vertex;
        Vertices needs;
        std::size_t next = 0;
    };

    const SNodeDescription& NodeOf(Vertex vertex) const { return m_description.nodes[vertex / FacetCount]; }

    Vertices NeedsOf(Vertex vertex) const
    {
        Vertices needs;
        const auto facet = static_cast<EFacet>(vertex % FacetCount);
        const auto index = static_cast<NodeIndex>(vertex / FacetCount);
        if (facet == FacetValue)
        {
            AddValueNeeds(NodeOf(vertex), index, needs);
        }
        else if (facet == FacetAvailable)
        {
            AddAvailabilityNeeds(NodeOf(vertex), needs);
        }
        else
        {
            AddLimitNeeds(NodeOf(vertex), facet, needs);
        }
        return needs;
    }

    void Push(Vertex vertex)
    {
        m_vertices[vertex].state = EState::Open;
        m_stack.push_back({vertex, NeedsOf(vertex), 0});
    }

    void Walk(Vertex start)
    {
        Push(start);
        while (!m_stack.empty())
        {
            SFrame& frame = m_stack.back();
            if (frame.next == frame.needs.size())
            {
                Finish();
                continue;
            }
            const Vertex need = frame.needs[frame.next++];
            if (m_vertices[need].state == EState::Open)
            {
                ThrowCircle(need);
            }
            if (m_vertices[need].state == EState::New)
            {
                Push(need);
            }
        }
    }

    void Finish()
    {
        const SFrame& frame = m_stack.back();
        SVertex& vertex = m_vertices[frame.vertex];
        for (const Vertex need : frame.needs)
        {
            vertex.depth = std::max(vertex.depth, m_vertices[need].depth + 1);
            vertex.cost += m_vertices[need].cost;
        }
        if (vertex.depth > MaxDepth)
        {
            ThrowDescriptionError(NodeOf(frame.vertex).name, "depends on too long a chain of nodes");
        }
        if (vertex.cost > MaxCost)
        {
            ThrowDescriptionError(NodeOf(frame.vertex).name, "depends on too many nodes to be evaluated");
        }
        vertex.state = EState::Done;
        m_stack.pop_back();
    }

    [[noreturn]] void ThrowCircle(Vertex start) const
    {
        std::string path;
        std::string last;
        bool isInside = false;
        for (const SFrame& frame : m_stack)
        {
            isInside = isInside || frame.vertex == start;
            const std::string& name = NodeOf(frame.vertex).name;
            if (isInside && name != last && path.size() < 400)
            {
                path += name + " -> ";
                last = name;
            }
        }
        ThrowDescriptionError(NodeOf(start).name, "circular reference: " + path + NodeOf(start).name);
    }

    const SDescription& m_description;
    std::vector<SVertex> m_vertices;
    std::vector<SFrame> m_stack;
};

} // namespace

void CheckEvaluation(const SDescription& description)
{
    CEvaluationCheck(description).Run();
}

} // namespace Internal
} // namespace GenApi
