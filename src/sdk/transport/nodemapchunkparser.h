// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "protocols/chunks.h"
#include "transport/chunkparser.h"

#include <memory>
#include <string>
#include <vector>

namespace Velmo::Transport
{

/** Reads the chunk layout of GigE Vision and USB3 Vision and attaches the chunks to a node map. */
class TRANSPORT_EXPORT CNodeMapChunkParser final : public IChunkParser
{
public:
    /** deviceName is what errors call the camera. The node map must stay until Disconnect or the end. */
    CNodeMapChunkParser(GenApi::INodeMap& nodeMap, Chunks::EByteOrder byteOrder, std::string deviceName);
    /** Detaches. */
    ~CNodeMapChunkParser() override;
    CNodeMapChunkParser(const CNodeMapChunkParser&) = delete;
    CNodeMapChunkParser& operator=(const CNodeMapChunkParser&) = delete;

    void AttachBuffer(const void* pBuffer, std::int64_t bytes, std::int64_t layoutId = 0,
                      std::size_t* pChunkOffset = nullptr) override;
    void DetachBuffer() override;

    /** Detaches, and forgets the node map. */
    void Disconnect() noexcept;

private:
    void Detach() noexcept;
    /** False, and reported, when they cannot be read. */
    bool ReadChunks(const void* pBuffer, std::int64_t bytes);
    /** Changes the node map; what a callback of its nodes throws is reported. */
    template <class Change> void RunReceivers(const Change& change) noexcept;
    /** A warning the first time since the last DetachBuffer, which begins a grab; at debug level then. */
    static void ReportOnce(bool& hasReported, const std::string& text) noexcept;

    GenApi::INodeMap* m_pNodeMap; // null: the device was closed
    const Chunks::EByteOrder m_byteOrder;
    const std::string m_deviceName;
    std::vector<GenApi::SChunkData> m_chunks; // the last first; kept, so that nothing is allocated per image
    GenApi::EEndianness m_found = GenApi::EEndianness::Big;
    bool m_hasReportedData = false;     // that chunk data cannot be read
    bool m_hasReportedReceiver = false; // that a node's callback failed
};

/** The chunk parsers of one device. Threads: one at a time. */
class TRANSPORT_EXPORT CChunkParsers
{
public:
    /** Null when there is no node map or it has no chunks. */
    IChunkParser* Create(GenApi::INodeMap* pNodeMap, Chunks::EByteOrder byteOrder, const std::string& deviceName);
    /** Null is nothing to do; throws InvalidArgumentException when it is none of these. */
    void Destroy(IChunkParser* pParser);
    /** To be called before the node map goes. */
    void Disconnect() noexcept;

private:
    std::vector<std::unique_ptr<CNodeMapChunkParser>> m_parsers;
};

} // namespace Velmo::Transport
