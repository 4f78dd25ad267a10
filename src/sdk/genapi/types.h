// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace GenApi
{

/** Access mode of a node. RW > RO/WO > NA > NI. */
enum class EAccessMode
{
    NI,
    NA,
    WO,
    RO,
    RW
};
enum class EVisibility
{
    Beginner,
    Expert,
    Guru,
    Invisible
};
enum class ECachingMode
{
    NoCache,
    WriteThrough,
    WriteAround
};
enum class ERepresentation
{
    Linear,
    Logarithmic,
    Boolean,
    PureNumber,
    HexNumber,
    IPV4Address,
    MACAddress
};
enum class EDisplayNotation
{
    Automatic,
    Fixed,
    Scientific
};
enum class EEndianness
{
    Little,
    Big
};
enum class ESign
{
    Unsigned,
    Signed
};
enum class ENameSpace
{
    Custom,
    Standard
};
enum class EIncMode
{
    NoIncrement,
    FixedIncrement
};
/** Principal interface of a node: what a user of the node sees it as. */
enum class EInterfaceType
{
    Value,
    Base,
    Integer,
    Boolean,
    Command,
    Float,
    String,
    Register,
    Category,
    Enumeration,
    EnumEntry,
    Port
};

inline bool IsReadable(EAccessMode mode)
{
    return mode == EAccessMode::RO || mode == EAccessMode::RW;
}
inline bool IsWritable(EAccessMode mode)
{
    return mode == EAccessMode::WO || mode == EAccessMode::RW;
}
inline bool IsAvailable(EAccessMode mode)
{
    return mode != EAccessMode::NI && mode != EAccessMode::NA;
}
inline bool IsImplemented(EAccessMode mode)
{
    return mode != EAccessMode::NI;
}

} // namespace GenApi
