// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodes.h"

#include <cstdint>
#include <vector>

namespace Benchmarks
{

/** The fastest port there can be: what a get or set costs at least. Its functions are in a file of their own, so that
 *  calling them is a real virtual call. */
class CBarePort : public GenApi::IPort
{
public:
    CBarePort();
    ~CBarePort() override;
    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void* buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;

private:
    std::vector<std::uint8_t> m_memory;
};

} // namespace Benchmarks
