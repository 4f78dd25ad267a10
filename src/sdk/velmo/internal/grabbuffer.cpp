// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/grabbuffer.h"

#include "genapi/exceptions.h"
#include "velmo/internal/grabsession.h"

#include <new>
#include <utility>

namespace Velmo::Internal
{

namespace
{

constexpr std::align_val_t Alignment{64}; // a cache line; enough for every vector instruction

} // namespace

CGrabBuffer::CGrabBuffer(std::size_t bytes) : m_pMemory(::operator new(bytes, Alignment, std::nothrow))
{
    if (m_pMemory == nullptr)
    {
        GENICAM_THROW(BadAllocException,
                      "There is no memory for an image buffer of " + std::to_string(bytes) + " bytes.");
    }
    m_pBuffer = m_pMemory;
    m_bufferBytes = bytes;
}

CGrabBuffer::~CGrabBuffer()
{
    FreeMemory();
}

void CGrabBuffer::FreeMemory()
{
    ::operator delete(std::exchange(m_pMemory, nullptr), Alignment);
    m_pBuffer = nullptr;
    m_bufferBytes = 0;
}

void CGrabBuffer::Fill(Transport::SStreamResult&& result)
{
    m_result = std::move(result);
    m_succeeded = m_result.status == Transport::EResultStatus::Ok;
    m_result.payloadBytes = m_result.payloadBytes < m_bufferBytes ? m_result.payloadBytes : m_bufferBytes;
    if (m_succeeded)
    {
        m_errorDescription = GenICam::gcstring();
        return;
    }
    const bool cancelled = m_result.status == Transport::EResultStatus::Canceled;
    m_errorDescription = !m_result.errorDescription.empty() ? GenICam::gcstring(m_result.errorDescription)
                         : cancelled                        ? GenICam::gcstring("The grab was cancelled.")
                                                            : GenICam::gcstring("The grab failed.");
}

void CGrabBuffer::Number(std::int64_t imageNumber, std::int64_t skippedImages)
{
    m_imageNumber = imageNumber;
    m_skippedImages = skippedImages;
}

CGrabResultPtr CGrabBuffer::HandOut(std::shared_ptr<CGrabSession> session)
{
    m_session = std::move(session);
    return CGrabResultPtr(this);
}

void CGrabBuffer::Recycle()
{
    // The session may be gone, and this object with it, when the last reference goes at the end of this function.
    const std::shared_ptr<CGrabSession> session = std::move(m_session);
    session->Return(*this);
}

} // namespace Velmo::Internal
