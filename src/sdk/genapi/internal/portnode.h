// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"

#include <map>
#include <vector>

namespace GenApi
{
namespace Internal
{

/** A port: what registers are read from and written to. Chunk and event ports read attached bytes instead. */
class CPortNode final : public CNode, public IPort
{
public:
    using CNode::CNode;
    EAccessMode GetAccessMode() const override { return CNode::GetAccessMode(); }
    void Read(void* buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;

    // Called with the node map's lock held.
    void SetTarget(IPort* target) { m_target = target; }
    IPort* Target() const { return m_target; }
    std::uint64_t Id();
    bool IsAttached() const { return m_data != nullptr; }
    void AttachCopy(const std::uint8_t* data, std::size_t bytes);
    void AttachView(const std::uint8_t* data, std::size_t bytes, EEndianness byteOrder);
    void ReadBytes(const CNode& reader, std::uint8_t* buffer, std::int64_t address, std::int64_t length);
    void WriteBytes(const CNode& writer, const std::uint8_t* buffer, std::int64_t address, std::int64_t length);
    EEndianness ByteOrder(EEndianness declared) const;

    /** Remembers where a register lies, so that a write to one reaches others over the same bytes. */
    void NotePlace(NodeIndex reg, std::int64_t address, std::int64_t length);
    NodeIndices Overlapping(NodeIndex self, std::int64_t address, std::int64_t length) const;

protected:
    EAccessMode SourceMode() override;

private:
    struct SPlace
    {
        std::int64_t address;
        std::int64_t length;
    };
    bool HoldsData() const { return Description().port->isChunk || Description().port->isEvent; }
    void CopyAttached(const CNode& reader, std::uint8_t* buffer, std::int64_t address, std::int64_t length) const;

    IPort* m_target = nullptr;
    const std::uint8_t* m_data = nullptr;
    std::size_t m_bytes = 0;
    std::vector<std::uint8_t> m_copy;
    EEndianness m_byteOrder = EEndianness::Little;
    std::unordered_map<NodeIndex, SPlace> m_places;
    std::multimap<std::int64_t, NodeIndex> m_byAddress;
    std::int64_t m_longest = 0;
};

} // namespace Internal
} // namespace GenApi
