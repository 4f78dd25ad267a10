// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarepackage.h"

#include "genapi/internal/firmwarearchive.h"
#include "genapi/internal/firmwarechecksum.h"
#include "genapi/internal/firmwarecontrolreader.h"
#include "genapi/internal/firmwarefileio.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{
namespace
{

std::string ExtractInner(const std::string& title, std::string_view bytes, const SFirmwareLimits& limits)
{
    const CFirmwareArchive outer(title, bytes, limits);
    if (!outer.Has(FirmwareInnerName))
    {
        outer.Throw("it holds no 'package.zip'; it is no firmware package");
    }
    if (outer.Entries().size() != 1)
    {
        outer.Throw("it holds files beside 'package.zip'");
    }
    return outer.Extract(FirmwareInnerName, limits.innerBytes);
}

std::string ExtractPayload(const CFirmwareArchive& archive, const SFirmwareFile& file)
{
    const auto found = std::find_if(archive.Entries().begin(), archive.Entries().end(),
                                    [&](const CFirmwareArchive::SEntry& entry) { return entry.name == file.name; });
    if (found == archive.Entries().end())
    {
        archive.Throw("the file '" + file.name + "' is missing, although control.xml lists it");
    }
    const auto throwSize = [&](std::uint64_t bytes)
    {
        archive.Throw("the file '" + file.name + "' has " + std::to_string(bytes) + " bytes; control.xml says " +
                      std::to_string(file.bytes));
    };
    if (found->bytes != file.bytes)
    {
        throwSize(found->bytes);
    }
    std::string bytes = archive.Extract(file.name, static_cast<std::size_t>(file.bytes));
    if (bytes.size() != file.bytes)
    {
        throwSize(bytes.size());
    }
    if (Sha256(bytes) != file.sha256)
    {
        archive.Throw("the file '" + file.name +
                      "' is damaged or was exchanged: its SHA-256 checksum is not the one in "
                      "control.xml");
    }
    return bytes;
}

/** Nothing is in the archive that control.xml does not answer for. */
void CheckAllListed(const CFirmwareArchive& archive, const SFirmwareControl& control)
{
    for (const CFirmwareArchive::SEntry& entry : archive.Entries())
    {
        const bool isListed = std::any_of(control.files.begin(), control.files.end(),
                                          [&](const SFirmwareFile& file) { return file.name == entry.name; });
        if (!isListed && entry.name != FirmwareControlName)
        {
            archive.Throw("the file '" + entry.name + "' is not listed in control.xml");
        }
    }
}

} // namespace

const std::string& TextOf(const FirmwareText& text, const std::string& language)
{
    const auto found = text.find(language);
    return found == text.end() ? text.at("") : found->second;
}

SFirmwarePackage ReadFirmwarePackage(const std::string& fileName, std::string_view bytes, const SFirmwareLimits& limits)
{
    const std::string title = "The firmware package '" + fileName + "'";
    if (bytes.size() > limits.packageBytes)
    {
        GENICAM_THROW(OutOfRangeException, title + " is larger than " + std::to_string(limits.packageBytes) + " bytes");
    }
    const std::string inner = ExtractInner(title, bytes, limits);
    const CFirmwareArchive archive(title + ", package.zip", inner, limits);
    if (!archive.Has(FirmwareControlName))
    {
        archive.Throw("the file 'control.xml' is missing");
    }
    SFirmwarePackage package;
    package.sha256 = Sha256(bytes);
    package.control =
        ReadFirmwareControl(title + ", control.xml", archive.Extract(FirmwareControlName, limits.controlBytes), limits);
    CheckAllListed(archive, package.control);
    for (const SFirmwareFile& file : package.control.files)
    {
        package.payload[file.name] = ExtractPayload(archive, file);
    }
    return package;
}

std::string LoadFirmwareFile(const std::string& fileName, const SFirmwareLimits& limits)
{
    if (fileName.empty())
    {
        GENICAM_THROW(InvalidArgumentException, "No file name of a firmware package was given");
    }
    return LoadWholeFile("The firmware package '" + fileName + "'", fileName, limits.packageBytes);
}

std::vector<std::shared_ptr<const SFirmwareUpdate>> MakeFirmwareUpdates(const std::string& fileName,
                                                                        const SFirmwarePackage& package)
{
    std::vector<std::shared_ptr<const SFirmwareUpdate>> updates;
    for (const SFirmwareEntry& entry : package.control.updates)
    {
        auto update = std::make_shared<SFirmwareUpdate>();
        update->fileName = fileName;
        update->packageSha256 = package.sha256;
        update->entry = entry;
        update->procedure = package.control.procedures.at(entry.procedure);
        for (const SFirmwareFile& file : package.control.files)
        {
            update->files[file.name] = file;
        }
        updates.push_back(update);
    }
    return updates;
}

} // namespace Internal
} // namespace GenApi
