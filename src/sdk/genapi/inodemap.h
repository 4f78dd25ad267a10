// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodes.h"

#include <memory>
#include <mutex>

namespace GenApi
{

/** The bytes of one chunk. */
struct SChunkData
{
    std::uint64_t id = 0;
    const std::uint8_t* data = nullptr;
    std::size_t bytes = 0;
};

/** All nodes of one device, stream, interface ... Threads: as the nodes. */
class GENAPI_EXPORT INodeMap
{
public:
    virtual ~INodeMap();
    /** Null when there is no such node. A standard name may carry the prefix "Std::", a custom one "Cust::". */
    virtual INode* GetNode(const GenICam::gcstring& name) const = 0;
    virtual void GetNodes(NodeList& nodes) const = 0;
    virtual std::uint64_t GetNumNodes() const = 0;
    virtual void InvalidateNodes() = 0;
    /** Lets elapsed milliseconds pass for the nodes that are polled; those due are invalidated. */
    virtual void Poll(std::int64_t elapsedMs) = 0;
    /** Connects the Port node of that name ("Device", ...). The port must outlive the node map or be disconnected. */
    virtual bool Connect(IPort* port, const GenICam::gcstring& portName) = 0;
    /** Connects the port with the name "Device". */
    virtual bool Connect(IPort* port) = 0;
    /** Takes away every connected port of that address; the nodes behind it become not available. */
    virtual void Disconnect(IPort* port) = 0;
    virtual GenICam::gcstring GetModelName() const = 0;
    virtual GenICam::gcstring GetVendorName() const = 0;
    virtual GenICam::gcstring GetDeviceName() const = 0;
    /** Major, minor, sub-minor of the standard's schema the description follows. */
    virtual void GetSchemaVersion(std::uint16_t& major, std::uint16_t& minor, std::uint16_t& subMinor) const = 0;
    virtual void GetDeviceVersion(std::uint16_t& major, std::uint16_t& minor, std::uint16_t& subMinor) const = 0;
    /** The lock of all nodes; for several accesses that belong together. Change callbacks of accesses made while the
     *  caller holds it run with it held, too. */
    virtual std::recursive_mutex& GetLock() const = 0;

    /** Attaches the bytes of an event's or chunk's data to the Port nodes with that ID (hexadecimal text) as 'EventID'
     *  or 'ChunkID'; fires callbacks of the nodes behind. The bytes are copied. */
    virtual void AttachEvent(const GenICam::gcstring& eventId, const std::uint8_t* data, std::size_t bytes) = 0;
    /** Chunk bytes are not copied: they must stay valid until replaced or detached (data null). */
    virtual void AttachChunk(const GenICam::gcstring& chunkId, const std::uint8_t* data, std::size_t bytes,
                             EEndianness byteOrder) = 0;
    /** Attaches the chunks of one buffer and no others: a Port node whose ID is not among them is detached. Of several
     *  with one ID the first counts. The callbacks of all nodes behind come once, when all chunks are there. The list
     * may go after the call, the bytes as for AttachChunk. */
    virtual void AttachChunks(const SChunkData* chunks, std::size_t count, EEndianness byteOrder) = 0;
    virtual void DetachChunks() = 0;
    /** Whether there are Port nodes for chunks. */
    virtual bool HasChunks() const = 0;
};

/**
 * Makes node maps of device descriptions (GenICam XML, plain or zipped).
 *
 * A description is parsed once per content and kept in a process-wide cache; each CreateNodeMap() is an instance of
 * its own. Threads: any. Errors: FileNotFoundException, FileIOException (reading), RuntimeException or
 * LogicalErrorException (bad description; the text names the node), InvalidArgumentException (no data).
 */
class GENAPI_EXPORT CNodeMapFactory
{
public:
    /** From bytes: XML text, or a ZIP archive that holds one XML file. */
    static CNodeMapFactory FromData(const void* data, std::size_t bytes);
    static CNodeMapFactory FromFile(const GenICam::gcstring& fileName);

    CNodeMapFactory(const CNodeMapFactory&);
    CNodeMapFactory& operator=(const CNodeMapFactory&);
    ~CNodeMapFactory();

    std::unique_ptr<INodeMap> CreateNodeMap(const GenICam::gcstring& deviceName = "Device") const;

    /** Forgets every cached description; node maps made before stay valid. */
    static void ClearCache();
    /** Number of descriptions in the cache. */
    static std::size_t CacheSize();

private:
    struct SPrivate;
    explicit CNodeMapFactory(std::shared_ptr<const SPrivate> p);
    std::shared_ptr<const SPrivate> m_p;
};

} // namespace GenApi
