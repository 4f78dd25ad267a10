// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/exceptions.h"
#include "genapi/genapi_export.h"

namespace GenApi
{

/** Makes firmware packages (docs/protocols/firmwarepackage.md). Without state. Threads: any. */
class GENAPI_EXPORT CFirmwarePackageWriter
{
public:
    /**
     * Builds a package of a control file and the payload files that it lists, which lie in its folder or below.
     *
     * The names are UTF-8. A <File> without size or checksum gets them; what is there must be right. The same files
     * give the same bytes, whenever and wherever it is done. The package is read back before it gets its name, so
     * nothing is written that the reader would refuse; a file of that name is replaced then and not before.
     *
     * Throws InvalidArgumentException (no name, or that of one of these files), FileNotFoundException, FileIOException
     * (reading or writing), FormatException (the control file is wrong; the text says where), OutOfRangeException
     * (beyond the limits).
     */
    void WritePackage(const char* controlFileName, const char* packageFileName) const;
};

} // namespace GenApi
