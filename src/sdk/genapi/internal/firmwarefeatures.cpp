// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarefeatures.h"

#include "genapi/internal/firmwarefile.h"
#include "genapi/internal/firmwarepattern.h"
#include "genapi/internal/textparse.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::int64_t CommandPollMs = 20;

/** The feature as one of its interfaces. */
template <class T> T& Feature(INodeMap& nodeMap, const std::string& name, const char* kind)
{
    INode* const node = nodeMap.GetNode(name);
    if (!IsImplemented(node))
    {
        GENICAM_THROW(LogicalErrorException, "The camera has no feature '" + name + "', which the update needs");
    }
    T* const typed = dynamic_cast<T*>(node);
    if (typed == nullptr)
    {
        GENICAM_THROW(LogicalErrorException,
                      "The camera's feature '" + name + "' is no " + kind + ", which the update needs");
    }
    return *typed;
}

bool IsNumberOf(INode* node, double& value)
{
    if (auto* const integer = dynamic_cast<IInteger*>(node))
    {
        value = static_cast<double>(integer->GetValue(false, true));
        return true;
    }
    if (auto* const real = dynamic_cast<IFloat*>(node))
    {
        value = real->GetValue(false, true);
        return true;
    }
    return false;
}

bool Equals(INode* node, const std::string& expected, const std::string& found)
{
    std::int64_t wholeNumber = 0;
    auto* const integer = dynamic_cast<IInteger*>(node);
    if (integer != nullptr && ParseInteger(expected, wholeNumber))
    {
        return integer->GetValue(false, true) == wholeNumber;
    }
    double number = 0;
    auto* const real = dynamic_cast<IFloat*>(node);
    if (real != nullptr && ParseFloat(expected, number))
    {
        return real->GetValue(false, true) == number;
    }
    return found == expected;
}

} // namespace

bool MatchesConditions(const SFirmwareEntry& entry, INodeMap& nodeMap)
{
    return std::all_of(entry.conditions.begin(), entry.conditions.end(),
                       [&](const SFirmwareCondition& condition)
                       {
                           INode* const node = nodeMap.GetNode(condition.feature);
                           auto* const value = dynamic_cast<IValue*>(node);
                           return value != nullptr && IsImplemented(node) &&
                                  CFirmwarePattern(condition.pattern).MatchesWhole(value->ToString(false, true).str());
                       });
}

bool Holds(const SFirmwareAssertion& assertion, INodeMap& nodeMap, std::string& found)
{
    IValue& value = Feature<IValue>(nodeMap, assertion.feature, "value");
    INode* const node = nodeMap.GetNode(assertion.feature);
    found = value.ToString(false, true).str();
    if (assertion.equals)
    {
        return Equals(node, *assertion.equals, found);
    }
    if (assertion.pattern)
    {
        return CFirmwarePattern(*assertion.pattern).MatchesWhole(found);
    }
    double number = 0;
    if (!IsNumberOf(node, number))
    {
        GENICAM_THROW(LogicalErrorException,
                      "The camera's feature '" + assertion.feature + "' is no number, which the update needs");
    }
    return (!assertion.min || number >= *assertion.min) && (!assertion.max || number <= *assertion.max);
}

std::string Describe(const SFirmwareAssertion& assertion)
{
    const std::string feature = "'" + assertion.feature + "' ";
    if (assertion.equals)
    {
        return feature + "is to be '" + *assertion.equals + "'";
    }
    if (assertion.pattern)
    {
        return feature + "is to match '" + *assertion.pattern + "'";
    }
    const auto show = [](double value)
    {
        return FormatFloat(value, EDisplayNotation::Automatic, -1);
    };
    return feature + "is to be" + (assertion.min ? " at least " + show(*assertion.min) : "") +
           (assertion.min && assertion.max ? " and" : "") + (assertion.max ? " at most " + show(*assertion.max) : "");
}

void Assert(const SFirmwareStep& step, INodeMap& nodeMap, IFirmwareClock& clock, const FirmwareProgress& progress)
{
    const std::int64_t begin = clock.NowMs();
    for (;;)
    {
        std::string found;
        std::string failure;
        try
        {
            if (Holds(step.assertion, nodeMap, found))
            {
                return;
            }
        }
        catch (const GenICam::GenericException& e)
        {
            failure = e.GetDescription();
        }
        const std::int64_t passed = clock.NowMs() - begin;
        if (passed >= step.timeoutMs)
        {
            const std::string text =
                (step.description.empty() ? "" : TextOf(step.description, "") + ": ") +
                "The camera does not fulfil what the update asks for: " + Describe(step.assertion) +
                (failure.empty() ? "; it is '" + found + "'" : "; it cannot be read: " + failure);
            if (step.timeoutMs > 0)
            {
                GENICAM_THROW(TimeoutException, text + ", after " + std::to_string(passed) + " ms");
            }
            GENICAM_THROW(LogicalErrorException, text);
        }
        progress(100.0 * static_cast<double>(passed) / step.timeoutMs);
        clock.PassMs(std::min<std::int64_t>(step.pollMs, step.timeoutMs - passed));
    }
}

void WriteFeature(const SFirmwareStep& step, INodeMap& nodeMap)
{
    Feature<IValue>(nodeMap, step.assertion.feature, "value").FromString(step.value);
}

void ExecuteAndWait(ICommand& command, const std::string& name, std::uint32_t timeoutMs, IFirmwareClock& clock,
                    const FirmwareProgress& progress)
{
    const std::int64_t begin = clock.NowMs();
    command.Execute();
    while (!command.IsDone())
    {
        const std::int64_t passed = clock.NowMs() - begin;
        if (passed >= timeoutMs)
        {
            GENICAM_THROW(TimeoutException, "The camera has not finished the command '" + name + "' after " +
                                                std::to_string(passed) + " ms");
        }
        progress(100.0 * static_cast<double>(passed) / timeoutMs);
        clock.PassMs(std::min<std::int64_t>(CommandPollMs, timeoutMs - passed));
    }
}

void ExecuteFeature(const SFirmwareStep& step, INodeMap& nodeMap, IFirmwareClock& clock,
                    const FirmwareProgress& progress)
{
    ExecuteAndWait(Feature<ICommand>(nodeMap, step.assertion.feature, "command"), step.assertion.feature,
                   step.timeoutMs, clock, progress);
}

void CheckStepFeatures(const SFirmwareStep& step, INodeMap& nodeMap)
{
    switch (step.type)
    {
    case EFirmwareUpdateStepType::FeatureWrite:
    {
        Feature<IValue>(nodeMap, step.assertion.feature, "value");
        INode* const node = nodeMap.GetNode(step.assertion.feature);
        if (dynamic_cast<ICommand*>(node) != nullptr)
        {
            GENICAM_THROW(LogicalErrorException, "The camera's feature '" + step.assertion.feature +
                                                     "' is a command; the update wants to write it");
        }
        auto* const choice = dynamic_cast<IEnumeration*>(node);
        if (choice != nullptr && !IsImplemented(choice->GetEntryByName(step.value)))
        {
            GENICAM_THROW(LogicalErrorException, "The camera's feature '" + step.assertion.feature +
                                                     "' has no entry '" + step.value + "', which the update needs");
        }
        break;
    }
    case EFirmwareUpdateStepType::FeatureExecute:
        Feature<ICommand>(nodeMap, step.assertion.feature, "command");
        break;
    case EFirmwareUpdateStepType::FeatureAssert:
        Feature<IValue>(nodeMap, step.assertion.feature, "value");
        break;
    case EFirmwareUpdateStepType::FileUpload:
        CheckDeviceFile(step, nodeMap);
        break;
    default:
        break;
    }
}

} // namespace Internal
} // namespace GenApi
