// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"

#include <vector>

namespace GenApi
{
namespace Internal
{

class CPortNode;

/** The bytes of a register node: its address and length, its cache, its port. Used with the lock held. */
class CRegisterAccess
{
public:
    explicit CRegisterAccess(CNode& node);

    /** Errors: RuntimeException for an address or length that cannot be. */
    std::int64_t Address();
    std::int64_t Length();
    /** The register's bytes; valid until the next call. */
    const std::vector<std::uint8_t>& Read(bool ignoreCache);
    /** The bytes to change only some of: what is known of them when they cannot be read. */
    std::vector<std::uint8_t> ReadForChange();
    /** Writes the first bytes of the register, or all of it. */
    void Write(const std::vector<std::uint8_t>& bytes, bool keepsCache = true);
    bool IsCacheValid() const { return m_isCacheValid; }
    void Drop() { m_isCacheValid = false; }
    EAccessMode Mode();
    EEndianness ByteOrder();

private:
    const SRegisterPart& Part() const { return *m_node.Description().reg; }
    CPortNode& Port();

    CNode& m_node;
    bool m_isCacheValid = false;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace Internal
} // namespace GenApi
