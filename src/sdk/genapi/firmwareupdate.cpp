// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/firmwareupdate.h"

#include "genapi/internal/firmwarefeatures.h"
#include "genapi/internal/firmwarepackage.h"
#include "genapi/internal/firmwarepattern.h"
#include "genapi/internal/firmwarerun.h"

#include <utility>

namespace GenApi
{

// Destructors are defined here so that each interface's run-time information exists once in the process.
IFirmwareUpdateInfoCollector::~IFirmwareUpdateInfoCollector() = default;
IFirmwareUpdateProgressObserver::~IFirmwareUpdateProgressObserver() = default;
IFirmwareUpdatableDevice::~IFirmwareUpdatableDevice() = default;

CFirmwareUpdateInfo::CFirmwareUpdateInfo() = default;

CFirmwareUpdateInfo::CFirmwareUpdateInfo(std::shared_ptr<const SFirmwareUpdate> update) : m_update(std::move(update)) {}

bool CFirmwareUpdateInfo::IsValid() const
{
    return m_update != nullptr;
}

const char* CFirmwareUpdateInfo::GetUpdateFilename() const
{
    return IsValid() ? m_update->fileName.c_str() : "";
}

const char* CFirmwareUpdateInfo::GetInfo(const char* key, const char* language) const
{
    if (!IsValid() || key == nullptr)
    {
        return nullptr;
    }
    const auto found = m_update->entry.infos.find(key);
    return found == m_update->entry.infos.end()
               ? nullptr
               : Internal::TextOf(found->second, language == nullptr ? "" : language).c_str();
}

GenICam::gcstring
CFirmwareUpdateInfo::ExtractVersionFromDeviceFirmwareVersion(const GenICam::gcstring& deviceFirmwareVersion) const
{
    if (!IsValid())
    {
        GENICAM_THROW(InvalidArgumentException,
                      "No version can be taken from the camera's version text: the update info is not valid");
    }
    const std::string& pattern = m_update->entry.versionPattern;
    if (pattern.empty())
    {
        return deviceFirmwareVersion;
    }
    std::string version;
    if (!Internal::CFirmwarePattern(pattern).CaptureWhole(deviceFirmwareVersion.str(), version))
    {
        GENICAM_THROW(InvalidArgumentException, "The camera's version text '" + deviceFirmwareVersion.str() +
                                                    "' does not match the pattern '" + pattern + "' of the update '" +
                                                    m_update->entry.id + "'");
    }
    return version;
}

void CFirmwareUpdater::ReadFirmwareUpdateInfos(const char* fileName, IFirmwareUpdateInfoCollector& collector,
                                               const char* filter) const
{
    const Internal::SFirmwareLimits limits;
    const std::unique_ptr<Internal::CFirmwarePattern> wanted(
        filter == nullptr ? nullptr : std::make_unique<Internal::CFirmwarePattern>(filter));
    const std::string name = fileName == nullptr ? "" : fileName;
    const auto updates = Internal::MakeFirmwareUpdates(
        name, Internal::ReadFirmwarePackage(name, Internal::LoadFirmwareFile(name, limits), limits));
    for (const auto& update : updates)
    {
        if ((wanted == nullptr || wanted->MatchesWhole(update->entry.id)) &&
            !collector.OnUpdateRead(CFirmwareUpdateInfo(update)))
        {
            return;
        }
    }
}

bool CFirmwareUpdater::MatchesDevice(const CFirmwareUpdateInfo& updateInfo, INodeMap& nodeMap) const
{
    if (!updateInfo.IsValid())
    {
        GENICAM_THROW(InvalidArgumentException,
                      "It cannot be told whether the update fits the camera: the update info is not valid");
    }
    return Internal::MatchesConditions(updateInfo.GetUpdate()->entry, nodeMap);
}

void CFirmwareUpdater::ApplyUpdate(const CFirmwareUpdateInfo& updateInfo, IFirmwareUpdatableDevice& device,
                                   IFirmwareUpdateProgressObserver* observer) const
{
    Internal::CFirmwareClock clock;
    Internal::RunFirmwareUpdate(updateInfo, device, observer, clock, Internal::SFirmwareLimits());
}

} // namespace GenApi
