// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"
#include "genapi/internal/node.h"

#include "genapi/genapi_testexport.h"
#include "genapi/inodemap.h"

#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace GenApi
{
namespace Internal
{

class CNumberNode;
class CPortNode;

/**
 * An instance of a description: values, caches, ports. Nodes are made when they are first asked for.
 *
 * Threads: one recursive lock; every access runs inside Run(), which fires the callbacks of all nodes that changed once
 * the outermost access of the thread has released the lock.
 */
class GENAPI_TEST_EXPORT CNodeMap : public INodeMap
{
public:
    CNodeMap(std::shared_ptr<const SDescription> description, std::string deviceName);
    ~CNodeMap() override;

    INode* GetNode(const GenICam::gcstring& name) const override;
    void GetNodes(NodeList& nodes) const override;
    std::uint64_t GetNumNodes() const override;
    void InvalidateNodes() override;
    void Poll(std::int64_t elapsedMs) override;
    bool Connect(IPort* port, const GenICam::gcstring& portName) override;
    bool Connect(IPort* port) override;
    void Disconnect(IPort* port) override;
    GenICam::gcstring GetModelName() const override;
    GenICam::gcstring GetVendorName() const override;
    GenICam::gcstring GetDeviceName() const override;
    void GetSchemaVersion(std::uint16_t& major, std::uint16_t& minor, std::uint16_t& subMinor) const override;
    void GetDeviceVersion(std::uint16_t& major, std::uint16_t& minor, std::uint16_t& subMinor) const override;
    std::recursive_mutex& GetLock() const override;
    void AttachEvent(const GenICam::gcstring& eventId, const std::uint8_t* data, std::size_t bytes) override;
    void AttachChunk(const GenICam::gcstring& chunkId, const std::uint8_t* data, std::size_t bytes,
                     EEndianness byteOrder) override;
    void AttachChunks(const SChunkData* chunks, std::size_t count, EEndianness byteOrder) override;
    void DetachChunks() override;
    bool HasChunks() const override;

    /** Runs an access under the lock, then fires the callbacks it led to. */
    template <class Access> auto Run(Access&& access) -> decltype(access())
    {
        CAccessScope scope(*this);
        if constexpr (std::is_void_v<decltype(access())>)
        {
            access();
            scope.Finish();
        }
        else
        {
            auto result = access();
            scope.Finish();
            return result;
        }
    }

    // Called with the lock held.
    const SDescription& Description() const { return *m_description; }
    CNode& Node(NodeIndex index);
    CNumberNode& Number(NodeIndex index);
    CPortNode& Port(NodeIndex index);
    /** The node's value is new: all that depend on it forget their caches and will be reported, itself included. */
    void Changed(NodeIndex index, bool keepsOwnCache);
    /** As Changed(), and what the node's value is read from is read again. */
    void Invalidate(NodeIndex index);
    void CollectFeatures(const NodeIndices& indices, FeatureList& features);

private:
    struct SFiring
    {
        INode* node;
        Callbacks callbacks;
    };
    using Firings = std::vector<SFiring>;

    class CAccessScope
    {
    public:
        explicit CAccessScope(CNodeMap& map);
        ~CAccessScope();
        CAccessScope(const CAccessScope&) = delete;
        CAccessScope& operator=(const CAccessScope&) = delete;
        /** Releases the lock and fires; rethrows the first exception of a callback after all have run. */
        void Finish();

    private:
        std::exception_ptr Leave() noexcept;
        CNodeMap& m_map;
        bool m_isInside = true;
    };

    Firings TakeFirings();
    void BeginChange();
    void Visit(NodeIndex index, bool drops);
    const NodeIndices& TerminalsBelow(NodeIndex index);
    void Spread();
    void PollNode(NodeIndex index);

    const std::shared_ptr<const SDescription> m_description;
    const std::string m_deviceName;
    mutable std::recursive_mutex m_lock; // guards everything below and all nodes; outermost
    int m_depth = 0;
    std::vector<std::unique_ptr<CNode>> m_nodes;
    std::vector<std::uint32_t> m_visited; // number of the change that last reached the node
    std::uint32_t m_change = 0;
    NodeIndices m_open;    // reached by the current change, dependents not yet visited
    NodeIndices m_pending; // to be reported when the lock is released
    std::vector<bool> m_isPending;
    std::vector<std::int64_t> m_polledForMs;
    std::unordered_map<NodeIndex, NodeIndices> m_terminals; // of nodes the description has none computed for
};

} // namespace Internal
} // namespace GenApi
