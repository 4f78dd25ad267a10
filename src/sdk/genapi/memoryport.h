// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodes.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace GenApi
{

/**
 * A port over plain memory with hooks: the registers of a software node map.
 *
 * A write hook runs after its bytes were stored, outside the port's own lock; a read hook runs before the bytes are
 * copied out. A hook that throws a GenICam exception fails the access; a failed write leaves the old bytes.
 * Threads: any.
 */
class GENAPI_EXPORT CMemoryPort : public IPort
{
public:
    using Hook = std::function<void(std::int64_t address, std::int64_t length)>;

    explicit CMemoryPort(std::size_t bytes);
    ~CMemoryPort() override;

    EAccessMode GetAccessMode() const override;
    /** Throws AccessException outside the memory. */
    void Read(void* buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;

    void SetWriteHook(std::int64_t address, std::int64_t length, Hook hook);
    void SetReadHook(std::int64_t address, std::int64_t length, Hook hook);
    /** Direct access without hooks; little-endian. */
    void Poke(std::int64_t address, std::uint64_t value, std::size_t bytes);
    std::uint64_t Peek(std::int64_t address, std::size_t bytes) const;
    void PokeText(std::int64_t address, const GenICam::gcstring& text, std::size_t bytes);
    GenICam::gcstring PeekText(std::int64_t address, std::size_t bytes) const;

private:
    struct SHook
    {
        std::int64_t address;
        std::int64_t length;
        Hook hook;
    };
    void Check(std::int64_t address, std::int64_t length) const;
    std::vector<Hook> HooksFor(const std::vector<SHook>& hooks, std::int64_t address, std::int64_t length) const;

    mutable std::mutex m_mutex; // guards the bytes and the hook lists; never held while a hook runs
    std::vector<std::uint8_t> m_bytes;
    std::vector<SHook> m_writeHooks;
    std::vector<SHook> m_readHooks;
};

} // namespace GenApi
