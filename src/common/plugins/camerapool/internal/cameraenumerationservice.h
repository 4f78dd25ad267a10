// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/internal/cameraenumerationthread.h"
#include "camerapool/internal/camerapool.h"
#include "camerapool/internal/interfacepool.h"

#include <QHash>
#include <QMutex>
#include <QPointer>

class QTimer;

namespace Plugin::CameraPool::Internal
{

/**
 * Has the devices enumerated every ten seconds and on demand, and tells both pools and the host what has changed.
 *
 * Main thread. Whoever hears a signal that comes of a change may call straight back; what such a call changes is
 * announced as soon as the change under way has been.
 */
class CAMERAPOOL_TEST_EXPORT CCameraEnumerationService : public ICameraEnumerationService
{
    Q_OBJECT
public:
    CCameraEnumerationService(QPointer<CCameraPool> cameraPool, QPointer<CInterfacePool> interfacePool,
                              QObject* parent = nullptr);
    ~CCameraEnumerationService() override;

    QVector<TransportLayerInfoPtr> enumerate() override;
    QVector<TransportLayerInfoPtr> enumerate(QString) override;
    QVector<CameraInfoPtr> getOpenCameras() override;
    bool isEnumerationEnabled() const override;
    void triggerEnumeration() override;
    void forceUpdate() override;
    void disableOnce() override;
    void removeDevice(const CameraInfoPtr& info) override;

public slots:
    void setEnumerationEnabled(bool enabled) override;
    void onEnumerationFinished(QVector<TransportLayerInfoPtr> result);

private:
    void setEnabledLocked(bool enabled);
    void forgetDisableOnceLocked();
    bool isSameAsLastLocked(const QVector<TransportLayerInfoPtr>& result) const;
    void storeLocked(const QVector<TransportLayerInfoPtr>& result);
    void notifyEnumerationChanged();
    void announce();

    QPointer<CCameraEnumerationThread> m_thread;
    QTimer* m_pTimer;
    QPointer<CCameraPool> m_cameraPool;
    QPointer<CInterfacePool> m_interfacePool;
    mutable QMutex m_mutex; // guards the members below; not held while pools are told or signals emitted
    bool m_enumerationChanged = false;
    bool m_disableAfterOnePass = false;
    bool m_isAnnouncing = false;
    QVector<TransportLayerInfoPtr> m_lastResult;
    // A record's flag may be cleared by the next pass before the result of the one that set it has arrived here.
    QVector<unsigned int> m_lastChangeCounts;
};

} // namespace Plugin::CameraPool::Internal
