// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/ibaseinfo.h"
#include "camerapool/idevice.h"

#include <QMutex>
#include <QObject>
#include <QVector>

namespace Plugin::CameraPool::Internal
{

/**
 * One device object per announced record; opens and closes them and tells what changes.
 *
 * Every pool holds one initialisation of the SDK. The active device is one for the whole process.
 * Threads: main. Errors: those of the devices pass through.
 */
class CAMERAPOOL_TEST_EXPORT ADevicePool : public QObject
{
    Q_OBJECT
public:
    explicit ADevicePool(QObject* parent);
    ~ADevicePool() override;

    /** The first device of that interface ID (interfaces) or full name (cameras), or null. */
    virtual QSharedPointer<IDevice> findDevice(QSharedPointer<IBaseInfo> info) const;
    virtual bool openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode);
    /** Opens the active device; false when there is none. */
    virtual bool openDevice(bool monitorMode);
    virtual bool isDeviceOpen(QSharedPointer<IBaseInfo> info) const;
    virtual void closeDevice(QSharedPointer<IDevice> device);
    virtual void closeDevice(QSharedPointer<IBaseInfo> info);
    virtual void closeDevice();
    virtual void announceDevice(QSharedPointer<IBaseInfo> info);
    virtual void announceDevices(QVector<QSharedPointer<IBaseInfo>> infos);
    virtual void beginAnnounce();
    /** Removes the devices that were not announced since beginAnnounce. */
    virtual void endAnnounce();
    /** The existing device, or a new one; null for a record of another kind. */
    virtual QSharedPointer<IDevice> createDevice(QSharedPointer<IBaseInfo> info) = 0;
    virtual bool isDeviceOpenExclusive(QSharedPointer<IBaseInfo> info) const;

    /** Emits nothing. */
    static void setActiveDevice(QSharedPointer<IBaseInfo> info);
    static QSharedPointer<IBaseInfo> getActiveDeviceInfo();

signals:
    void deviceOpening(QSharedPointer<IBaseInfo> info);
    void deviceOpened(QSharedPointer<IBaseInfo> info);
    void deviceClosing(QSharedPointer<IBaseInfo> info);
    void deviceClosed(QSharedPointer<IBaseInfo> info);
    void activeDeviceChanged(QSharedPointer<IBaseInfo> info);
    void deviceDisconnected(QSharedPointer<IBaseInfo> info);
    void deviceConnected(QSharedPointer<IBaseInfo> info);

protected slots:
    void onDeviceOpened();
    void onDeviceClosed();

protected:
    mutable QRecursiveMutex m_mutex;            // guards what the derived pools decide under it
    QVector<QSharedPointer<IDevice>> m_devices; // in order of creation

private:
    QVector<QSharedPointer<IBaseInfo>> m_announced;
    static QSharedPointer<IBaseInfo> m_ptrActiveDevice;
};

} // namespace Plugin::CameraPool::Internal
