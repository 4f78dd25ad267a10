// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/unpack.h"

#include "genapi/exceptions.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>

namespace GenApi
{
namespace Internal
{
namespace
{

struct SArchiveDeleter
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct SFileDeleter
{
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using Archive = std::unique_ptr<zip_t, SArchiveDeleter>;
using File = std::unique_ptr<zip_file_t, SFileDeleter>;

constexpr zip_int64_t MaxArchiveEntries = 1000;

[[noreturn]] void ThrowArchive(const std::string& reason)
{
    GENICAM_THROW(RuntimeException, "The zipped device description cannot be read: " + reason);
}

Archive Open(std::string_view bytes)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    Archive archive(source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error));
    if (!archive)
    {
        const std::string reason = zip_error_strerror(&error);
        zip_source_free(source);
        zip_error_fini(&error);
        ThrowArchive(reason);
    }
    zip_error_fini(&error);
    return archive;
}

bool IsXmlName(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
    return name.size() > 4 && name.compare(name.size() - 4, 4, ".xml") == 0;
}

zip_uint64_t FindXml(zip_t* archive)
{
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    if (count > MaxArchiveEntries)
    {
        ThrowArchive("it holds " + std::to_string(count) + " files");
    }
    for (zip_int64_t i = 0; i < count; ++i)
    {
        const auto index = static_cast<zip_uint64_t>(i);
        const char* name = zip_get_name(archive, index, ZIP_FL_ENC_GUESS);
        if (name != nullptr && IsXmlName(name))
        {
            return index;
        }
    }
    ThrowArchive("it holds no XML file");
}

std::string Extract(zip_t* archive, zip_uint64_t index)
{
    const File file(zip_fopen_index(archive, index, 0));
    if (!file)
    {
        ThrowArchive(zip_strerror(archive));
    }
    // The size an archive claims is not trusted: what really comes out counts.
    std::string text;
    std::array<char, 64 * 1024> part{};
    for (;;)
    {
        const zip_int64_t got = zip_fread(file.get(), part.data(), part.size());
        if (got < 0)
        {
            ThrowArchive(zip_file_strerror(file.get()));
        }
        if (got == 0)
        {
            return text;
        }
        text.append(part.data(), static_cast<std::size_t>(got));
        if (text.size() > MaxDescriptionBytes)
        {
            ThrowArchive("its contents are larger than " + std::to_string(MaxDescriptionBytes) + " bytes");
        }
    }
}

} // namespace

std::string UnpackDescription(std::string_view bytes)
{
    constexpr std::string_view ZipMagic("PK\x03\x04", 4);
    if (bytes.empty())
    {
        GENICAM_THROW(InvalidArgumentException, "The device description is empty");
    }
    if (bytes.size() > MaxDescriptionBytes)
    {
        GENICAM_THROW(RuntimeException,
                      "The device description is larger than " + std::to_string(MaxDescriptionBytes) + " bytes");
    }
    if (bytes.substr(0, ZipMagic.size()) != ZipMagic)
    {
        return std::string(bytes);
    }
    const Archive archive = Open(bytes);
    return Extract(archive.get(), FindXml(archive.get()));
}

} // namespace Internal
} // namespace GenApi
