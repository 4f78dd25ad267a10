// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "genapi/internal/firmwarearchivewriter.h"
#include "genapi/internal/firmwarechecksum.h"
#include "genapi/internal/firmwarepackage.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace
{

/** A package that is taken holds what its control file answers for. */
void Read(std::string_view bytes)
{
    GenApi::Internal::SFirmwareLimits limits;
    limits.packageBytes = limits.innerBytes = limits.payloadBytes = std::size_t{1} << 20;
    try
    {
        const auto package = GenApi::Internal::ReadFirmwarePackage("fuzz.guf", bytes, limits);
        for (const auto& file : package.control.files)
        {
            if (GenApi::Internal::Sha256(package.payload.at(file.name)) != file.sha256)
            {
                std::abort();
            }
        }
        GenApi::Internal::MakeFirmwareUpdates("fuzz.guf", package);
    }
    catch (const GenICam::GenericException&)
    {
    }
}

} // namespace

/** The bytes as a package, and as the archive inside a good one, whose own checksum would keep changes out. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Read(bytes);
    Read(GenApi::Internal::WriteFirmwareArchive({{"package.zip", std::string(bytes)}}, false));
    return 0;
}
