// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "camerapool/idevicefirmwareupdate.h"
#include "servicecore/iservice.h"

#include <QVector>

namespace Plugin::CameraPool
{

/** Service: firmware packages, and the updates of cameras from them. Main thread. */
class CAMERAPOOL_EXPORT IDeviceFirmwareUpdateService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit IDeviceFirmwareUpdateService(QObject* parent = nullptr);
    ~IDeviceFirmwareUpdateService() override;

    /**
     * Takes the camera into exclusive use for a job that applies the update. It must be closed. Null when that fails;
     * the record's error string then says so. Never throws.
     */
    virtual QSharedPointer<IDeviceFirmwareUpdate> update(const QSharedPointer<IBaseInfo>& deviceInfo,
                                                         const QSharedPointer<IFirmwareUpdateInfo>& updateInfo) = 0;
    /**
     * Those of the updates that fit the camera, which is opened exclusively for it: if it is open, it is closed, and
     * not opened again.
     *
     * matching: newest version first; updates whose version is no number of two to four parts come last, in the order
     * of updates. sorted: there are some, and all have such a version. Returns false when an update could not be
     * tested; the record's error string says why. Never throws.
     */
    virtual bool getUpdatesMatchingTheDevice(const QSharedPointer<IBaseInfo>& deviceInfo,
                                             const QVector<QSharedPointer<IFirmwareUpdateInfo>>& updates,
                                             QVector<QSharedPointer<IFirmwareUpdateInfo>>& matching, bool& sorted) = 0;
    /**
     * The updates of a package file, in the file's order. filter: empty for all, or what
     * GenApi::CFirmwareUpdater::ReadFirmwareUpdateInfos takes as such.
     *
     * Throws Core::Exception::FileNotFoundException, FileIOException, FormatException (not a package, or a damaged
     * one), ArgumentException and others of Core::Exception, with the reason.
     */
    virtual QVector<QSharedPointer<IFirmwareUpdateInfo>> getUpdates(const QString& fileName, const QString& filter) = 0;
};

} // namespace Plugin::CameraPool
