// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_testexport.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Simulator::Internal
{

/** The bytes of the registers, big-endian. Addresses must be within the map. Threads: the owner's lock. */
class SIMULATOR_TEST_EXPORT CRegisterMemory
{
public:
    CRegisterMemory();

    /** Throws GenICam::AccessException outside the register map. */
    static void Check(std::int64_t address, std::int64_t length);

    std::uint64_t GetInteger(std::int64_t address, std::int64_t bytes = 4) const;
    void SetInteger(std::int64_t address, std::uint64_t value, std::int64_t bytes = 4);
    double GetFloat(std::int64_t address) const;
    void SetFloat(std::int64_t address, double value);
    std::string GetText(std::int64_t address) const;
    /** What does not fit is cut off. */
    void SetText(std::int64_t address, const std::string& text);
    void Get(void* buffer, std::int64_t address, std::int64_t length) const;
    void Set(const void* buffer, std::int64_t address, std::int64_t length);

private:
    std::vector<std::uint8_t> m_bytes;
};

} // namespace Simulator::Internal
