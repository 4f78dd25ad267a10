// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/idevicefirmwareupdateservice.h"
#include "camerapool/internal/camerapool.h"
#include "genapi/firmwareupdate.h"

#include <QPointer>

namespace Plugin::CameraPool::Internal
{

/** Keeps nothing of the packages between calls. */
class CAMERAPOOL_TEST_EXPORT CDeviceFirmwareUpdateService : public IDeviceFirmwareUpdateService
{
    Q_OBJECT
public:
    CDeviceFirmwareUpdateService(QPointer<CCameraPool> pool, QObject* parent);
    ~CDeviceFirmwareUpdateService() override;

    QSharedPointer<IDeviceFirmwareUpdate> update(const QSharedPointer<IBaseInfo>& deviceInfo,
                                                 const QSharedPointer<IFirmwareUpdateInfo>& updateInfo) override;
    bool getUpdatesMatchingTheDevice(const QSharedPointer<IBaseInfo>& deviceInfo,
                                     const QVector<QSharedPointer<IFirmwareUpdateInfo>>& updates,
                                     QVector<QSharedPointer<IFirmwareUpdateInfo>>& matching, bool& sorted) override;
    QVector<QSharedPointer<IFirmwareUpdateInfo>> getUpdates(const QString& fileName, const QString& filter) override;

    /** Newest version first; those whose version cannot be compared last, in their order. True when there are some and
     *  all could be compared. Elements that are no CFirmwareUpdateInfo are left out. */
    bool sortFirmwareUpdateInfos(QVector<QSharedPointer<IFirmwareUpdateInfo>>& infos);

protected:
    /** The firmware-update module's reader. */
    virtual void readFirmwareUpdateInfos(const char* fileName, GenApi::IFirmwareUpdateInfoCollector& collector,
                                         const char* filter) const;

private:
    /** Opens, matches and closes the camera; false when an update could not be tested. */
    bool collectMatching(const QSharedPointer<ICameraInfo>& info,
                         const QVector<QSharedPointer<IFirmwareUpdateInfo>>& updates,
                         QVector<QSharedPointer<IFirmwareUpdateInfo>>& matching, QSharedPointer<ICamera>& camera);
    void closeIfOpen(const QSharedPointer<IBaseInfo>& info);
    /** The same, without a throw. An exception leaves a camera open only when it was opened here. */
    void closeAfterFailure(const QSharedPointer<IBaseInfo>& info);

    QPointer<CCameraPool> m_pool;
};

} // namespace Plugin::CameraPool::Internal
