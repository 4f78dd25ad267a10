// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/nodemap.h"

#include "genapi/internal/dependencygraph.h"
#include "genapi/internal/nodefactory.h"
#include "genapi/internal/numbernode.h"
#include "genapi/internal/portnode.h"
#include "genapi/internal/textparse.h"

#include <algorithm>
#include <limits>

namespace GenApi
{
namespace Internal
{

CNodeMap::CAccessScope::CAccessScope(CNodeMap& map) : m_map(map)
{
    m_map.m_lock.lock();
    ++m_map.m_depth;
}

CNodeMap::CAccessScope::~CAccessScope()
{
    // An access that failed may still have changed something; its own exception is the one that matters.
    if (m_isInside)
    {
        Leave();
    }
}

void CNodeMap::CAccessScope::Finish()
{
    if (const std::exception_ptr failure = Leave())
    {
        std::rethrow_exception(failure);
    }
}

std::exception_ptr CNodeMap::CAccessScope::Leave() noexcept
{
    m_isInside = false;
    Firings firings;
    if (--m_map.m_depth == 0 && !m_map.m_pending.empty())
    {
        firings = m_map.TakeFirings();
    }
    m_map.m_lock.unlock();
    std::exception_ptr failure;
    for (const SFiring& firing : firings)
    {
        for (const CallbackPtr& callback : firing.callbacks)
        {
            try
            {
                callback->Run(firing.node);
            }
            catch (...)
            {
                failure = failure ? failure : std::current_exception();
            }
        }
    }
    return failure;
}

CNodeMap::CNodeMap(std::shared_ptr<const SDescription> description, std::string deviceName)
    : m_description(std::move(description)), m_deviceName(std::move(deviceName)), m_nodes(m_description->nodes.size()),
      m_polledForMs(m_description->polled.size())
{
}

CNodeMap::~CNodeMap() = default;

CNode& CNodeMap::Node(NodeIndex index)
{
    std::unique_ptr<CNode>& node = m_nodes[static_cast<std::size_t>(index)];
    if (!node)
    {
        node = MakeNode(*this, index);
    }
    return *node;
}

CNumberNode& CNodeMap::Number(NodeIndex index)
{
    return static_cast<CNumberNode&>(Node(index));
}

CPortNode& CNodeMap::Port(NodeIndex index)
{
    return static_cast<CPortNode&>(Node(index));
}

void CNodeMap::CollectFeatures(const NodeIndices& indices, FeatureList& features)
{
    for (const NodeIndex index : indices)
    {
        features.push_back(&Node(index));
    }
}

INode* CNodeMap::GetNode(const GenICam::gcstring& name) const
{
    const std::string& text = name.str();
    NodeIndex index = NoNode;
    const std::size_t colons = text.find("::");
    if (colons == std::string::npos)
    {
        index = m_description->Find(text);
    }
    else
    {
        index = m_description->Find(text.substr(colons + 2));
        const bool isStandard = text.compare(0, colons, "Std") == 0;
        const bool isCustom = text.compare(0, colons, "Cust") == 0;
        if (index != NoNode &&
            !(m_description->nodes[static_cast<std::size_t>(index)].isStandard ? isStandard : isCustom))
        {
            index = NoNode;
        }
    }
    if (index == NoNode)
    {
        return nullptr;
    }
    // Making a node on first use is no visible change of the map.
    auto& self = const_cast<CNodeMap&>(*this);
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    return &self.Node(index);
}

void CNodeMap::GetNodes(NodeList& nodes) const
{
    auto& self = const_cast<CNodeMap&>(*this);
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    nodes.clear();
    nodes.reserve(m_nodes.size());
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
    {
        nodes.push_back(&self.Node(static_cast<NodeIndex>(i)));
    }
}

std::uint64_t CNodeMap::GetNumNodes() const
{
    return m_nodes.size();
}

void CNodeMap::Visit(NodeIndex index, bool drops)
{
    const auto i = static_cast<std::size_t>(index);
    if (m_visited[i] == m_change)
    {
        return;
    }
    m_visited[i] = m_change;
    m_open.push_back(index);
    CNode* const node = m_nodes[i].get();
    if (node == nullptr)
    {
        return;
    }
    if (drops)
    {
        node->Drop();
    }
    if (!m_isPending[i] && !node->RegisteredCallbacks().empty())
    {
        m_isPending[i] = true;
        m_pending.push_back(index);
    }
}

void CNodeMap::Spread()
{
    const std::vector<std::uint32_t>& begins = m_description->dependentsBegin;
    while (!m_open.empty())
    {
        const auto i = static_cast<std::size_t>(m_open.back());
        m_open.pop_back();
        for (std::uint32_t edge = begins[i]; edge < begins[i + 1]; ++edge)
        {
            Visit(m_description->dependents[edge], true);
        }
    }
}

void CNodeMap::BeginChange()
{
    if (m_visited.empty())
    {
        m_visited.resize(m_nodes.size());
        m_isPending.resize(m_nodes.size());
    }
    if (m_change == std::numeric_limits<std::uint32_t>::max())
    {
        std::fill(m_visited.begin(), m_visited.end(), 0U);
        m_change = 0;
    }
    ++m_change;
    m_open.clear();
}

void CNodeMap::Changed(NodeIndex index, bool keepsOwnCache)
{
    BeginChange();
    Visit(index, !keepsOwnCache);
    Spread();
}

const NodeIndices& CNodeMap::TerminalsBelow(NodeIndex index)
{
    const auto computed = m_description->terminals.find(index);
    if (computed != m_description->terminals.end())
    {
        return computed->second;
    }
    const auto [own, isNew] = m_terminals.try_emplace(index);
    if (isNew)
    {
        own->second = FindTerminals(*m_description, index);
    }
    return own->second;
}

void CNodeMap::Invalidate(NodeIndex index)
{
    BeginChange();
    Visit(index, true);
    for (const NodeIndex terminal : TerminalsBelow(index))
    {
        Visit(terminal, true);
    }
    Spread();
}

void CNodeMap::InvalidateNodes()
{
    Run(
        [this]
        {
            BeginChange();
            for (std::size_t i = 0; i < m_nodes.size(); ++i)
            {
                Visit(static_cast<NodeIndex>(i), true);
            }
            m_open.clear();
        });
}

CNodeMap::Firings CNodeMap::TakeFirings()
{
    Firings firings;
    for (const NodeIndex index : m_pending)
    {
        m_isPending[static_cast<std::size_t>(index)] = false;
        CNode& node = Node(index);
        firings.push_back({&node, node.RegisteredCallbacks()});
    }
    m_pending.clear();
    return firings;
}

void CNodeMap::Poll(std::int64_t elapsedMs)
{
    Run(
        [&]
        {
            for (std::size_t i = 0; i < m_polledForMs.size(); ++i)
            {
                const NodeIndex index = m_description->polled[i];
                m_polledForMs[i] += std::max<std::int64_t>(elapsedMs, 0);
                if (m_polledForMs[i] >= m_description->nodes[static_cast<std::size_t>(index)].pollingTimeMs)
                {
                    m_polledForMs[i] = 0;
                    PollNode(index);
                }
            }
        });
}

void CNodeMap::PollNode(NodeIndex index)
{
    const NodeIndex block = m_description->nodes[static_cast<std::size_t>(index)].blockPolling;
    if (block != NoNode)
    {
        CNumberNode& blocker = Number(block);
        if (IsReadable(blocker.AvailableMode()) && IsTrue(blocker.ReadNumber(false)))
        {
            return;
        }
    }
    if (m_description->nodes[static_cast<std::size_t>(index)].kind == ENodeKind::Command)
    {
        Node(index).Poll();
    }
    else
    {
        Invalidate(index);
    }
}

bool CNodeMap::Connect(IPort* port, const GenICam::gcstring& portName)
{
    const NodeIndex index = m_description->Find(portName.str());
    if (index == NoNode || !m_description->nodes[static_cast<std::size_t>(index)].port)
    {
        return false;
    }
    Run(
        [&]
        {
            Port(index).SetTarget(port);
            Changed(index, false);
        });
    return true;
}

bool CNodeMap::Connect(IPort* port)
{
    return Connect(port, "Device");
}

void CNodeMap::Disconnect(IPort* port)
{
    Run(
        [&]
        {
            for (std::size_t i = 0; i < m_nodes.size(); ++i)
            {
                const auto index = static_cast<NodeIndex>(i);
                if (m_description->nodes[i].port && m_nodes[i] && port != nullptr && Port(index).Target() == port)
                {
                    Port(index).SetTarget(nullptr);
                    Changed(index, false);
                }
            }
        });
}

GenICam::gcstring CNodeMap::GetModelName() const
{
    return m_description->modelName;
}

GenICam::gcstring CNodeMap::GetVendorName() const
{
    return m_description->vendorName;
}

GenICam::gcstring CNodeMap::GetDeviceName() const
{
    return m_deviceName;
}

void CNodeMap::GetSchemaVersion(std::uint16_t& major, std::uint16_t& minor, std::uint16_t& subMinor) const
{
    major = m_description->schemaVersion.major;
    minor = m_description->schemaVersion.minor;
    subMinor = m_description->schemaVersion.subMinor;
}

void CNodeMap::GetDeviceVersion(std::uint16_t& major, std::uint16_t& minor, std::uint16_t& subMinor) const
{
    major = m_description->deviceVersion.major;
    minor = m_description->deviceVersion.minor;
    subMinor = m_description->deviceVersion.subMinor;
}

std::recursive_mutex& CNodeMap::GetLock() const
{
    return m_lock;
}

namespace
{

std::uint64_t ParseId(const GenICam::gcstring& text)
{
    std::uint64_t id = 0;
    if (!ParseHex(text.str(), id))
    {
        GENICAM_THROW(InvalidArgumentException, "'" + text.str() + "' is no hexadecimal event or chunk ID");
    }
    return id;
}

} // namespace

void CNodeMap::AttachEvent(const GenICam::gcstring& eventId, const std::uint8_t* data, std::size_t bytes)
{
    const std::uint64_t id = ParseId(eventId);
    Run(
        [&]
        {
            for (const NodeIndex index : m_description->eventPorts)
            {
                if (Port(index).Id() == id)
                {
                    Port(index).AttachCopy(data, bytes);
                    Changed(index, false);
                }
            }
            const auto named = m_description->byEventId.find(id);
            if (named != m_description->byEventId.end())
            {
                for (const NodeIndex index : named->second)
                {
                    Invalidate(index);
                }
            }
        });
}

void CNodeMap::AttachChunk(const GenICam::gcstring& chunkId, const std::uint8_t* data, std::size_t bytes,
                           EEndianness byteOrder)
{
    const std::uint64_t id = ParseId(chunkId);
    Run(
        [&]
        {
            for (const NodeIndex index : m_description->chunkPorts)
            {
                if (Port(index).Id() == id)
                {
                    Port(index).AttachView(data, bytes, byteOrder);
                    Changed(index, false);
                }
            }
        });
}

void CNodeMap::AttachChunks(const SChunkData* chunks, std::size_t count, EEndianness byteOrder)
{
    Run(
        [&]
        {
            for (const NodeIndex index : m_description->chunkPorts)
            {
                CPortNode& port = Port(index);
                const std::uint64_t id = port.Id();
                const SChunkData* const end = chunks + count;
                const SChunkData* const found =
                    std::find_if(chunks, end, [id](const SChunkData& chunk) { return chunk.id == id; });
                const bool wasAttached = port.IsAttached();
                port.AttachView(found == end ? nullptr : found->data, found == end ? 0 : found->bytes, byteOrder);
                if (wasAttached || port.IsAttached())
                {
                    Changed(index, false);
                }
            }
        });
}

bool CNodeMap::HasChunks() const
{
    return !m_description->chunkPorts.empty();
}

void CNodeMap::DetachChunks()
{
    Run(
        [&]
        {
            for (const NodeIndex index : m_description->chunkPorts)
            {
                if (Port(index).IsAttached())
                {
                    Port(index).AttachView(nullptr, 0, EEndianness::Little);
                    Changed(index, false);
                }
            }
        });
}

} // namespace Internal
} // namespace GenApi
