// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarefeatures.h"

#include <optional>
#include <string_view>

namespace GenApi
{
namespace Internal
{

/**
 * A file of a device through the standard file-access features (SFNC, chapter File Access Control).
 *
 * Each operation may take the time-out. Errors: what the features throw; RuntimeException when the device reports that
 * an operation failed, TimeoutException when it does not end.
 */
class CDeviceFile
{
public:
    CDeviceFile(INodeMap& nodeMap, std::string name, std::uint32_t timeoutMs, IFirmwareClock& clock);
    ~CDeviceFile();
    CDeviceFile(const CDeviceFile&) = delete;
    CDeviceFile& operator=(const CDeviceFile&) = delete;

    /** A file that somebody left open is closed first. */
    void OpenForWriting() { Open("Write"); }
    /** For writing, in the mode that keeps what is there if the device has it. */
    void OpenForContinuing();
    void OpenForReading() { Open("Read"); }
    /** Does nothing when no file is open. */
    void Close();
    /** Closes and forgets every failure. */
    void CloseQuietly() noexcept;
    bool CanBeRead();
    /** Nothing when the device does not tell. */
    std::optional<std::uint64_t> Size();
    /** Writes one block from the front of the bytes and gives the number of bytes that the device took, at least 1. */
    std::size_t WriteBlock(std::uint64_t offset, std::string_view bytes);
    /** Reads one block of at most so many bytes; at least 1. */
    std::string ReadBlock(std::uint64_t offset, std::size_t maxBytes);
    /** Throws when blocks of the device cannot make up a file of that size. */
    void CheckSize(std::uint64_t bytes);

private:
    struct SBlocks
    {
        std::int64_t max;
        std::int64_t increment;
    };
    void Open(const char* mode);
    void Select();
    /** The operation's success as the device reports it. */
    bool Run(const char* operation);
    std::string Status();
    SBlocks Blocks();
    /** Sets the length of the next block, and where it is. */
    std::size_t SetBlock(std::uint64_t offset, std::size_t wanted);
    std::size_t Transferred(std::size_t wanted, const char* operation);

    template <class T> T& Node(const char* name) const;

    INodeMap& m_nodeMap;
    const std::string m_name;
    const std::uint32_t m_timeoutMs;
    IFirmwareClock& m_clock;
    bool m_isOpen = false;
    std::optional<SBlocks> m_blocks; // of the open file
};

/** Throws LogicalErrorException if the device lacks what a FileUpload step needs. Reads and writes no register. */
void CheckDeviceFile(const SFirmwareStep& step, INodeMap& nodeMap);

} // namespace Internal
} // namespace GenApi
