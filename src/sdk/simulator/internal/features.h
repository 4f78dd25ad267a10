// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameraconfig.h"
#include "simulator/simulator_testexport.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Simulator::Internal
{

enum class EKind
{
    Integer,
    Float,
    Boolean,
    Enumeration,
    Command,
    Text,
    Bytes // as they are; any part of them can be written
};
enum class EAccess
{
    ReadOnly,
    ReadWrite,
    WriteOnly
};

/** One feature: what the description says of it and where its register is. */
struct SFeature
{
    std::string name;
    std::string category;
    EKind kind = EKind::Integer;
    std::int64_t address = 0;
    std::int64_t bytes = 4;
    EAccess access = EAccess::ReadWrite;
    std::string toolTip;
    std::string unit;
    std::string visibility = "Beginner";
    double min = 0.0;
    double max = 0.0;
    std::int64_t inc = 1;
    bool isSigned = false;                 // of integers
    std::string pMax;                      // node that gives the maximum instead of max
    std::vector<std::string> invalidators; // features whose change changes this one
    std::vector<std::pair<std::string, std::int64_t>> entries;
    bool isLockedWhileGrabbing = false;
    bool isVolatile = false; // changes by itself
    bool isInUserSet = false;
    bool isCustom = false;
    std::string selected;                  // the feature that this one selects
    std::vector<std::string> alsoSelected; // others that it selects
    std::string selector;                  // the feature that selects which of several registers this one is
    std::int64_t selectorAddress = 0;
    std::int64_t banks = 1;    // so many registers in a row, by the selector's value
    std::string lengthFeature; // of Bytes: tells how many of them count now
    std::uint32_t chunkId = 0; // not 0: the value comes in that chunk, and there is no register
    std::uint32_t eventId = 0; // not 0: the value comes with that event, the address counts from the event's begin
};

/** The features of a camera, grouped by category. */
SIMULATOR_TEST_EXPORT std::vector<SFeature> MakeFeatures(const SCameraConfig& config);

} // namespace Simulator::Internal
