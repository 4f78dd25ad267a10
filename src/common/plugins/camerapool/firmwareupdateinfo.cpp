// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/firmwareupdateinfo.h"

namespace Plugin::CameraPool
{

CFirmwareUpdateInfo::CFirmwareUpdateInfo(const GenApi::CFirmwareUpdateInfo& info, QObject* parent)
    : IFirmwareUpdateInfo(parent), m_info(info)
{
}

CFirmwareUpdateInfo::~CFirmwareUpdateInfo() = default;

QString CFirmwareUpdateInfo::item(const char* key) const
{
    return QString::fromUtf8(m_info.GetInfo(key, ""));
}

QString CFirmwareUpdateInfo::getVersion() const
{
    return item("Version");
}

QString CFirmwareUpdateInfo::getDescription() const
{
    return item("Description");
}

QString CFirmwareUpdateInfo::getReleaseNotes() const
{
    return item("ReleaseNotes");
}

QString CFirmwareUpdateInfo::getUpdateFilename() const
{
    return QString::fromUtf8(m_info.GetUpdateFilename());
}

} // namespace Plugin::CameraPool
