// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/elementhandlers.h"

#include "genapi/internal/elementreader.h"
#include "genapi/internal/textparse.h"

#include <algorithm>
#include <unordered_map>

namespace GenApi
{
namespace Internal
{
namespace
{

using Reader = CElementReader;
using Element = pugi::xml_node;
using HandlerMap = std::unordered_map<std::string_view, ElementHandler>;

EAccessMode AccessModeOf(Reader& r, Element e)
{
    return r.Choice<EAccessMode>(e, {{"RO", EAccessMode::RO},
                                     {"RW", EAccessMode::RW},
                                     {"WO", EAccessMode::WO},
                                     {"NA", EAccessMode::NA},
                                     {"NI", EAccessMode::NI}});
}

void TakeValue(Reader& r, Element e)
{
    SNodeDescription& node = r.Node();
    if (node.entry)
    {
        node.entry->value = r.Integer(e);
        node.entry->hasValue = true;
    }
    else if (node.kind == ENodeKind::String)
    {
        node.text = TextOf(e);
        node.hasText = true;
    }
    else if (node.kind == ENodeKind::Boolean)
    {
        node.number->value.hasConstant = true;
        node.number->value.constant = SFormulaValue::FromInteger(r.Truth(e) ? 1 : 0);
    }
    else if (node.number)
    {
        node.number->value = r.NumberSource(e);
    }
}

HandlerMap CommonHandlers()
{
    HandlerMap map;
    map["Value"] = TakeValue;
    map["Visibility"] = [](Reader& r, Element e)
    {
        r.Node().visibility = r.Choice<EVisibility>(e, {{"Beginner", EVisibility::Beginner},
                                                        {"Expert", EVisibility::Expert},
                                                        {"Guru", EVisibility::Guru},
                                                        {"Invisible", EVisibility::Invisible}});
    };
    map["IsDeprecated"] = [](Reader& r, Element e)
    {
        r.Node().isDeprecated = r.YesNo(e);
    };
    map["Streamable"] = [](Reader& r, Element e)
    {
        r.Node().isStreamable = r.YesNo(e);
    };
    map["ImposedAccessMode"] = [](Reader& r, Element e)
    {
        r.Node().imposedAccessMode = AccessModeOf(r, e);
    };
    map["Cachable"] = [](Reader& r, Element e)
    {
        r.Node().caching = r.Choice<ECachingMode>(e, {{"NoCache", ECachingMode::NoCache},
                                                      {"WriteThrough", ECachingMode::WriteThrough},
                                                      {"WriteAround", ECachingMode::WriteAround}});
    };
    map["PollingTime"] = [](Reader& r, Element e)
    {
        r.Node().pollingTimeMs = r.Integer(e);
    };
    map["pIsImplemented"] = [](Reader& r, Element e)
    {
        r.Node().isImplemented = r.Reference(e);
    };
    map["pIsAvailable"] = [](Reader& r, Element e)
    {
        r.Node().isAvailable = r.Reference(e);
    };
    map["pIsLocked"] = [](Reader& r, Element e)
    {
        r.Node().isLocked = r.Reference(e);
    };
    map["pBlockPolling"] = [](Reader& r, Element e)
    {
        r.Node().blockPolling = r.Reference(e);
    };
    map["pError"] = [](Reader& r, Element e)
    {
        r.Node().error = r.Reference(e);
    };
    map["pAlias"] = [](Reader& r, Element e)
    {
        r.Node().alias = r.Reference(e);
    };
    map["pCastAlias"] = [](Reader& r, Element e)
    {
        r.Node().castAlias = r.Reference(e);
    };
    map["pSelected"] = [](Reader& r, Element e)
    {
        r.Node().selected.push_back(r.Reference(e));
    };
    map["pInvalidator"] = [](Reader& r, Element e)
    {
        r.Node().invalidators.push_back(r.Reference(e));
    };
    map["pFeature"] = [](Reader& r, Element e)
    {
        r.Node().features.push_back(r.Reference(e));
    };
    return map;
}

void TakeIndexedValue(Reader& r, Element e)
{
    const bool isReference = e.name()[0] == 'p';
    r.Node().number->indexed.emplace_back(r.IndexAttribute(e), isReference ? r.ReferenceSource(e) : r.NumberSource(e));
}

void TakeValidValues(Reader& r, Element e)
{
    const std::string text = TextOf(e);
    std::size_t begin = 0;
    while (begin < text.size())
    {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        std::int64_t value = 0;
        if (!ParseInteger(std::string_view(text).substr(begin, end - begin), value))
        {
            r.ThrowBadText(e, text, "is no list of integers");
        }
        r.Node().number->validValues.push_back(value);
        begin = end + 1;
    }
}

void TakeRepresentation(Reader& r, Element e)
{
    SNumberPart& n = *r.Node().number;
    n.representation = r.Choice<ERepresentation>(e, {{"Linear", ERepresentation::Linear},
                                                     {"Logarithmic", ERepresentation::Logarithmic},
                                                     {"Boolean", ERepresentation::Boolean},
                                                     {"PureNumber", ERepresentation::PureNumber},
                                                     {"HexNumber", ERepresentation::HexNumber},
                                                     {"IPV4Address", ERepresentation::IPV4Address},
                                                     {"MACAddress", ERepresentation::MACAddress}});
    n.hasRepresentation = true;
}

template <SSource SNumberPart::*Member> void TakeNumber(Reader& r, Element e)
{
    (*r.Node().number).*Member = r.NumberSource(e);
}

template <SSource SNumberPart::*Member> void TakeReference(Reader& r, Element e)
{
    ((*r.Node().number).*Member).node = r.Reference(e);
}

HandlerMap NumberHandlers()
{
    HandlerMap map;
    map["pValue"] = TakeReference<&SNumberPart::value>;
    map["pIndex"] = [](Reader& r, Element e)
    {
        r.Node().number->index = r.Reference(e);
    };
    map["ValueIndexed"] = TakeIndexedValue;
    map["pValueIndexed"] = TakeIndexedValue;
    map["ValueDefault"] = TakeNumber<&SNumberPart::indexedDefault>;
    map["pValueDefault"] = TakeReference<&SNumberPart::indexedDefault>;
    map["pValueCopy"] = [](Reader& r, Element e)
    {
        r.Node().number->copies.push_back(r.Reference(e));
    };
    map["Min"] = TakeNumber<&SNumberPart::min>;
    map["Max"] = TakeNumber<&SNumberPart::max>;
    map["Inc"] = TakeNumber<&SNumberPart::inc>;
    map["pMin"] = TakeReference<&SNumberPart::min>;
    map["pMax"] = TakeReference<&SNumberPart::max>;
    map["pInc"] = TakeReference<&SNumberPart::inc>;
    map["ValidValueSet"] = TakeValidValues;
    map["CommandValue"] = TakeNumber<&SNumberPart::commandValue>;
    map["pCommandValue"] = TakeReference<&SNumberPart::commandValue>;
    map["OnValue"] = [](Reader& r, Element e)
    {
        r.Node().number->onValue = r.Integer(e);
        r.Node().number->hasOnValue = true;
    };
    map["OffValue"] = [](Reader& r, Element e)
    {
        r.Node().number->offValue = r.Integer(e);
    };
    map["Representation"] = TakeRepresentation;
    map["Unit"] = [](Reader& r, Element)
    {
        r.Node().number->hasUnit = true;
    };
    map["DisplayNotation"] = [](Reader& r, Element e)
    {
        r.Node().number->displayNotation =
            r.Choice<EDisplayNotation>(e, {{"Automatic", EDisplayNotation::Automatic},
                                           {"Fixed", EDisplayNotation::Fixed},
                                           {"Scientific", EDisplayNotation::Scientific}});
    };
    map["DisplayPrecision"] = [](Reader& r, Element e)
    {
        r.Node().number->displayPrecision = r.Integer(e);
        r.Node().number->hasDisplayPrecision = true;
    };
    return map;
}

void TakeAddressIndex(Reader& r, Element e)
{
    SAddressTerm term;
    term.isIndex = true;
    term.value = r.ReferenceSource(e);
    if (const pugi::xml_attribute offset = e.attribute("Offset"))
    {
        std::int64_t bytes = 0;
        if (!ParseInteger(offset.value(), bytes))
        {
            r.ThrowBadText(e, offset.value(), "as Offset is no integer");
        }
        term.stride.hasConstant = true;
        term.stride.constant = SFormulaValue::FromInteger(bytes);
    }
    else if (const pugi::xml_attribute offsetNode = e.attribute("pOffset"))
    {
        term.stride.node = r.ReferenceByName(e, offsetNode.value());
    }
    r.Node().reg->address.push_back(term);
}

void TakeAddress(Reader& r, Element e, const SSource& value)
{
    if (!value.IsGiven())
    {
        r.ThrowBadText(e, e.name(), "is no address");
    }
    SAddressTerm term;
    term.value = value;
    r.Node().reg->address.push_back(term);
}

void TakeBit(Reader& r, Element e)
{
    SRegisterPart& reg = *r.Node().reg;
    const std::int64_t bit = r.Integer(e);
    const std::string name = e.name();
    if (name != "MSB")
    {
        reg.lsb = bit;
    }
    if (name != "LSB")
    {
        reg.msb = bit;
    }
}

HandlerMap RegisterHandlers()
{
    HandlerMap map;
    map["Address"] = [](Reader& r, Element e)
    {
        TakeAddress(r, e, r.IntegerSource(e));
    };
    map["pAddress"] = [](Reader& r, Element e)
    {
        TakeAddress(r, e, r.ReferenceSource(e));
    };
    map["IntSwissKnife"] = [](Reader& r, Element e)
    {
        SSource source;
        source.node = r.Embedded(e);
        TakeAddress(r, e, source);
    };
    map["pIndex"] = TakeAddressIndex;
    map["Length"] = [](Reader& r, Element e)
    {
        r.Node().reg->length = r.IntegerSource(e);
    };
    map["pLength"] = [](Reader& r, Element e)
    {
        r.Node().reg->length = r.ReferenceSource(e);
    };
    map["pPort"] = [](Reader& r, Element e)
    {
        r.Node().reg->port = r.Reference(e);
    };
    map["AccessMode"] = [](Reader& r, Element e)
    {
        r.Node().reg->accessMode = AccessModeOf(r, e);
    };
    map["Endianess"] = [](Reader& r, Element e)
    {
        r.Node().reg->byteOrder =
            r.Choice<EEndianness>(e, {{"LittleEndian", EEndianness::Little}, {"BigEndian", EEndianness::Big}});
    };
    map["Sign"] = [](Reader& r, Element e)
    {
        r.Node().reg->sign = r.Choice<ESign>(e, {{"Signed", ESign::Signed}, {"Unsigned", ESign::Unsigned}});
    };
    map["LSB"] = TakeBit;
    map["MSB"] = TakeBit;
    map["Bit"] = TakeBit;
    return map;
}

HandlerMap PortHandlers()
{
    HandlerMap map;
    map["ChunkID"] = [](Reader& r, Element e)
    {
        r.Node().port->isChunk = true;
        r.Node().port->id = r.Id(e);
    };
    map["pChunkID"] = [](Reader& r, Element e)
    {
        r.Node().port->isChunk = true;
        r.Node().port->chunkIdNode = r.Reference(e);
    };
    map["EventID"] = [](Reader& r, Element e)
    {
        r.Node().port->isEvent = true;
        r.Node().port->id = r.Id(e);
    };
    map["SwapEndianess"] = [](Reader& r, Element e)
    {
        r.Node().port->swapByteOrder = r.YesNo(e);
    };
    return map;
}

HandlerMap EntryHandlers()
{
    HandlerMap map;
    map["Symbolic"] = [](Reader& r, Element e)
    {
        r.Node().entry->symbolic = TextOf(e);
    };
    map["IsSelfClearing"] = [](Reader& r, Element e)
    {
        r.Node().entry->isSelfClearing = r.YesNo(e);
    };
    map["NumericValue"] = [](Reader& r, Element e)
    {
        r.Node().entry->numericValue = r.Float(e);
        r.Node().entry->hasNumericValue = true;
    };
    return map;
}

void TakeEntry(Reader& r, NodeIndex entry)
{
    if (entry != NoNode)
    {
        r.Node().enumeration->entries.push_back(entry);
    }
}

HandlerMap EnumerationHandlers()
{
    HandlerMap map;
    map["EnumEntry"] = [](Reader& r, Element e)
    {
        TakeEntry(r, r.Embedded(e));
    };
    map["pEnumEntry"] = [](Reader& r, Element e)
    {
        TakeEntry(r, r.Reference(e));
    };
    return map;
}

HandlerMap FormulaHandlers()
{
    HandlerMap map;
    map["Slope"] = [](Reader& r, Element e)
    {
        r.Node().formula->slope = r.Choice<ESlope>(e, {{"Increasing", ESlope::Increasing},
                                                       {"Decreasing", ESlope::Decreasing},
                                                       {"Varying", ESlope::Varying},
                                                       {"Automatic", ESlope::Automatic}});
    };
    return map;
}

ElementHandler Find(const HandlerMap& map, std::string_view elementName)
{
    const auto found = map.find(elementName);
    return found == map.end() ? nullptr : found->second;
}

} // namespace

ElementHandler FindElementHandler(const SNodeDescription& node, std::string_view elementName)
{
    static const HandlerMap Common = CommonHandlers();
    static const HandlerMap Number = NumberHandlers();
    static const HandlerMap Register = RegisterHandlers();
    static const HandlerMap Port = PortHandlers();
    static const HandlerMap Entry = EntryHandlers();
    static const HandlerMap Enumeration = EnumerationHandlers();
    static const HandlerMap Formula = FormulaHandlers();
    const std::pair<bool, const HandlerMap*> parts[] = {
        {node.reg != nullptr, &Register},
        {node.enumeration != nullptr, &Enumeration},
        {node.formula != nullptr, &Formula},
        {node.number != nullptr, &Number},
        {node.entry != nullptr, &Entry},
        {node.port != nullptr, &Port},
        {true, &Common},
    };
    for (const auto& [applies, handlers] : parts)
    {
        if (applies)
        {
            if (const ElementHandler handler = Find(*handlers, elementName))
            {
                return handler;
            }
        }
    }
    return nullptr;
}

} // namespace Internal
} // namespace GenApi
