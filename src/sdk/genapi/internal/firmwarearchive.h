// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarelimits.h"

#include "genapi/genapi_testexport.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct zip;

namespace GenApi
{
namespace Internal
{

/** Why a file may not be named so in a package; empty when it may. */
GENAPI_TEST_EXPORT std::string FirmwareNameFault(const std::string& name, const SFirmwareLimits& limits);

/**
 * A ZIP archive in memory whose directory was checked: names, duplicates, encryption, methods, number of files.
 *
 * The bytes must outlive it. Every fault is a FormatException (OutOfRangeException for what exceeds a limit) whose text
 * begins with the archive's name.
 */
class CFirmwareArchive
{
public:
    struct SEntry
    {
        std::string name;
        std::uint64_t bytes = 0; // unpacked, as the directory claims
    };

    CFirmwareArchive(std::string name, std::string_view bytes, const SFirmwareLimits& limits);
    ~CFirmwareArchive();
    CFirmwareArchive(const CFirmwareArchive&) = delete;
    CFirmwareArchive& operator=(const CFirmwareArchive&) = delete;

    const std::vector<SEntry>& Entries() const { return m_entries; }
    bool Has(const std::string& name) const;
    /** Unpacks a file of the archive; never more than the limit. */
    std::string Extract(const std::string& name, std::size_t maxBytes) const;

    [[noreturn]] void Throw(const std::string& reason) const;

private:
    void ReadDirectory();
    SEntry ReadEntry(std::uint64_t index) const;

    struct SDeleter
    {
        void operator()(zip* archive) const;
    };
    std::string m_name;
    SFirmwareLimits m_limits;
    std::unique_ptr<zip, SDeleter> m_archive;
    std::vector<SEntry> m_entries; // at their index in the archive
};

} // namespace Internal
} // namespace GenApi
