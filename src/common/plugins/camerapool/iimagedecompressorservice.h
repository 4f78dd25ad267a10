// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "servicecore/iservice.h"
#include "velmo/imagedecompressor.h"

namespace Plugin::CameraPool
{

/** Service: the decompressors of the cameras that compress their images. */
class CAMERAPOOL_EXPORT IImageDecompressorService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit IImageDecompressorService(QObject* parent = nullptr);
    ~IImageDecompressorService() override;

    /**
     * The decompressor of the camera's latest grab, made before its first image and kept until the camera is closed;
     * it stays usable for those who hold it. Null when the camera does not compress, has not grabbed since it was
     * opened, or did not tell how it compresses (errorString() of the record then says why). Threads: any; other
     * threads than the main one wait while a camera is being asked, so do not call it with a lock of a node map held.
     */
    virtual QSharedPointer<const Velmo::CImageDecompressor>
    getImageDecompressor(const QSharedPointer<IBaseInfo>& info) const = 0;
};

} // namespace Plugin::CameraPool
