// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarestepreader.h"

#include <algorithm>
#include <map>

namespace GenApi
{
namespace Internal
{
namespace
{

// What holds where a step states no time, in milliseconds.
constexpr std::uint32_t DefaultExecuteTimeoutMs = 10000;
constexpr std::uint32_t DefaultFileTimeoutMs = 30000;
constexpr std::uint32_t DefaultPollMs = 200;
constexpr std::uint32_t MinPollMs = 10;
constexpr std::uint32_t DefaultResetMs = 30000;

bool IsLanguage(const std::string& text)
{
    return text.size() == 2 && std::all_of(text.begin(), text.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

void ReadWrite(const CFirmwareElement& element, SFirmwareStep& step)
{
    element.ExpectOnly({"feature", "value", "afterReset", "activates", "estimatedTimeMs"}, {"Description"});
    step.assertion.feature = element.Identifier("feature");
    step.value = element.Text("value", element.Limits().textBytes);
}

void ReadExecute(const CFirmwareElement& element, SFirmwareStep& step)
{
    element.ExpectOnly({"feature", "timeoutMs", "afterReset", "activates", "estimatedTimeMs"}, {"Description"});
    step.assertion.feature = element.Identifier("feature");
    step.timeoutMs = element.Milliseconds("timeoutMs", DefaultExecuteTimeoutMs);
}

void ReadAssert(const CFirmwareElement& element, SFirmwareStep& step)
{
    element.ExpectOnly({"feature", "equals", "matches", "min", "max", "timeoutMs", "pollMs", "afterReset", "activates",
                        "estimatedTimeMs"},
                       {"Description"});
    SFirmwareAssertion& assertion = step.assertion;
    assertion.feature = element.Identifier("feature");
    if (element.Has("equals"))
    {
        assertion.equals = element.Text("equals", element.Limits().textBytes);
    }
    if (element.Has("matches"))
    {
        assertion.pattern = element.Pattern("matches");
    }
    assertion.min = element.Number("min");
    assertion.max = element.Number("max");
    const int kinds =
        (assertion.equals ? 1 : 0) + (assertion.pattern ? 1 : 0) + (assertion.min || assertion.max ? 1 : 0);
    if (kinds != 1)
    {
        element.Throw("exactly one of 'equals', 'matches' and 'min' with or without 'max' is needed");
    }
    if (assertion.min && assertion.max && *assertion.min > *assertion.max)
    {
        element.Throw("'min' is above 'max'");
    }
    step.timeoutMs = element.Milliseconds("timeoutMs", 0);
    step.pollMs = std::max(element.Milliseconds("pollMs", DefaultPollMs), MinPollMs);
}

void ReadUpload(const CFirmwareElement& element, SFirmwareStep& step)
{
    static const std::map<std::string, EFirmwareVerify> Kinds = {{"ifReadable", EFirmwareVerify::IfReadable},
                                                                 {"readBack", EFirmwareVerify::ReadBack},
                                                                 {"crc32", EFirmwareVerify::Crc32},
                                                                 {"none", EFirmwareVerify::None}};
    element.ExpectOnly(
        {"file", "deviceFile", "verify", "crcFeature", "timeoutMs", "afterReset", "activates", "estimatedTimeMs"},
        {"Description"});
    step.file = element.Identifier("file");
    step.deviceFile = element.Identifier("deviceFile");
    step.timeoutMs = element.Milliseconds("timeoutMs", DefaultFileTimeoutMs);
    if (element.Has("verify"))
    {
        const auto kind = Kinds.find(element.Identifier("verify"));
        if (kind == Kinds.end())
        {
            element.Throw("the attribute 'verify' is none of 'ifReadable', 'readBack', 'crc32' and 'none'");
        }
        step.verify = kind->second;
    }
    if (element.Has("crcFeature") != (step.verify == EFirmwareVerify::Crc32))
    {
        element.Throw("'crcFeature' and verify='crc32' need each other");
    }
    if (step.verify == EFirmwareVerify::Crc32)
    {
        step.crcFeature = element.Identifier("crcFeature");
    }
}

void ReadReset(const CFirmwareElement& element, SFirmwareStep& step)
{
    element.ExpectOnly({"expectedTimeMs", "waitTimeMs", "activates", "estimatedTimeMs"}, {"Description"});
    step.expectedTimeMs = element.Milliseconds("expectedTimeMs", DefaultResetMs);
    step.waitTimeMs = element.Milliseconds("waitTimeMs", 0);
}

SFirmwareStep ReadStep(const CFirmwareElement& element)
{
    struct SKind
    {
        EFirmwareUpdateStepType type;
        void (*read)(const CFirmwareElement&, SFirmwareStep&);
    };
    static const std::map<std::string, SKind> Kinds = {
        {"FeatureWrite", {EFirmwareUpdateStepType::FeatureWrite, ReadWrite}},
        {"FeatureExecute", {EFirmwareUpdateStepType::FeatureExecute, ReadExecute}},
        {"FeatureAssert", {EFirmwareUpdateStepType::FeatureAssert, ReadAssert}},
        {"FileUpload", {EFirmwareUpdateStepType::FileUpload, ReadUpload}},
        {"DeviceReset", {EFirmwareUpdateStepType::DeviceReset, ReadReset}}};
    const auto kind = Kinds.find(element.Name());
    if (kind == Kinds.end())
    {
        element.Throw("this kind of step is not known");
    }
    SFirmwareStep step;
    step.type = kind->second.type;
    kind->second.read(element, step);
    step.isAfterReset = element.Flag("afterReset");
    step.isActivating = element.Flag("activates");
    if (element.Has("estimatedTimeMs"))
    {
        step.estimatedTimeMs = element.Milliseconds("estimatedTimeMs", 0);
    }
    if (const pugi::xml_node description = element.OnlyChild("Description"))
    {
        element.Of(description).ExpectOnly({}, {"Text"});
        step.description = ReadFirmwareText(element.Of(description));
    }
    return step;
}

std::vector<SFirmwareStep> ReadSteps(const CFirmwareElement& list, std::size_t limit)
{
    list.ExpectOnly({}, {"FeatureWrite", "FeatureExecute", "FeatureAssert", "FileUpload", "DeviceReset"});
    std::vector<SFirmwareStep> steps;
    bool hasReset = false;
    for (const pugi::xml_node child : list.Node().children())
    {
        if (steps.size() == limit)
        {
            list.ThrowTooMany("steps", limit);
        }
        steps.push_back(ReadStep(list.Of(child)));
        if (steps.back().isAfterReset && !hasReset)
        {
            list.Of(child).Throw("'afterReset' is set, but no <DeviceReset> comes before");
        }
        hasReset = hasReset || steps.back().type == EFirmwareUpdateStepType::DeviceReset;
    }
    return steps;
}

/** They are looked at before the first step: nothing is shown of them but a failure, and nothing is activated. */
std::vector<SFirmwareStep> ReadPreconditions(const CFirmwareElement& list)
{
    list.ExpectOnly({}, {"FeatureAssert"});
    for (const pugi::xml_node child : list.Node().children())
    {
        for (const char* const attribute : {"activates", "estimatedTimeMs"})
        {
            if (list.Of(child).Has(attribute))
            {
                list.Of(child).Throw(std::string("the attribute '") + attribute +
                                     "' is for steps; a precondition has none");
            }
        }
    }
    return ReadSteps(list, list.Limits().conditions);
}

} // namespace

FirmwareText ReadFirmwareText(const CFirmwareElement& element)
{
    FirmwareText text;
    std::string first;
    for (const pugi::xml_node child : element.Node().children("Text"))
    {
        const CFirmwareElement one = element.Of(child);
        const std::string content = one.ExpectText({"language"});
        const std::string language = one.Has("language") ? one.Text("language", element.Limits().nameBytes) : "";
        if (one.Has("language") && !IsLanguage(language))
        {
            one.Throw("the language is no two-letter code of ISO 639-1");
        }
        if (!text.emplace(language, content).second)
        {
            one.Throw(language.empty() ? "there is more than one text without a language"
                                       : "there is more than one text in the language '" + language + "'");
        }
        if (text.size() > element.Limits().languages)
        {
            element.ThrowTooMany("languages", element.Limits().languages);
        }
        first = first.empty() ? content : first;
    }
    if (text.empty())
    {
        element.Throw("there is no <Text>");
    }
    text.emplace("", first);
    return text;
}

SFirmwareProcedure ReadFirmwareProcedure(const CFirmwareElement& element)
{
    element.ExpectOnly({"id"}, {"Preconditions", "Steps"});
    SFirmwareProcedure procedure;
    procedure.id = element.Identifier("id");
    if (const pugi::xml_node list = element.OnlyChild("Preconditions"))
    {
        procedure.preconditions = ReadPreconditions(element.Of(list));
    }
    const pugi::xml_node steps = element.OnlyChild("Steps");
    if (!steps || !steps.first_child())
    {
        element.Throw("the procedure '" + procedure.id + "' has no steps");
    }
    procedure.steps = ReadSteps(element.Of(steps), element.Limits().steps);
    return procedure;
}

} // namespace Internal
} // namespace GenApi
