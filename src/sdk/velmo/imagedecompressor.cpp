// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/imagedecompressor.h"

namespace Velmo
{

bool CImageDecompressor::GetCompressionInfo(SCompressionInfo&, const CGrabResultPtr&, EEndianness)
{
    return false;
}

} // namespace Velmo
