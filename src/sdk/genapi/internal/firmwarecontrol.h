// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/firmwareupdate.h"

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace GenApi
{
namespace Internal
{

/** A text in several languages; the default one has the language "". Never empty. */
using FirmwareText = std::map<std::string, std::string>;

/** The text of the language, or the default one. */
const std::string& TextOf(const FirmwareText& text, const std::string& language);

/** A payload file as control.xml lists it. */
struct SFirmwareFile
{
    std::string name;
    std::uint64_t bytes = 0;
    std::string sha256; // lower case hexadecimal
};

/** What a feature must be; exactly one kind of comparison is set. */
struct SFirmwareAssertion
{
    std::string feature;
    std::optional<std::string> equals;
    std::optional<std::string> pattern;
    std::optional<double> min;
    std::optional<double> max;
};

enum class EFirmwareVerify
{
    IfReadable, // read back where the device's file can be read
    ReadBack,
    Crc32,
    None
};

/** One step of a procedure; which members count depends on the type. */
struct SFirmwareStep
{
    EFirmwareUpdateStepType type = EFirmwareUpdateStepType::Invalid;
    FirmwareText description; // empty when there is none
    std::optional<std::uint32_t> estimatedTimeMs;
    bool isAfterReset = false; // its feature exists only after a reset
    bool isActivating = false; // from here on the device no longer runs what it ran before

    SFirmwareAssertion assertion; // FeatureWrite and FeatureExecute use its feature
    std::string value;            // FeatureWrite
    std::uint32_t timeoutMs = 0;  // FeatureExecute, FeatureAssert, FileUpload (each operation)
    std::uint32_t pollMs = 0;     // FeatureAssert
    std::string file;             // FileUpload: name in the package
    std::string deviceFile;       // FileUpload: entry of FileSelector
    EFirmwareVerify verify = EFirmwareVerify::IfReadable;
    std::string crcFeature;           // FileUpload with Crc32
    std::uint32_t expectedTimeMs = 0; // DeviceReset
    std::uint32_t waitTimeMs = 0;     // DeviceReset
};

struct SFirmwareProcedure
{
    std::string id;
    std::vector<SFirmwareStep> preconditions; // FeatureAssert only
    std::vector<SFirmwareStep> steps;
};

struct SFirmwareCondition
{
    std::string feature;
    std::string pattern;
};

/** One update of control.xml. */
struct SFirmwareEntry
{
    std::string id;
    std::string procedure;
    std::vector<SFirmwareCondition> conditions;
    std::map<std::string, FirmwareText> infos;
    std::string versionPattern; // empty when there is none
};

/** The content of control.xml. */
struct SFirmwareControl
{
    std::vector<SFirmwareFile> files;
    std::map<std::string, std::shared_ptr<const SFirmwareProcedure>> procedures;
    std::vector<SFirmwareEntry> updates;
};

} // namespace Internal

/** What a CFirmwareUpdateInfo stands for; the payload is read again when the update is applied. */
struct SFirmwareUpdate
{
    std::string fileName;
    std::string packageSha256; // of the whole file as it was when it was read
    Internal::SFirmwareEntry entry;
    std::shared_ptr<const Internal::SFirmwareProcedure> procedure;
    std::map<std::string, Internal::SFirmwareFile> files; // those that the procedure uploads, by name
};

} // namespace GenApi
