// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"

#include <QMetaType>
#include <QObject>
#include <QSharedPointer>
#include <QString>

namespace Plugin::CameraPool
{

/** One update of a firmware package file. Immutable. Threads: any. */
class CAMERAPOOL_EXPORT IFirmwareUpdateInfo : public QObject
{
    Q_OBJECT
public:
    explicit IFirmwareUpdateInfo(QObject* parent = nullptr);
    ~IFirmwareUpdateInfo() override;

    /** Null texts for what the package does not say. */
    virtual QString getVersion() const = 0;
    virtual QString getDescription() const = 0;
    virtual QString getReleaseNotes() const = 0;
    /** The package file, as it was named when it was read. */
    virtual QString getUpdateFilename() const = 0;
};

} // namespace Plugin::CameraPool
