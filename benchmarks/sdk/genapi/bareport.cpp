// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "bareport.h"

#include <cstring>

namespace Benchmarks
{

CBarePort::CBarePort() : m_memory(4096) {}

CBarePort::~CBarePort() = default;

GenApi::EAccessMode CBarePort::GetAccessMode() const
{
    return GenApi::EAccessMode::RW;
}

void CBarePort::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    std::memcpy(buffer, m_memory.data() + address, static_cast<std::size_t>(length));
}

void CBarePort::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    std::memcpy(m_memory.data() + address, buffer, static_cast<std::size_t>(length));
}

} // namespace Benchmarks
