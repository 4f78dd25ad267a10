// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/formula.h"
#include "genapi/types.h"

#include <pugixml.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace GenApi
{
namespace Internal
{

using NodeIndex = std::int32_t;
constexpr NodeIndex NoNode = -1;
using NodeIndices = std::vector<NodeIndex>;

enum class ENodeKind : std::uint8_t
{
    Plain,
    Category,
    Integer,
    IntReg,
    MaskedIntReg, // also the entries of a StructReg
    Boolean,
    Command,
    Enumeration,
    EnumEntry,
    Float,
    FloatReg,
    String,
    StringReg,
    Register,
    Converter,
    IntConverter,
    SwissKnife,
    IntSwissKnife,
    Port
};

inline bool IsRegisterKind(ENodeKind kind)
{
    return kind == ENodeKind::IntReg || kind == ENodeKind::MaskedIntReg || kind == ENodeKind::FloatReg ||
           kind == ENodeKind::StringReg || kind == ENodeKind::Register;
}
inline bool IsFormulaKind(ENodeKind kind)
{
    return kind == ENodeKind::SwissKnife || kind == ENodeKind::IntSwissKnife || kind == ENodeKind::Converter ||
           kind == ENodeKind::IntConverter;
}
inline bool IsConverterKind(ENodeKind kind)
{
    return kind == ENodeKind::Converter || kind == ENodeKind::IntConverter;
}
inline bool IsFloatKind(ENodeKind kind)
{
    return kind == ENodeKind::Float || kind == ENodeKind::FloatReg || kind == ENodeKind::Converter ||
           kind == ENodeKind::SwissKnife;
}
inline bool IsIntegerKind(ENodeKind kind)
{
    return kind == ENodeKind::Integer || kind == ENodeKind::IntReg || kind == ENodeKind::MaskedIntReg ||
           kind == ENodeKind::IntConverter || kind == ENodeKind::IntSwissKnife;
}
inline bool IsNumberKind(ENodeKind kind)
{
    return IsFloatKind(kind) || IsIntegerKind(kind) || kind == ENodeKind::Boolean || kind == ENodeKind::Enumeration ||
           kind == ENodeKind::Command;
}
inline bool IsTextKind(ENodeKind kind)
{
    return kind == ENodeKind::String || kind == ENodeKind::StringReg;
}

/** A number that is a constant of the description or the value of another node. */
struct SSource
{
    NodeIndex node = NoNode;
    bool hasConstant = false;
    SFormulaValue constant;

    bool IsGiven() const { return node != NoNode || hasConstant; }
};

/** One summand of a register's address. */
struct SAddressTerm
{
    SSource value;
    bool isIndex = false; // the value is multiplied by the stride; without one by the register's length
    SSource stride;
};

struct SRegisterPart
{
    std::vector<SAddressTerm> address;
    SSource length;
    NodeIndex port = NoNode;
    EAccessMode accessMode = EAccessMode::RO;
    EEndianness byteOrder = EEndianness::Little;
    ESign sign = ESign::Unsigned;
    std::int64_t lsb = -1; // of masked registers, in the register's own bit order
    std::int64_t msb = -1;
};

/** Where a number comes from when it does not come from a register, and what limits it. */
struct SNumberPart
{
    SSource value;
    NodeIndex index = NoNode;
    std::vector<std::pair<std::int64_t, SSource>> indexed;
    SSource indexedDefault;
    NodeIndices copies;
    SSource min;
    SSource max;
    SSource inc;
    std::vector<std::int64_t> validValues;
    SSource commandValue;
    bool hasOnValue = false;
    std::int64_t onValue = 1;
    std::int64_t offValue = 0;
    bool hasRepresentation = false;
    ERepresentation representation = ERepresentation::PureNumber;
    bool hasUnit = false;
    EDisplayNotation displayNotation = EDisplayNotation::Automatic;
    bool hasDisplayPrecision = false;
    std::int64_t displayPrecision = 6;
};

/** What of a node a formula's variable reads. */
enum class EAspect : std::uint8_t
{
    Value,
    Min,
    Max,
    Inc,
    Address,
    Constant // the value of an enumeration's entry
};

struct SVariable
{
    NodeIndex node = NoNode; // NoNode: the converted value itself (FROM or TO)
    EAspect aspect = EAspect::Value;
    std::int64_t constant = 0;
};

/** A compiled formula and what its variables are, in the formula's order. */
struct SBoundFormula
{
    CFormula formula;
    std::vector<SVariable> variables;
};

enum class ESlope : std::uint8_t
{
    Increasing,
    Decreasing,
    Varying,
    Automatic
};

struct SFormulaPart
{
    SBoundFormula from; // a SwissKnife's formula, a converter's from the device to the user
    SBoundFormula to;
    ESlope slope = ESlope::Automatic;
};

struct SEnumerationPart
{
    NodeIndices entries;
    std::unordered_map<std::string, NodeIndex> bySymbolic;
    std::unordered_map<std::int64_t, NodeIndices> byValue; // of one value: in the order of the description
};

struct SEntryPart
{
    std::string symbolic;
    std::int64_t value = 0;
    bool hasValue = false;
    bool hasNumericValue = false;
    double numericValue = 0.0;
    bool isSelfClearing = false;
};

struct SPortPart
{
    bool isChunk = false;
    bool isEvent = false;
    std::uint64_t id = 0;
    NodeIndex chunkIdNode = NoNode;
    bool swapByteOrder = false;
};

/** One node of a description. References are indices into SDescription::nodes. */
struct SNodeDescription
{
    std::string name;
    pugi::xml_node element; // texts are looked up when they are asked for
    pugi::xml_node outer;   // of a StructEntry: its StructReg, which gives what the entry does not
    ENodeKind kind = ENodeKind::Plain;
    EVisibility visibility = EVisibility::Beginner;
    bool isStandard = false;
    bool isDeprecated = false;
    bool isStreamable = false;
    bool isFeature = false;
    ECachingMode caching = ECachingMode::WriteThrough;
    EAccessMode imposedAccessMode = EAccessMode::RW;
    std::int64_t pollingTimeMs = -1;
    NodeIndex isImplemented = NoNode;
    NodeIndex isAvailable = NoNode;
    NodeIndex isLocked = NoNode;
    NodeIndex blockPolling = NoNode;
    NodeIndex error = NoNode;
    NodeIndex alias = NoNode;
    NodeIndex castAlias = NoNode;
    NodeIndices selected;
    NodeIndices selecting;
    NodeIndices invalidators;
    NodeIndices features; // of a category
    std::unique_ptr<SRegisterPart> reg;
    std::unique_ptr<SNumberPart> number;
    std::unique_ptr<SFormulaPart> formula;
    std::unique_ptr<SEnumerationPart> enumeration;
    std::unique_ptr<SEntryPart> entry;
    std::unique_ptr<SPortPart> port;
    std::string text; // constant of a String
    bool hasText = false;

    // Computed once all nodes are known.
    bool isValueCachable = true;
    bool isAccessCachable = true;
};

struct SVersion
{
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t subMinor = 0;
};

/** A parsed description. Immutable once made, shared by its node maps. */
struct SDescription
{
    pugi::xml_document document;
    std::string modelName;
    std::string vendorName;
    SVersion schemaVersion;
    SVersion deviceVersion;
    std::vector<SNodeDescription> nodes;
    std::unordered_map<std::string, NodeIndex> byName;
    NodeIndices polled;
    NodeIndices chunkPorts;
    NodeIndices eventPorts;
    std::unordered_map<std::uint64_t, NodeIndices> byEventId; // features that name an event themselves

    /** Nodes to invalidate when node i changes: dependents[dependentsBegin[i] .. dependentsBegin[i + 1]). */
    std::vector<std::uint32_t> dependentsBegin;
    NodeIndices dependents;
    /** Registers and constants below a node along its value, for the nodes that selectors and invalidators reach. */
    std::unordered_map<NodeIndex, NodeIndices> terminals;

    NodeIndex Find(const std::string& name) const
    {
        const auto found = byName.find(name);
        return found == byName.end() ? NoNode : found->second;
    }
};

} // namespace Internal
} // namespace GenApi
