// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/itransportlayerinfo.h"

#include <QMutex>

#include <atomic>
#include <map>
#include <thread>

namespace Plugin::CameraPool::Internal
{

/** The one kind of transport-layer record. Its lists are written by the enumeration thread and, when a camera is lost,
 *  by the main thread. */
class CAMERAPOOL_TEST_EXPORT CTransportLayerInfo : public ITransportLayerInfo
{
    Q_OBJECT
public:
    CTransportLayerInfo(const QString& deviceClass, const QString& tlType, const QString& friendlyName,
                        const QString& fullName, QObject* parent);
    ~CTransportLayerInfo() override;

    static QSharedPointer<CTransportLayerInfo> fromVelmoTransportLayer(Velmo::CTlInfo info);

    void setCameraInfoList(const CCameraInfoList& list);
    void setInterfaceInfoList(const CInterfaceInfoList& list);
    void setHaveContainedCamerasChanged(bool changed);

    /** Sets the list, and the flag when other record objects stand in it than before or recordsUpdated is true. */
    void replaceCameraInfoList(const CCameraInfoList& list, bool recordsUpdated);
    /** Takes the camera out of the list and sets the flag; false when it was not in it. */
    bool removeCamera(const QSharedPointer<ICameraInfo>& camera);
    /** Counts the times that the flag was set, so that a change is noticed also when the flag was cleared since. */
    unsigned int changeCount() const;
    /** A copy, for whoever must not disturb the reference that getCameraInfoList() gave to the same thread. */
    CCameraInfoList cameraInfoList() const;

    const CCameraInfoList& getCameraInfoList() const override;
    const CInterfaceInfoList& getInterfaceInfoList() const override;
    QString getClass() const override;
    QString getTlType() const override;
    QString getFriendlyName() const override;
    QString getFullName() const override;
    bool haveContainedCamerasChanged() const override;

private:
    const QString m_deviceClass;
    const QString m_tlType;
    const QString m_friendlyName;
    const QString m_fullName;
    std::atomic<bool> m_haveContainedCamerasChanged{false};
    std::atomic<unsigned int> m_changeCount{0};
    mutable QMutex m_mutex; // guards the lists and the views
    CCameraInfoList m_cameraInfoList;
    CInterfaceInfoList m_interfaceInfoList;
    mutable std::map<std::thread::id, CCameraInfoList> m_cameraInfoViews;
    mutable std::map<std::thread::id, CInterfaceInfoList> m_interfaceInfoViews;
};

} // namespace Plugin::CameraPool::Internal
