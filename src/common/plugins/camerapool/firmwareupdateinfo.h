// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ifirmwareupdateinfo.h"
#include "genapi/firmwareupdate.h"

namespace Plugin::CameraPool
{

/** The one kind of firmware update: an entry of a package as the firmware-update module read it. */
class CAMERAPOOL_EXPORT CFirmwareUpdateInfo : public IFirmwareUpdateInfo
{
    Q_OBJECT
public:
    CFirmwareUpdateInfo(const GenApi::CFirmwareUpdateInfo& info, QObject* parent);
    ~CFirmwareUpdateInfo() override;

    QString getVersion() const override;
    QString getDescription() const override;
    QString getReleaseNotes() const override;
    QString getUpdateFilename() const override;

    /** Lives as long as this object. */
    const GenApi::CFirmwareUpdateInfo& getGenApiFirmwareUpdateInfo() const { return m_info; }

private:
    QString item(const char* key) const;

    GenApi::CFirmwareUpdateInfo m_info;
};

} // namespace Plugin::CameraPool
