// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/iimagedecompressorservice.h"

#include <QMap>
#include <QMutex>
#include <QPointer>

namespace Plugin::CameraPool::Internal
{

class CCameraPool;

/** Builds a decompressor each time a camera is about to grab. Main thread but for getImageDecompressor(). */
class CAMERAPOOL_TEST_EXPORT CImageDecompressorService : public IImageDecompressorService
{
    Q_OBJECT
public:
    CImageDecompressorService(QPointer<CCameraPool> pool, QObject* parent);
    ~CImageDecompressorService() override;

    QSharedPointer<const Velmo::CImageDecompressor>
    getImageDecompressor(const QSharedPointer<IBaseInfo>& info) const override;

public slots:
    void onCameraGrabStart(QSharedPointer<ICameraInfo> info);
    void onDeviceClosed(QSharedPointer<IBaseInfo> info);

private:
    using DecompressorPtr = QSharedPointer<const Velmo::CImageDecompressor>;

    /** Null unless the camera compresses; throws what reading and building throw. */
    DecompressorPtr makeDecompressor(const QSharedPointer<ICameraInfo>& info) const;
    /** Null removes. The mutex is held. */
    void keepLocked(const QSharedPointer<IBaseInfo>& info, const DecompressorPtr& decompressor);

    QPointer<CCameraPool> m_pool;
    QMap<QSharedPointer<IBaseInfo>, DecompressorPtr> m_decompressors;
    // Guards m_decompressors. Held while a camera is asked, so that nobody is given the decompressor of its last grab
    // meanwhile; recursive, as what that calls back on this thread may ask the service.
    mutable QRecursiveMutex m_mutex;
};

} // namespace Plugin::CameraPool::Internal
