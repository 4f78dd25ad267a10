// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerapool.h"
#include "utils/exceptions.h"

namespace Plugin::CameraPool::Internal
{

using Core::Exception::BaseException;

QSharedPointer<CCamera> CCameraPool::cameraForQueries(const QSharedPointer<ICameraInfo>& info) const
{
    const auto camera = qSharedPointerObjectCast<CCamera>(findCamera(info));
    if (camera.isNull())
    {
        throw BaseException(tr("No camera found for the provided camera info."));
    }
    if (isLocked(camera))
    {
        throw BaseException(tr("The camera with the provided info is not available because it has been opened in "
                               "exclusive mode."));
    }
    return camera;
}

QSharedPointer<ICameraInfo> CCameraPool::activeCameraInfo() const
{
    auto info = qSharedPointerObjectCast<ICameraInfo>(getActiveDeviceInfo());
    if (info.isNull())
    {
        throw BaseException(tr("No active camera available at the moment."));
    }
    return info;
}

Velmo::ECompressionMode CCameraPool::getCompressionMode(QSharedPointer<ICameraInfo> info) const
{
    return cameraForQueries(info)->getCompressionMode();
}

QVector<unsigned char> CCameraPool::getCompressionDescriptor(QSharedPointer<ICameraInfo> info) const
{
    return cameraForQueries(info)->getCompressionDescriptor();
}

QVector<unsigned char> CCameraPool::getCompressionDescriptorHash(QSharedPointer<ICameraInfo> info) const
{
    return cameraForQueries(info)->getCompressionDescriptorHash();
}

unsigned int CCameraPool::getImageSizeForDecompression(QSharedPointer<ICameraInfo> info) const
{
    return cameraForQueries(info)->getImageSizeForDecompression();
}

Velmo::ECompressionMode CCameraPool::getCompressionMode() const
{
    return getCompressionMode(activeCameraInfo());
}

QVector<unsigned char> CCameraPool::getCompressionDescriptor() const
{
    return getCompressionDescriptor(activeCameraInfo());
}

QVector<unsigned char> CCameraPool::getCompressionDescriptorHash() const
{
    return getCompressionDescriptorHash(activeCameraInfo());
}

unsigned int CCameraPool::getImageSizeForDecompression() const
{
    return getImageSizeForDecompression(activeCameraInfo());
}

} // namespace Plugin::CameraPool::Internal
