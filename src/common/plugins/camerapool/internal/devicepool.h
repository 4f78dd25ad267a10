// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/ibaseinfo.h"
#include "camerapool/idevice.h"

#include <QHash>
#include <QMutex>
#include <QObject>

#include <QSharedPointer>
#include <QVector>

namespace Plugin::CameraPool::Internal
{

/**
 * Base of the device pools: one device object per announced record, and the active device of the application.
 *
 * Holds one initialization of the SDK. Main thread; the lock is for what derived pools decide under it.
 */
class CAMERAPOOL_TEST_EXPORT ADevicePool : public QObject
{
    Q_OBJECT
public:
    explicit ADevicePool(QObject* parent);
    ~ADevicePool() override;

    /** The first device whose record has the same identity: interface ID or full name; null when there is none. */
    virtual QSharedPointer<IDevice> findDevice(QSharedPointer<IBaseInfo> info) const;
    /** Makes the device when it is not there yet. */
    virtual bool openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode);
    /** The active device; false when there is none. */
    virtual bool openDevice(bool monitorMode);
    virtual bool isDeviceOpen(QSharedPointer<IBaseInfo> info) const;
    virtual void closeDevice(QSharedPointer<IDevice> device);
    virtual void closeDevice(QSharedPointer<IBaseInfo> info);
    /** The active device. */
    virtual void closeDevice();
    virtual void announceDevice(QSharedPointer<IBaseInfo> info);
    virtual void announceDevices(QVector<QSharedPointer<IBaseInfo>> infos);
    virtual void beginAnnounce();
    /** Removes the devices whose records were not announced since beginAnnounce(). A removed device is let go when
     *  control has returned to the event loop, so that a slot called by the device itself may get here. */
    virtual void endAnnounce();
    /** The device that is there already, or a new one; null for a record of another kind. */
    virtual QSharedPointer<IDevice> createDevice(QSharedPointer<IBaseInfo> info) = 0;
    virtual bool isDeviceOpenExclusive(QSharedPointer<IBaseInfo> info) const;

    /** The active device of the application; null: none. */
    static void setActiveDevice(QSharedPointer<IBaseInfo> info);
    static QSharedPointer<IBaseInfo> getActiveDeviceInfo();

signals:
    void deviceOpening(BaseInfoPtr info);
    void deviceOpened(BaseInfoPtr info);
    void deviceClosing(BaseInfoPtr info);
    void deviceClosed(BaseInfoPtr info);
    void activeDeviceChanged(BaseInfoPtr info);
    void deviceDisconnected(BaseInfoPtr info);
    void deviceConnected(BaseInfoPtr info);

protected:
    /** In the order of creation. */
    const QVector<QSharedPointer<IDevice>>& devices() const { return m_devices; }
    void appendDevice(const QSharedPointer<IDevice>& device);
    /** Lets go of all devices; destructors of derived pools call it while their slots can still be called. */
    void releaseDevices();
    /** Has the pool tell when the device is closed and opened; derived pools call it for each device they make. */
    void connectOpenState(const IDevice* pDevice);

    mutable QRecursiveMutex m_mutex; // guards what derived pools decide under it

private slots:
    /** Connected to the signals of the same names of each device. */
    void onDeviceOpened();
    void onDeviceClosed();

private:
    /** Of the first device whose record has the same identity; negative when there is none. */
    int positionByKey(const IBaseInfo* pInfo) const;
    void addToIndex(int position);
    void clearIndex();
    void rebuildIndex();

    QVector<QSharedPointer<IDevice>> m_devices;
    QVector<QSharedPointer<IBaseInfo>> m_announced;
    static QSharedPointer<IBaseInfo> m_ptrActiveDevice;

    // What the search by the record's text leads to, for each device's own record. Keys do not change: another full
    // name or interface ID is another record. No pointer outlives its record, which its device holds.
    QHash<const IBaseInfo*, int> m_recordIndex;
    QHash<QString, int> m_cameraIndex;    // full name to position of the first device
    QHash<QString, int> m_interfaceIndex; // interface ID to position of the first device
    QVector<QSharedPointer<IDevice>> m_removedDevices;
};

} // namespace Plugin::CameraPool::Internal
