// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camerapool.h"

#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/tlhandle.h"
#include "genapi/exceptions.h"
#include "utils/exceptions.h"
#include "velmo/tlfactory.h"

#include <QCoreApplication>
#include <QMutexLocker>

#include <memory>

namespace Plugin::CameraPool::Internal
{

using Core::Exception::BaseException;
using Lock = QMutexLocker;

CCameraPool::CCameraPool(QObject* parent) : ADevicePool(parent)
{
    qRegisterMetaType<CameraInfoPtr>("Plugin::CameraPool::CameraInfoPtr");
    qRegisterMetaType<CameraInfoPtr>("CameraInfoPtr");
    qRegisterMetaType<CCompressionStatistic>("CCompressionStatistic");
    qRegisterMetaType<uint64_t>("uint64_t");
}

CCameraPool::~CCameraPool()
{
    // Cameras signal to the pool while they close, so they go while this is still a camera pool, and before the base
    // ends its use of the SDK.
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    m_lockedCameras.clear();
    releaseDevices();
    const auto stillHeld = findChildren<ICamera*>(QString(), Qt::FindDirectChildrenOnly);
    for (ICamera* pCamera : stillHeld)
    {
        pCamera->close();
        pCamera->setParent(nullptr);
    }
}

QSharedPointer<IDevice> CCameraPool::createDevice(QSharedPointer<IBaseInfo> info)
{
    const auto known = findDevice(info);
    if (!known.isNull())
    {
        return known;
    }
    const auto cameraInfo = qSharedPointerObjectCast<ICameraInfo>(info);
    if (cameraInfo.isNull())
    {
        return {};
    }
    const QSharedPointer<CCamera> camera(new CCamera(cameraInfo, this));
    camera->initialize();
    appendDevice(camera);
    connectRelays(camera.data());
    return camera;
}

bool CCameraPool::openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode)
{
    const Lock lock(&m_mutex);
    const auto cameraInfo = qSharedPointerObjectCast<ICameraInfo>(info);
    if (cameraInfo.isNull() || isCameraOpenExclusive(cameraInfo))
    {
        return false;
    }
    emit deviceOpening(info);
    return ADevicePool::openDevice(info, monitorMode);
}

void CCameraPool::closeDevice(QSharedPointer<IDevice> device)
{
    const auto camera = qSharedPointerObjectCast<ICamera>(device);
    if (!camera.isNull())
    {
        closeDevice(qSharedPointerObjectCast<IBaseInfo>(camera->getInfo()));
    }
}

void CCameraPool::closeDevice(QSharedPointer<IBaseInfo> info)
{
    const auto cameraInfo = qSharedPointerObjectCast<ICameraInfo>(info);
    if (cameraInfo.isNull())
    {
        return;
    }
    emit deviceClosing(cameraInfo);
    const auto device = findDevice(cameraInfo);
    const auto camera = qSharedPointerObjectCast<ICamera>(device);
    if (!camera.isNull() && isLocked(camera))
    {
        unlock(camera);
    }
    ADevicePool::closeDevice(device);
}

bool CCameraPool::isDeviceOpenExclusive(QSharedPointer<IBaseInfo> info) const
{
    return isCameraOpenExclusive(qSharedPointerObjectCast<ICameraInfo>(info));
}

bool CCameraPool::isCameraOpenExclusive(QSharedPointer<ICameraInfo> info) const
{
    const Lock lock(&m_mutex);
    const auto camera = findCamera(info);
    return !camera.isNull() && m_lockedCameras.contains(camera);
}

bool CCameraPool::isCameraGrabbing(QSharedPointer<ICameraInfo> info)
{
    const Lock lock(&m_mutex);
    const auto camera = findCamera(info);
    return !camera.isNull() && camera->isGrabbing();
}

QSharedPointer<ICamera> CCameraPool::tryLock(QSharedPointer<ICameraInfo> info)
{
    const Lock lock(&m_mutex);
    const auto camera = findCamera(info);
    if (camera.isNull() || !isDeviceOpen(info) || isLocked(camera) || camera->isMonitorModeActive())
    {
        return {};
    }
    disconnectRelays(camera.data());
    m_lockedCameras.append(camera);
    emit cameraDetached(qSharedPointerObjectCast<ICameraInfo>(camera->getInfo()));
    return camera;
}

QSharedPointer<ICamera> CCameraPool::openCameraExclusive(QSharedPointer<ICameraInfo> info)
{
    const Lock lock(&m_mutex);
    if (isDeviceOpen(info))
    {
        return {};
    }
    const auto camera = qSharedPointerObjectCast<ICamera>(createDevice(info));
    if (camera.isNull() || !camera->open(false))
    {
        return {};
    }
    return tryLock(info);
}

bool CCameraPool::unlock(QSharedPointer<ICamera> camera)
{
    const Lock lock(&m_mutex);
    if (camera.isNull())
    {
        return false;
    }
    const auto info = qSharedPointerObjectCast<ICameraInfo>(camera->getInfo());
    if (!isLocked(camera) || !isCameraOpenExclusive(info))
    {
        // A camera that left the enumeration while it was locked is no pool's camera any more.
        if (findCamera(info) != camera)
        {
            m_lockedCameras.removeAll(camera);
        }
        return false;
    }
    connectRelays(camera.data());
    m_lockedCameras.removeAll(camera);
    emit cameraAttached(info);
    return true;
}

bool CCameraPool::isLocked(const QSharedPointer<ICamera>& camera) const
{
    const Lock lock(&m_mutex);
    return m_lockedCameras.contains(camera);
}

QSharedPointer<ICamera> CCameraPool::findCamera(const QSharedPointer<ICameraInfo>& info) const
{
    return info.isNull() ? QSharedPointer<ICamera>() : qSharedPointerObjectCast<ICamera>(findDevice(info));
}

QSharedPointer<ICamera> CCameraPool::findUnlockedCamera(const QSharedPointer<ICameraInfo>& info) const
{
    const auto camera = findCamera(info);
    return camera.isNull() || isLocked(camera) ? QSharedPointer<ICamera>() : camera;
}

void CCameraPool::stopGrabbingAll()
{
    // What stopping signals may change the list.
    const auto all = devices();
    for (const auto& device : all)
    {
        const auto camera = qSharedPointerObjectCast<ICamera>(device);
        if (!camera.isNull() && camera->isGrabbing() && !isLocked(camera))
        {
            camera->stopGrabbing();
        }
    }
}

QVector<QSharedPointer<ICameraInfo>> CCameraPool::getOpenCameras() const
{
    QVector<QSharedPointer<ICameraInfo>> result;
    for (const auto& device : devices())
    {
        const auto camera = qSharedPointerObjectCast<ICamera>(device);
        if (!camera.isNull() && camera->isOpen() && !isLocked(camera))
        {
            result.append(qSharedPointerObjectCast<ICameraInfo>(camera->getInfo()));
        }
    }
    return result;
}

int CCameraPool::getCountGrabbing() const
{
    int count = 0;
    for (const auto& device : devices())
    {
        const auto camera = qSharedPointerObjectCast<ICamera>(device);
        if (!camera.isNull() && camera->isGrabbing() && !isLocked(camera))
        {
            ++count;
        }
    }
    return count;
}

void CCameraPool::startGrabbing(QSharedPointer<ICameraInfo> info)
{
    const auto camera = findUnlockedCamera(info);
    if (!camera.isNull())
    {
        camera->startGrabbing();
    }
}

void CCameraPool::stopGrabbing(QSharedPointer<ICameraInfo> info)
{
    const auto camera = findUnlockedCamera(info);
    if (!camera.isNull())
    {
        camera->stopGrabbing();
    }
}

void CCameraPool::singleShot(QSharedPointer<ICameraInfo> info, unsigned int timeout)
{
    const auto camera = findUnlockedCamera(info);
    if (!camera.isNull())
    {
        camera->singleShot(timeout);
    }
}

void CCameraPool::startGrabbing()
{
    startGrabbing(qSharedPointerObjectCast<ICameraInfo>(getActiveDeviceInfo()));
}

void CCameraPool::stopGrabbing()
{
    stopGrabbing(qSharedPointerObjectCast<ICameraInfo>(getActiveDeviceInfo()));
}

void CCameraPool::singleShot(unsigned int timeout)
{
    singleShot(qSharedPointerObjectCast<ICameraInfo>(getActiveDeviceInfo()), timeout);
}

void CCameraPool::addRemoteGigECamera(const QString& ipAddress)
{
    try
    {
        const TlHandle tl(Velmo::CTlFactory::GetInstance().CreateTl("KorvelGigE"));
        auto* pGigE = dynamic_cast<Velmo::IGigETransportLayer*>(tl.get());
        if (pGigE == nullptr)
        {
            throw BaseException(tr("No GigE transport layer found."));
        }
        Velmo::CDeviceInfo camera = pGigE->CreateDeviceInfo();
        camera.SetPropertyValue("IpAddress", ipAddress.toLatin1().constData());
        if (!pGigE->AnnounceRemoteDevice(camera))
        {
            throw BaseException(tr("Failed to find camera. Check the IP configuration."));
        }
    }
    catch (const GenICam::GenericException& e)
    {
        throw BaseException(QString::fromUtf8(e.GetDescription()));
    }
}

} // namespace Plugin::CameraPool::Internal
