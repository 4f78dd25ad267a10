// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/gcstring.h"
#include "transport/stream.h"
#include "velmo/velmo_export.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Velmo
{

/**
 * One grabbed image: a view of the stream's buffer, never a copy.
 *
 * Reached through CGrabResultPtr only. The buffer goes back to its stream when the last pointer goes, on whatever
 * thread that is; when its camera was closed or destroyed by then, the memory is freed instead. Threads: reading from
 * any thread; contents never change while a pointer exists.
 */
class VELMO_EXPORT CGrabResultData
{
public:
    bool GrabSucceeded() const { return m_succeeded; }
    /** "" when the grab succeeded. */
    GenICam::gcstring GetErrorDescription() const { return m_errorDescription; }
    std::uint32_t GetErrorCode() const { return m_result.errorCode; }
    EPayloadType GetPayloadType() const { return m_result.payloadType; }
    /** PFNC value. */
    std::uint32_t GetPixelType() const { return m_result.pixelType; }
    std::uint32_t GetWidth() const { return m_result.width; }
    std::uint32_t GetHeight() const { return m_result.height; }
    std::uint32_t GetOffsetX() const { return m_result.offsetX; }
    std::uint32_t GetOffsetY() const { return m_result.offsetY; }
    std::uint32_t GetPaddingX() const { return m_result.paddingX; }
    /** The payload, GetPayloadSize() bytes; also of a failed grab, as far as it was filled. An image is at its begin,
     *  GetImageSize() bytes; chunk data follow it. */
    const void* GetBuffer() const { return m_pBuffer; }
    std::size_t GetBufferSize() const { return m_bufferBytes; }
    std::size_t GetPayloadSize() const { return m_result.payloadBytes; }
    /** Bytes of the image by its geometry, without what follows it: its chunk trailer and other chunks. Never more than
     *  the payload; 0 when the payload is no image, its geometry is not known, or the image is compressed (see
     *  CImageDecompressor::GetCompressionInfo). */
    std::size_t GetImageSize() const;
    /** The camera's frame number; gaps are lost images. */
    std::uint64_t GetBlockID() const { return m_result.blockId; }
    /** Ticks of the camera's clock. */
    std::uint64_t GetTimeStamp() const { return m_result.timestamp; }
    /** Counts the results of this grab session, from 1. */
    std::int64_t GetImageNumber() const { return m_imageNumber; }
    /** Images the grab strategy dropped right before this one. */
    std::int64_t GetNumberOfSkippedImages() const { return m_skippedImages; }

    CGrabResultData(const CGrabResultData&) = delete;
    CGrabResultData& operator=(const CGrabResultData&) = delete;

protected:
    friend class CGrabResultPtr;
    CGrabResultData() = default;
    virtual ~CGrabResultData();
    /** Called on the thread that dropped the last pointer. */
    virtual void Recycle() = 0;

    std::atomic<int> m_references{0};
    Transport::SStreamResult m_result;
    GenICam::gcstring m_errorDescription;
    const void* m_pBuffer = nullptr;
    std::size_t m_bufferBytes = 0;
    std::int64_t m_imageNumber = 0;
    std::int64_t m_skippedImages = 0;
    bool m_succeeded = false;
};

/** Shares one grab result; the last one gives the buffer back. Threads: as std::shared_ptr. */
class VELMO_EXPORT CGrabResultPtr
{
public:
    CGrabResultPtr() = default;
    explicit CGrabResultPtr(CGrabResultData* pData);
    CGrabResultPtr(const CGrabResultPtr& other);
    CGrabResultPtr(CGrabResultPtr&& other) noexcept;
    CGrabResultPtr& operator=(const CGrabResultPtr& other);
    CGrabResultPtr& operator=(CGrabResultPtr&& other) noexcept;
    ~CGrabResultPtr();

    bool IsValid() const noexcept { return m_pData != nullptr; }
    explicit operator bool() const noexcept { return IsValid(); }
    /** Throws GenICam::LogicalErrorException when not valid. */
    const CGrabResultData* operator->() const;
    const CGrabResultData& operator*() const { return *operator->(); }
    void Release() noexcept;

private:
    CGrabResultData* m_pData = nullptr;
};

} // namespace Velmo
