// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"
#include "velmo/grabresult.h"
#include "velmo/imagedecompressor.h"

#include <QImage>
#include <QString>

namespace HostKit
{

/** The bytes of one image and what they mean; the bytes are not owned. */
struct SRawImage
{
    const void* pData = nullptr;
    std::size_t bytes = 0;
    std::uint32_t pixelType = 0; // PFNC value
    std::uint32_t width = 0;     // pixels
    std::uint32_t height = 0;    // pixels
    std::uint32_t paddingX = 0;  // bytes after each line
};

/**
 * A picture of an image: 8 bits a channel for 8-bit formats, 16 for deeper ones, whose samples are shifted so that the
 * format's white is (nearly) the picture's white. Bayer formats are demosaiced. The picture owns its pixels.
 *
 * A null picture, and the reason in error, when the format is not known or the bytes are too few. Threads: any.
 */
HOSTKIT_EXPORT QImage toPicture(const SRawImage& image, QString& error);
HOSTKIT_EXPORT QImage toPicture(const Velmo::CGrabResultPtr& result, QString& error);
/** The same of an image that its camera may have compressed. pDecompressor: the camera's; null when it has none, then a
 *  compressed image is an error. */
HOSTKIT_EXPORT QImage toPicture(const Velmo::CGrabResultPtr& result, const Velmo::CImageDecompressor* pDecompressor,
                                QString& error);

} // namespace HostKit
