// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "peer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace GenApi;

namespace
{

constexpr std::int64_t kAddress = 0x4000;
constexpr std::size_t kWindow = 16; // bytes around a register that are compared

struct SRegister
{
    std::string name;
    int bytes;
    bool isBig;
    bool isSigned;
    int lowest;  // least significant bit of the field, counted from the register's least significant one
    int highest; // most significant bit
    bool isMasked;
};

std::string Describe(const SRegister& reg)
{
    const std::string element = reg.isMasked ? "MaskedIntReg" : "IntReg";
    std::string text = "<" + element + " Name=\"" + reg.name + "\"><Address>" + std::to_string(kAddress) +
                       "</Address><Length>" + std::to_string(reg.bytes) +
                       "</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable>";
    if (reg.isMasked)
    {
        // In a big-endian register bit 0 is the most significant one.
        const int top = reg.bytes * 8 - 1;
        text += "<LSB>" + std::to_string(reg.isBig ? top - reg.lowest : reg.lowest) + "</LSB><MSB>" +
                std::to_string(reg.isBig ? top - reg.highest : reg.highest) + "</MSB>";
    }
    return text + "<Sign>" + (reg.isSigned ? "Signed" : "Unsigned") + "</Sign><Endianess>" +
           (reg.isBig ? "BigEndian" : "LittleEndian") + "</Endianess></" + element + ">\n";
}

std::string Describe(const std::vector<SRegister>& registers)
{
    std::string text;
    for (const SRegister& reg : registers)
    {
        text += Describe(reg);
    }
    return text;
}

/** Every byte order, sign and length with fields of every width up to maxWidth, at three places. */
std::vector<SRegister> Registers(int maxWidth)
{
    std::vector<SRegister> registers;
    for (const int bytes : {1, 2, 4, 8})
    {
        for (int variant = 0; variant < 4; ++variant)
        {
            const bool isBig = (variant & 1) != 0;
            const bool isSigned = (variant & 2) != 0;
            const std::string base = "R" + std::to_string(bytes) + (isBig ? "B" : "L") + (isSigned ? "S" : "U");
            const int bits = bytes * 8;
            registers.push_back({base, bytes, isBig, isSigned, 0, bits - 1, false});
            for (int width = 1; width <= std::min(bits, maxWidth); ++width)
            {
                for (const int lowest : {0, (bits - width) / 2, bits - width})
                {
                    registers.push_back({base + "_" + std::to_string(width) + "_" + std::to_string(lowest) + "_" +
                                             std::to_string(registers.size()),
                                         bytes, isBig, isSigned, lowest, lowest + width - 1, true});
                }
            }
        }
    }
    return registers;
}

std::vector<std::uint8_t> RandomBytes(std::mt19937& random)
{
    std::vector<std::uint8_t> bytes(kWindow);
    for (std::uint8_t& byte : bytes)
    {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

/** What the field holds, computed bit by bit. */
std::int64_t Expected(const SRegister& reg, const std::vector<std::uint8_t>& memory)
{
    std::uint64_t raw = 0;
    for (int i = 0; i < reg.bytes; ++i)
    {
        const int place = reg.isBig ? reg.bytes - 1 - i : i;
        raw |= std::uint64_t{memory[static_cast<std::size_t>(i)]} << (8 * place);
    }
    std::uint64_t field = 0;
    const int width = reg.highest - reg.lowest + 1;
    for (int bit = 0; bit < width; ++bit)
    {
        field |= ((raw >> (reg.lowest + bit)) & 1U) << bit;
    }
    if (reg.isSigned && ((field >> (width - 1)) & 1U) != 0)
    {
        for (int bit = width; bit < 64; ++bit)
        {
            field |= std::uint64_t{1} << bit;
        }
    }
    return static_cast<std::int64_t>(field);
}

} // namespace

TEST(ArvComparisonRegister, fieldsOfEveryShapeReadTheSame)
{
    const std::vector<SRegister> registers = Registers(64);
    CPeer peer(Describe(registers));
    std::mt19937 random(1);
    for (int round = 0; round < 4; ++round)
    {
        peer.Poke(kAddress, RandomBytes(random));
        for (const SRegister& reg : registers)
        {
            // The peer has no unsigned 64-bit numbers and neither have we: the pattern is compared.
            ASSERT_EQ(peer.Own<CIntegerPtr>(reg.name)->GetValue(), peer.OtherInteger(reg.name)) << reg.name;
        }
    }
}

TEST(ArvComparisonRegister, fieldsOfEveryWidthUpToSixtyFourBitsReadAsTheirBitsSay)
{
    const std::vector<SRegister> registers = Registers(64);
    CPeer peer(Describe(registers));
    std::mt19937 random(2);
    for (int round = 0; round < 4; ++round)
    {
        const std::vector<std::uint8_t> memory = RandomBytes(random);
        peer.Poke(kAddress, memory);
        for (const SRegister& reg : registers)
        {
            ASSERT_EQ(peer.Own<CIntegerPtr>(reg.name)->GetValue(), Expected(reg, memory)) << reg.name;
        }
    }
}

TEST(ArvComparisonRegister, writtenFieldsLeaveTheSameBytes)
{
    const std::vector<SRegister> registers = Registers(64);
    CPeer peer(Describe(registers));
    std::mt19937 random(3);
    for (const SRegister& reg : registers)
    {
        const std::vector<std::uint8_t> memory = RandomBytes(random);
        const std::int64_t value = Expected(reg, RandomBytes(random));
        if (!reg.isSigned && value < 0)
        {
            continue; // an unsigned 64-bit register beyond the integers of the interface
        }
        peer.Poke(kAddress, memory);
        EXPECT_TRUE(peer.SetOtherInteger(reg.name, value)) << reg.name;
        const std::vector<std::uint8_t> expected = peer.Peek(kAddress, kWindow);
        peer.Poke(kAddress, memory);
        ASSERT_NO_THROW(peer.Own<CIntegerPtr>(reg.name)->SetValue(value)) << reg.name << " = " << value;
        EXPECT_EQ(peer.Peek(kAddress, kWindow), expected) << reg.name << " = " << value;
    }
}

TEST(ArvComparisonRegister, writtenFieldsOfEveryWidthReadBackAndChangeNoOtherBit)
{
    const std::vector<SRegister> registers = Registers(64);
    CPeer peer(Describe(registers));
    std::mt19937 random(4);
    for (const SRegister& reg : registers)
    {
        const std::vector<std::uint8_t> memory = RandomBytes(random);
        const std::vector<std::uint8_t> wanted = RandomBytes(random);
        const std::int64_t value = Expected(reg, wanted);
        peer.Poke(kAddress, memory);
        if (!reg.isSigned && value < 0)
        {
            continue; // an unsigned 64-bit register beyond the integers of the interface
        }
        ASSERT_NO_THROW(peer.Own<CIntegerPtr>(reg.name)->SetValue(value)) << reg.name << " = " << value;
        const std::vector<std::uint8_t> after = peer.Peek(kAddress, kWindow);
        ASSERT_EQ(Expected(reg, after), value) << reg.name;
        SRegister rest = reg;
        if (reg.lowest > 0)
        {
            rest.highest = reg.lowest - 1;
            rest.lowest = 0;
            ASSERT_EQ(Expected(rest, after), Expected(rest, memory)) << "bits below " << reg.name;
        }
        if (reg.highest < reg.bytes * 8 - 1)
        {
            rest.lowest = reg.highest + 1;
            rest.highest = reg.bytes * 8 - 1;
            ASSERT_EQ(Expected(rest, after), Expected(rest, memory)) << "bits above " << reg.name;
        }
    }
}

TEST(ArvComparisonRegister, floatRegistersReadAndWriteTheSame)
{
    std::string nodes;
    for (const int bytes : {4, 8})
    {
        for (const char* order : {"BigEndian", "LittleEndian"})
        {
            nodes +=
                "<FloatReg Name=\"F" + std::to_string(bytes) + order[0] + "\"><Address>0x4000</Address><Length>" +
                std::to_string(bytes) +
                "</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>" +
                order + "</Endianess></FloatReg>\n";
        }
    }
    CPeer peer(nodes);
    for (const std::string name : {"F4B", "F4L", "F8B", "F8L"})
    {
        for (const double value : {0.0, 1.5, -2.75e6, 3.0517578125e-5})
        {
            ASSERT_TRUE(peer.SetOtherFloat(name, value));
            EXPECT_EQ(peer.Own<CFloatPtr>(name)->GetValue(), value) << name;
            const auto expected = peer.Peek(kAddress, kWindow);
            peer.Poke(kAddress, std::vector<std::uint8_t>(8, 0));
            peer.Own<CFloatPtr>(name)->SetValue(value);
            EXPECT_EQ(peer.Peek(kAddress, 4), std::vector<std::uint8_t>(expected.begin(), expected.begin() + 4))
                << name;
            EXPECT_EQ(peer.OtherFloat(name), value) << name;
        }
    }
}
