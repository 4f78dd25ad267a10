// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarearchive.h"

#include "genapi/exceptions.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <set>

namespace GenApi
{
namespace Internal
{
namespace
{

struct SFileDeleter
{
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using File = std::unique_ptr<zip_file_t, SFileDeleter>;

/** Names that differ in case only would be one file on some systems. */
std::string LowerCase(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

/** For messages: a name may hold anything. */
std::string Quote(const std::string& name)
{
    constexpr std::size_t MaxShown = 60;
    std::string text = "'";
    for (const char c : name.substr(0, MaxShown))
    {
        text += c < ' ' || c > '~' ? '?' : c;
    }
    return text + (name.size() > MaxShown ? "...'" : "'");
}

bool IsNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-' ||
           c == '_' || c == '/';
}

} // namespace

std::string FirmwareNameFault(const std::string& name, const SFirmwareLimits& limits)
{
    if (name.empty())
    {
        return "a file has no name";
    }
    if (name.size() > limits.fileNameBytes)
    {
        return "the file name " + Quote(name) + " is longer than " + std::to_string(limits.fileNameBytes) + " bytes";
    }
    if (!std::all_of(name.begin(), name.end(), IsNameCharacter))
    {
        return "the file name " + Quote(name) +
               " has characters other than letters, digits, '.', '-', '_' and '/'; it may name a file elsewhere";
    }
    for (std::size_t begin = 0; begin <= name.size();)
    {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        const std::string part = name.substr(begin, end - begin);
        if (part.empty() || part == "." || part == "..")
        {
            return "the file name " + Quote(name) + " is no plain relative path; it may name a file elsewhere";
        }
        begin = end + 1;
    }
    return {};
}

void CFirmwareArchive::SDeleter::operator()(zip* archive) const
{
    zip_discard(archive);
}

CFirmwareArchive::CFirmwareArchive(std::string name, std::string_view bytes, const SFirmwareLimits& limits)
    : m_name(std::move(name)), m_limits(limits)
{
    if (bytes.empty())
    {
        Throw("it is empty");
    }
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    m_archive.reset(source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error));
    if (!m_archive)
    {
        const bool hasDuplicates = zip_error_code_zip(&error) == ZIP_ER_EXISTS;
        const std::string reason = zip_error_strerror(&error);
        zip_source_free(source);
        zip_error_fini(&error);
        Throw(hasDuplicates ? "it holds more than one file of the same name" : "it is no sound ZIP archive: " + reason);
    }
    zip_error_fini(&error);
    ReadDirectory();
}

CFirmwareArchive::~CFirmwareArchive() = default;

void CFirmwareArchive::Throw(const std::string& reason) const
{
    GENICAM_THROW(FormatException, m_name + ": " + reason);
}

void CFirmwareArchive::ReadDirectory()
{
    const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
    if (count < 0 || static_cast<std::uint64_t>(count) > m_limits.files)
    {
        GENICAM_THROW(OutOfRangeException, m_name + ": it holds " + std::to_string(count) + " files; at most " +
                                               std::to_string(m_limits.files) + " are allowed");
    }
    std::set<std::string> names;
    for (zip_int64_t i = 0; i < count; ++i)
    {
        m_entries.push_back(ReadEntry(static_cast<std::uint64_t>(i)));
        if (!names.insert(LowerCase(m_entries.back().name)).second)
        {
            Throw("it holds more than one file named " + Quote(m_entries.back().name));
        }
    }
}

CFirmwareArchive::SEntry CFirmwareArchive::ReadEntry(std::uint64_t index) const
{
    constexpr zip_uint64_t Wanted = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(m_archive.get(), index, ZIP_FL_ENC_RAW, &stat) != 0 || (stat.valid & Wanted) != Wanted)
    {
        Throw("the directory entry " + std::to_string(index) + " cannot be read");
    }
    SEntry entry{stat.name, stat.size};
    if (const std::string fault = FirmwareNameFault(entry.name, m_limits); !fault.empty())
    {
        Throw(fault);
    }
    if (stat.encryption_method != ZIP_EM_NONE)
    {
        Throw("the file " + Quote(entry.name) + " is encrypted; packages are not");
    }
    if (stat.comp_method != ZIP_CM_STORE && stat.comp_method != ZIP_CM_DEFLATE)
    {
        Throw("the file " + Quote(entry.name) + " is packed with method " + std::to_string(stat.comp_method) +
              "; only 0 (stored) and 8 (deflated) are allowed");
    }
    return entry;
}

bool CFirmwareArchive::Has(const std::string& name) const
{
    return std::any_of(m_entries.begin(), m_entries.end(), [&](const SEntry& entry) { return entry.name == name; });
}

std::string CFirmwareArchive::Extract(const std::string& name, std::size_t maxBytes) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const SEntry& entry) { return entry.name == name; });
    if (found == m_entries.end())
    {
        Throw("the file " + Quote(name) + " is missing");
    }
    const auto throwTooLarge = [&]
    {
        GENICAM_THROW(OutOfRangeException, m_name + ": the file " + Quote(name) + " is larger than the " +
                                               std::to_string(maxBytes) + " bytes allowed for it");
    };
    if (found->bytes > maxBytes)
    {
        throwTooLarge();
    }
    const File file(zip_fopen_index(m_archive.get(), static_cast<zip_uint64_t>(found - m_entries.begin()), 0));
    if (!file)
    {
        Throw("the file " + Quote(name) + " cannot be unpacked: " + zip_strerror(m_archive.get()));
    }
    // The size that the directory claims is not trusted: what really comes out counts.
    std::string bytes;
    std::array<char, 64 * 1024> part{};
    for (;;)
    {
        const zip_int64_t got = zip_fread(file.get(), part.data(), part.size());
        if (got < 0)
        {
            Throw("the file " + Quote(name) + " is damaged: " + zip_file_strerror(file.get()));
        }
        if (got == 0)
        {
            return bytes;
        }
        bytes.append(part.data(), static_cast<std::size_t>(got));
        if (bytes.size() > maxBytes)
        {
            throwTooLarge();
        }
    }
}

} // namespace Internal
} // namespace GenApi
