// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/imagedecompressorservice.h"

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/camerapool.h"
#include "genapi/exceptions.h"
#include "utils/exceptions.h"

#include <QMutexLocker>
#include <QtDebug>

#include <utility>

namespace Plugin::CameraPool::Internal
{

using Core::Exception::RuntimeException;

namespace
{

void reportFailure(const QSharedPointer<ICameraInfo>& info, const char* reason)
{
    if (reason == nullptr || *reason == '\0')
    {
        qDebug("%s", "Error while getting compression status from camera.");
        return;
    }
    setErrorStringHelper(info, reason);
    qDebug("%s%s", "Error while getting compression status from camera. Reason: ", reason);
}

} // namespace

CImageDecompressorService::CImageDecompressorService(QPointer<CCameraPool> pool, QObject* parent)
    : IImageDecompressorService(parent), m_pool(std::move(pool))
{
    if (m_pool)
    {
        connect(m_pool, &CCameraPool::cameraGrabStart, this, &CImageDecompressorService::onCameraGrabStart);
        connect(m_pool, &ADevicePool::deviceClosed, this, &CImageDecompressorService::onDeviceClosed);
    }
}

CImageDecompressorService::~CImageDecompressorService() = default;

QSharedPointer<const Velmo::CImageDecompressor>
CImageDecompressorService::getImageDecompressor(const QSharedPointer<IBaseInfo>& info) const
{
    const QMutexLocker lock(&m_mutex);
    return m_decompressors.value(info);
}

void CImageDecompressorService::onCameraGrabStart(QSharedPointer<ICameraInfo> info)
{
    const QMutexLocker lock(&m_mutex);
    // Whatever is thrown here must not reach the camera that is about to grab; the earlier decompressor stays.
    try
    {
        keepLocked(info, makeDecompressor(info));
    }
    catch (const GenICam::GenericException& e)
    {
        reportFailure(info, e.GetDescription());
    }
    catch (const std::exception& e)
    {
        reportFailure(info, e.what());
    }
    catch (...)
    {
        reportFailure(info, nullptr);
    }
}

CImageDecompressorService::DecompressorPtr
CImageDecompressorService::makeDecompressor(const QSharedPointer<ICameraInfo>& info) const
{
    if (!m_pool)
    {
        return {};
    }
    switch (m_pool->getCompressionMode(info))
    {
    case Velmo::CompressionMode_Off:
        return {};
    case Velmo::CompressionMode_Lossless:
    case Velmo::CompressionMode_FixedRatio:
        break;
    default:
        throw RuntimeException(tr("Unknown compression mode found."));
    }
    const auto descriptor = m_pool->getCompressionDescriptor(info);
    if (descriptor.isEmpty())
    {
        throw RuntimeException(tr("Invalid compression descriptor size found."));
    }
    return DecompressorPtr(
        new Velmo::CImageDecompressor(descriptor.constData(), static_cast<std::size_t>(descriptor.size())));
}

void CImageDecompressorService::onDeviceClosed(QSharedPointer<IBaseInfo> info)
{
    const QMutexLocker lock(&m_mutex);
    keepLocked(info, {});
}

void CImageDecompressorService::keepLocked(const QSharedPointer<IBaseInfo>& info, const DecompressorPtr& decompressor)
{
    if (decompressor.isNull())
    {
        m_decompressors.remove(info);
    }
    else
    {
        m_decompressors.insert(info, decompressor);
    }
}

} // namespace Plugin::CameraPool::Internal
