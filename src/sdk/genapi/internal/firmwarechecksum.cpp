// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarechecksum.h"

#include <nettle/sha2.h>

#include <array>

namespace GenApi
{
namespace Internal
{
namespace
{

using CrcTable = std::array<std::uint32_t, 256>;

CrcTable MakeCrcTable()
{
    constexpr std::uint32_t ReflectedPolynomial = 0xEDB88320;
    CrcTable table{};
    for (std::uint32_t i = 0; i < table.size(); ++i)
    {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit)
        {
            value = (value & 1) != 0 ? (value >> 1) ^ ReflectedPolynomial : value >> 1;
        }
        table[i] = value;
    }
    return table;
}

} // namespace

std::string Sha256(std::string_view bytes)
{
    static constexpr char Digits[] = "0123456789abcdef";
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context, digest.size(), digest.data());
    std::string text;
    text.reserve(Sha256Digits);
    for (const std::uint8_t byte : digest)
    {
        text += Digits[byte >> 4];
        text += Digits[byte & 0xF];
    }
    return text;
}

std::uint32_t Crc32(std::string_view bytes)
{
    static const CrcTable Table = MakeCrcTable();
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char c : bytes)
    {
        crc = (crc >> 8) ^ Table[(crc ^ static_cast<std::uint8_t>(c)) & 0xFF];
    }
    return ~crc;
}

} // namespace Internal
} // namespace GenApi
