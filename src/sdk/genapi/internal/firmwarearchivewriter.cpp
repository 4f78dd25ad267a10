// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarearchivewriter.h"

#include "genapi/exceptions.h"

#include <zip.h>

#include <cstdio>
#include <memory>

namespace GenApi
{
namespace Internal
{
namespace
{

// The earliest date that a ZIP archive can hold, as MS-DOS writes it: 1 January 1980, midnight.
constexpr zip_uint16_t EarliestDate = 1 << 5 | 1;
constexpr zip_uint16_t Midnight = 0;
constexpr zip_uint32_t BestCompression = 9;

struct SSourceDeleter
{
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
struct SArchiveDeleter
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Source = std::unique_ptr<zip_source_t, SSourceDeleter>;
using Archive = std::unique_ptr<zip_t, SArchiveDeleter>;

[[noreturn]] void ThrowWriting(const std::string& reason)
{
    GENICAM_THROW(RuntimeException, "The firmware package cannot be packed: " + reason);
}

void Add(zip_t* archive, const std::pair<std::string, std::string>& file, bool isDeflated)
{
    zip_source_t* const source = zip_source_buffer(archive, file.second.data(), file.second.size(), 0);
    const zip_int64_t index =
        source == nullptr ? -1 : zip_file_add(archive, file.first.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0)
    {
        const std::string reason = zip_strerror(archive);
        zip_source_free(source);
        ThrowWriting(reason);
    }
    const auto entry = static_cast<zip_uint64_t>(index);
    if (zip_set_file_compression(archive, entry, isDeflated ? ZIP_CM_DEFLATE : ZIP_CM_STORE,
                                 isDeflated ? BestCompression : 0) != 0 ||
        zip_file_set_dostime(archive, entry, Midnight, EarliestDate, 0) != 0)
    {
        ThrowWriting(zip_strerror(archive));
    }
}

std::string ReadAll(zip_source_t* source)
{
    if (zip_source_open(source) != 0 || zip_source_seek(source, 0, SEEK_END) != 0)
    {
        ThrowWriting(zip_error_strerror(zip_source_error(source)));
    }
    const zip_int64_t size = zip_source_tell(source);
    std::string bytes(static_cast<std::size_t>(size < 0 ? 0 : size), '\0');
    const bool isRead =
        zip_source_seek(source, 0, SEEK_SET) == 0 && zip_source_read(source, bytes.data(), bytes.size()) == size;
    zip_source_close(source);
    if (!isRead)
    {
        ThrowWriting(zip_error_strerror(zip_source_error(source)));
    }
    return bytes;
}

} // namespace

std::string WriteFirmwareArchive(const FirmwareArchiveFiles& files, bool isDeflated)
{
    zip_error_t error;
    zip_error_init(&error);
    const Source target(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (!target)
    {
        ThrowWriting(zip_error_strerror(&error));
    }
    Archive archive(zip_open_from_source(target.get(), ZIP_TRUNCATE, &error));
    if (!archive)
    {
        ThrowWriting(zip_error_strerror(&error));
    }
    zip_source_keep(target.get()); // the archive has the first reference
    for (const auto& file : files)
    {
        Add(archive.get(), file, isDeflated);
    }
    if (zip_close(archive.get()) != 0)
    {
        ThrowWriting(zip_strerror(archive.get()));
    }
    static_cast<void>(archive.release());
    return ReadAll(target.get());
}

} // namespace Internal
} // namespace GenApi
