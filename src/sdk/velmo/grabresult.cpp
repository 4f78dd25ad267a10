// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/grabresult.h"

#include "velmo/imagedecompressor.h"

#include "genapi/exceptions.h"

#include <algorithm>
#include <utility>

namespace Velmo
{

CGrabResultData::~CGrabResultData() = default;

std::size_t CGrabResultData::GetImageSize() const
{
    if (m_result.payloadType != EPayloadType::Image && m_result.payloadType != EPayloadType::ChunkData)
    {
        return 0;
    }
    SCompressionInfo info;
    if (m_result.payloadType == EPayloadType::ChunkData &&
        CImageDecompressor::GetCompressionInfo(info, m_pBuffer, m_result.payloadBytes))
    {
        return 0;
    }
    const std::size_t bitsPerPixel = m_result.pixelType >> 16 & 0xFF; // PFNC: bits 16..23
    const std::size_t pixels = std::size_t{m_result.width} * m_result.height;
    const std::size_t padding = std::size_t{m_result.height} * m_result.paddingX;
    // The camera may tell any geometry: what is larger than the payload is not multiplied any further.
    const bool isBeyond = padding >= m_result.payloadBytes || pixels / 8 > m_result.payloadBytes;
    if (isBeyond && bitsPerPixel != 0)
    {
        return m_result.payloadBytes;
    }
    return std::min((pixels * bitsPerPixel + 7) / 8 + padding, m_result.payloadBytes);
}

CGrabResultPtr::CGrabResultPtr(CGrabResultData* pData) : m_pData(pData)
{
    if (m_pData != nullptr)
    {
        m_pData->m_references.fetch_add(1, std::memory_order_relaxed);
    }
}

CGrabResultPtr::CGrabResultPtr(const CGrabResultPtr& other) : CGrabResultPtr(other.m_pData) {}

CGrabResultPtr::CGrabResultPtr(CGrabResultPtr&& other) noexcept : m_pData(std::exchange(other.m_pData, nullptr)) {}

CGrabResultPtr& CGrabResultPtr::operator=(const CGrabResultPtr& other)
{
    CGrabResultPtr copy(other);
    std::swap(m_pData, copy.m_pData);
    return *this;
}

CGrabResultPtr& CGrabResultPtr::operator=(CGrabResultPtr&& other) noexcept
{
    CGrabResultPtr taken(std::move(other));
    std::swap(m_pData, taken.m_pData);
    return *this;
}

CGrabResultPtr::~CGrabResultPtr()
{
    Release();
}

const CGrabResultData* CGrabResultPtr::operator->() const
{
    if (m_pData == nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "The grab result pointer refers to no grab result.");
    }
    return m_pData;
}

void CGrabResultPtr::Release() noexcept
{
    CGrabResultData* pData = std::exchange(m_pData, nullptr);
    // The releasing thread's reads must happen before the buffer is filled again.
    if (pData != nullptr && pData->m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
    {
        pData->Recycle();
    }
}

} // namespace Velmo
