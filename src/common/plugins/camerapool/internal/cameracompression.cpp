// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"
#include "camerapool/internal/hostexceptions.h"
#include "utils/exceptions.h"

#include <limits>

namespace Plugin::CameraPool::Internal
{

using Core::Exception::RuntimeException;
using Velmo::CImageDecompressor;

namespace
{

using Query = void (*)(void* pBuffer, std::size_t* pBytes, GenApi::INodeMap& nodeMap);

/** Asks the query for the size, then for the bytes; empty when either size cannot be. */
QVector<unsigned char> readBytes(Query query, GenApi::INodeMap& nodeMap)
{
    std::size_t bytes = 0;
    query(nullptr, &bytes, nodeMap);
    if (bytes == 0 || bytes > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    {
        return {};
    }
    QVector<unsigned char> result(static_cast<int>(bytes));
    const std::size_t room = bytes;
    try
    {
        query(result.data(), &bytes, nodeMap);
    }
    catch (const GenICam::OutOfRangeException&)
    {
        // Grown meanwhile: that is told by the size. Anything else that is out of range is the caller's to know.
        if (bytes <= room)
        {
            throw;
        }
    }
    if (bytes > room)
    {
        return {};
    }
    result.resize(static_cast<int>(bytes));
    return result;
}

} // namespace

Velmo::ECompressionMode CCamera::getCompressionMode() const
{
    const auto mode =
        withHostExceptions([this] { return CImageDecompressor::GetCompressionMode(m_pVelmoDevice->GetNodeMap()); });
    if (mode != Velmo::CompressionMode_Off && mode != Velmo::CompressionMode_Lossless &&
        mode != Velmo::CompressionMode_FixedRatio)
    {
        throw RuntimeException(tr("Unknown compression mode found."));
    }
    return mode;
}

QVector<unsigned char> CCamera::getCompressionDescriptor() const
{
    auto descriptor = withHostExceptions(
        [this] { return readBytes(&CImageDecompressor::GetCompressionDescriptor, m_pVelmoDevice->GetNodeMap()); });
    if (descriptor.isEmpty())
    {
        throw RuntimeException(tr("Invalid compression descriptor size found."));
    }
    return descriptor;
}

QVector<unsigned char> CCamera::getCompressionDescriptorHash() const
{
    auto hash = withHostExceptions(
        [this] { return readBytes(&CImageDecompressor::GetCompressionDescriptorHash, m_pVelmoDevice->GetNodeMap()); });
    if (hash.isEmpty())
    {
        throw RuntimeException(tr("Invalid compression descriptor hash size found."));
    }
    return hash;
}

unsigned int CCamera::getImageSizeForDecompression() const
{
    const std::size_t bytes = withHostExceptions(
        [this] { return CImageDecompressor::GetImageSizeForDecompression(m_pVelmoDevice->GetNodeMap()); });
    if (bytes == 0 || bytes > std::numeric_limits<unsigned int>::max())
    {
        throw RuntimeException(tr("Invalid image size for decompression found."));
    }
    return static_cast<unsigned int>(bytes);
}

} // namespace Plugin::CameraPool::Internal
