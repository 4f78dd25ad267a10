// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/firmware.h"

#include "genapi/exceptions.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Simulator
{

namespace
{

// Places in the header, in bytes.
constexpr std::size_t MagicAt = 0;
constexpr std::size_t FormatAt = 4;
constexpr std::size_t FlagsAt = 6;
constexpr std::size_t VersionAt = 8;
constexpr std::size_t ModelAt = 72;
constexpr std::size_t LengthAt = 136;
constexpr std::size_t ChecksumAt = 140;
constexpr std::size_t TextBytes = 64;

constexpr std::uint32_t Magic = 0x53434657; // "SCFW"
constexpr std::uint32_t Format = 1;
constexpr std::uint32_t FlagFailsToBoot = 1;

[[noreturn]] void Refuse(const std::string& what)
{
    GENICAM_THROW(InvalidArgumentException, "The firmware image cannot be used: " + what + ".");
}

std::uint32_t Get(const std::uint8_t* data, std::size_t bytes)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < bytes; ++i)
    {
        value = value << 8U | data[i];
    }
    return value;
}

void Put(std::uint8_t* data, std::size_t bytes, std::uint32_t value)
{
    for (std::size_t i = bytes; i > 0; --i)
    {
        data[i - 1] = static_cast<std::uint8_t>(value);
        value >>= 8U;
    }
}

constexpr std::array<std::uint32_t, 256> MakeChecksumTable()
{
    constexpr std::uint32_t Polynomial = 0xEDB88320;
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte)
    {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
        {
            value = value >> 1U ^ ((value & 1U) != 0 ? Polynomial : 0U);
        }
        table[byte] = value;
    }
    return table;
}

/** CRC-32 of IEEE 802.3, as of Ethernet frames and zip files; continues where crc ended. */
std::uint32_t Checksum(std::uint32_t crc, const std::uint8_t* data, std::size_t bytes)
{
    static constexpr auto Table = MakeChecksumTable();
    crc = ~crc;
    for (std::size_t i = 0; i < bytes; ++i)
    {
        crc = crc >> 8U ^ Table[(crc ^ data[i]) & 0xFFU];
    }
    return ~crc;
}

std::uint32_t ChecksumOf(const std::uint8_t* image, std::size_t payloadBytes)
{
    return Checksum(Checksum(0, image, ChecksumAt), image + SFirmwareImage::HeaderBytes, payloadBytes);
}

void PutText(std::vector<std::uint8_t>& image, std::size_t place, const std::string& text, const char* name)
{
    if (text.empty() || text.size() >= TextBytes || text.find('\0') != std::string::npos)
    {
        Refuse(std::string(name) + " must be 1 to " + std::to_string(TextBytes - 1) + " bytes of text");
    }
    std::copy(text.begin(), text.end(), image.begin() + static_cast<std::ptrdiff_t>(place));
}

std::string GetText(const std::uint8_t* field, const char* name)
{
    const std::uint8_t* end = std::find(field, field + TextBytes, std::uint8_t{0});
    if (end == field || end == field + TextBytes)
    {
        Refuse(std::string(name) + " is empty or has no end");
    }
    return {field, end};
}

} // namespace

std::vector<std::uint8_t> EncodeFirmware(const SFirmwareImage& image)
{
    if (image.payload.size() > std::numeric_limits<std::uint32_t>::max())
    {
        Refuse("the payload is longer than 4 GiB");
    }
    std::vector<std::uint8_t> bytes(SFirmwareImage::HeaderBytes);
    Put(&bytes[MagicAt], 4, Magic);
    Put(&bytes[FormatAt], 2, Format);
    Put(&bytes[FlagsAt], 2, image.failsToBoot ? FlagFailsToBoot : 0);
    PutText(bytes, VersionAt, image.version, "the version");
    PutText(bytes, ModelAt, image.modelName, "the model name");
    Put(&bytes[LengthAt], 4, static_cast<std::uint32_t>(image.payload.size()));
    bytes.insert(bytes.end(), image.payload.begin(), image.payload.end());
    Put(&bytes[ChecksumAt], 4, ChecksumOf(bytes.data(), image.payload.size()));
    return bytes;
}

SFirmwareImage DecodeFirmware(const std::uint8_t* data, std::size_t bytes)
{
    constexpr std::size_t header = SFirmwareImage::HeaderBytes;
    if (bytes < header)
    {
        Refuse("it has " + std::to_string(bytes) + " bytes, fewer than the header's " + std::to_string(header));
    }
    if (Get(data + MagicAt, 4) != Magic)
    {
        Refuse("it is none of the simulated cameras");
    }
    if (Get(data + FormatAt, 2) != Format)
    {
        Refuse("its format is " + std::to_string(Get(data + FormatAt, 2)) + ", and only " + std::to_string(Format) +
               " is known");
    }
    const std::size_t payloadBytes = Get(data + LengthAt, 4);
    if (payloadBytes != bytes - header)
    {
        Refuse("it has " + std::to_string(bytes - header) + " bytes of payload instead of " +
               std::to_string(payloadBytes));
    }
    if (Get(data + ChecksumAt, 4) != ChecksumOf(data, payloadBytes))
    {
        Refuse("its checksum is wrong");
    }
    SFirmwareImage image;
    image.version = GetText(data + VersionAt, "the version");
    image.modelName = GetText(data + ModelAt, "the model name");
    image.failsToBoot = (Get(data + FlagsAt, 2) & FlagFailsToBoot) != 0;
    image.payload.assign(data + header, data + bytes);
    return image;
}

std::vector<std::uint8_t> MakeFirmware(const std::string& version, const std::string& modelName,
                                       std::size_t payloadBytes, bool failsToBoot)
{
    SFirmwareImage image;
    image.version = version;
    image.modelName = modelName;
    image.failsToBoot = failsToBoot;
    image.payload.resize(payloadBytes);
    std::uint32_t state = Checksum(0, reinterpret_cast<const std::uint8_t*>(version.data()), version.size());
    for (std::uint8_t& byte : image.payload)
    {
        state = state * 1664525U + 1013904223U; // a linear congruential generator: any bytes that do not repeat soon
        byte = static_cast<std::uint8_t>(state >> 24U);
    }
    return EncodeFirmware(image);
}

} // namespace Simulator
