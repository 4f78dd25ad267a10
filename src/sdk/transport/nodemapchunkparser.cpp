// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/nodemapchunkparser.h"

#include "genapi/exceptions.h"
#include "transport/log.h"

#include <algorithm>
#include <utility>

namespace Velmo::Transport
{

CNodeMapChunkParser::CNodeMapChunkParser(GenApi::INodeMap& nodeMap, Chunks::EByteOrder byteOrder,
                                         std::string deviceName)
    : m_pNodeMap(&nodeMap), m_byteOrder(byteOrder), m_deviceName(std::move(deviceName))
{
}

CNodeMapChunkParser::~CNodeMapChunkParser()
{
    Disconnect();
}

bool CNodeMapChunkParser::ReadChunks(const void* pBuffer, std::int64_t bytes)
{
    m_chunks.clear();
    Chunks::CReader reader(pBuffer, static_cast<std::size_t>(bytes), m_byteOrder);
    Chunks::SChunk chunk;
    while (reader.Next(chunk))
    {
        m_chunks.push_back({chunk.id, chunk.pData, chunk.bytes});
    }
    if (reader.GetState() != Chunks::CReader::EState::Ok)
    {
        ReportOnce(m_hasReportedData,
                   "The chunk data of an image of the camera " + m_deviceName +
                       " cannot be read, its chunk features are not available: " + reader.GetErrorText());
        return false;
    }
    m_found =
        reader.GetByteOrder() == Chunks::EByteOrder::Little ? GenApi::EEndianness::Little : GenApi::EEndianness::Big;
    return true;
}

void CNodeMapChunkParser::AttachBuffer(const void* pBuffer, std::int64_t bytes, std::int64_t /*layoutId*/,
                                       std::size_t* pChunkOffset)
{
    if (m_pNodeMap == nullptr)
    {
        GENICAM_THROW(LogicalErrorException,
                      "The chunk data of the camera " + m_deviceName + " cannot be read: the camera was closed.");
    }
    if (pBuffer == nullptr || bytes < 0)
    {
        Detach();
        GENICAM_THROW(InvalidArgumentException,
                      "The chunk data of the camera " + m_deviceName + " cannot be read: there is no buffer.");
    }
    if (ReadChunks(pBuffer, bytes))
    {
        RunReceivers([this] { m_pNodeMap->AttachChunks(m_chunks.data(), m_chunks.size(), m_found); });
    }
    else
    {
        // What the last image said must not be taken for this one's values.
        m_chunks.clear();
        Detach();
    }
    if (pChunkOffset != nullptr)
    {
        *pChunkOffset = m_chunks.empty() ? 0 : m_chunks.back().bytes;
    }
}

void CNodeMapChunkParser::DetachBuffer()
{
    Detach();
    m_hasReportedData = false;
    m_hasReportedReceiver = false;
}

void CNodeMapChunkParser::Detach() noexcept
{
    if (m_pNodeMap != nullptr)
    {
        RunReceivers([this] { m_pNodeMap->DetachChunks(); });
    }
}

template <class Change> void CNodeMapChunkParser::RunReceivers(const Change& change) noexcept
{
    const auto report = [this](const char* reason)
    {
        ReportOnce(m_hasReportedReceiver,
                   "The camera " + m_deviceName + ": a receiver of a chunk feature's change failed: " + reason);
    };
    try
    {
        // The bytes are attached, or detached, and every receiver was called before the first failure comes out of it.
        change();
    }
    catch (const std::exception& e)
    {
        report(e.what());
    }
    catch (...)
    {
        report("not known");
    }
}

void CNodeMapChunkParser::ReportOnce(bool& hasReported, const std::string& text) noexcept
{
    Log(hasReported ? ELogLevel::Debug : ELogLevel::Warning, "velmo.chunks", text);
    hasReported = true;
}

void CNodeMapChunkParser::Disconnect() noexcept
{
    Detach();
    m_pNodeMap = nullptr;
}

IChunkParser* CChunkParsers::Create(GenApi::INodeMap* pNodeMap, Chunks::EByteOrder byteOrder,
                                    const std::string& deviceName)
{
    if (pNodeMap == nullptr || !pNodeMap->HasChunks())
    {
        return nullptr;
    }
    m_parsers.push_back(std::make_unique<CNodeMapChunkParser>(*pNodeMap, byteOrder, deviceName));
    return m_parsers.back().get();
}

void CChunkParsers::Destroy(IChunkParser* pParser)
{
    if (pParser == nullptr)
    {
        return;
    }
    const auto found =
        std::find_if(m_parsers.begin(), m_parsers.end(), [pParser](const auto& own) { return own.get() == pParser; });
    if (found == m_parsers.end())
    {
        GENICAM_THROW(InvalidArgumentException, "The chunk parser was not made by this device.");
    }
    m_parsers.erase(found);
}

void CChunkParsers::Disconnect() noexcept
{
    for (const auto& parser : m_parsers)
    {
        parser->Disconnect();
    }
}

} // namespace Velmo::Transport
