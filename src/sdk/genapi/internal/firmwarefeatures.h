// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwareclock.h"
#include "genapi/internal/firmwarecontrol.h"

#include <functional>

namespace GenApi
{
namespace Internal
{

/** Told how much of a step is done, 0 to 100. */
using FirmwareProgress = std::function<void(double percent)>;

/** Whether all conditions hold; a feature that the device does not have does not match. */
bool MatchesConditions(const SFirmwareEntry& entry, INodeMap& nodeMap);

/** Whether the feature is as the assertion says. found receives its value as text. Throws what reading throws. */
bool Holds(const SFirmwareAssertion& assertion, INodeMap& nodeMap, std::string& found);

/** "'Feature' is 'value'", as the assertion wants it. */
std::string Describe(const SFirmwareAssertion& assertion);

/** Looks until the assertion holds or its time is over; a failure to read counts as not held until then. Throws
 *  LogicalErrorException with the step's description and both values, TimeoutException if there was a time to wait. */
void Assert(const SFirmwareStep& step, INodeMap& nodeMap, IFirmwareClock& clock, const FirmwareProgress& progress);

void WriteFeature(const SFirmwareStep& step, INodeMap& nodeMap);

/** Executes and waits until it is done. Throws TimeoutException when it is not in time. */
void ExecuteFeature(const SFirmwareStep& step, INodeMap& nodeMap, IFirmwareClock& clock,
                    const FirmwareProgress& progress);

/** Executes a command and waits until it is done. Throws TimeoutException when it is not in time. */
void ExecuteAndWait(ICommand& command, const std::string& name, std::uint32_t timeoutMs, IFirmwareClock& clock,
                    const FirmwareProgress& progress);

/** Throws LogicalErrorException if the device lacks something that the step needs. Reads and writes nothing. */
void CheckStepFeatures(const SFirmwareStep& step, INodeMap& nodeMap);

} // namespace Internal
} // namespace GenApi
