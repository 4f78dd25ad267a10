// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarecontrolreader.h"

#include "genapi/internal/firmwarearchive.h"
#include "genapi/internal/firmwarechecksum.h"
#include "genapi/internal/firmwareelement.h"
#include "genapi/internal/firmwarepattern.h"
#include "genapi/internal/firmwarestepreader.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace GenApi
{
namespace Internal
{
namespace
{

SFirmwareFile ReadFile(const CFirmwareElement& element)
{
    element.ExpectOnly({"name", "size", "sha256"}, {});
    SFirmwareFile file;
    file.name = element.Text("name", element.Limits().textBytes);
    if (const std::string fault = FirmwareNameFault(file.name, element.Limits()); !fault.empty())
    {
        element.Throw(fault);
    }
    file.bytes = element.Unsigned("size");
    file.sha256 = element.Text("sha256", Sha256Digits);
    const bool isHex = std::all_of(file.sha256.begin(), file.sha256.end(),
                                   [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
    if (file.sha256.size() != Sha256Digits || !isHex)
    {
        element.Throw("'sha256' is not 64 lower case hexadecimal digits");
    }
    return file;
}

void ReadFiles(const CFirmwareElement& list, SFirmwareControl& control)
{
    list.ExpectOnly({}, {"File"});
    std::set<std::string> names;
    std::uint64_t bytes = 0;
    for (const pugi::xml_node child : list.Node().children())
    {
        const CFirmwareElement element = list.Of(child);
        control.files.push_back(ReadFile(element));
        const SFirmwareFile& file = control.files.back();
        if (!names.insert(file.name).second || file.name == FirmwareControlName)
        {
            element.Throw("the file '" + file.name + "' is listed twice, or is the control file itself");
        }
        if (control.files.size() > list.Limits().files)
        {
            list.ThrowTooMany("files", list.Limits().files);
        }
        if (file.bytes > list.Limits().payloadBytes - bytes)
        {
            list.ThrowTooMany("bytes in all files together", list.Limits().payloadBytes);
        }
        bytes += file.bytes;
    }
}

void ReadProcedures(const CFirmwareElement& list, SFirmwareControl& control)
{
    list.ExpectOnly({}, {"Procedure"});
    for (const pugi::xml_node child : list.Node().children())
    {
        auto procedure = std::make_shared<const SFirmwareProcedure>(ReadFirmwareProcedure(list.Of(child)));
        for (const SFirmwareStep& step : procedure->steps)
        {
            const bool isKnown = std::any_of(control.files.begin(), control.files.end(),
                                             [&](const SFirmwareFile& file) { return file.name == step.file; });
            if (step.type == EFirmwareUpdateStepType::FileUpload && !isKnown)
            {
                list.Of(child).Throw("the file '" + step.file + "' of a <FileUpload> is not listed in <Files>");
            }
        }
        if (!control.procedures.emplace(procedure->id, procedure).second)
        {
            list.Of(child).Throw("there is more than one procedure '" + procedure->id + "'");
        }
        if (control.procedures.size() > list.Limits().procedures)
        {
            list.ThrowTooMany("procedures", list.Limits().procedures);
        }
    }
}

void ReadCondition(const CFirmwareElement& element, SFirmwareEntry& entry)
{
    element.ExpectOnly({"feature", "matches"}, {});
    entry.conditions.push_back({element.Identifier("feature"), element.Pattern("matches")});
    if (entry.conditions.size() > element.Limits().conditions)
    {
        element.ThrowTooMany("conditions", element.Limits().conditions);
    }
}

/** A version is shown and compared in one line; what form it has is the maker's business. */
bool IsVersionText(const std::string& text, std::size_t maxBytes)
{
    return text.size() <= maxBytes &&
           std::none_of(text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; });
}

void ReadInfo(const CFirmwareElement& element, SFirmwareEntry& entry)
{
    element.ExpectOnly({"key"}, {"Text"});
    const std::string key = element.Identifier("key");
    const FirmwareText text = ReadFirmwareText(element);
    const auto isVersion = [&](const auto& item)
    {
        return IsVersionText(item.second, element.Limits().nameBytes);
    };
    if (key == "Version" && !std::all_of(text.begin(), text.end(), isVersion))
    {
        element.Throw("a version is one line of at most " + std::to_string(element.Limits().nameBytes) + " bytes");
    }
    if (!entry.infos.emplace(key, text).second)
    {
        element.Throw("the information item '" + key + "' is given twice");
    }
    if (entry.infos.size() > element.Limits().infos)
    {
        element.ThrowTooMany("information items", element.Limits().infos);
    }
}

std::string ReadVersionPattern(const CFirmwareElement& element)
{
    element.ExpectOnly({"pattern"}, {});
    const std::string pattern = element.Pattern("pattern");
    if (CFirmwarePattern(pattern).CaptureCount() != 1)
    {
        element.Throw("the pattern must have exactly one group in parentheses, which is the version");
    }
    return pattern;
}

SFirmwareEntry ReadUpdate(const CFirmwareElement& element, const SFirmwareControl& control)
{
    element.ExpectOnly({"id", "procedure"}, {"Condition", "Info", "DeviceVersion"});
    SFirmwareEntry entry;
    entry.id = element.Identifier("id");
    entry.procedure = element.Identifier("procedure");
    if (control.procedures.count(entry.procedure) == 0)
    {
        element.Throw("there is no procedure '" + entry.procedure + "'");
    }
    for (const pugi::xml_node condition : element.Node().children("Condition"))
    {
        ReadCondition(element.Of(condition), entry);
    }
    if (entry.conditions.empty())
    {
        element.Throw("there is no <Condition>; the update would fit every camera");
    }
    for (const pugi::xml_node info : element.Node().children("Info"))
    {
        ReadInfo(element.Of(info), entry);
    }
    if (entry.infos.count("Version") == 0)
    {
        element.Throw("the information item 'Version' is missing");
    }
    if (const pugi::xml_node version = element.OnlyChild("DeviceVersion"))
    {
        entry.versionPattern = ReadVersionPattern(element.Of(version));
    }
    return entry;
}

void ReadUpdates(const CFirmwareElement& list, SFirmwareControl& control)
{
    list.ExpectOnly({}, {"Update"});
    std::set<std::string> ids;
    for (const pugi::xml_node child : list.Node().children())
    {
        control.updates.push_back(ReadUpdate(list.Of(child), control));
        if (!ids.insert(control.updates.back().id).second)
        {
            list.Of(child).Throw("there is more than one update '" + control.updates.back().id + "'");
        }
        if (control.updates.size() > list.Limits().updates)
        {
            list.ThrowTooMany("updates", list.Limits().updates);
        }
    }
    if (control.updates.empty())
    {
        list.Throw("the package holds no update");
    }
}

pugi::xml_node ParseControl(const SFirmwareDocument& document, pugi::xml_document& parsed)
{
    if (!IsUtf8(document.xml))
    {
        GENICAM_THROW(FormatException, document.name + ": it is no UTF-8 text");
    }
    const pugi::xml_parse_result result = parsed.load_buffer(
        document.xml.data(), document.xml.size(), pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8);
    if (!result)
    {
        GENICAM_THROW(FormatException, document.name + ": it is no well-formed XML: " + result.description() +
                                           " at offset " + std::to_string(result.offset));
    }
    for (const pugi::xml_node child : parsed.children())
    {
        if (child.type() == pugi::node_doctype)
        {
            GENICAM_THROW(FormatException, document.name + ": it has a document type, which is refused");
        }
    }
    const pugi::xml_node root = parsed.document_element();
    if (std::strcmp(root.name(), "FirmwarePackage") != 0 || root.next_sibling())
    {
        GENICAM_THROW(FormatException, document.name + ": its one outermost element is not <FirmwarePackage>");
    }
    return root;
}

} // namespace

SFirmwareControl ReadFirmwareControl(const std::string& name, const std::string& xml, const SFirmwareLimits& limits)
{
    const SFirmwareDocument document{name, xml, limits};
    pugi::xml_document parsed;
    const CFirmwareElement root(document, ParseControl(document, parsed));
    root.ExpectOnly({"xmlns", "version"}, {"Files", "Procedures", "Updates"});
    if (root.Text("xmlns", limits.textBytes) != FirmwareNamespace)
    {
        root.Throw("the namespace is not '" + std::string(FirmwareNamespace) + "'");
    }
    if (root.Text("version", limits.nameBytes) != FirmwareVersion)
    {
        root.Throw("the version '" + root.Text("version", limits.nameBytes) + "' of the format is not supported; '" +
                   FirmwareVersion + "' is");
    }
    SFirmwareControl control;
    if (const pugi::xml_node files = root.OnlyChild("Files"))
    {
        ReadFiles(root.Of(files), control);
    }
    for (const char* const needed : {"Procedures", "Updates"})
    {
        if (!root.OnlyChild(needed))
        {
            root.Throw("<" + std::string(needed) + "> is missing");
        }
    }
    ReadProcedures(root.Of(root.OnlyChild("Procedures")), control);
    ReadUpdates(root.Of(root.OnlyChild("Updates")), control);
    return control;
}

} // namespace Internal
} // namespace GenApi
