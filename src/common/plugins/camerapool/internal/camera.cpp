// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/framegrabbertimer.h"
#include "parametercollection/parameterpath.h"
#include "utils/exceptions.h"
#include "velmo/tlfactory.h"

#include <QScopedValueRollback>
#include <QtDebug>

namespace Plugin::CameraPool::Internal
{

namespace Path = ParameterCollection::ParameterPath;
using ParameterCollection::CScopedObjectStateLock;

namespace
{

constexpr int s_timeoutIntervalMs = 500;
const char* const s_closeFailed = "Camera could not be closed. Reason: ";
const char* const s_destroyFailed = "Velmo device could not be destroyed. Reason: ";

void enableClearBufferMode(GenApi::INodeMap& nodeMap)
{
    try
    {
        const GenApi::CBooleanPtr node(nodeMap.GetNode("ClearBufferModeEnable"));
        node->SetValue(true);
    }
    catch (const std::exception&)
    {
        qDebug("Couldn't set ClearBufferModeEnable to true");
    }
}

} // namespace

CCamera::CCamera(QObject* parent) : CCamera(QSharedPointer<ICameraInfo>(), parent) {}

CCamera::CCamera(QSharedPointer<ICameraInfo> info, QObject* parent)
    : ICamera(parent), m_pVelmoDevice(std::make_unique<Velmo::CInstantCamera>()), m_ptrCameraInfo(std::move(info)),
      m_pChunkParsingEventHandler(std::make_unique<CChunkParsingEventHander>()),
      m_pFpsStatistic(std::make_unique<FpsStatistic>()), m_pFrameGrabberTimer(std::make_unique<CFrameGrabberTimer>()),
      m_timeoutIntervalMs(s_timeoutIntervalMs)
{
}

CCamera::~CCamera()
{
    // Receivers of what is emitted on the way may throw anything; nobody is left to tell.
    attemptAnything(s_closeFailed, [this] { CCamera::stopGrabbing(); });
    attemptAnything(s_closeFailed, [this] { CCamera::close(); });
    dispose();
    if (m_grabSettings)
    {
        m_grabSettings->write();
    }
    m_pFrameGrabberTimer.reset();
    m_pFpsStatistic.reset();
}

void CCamera::initialize()
{
    createParameterCollection();
    registerEventHandlers();
    // Receivers on other threads get the arguments queued, looked up by these names.
    qRegisterMetaType<Velmo::CGrabResultPtr>("Velmo::CGrabResultPtr");
    qRegisterMetaType<CCompressionStatistic>("CCompressionStatistic");
    qRegisterMetaType<uint64_t>("uint64_t");
    qRegisterMetaType<int64_t>("int64_t");
    m_grabSettings = SGrabSettings::read();
    m_pFrameGrabberTimer->setSingleShot(true);
    connect(m_pFrameGrabberTimer.get(), &QTimer::timeout, this, &CCamera::onFrameGrabberTimeout);
    connect(this, &CCamera::invokeTimeout, this, &CCamera::onImageArrived, Qt::QueuedConnection);
}

void CCamera::registerEventHandlers()
{
    // The camera comes first and takes away the SDK's default configuration; handlers that build upon the camera's
    // own follow it in appending mode.
    m_pVelmoDevice->RegisterConfiguration(this, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
    m_pVelmoDevice->RegisterImageEventHandler(this, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
    m_pVelmoDevice->RegisterConfiguration(m_pChunkParsingEventHandler.get(), Velmo::RegistrationMode_Append,
                                          Velmo::Cleanup_None);
    m_pVelmoDevice->RegisterImageEventHandler(m_pChunkParsingEventHandler.get(), Velmo::RegistrationMode_Append,
                                              Velmo::Cleanup_None);
}

void CCamera::deregisterEventHandlers()
{
    m_pVelmoDevice->DeregisterImageEventHandler(m_pChunkParsingEventHandler.get());
    m_pVelmoDevice->DeregisterConfiguration(m_pChunkParsingEventHandler.get());
    m_pVelmoDevice->DeregisterImageEventHandler(this);
    m_pVelmoDevice->DeregisterConfiguration(this);
}

void CCamera::createParameterCollection()
{
    m_ptrParameterCollection.reset(new ParameterCollection::CParameterCollection(m_deviceState));
    // A bare name is looked for in this order.
    for (const QString& path : {Path::CameraDevice, Path::DeviceTransportLayer, Path::StreamGrabber0,
                                Path::EventGrabber, Path::CameraInstance})
    {
        m_ptrParameterCollection->announceNodeMap(path);
    }
}

void CCamera::attachVelmoDeviceToParameterCollection()
{
    auto& collection = *m_ptrParameterCollection;
    collection.attachNodeMap(Path::CameraDevice, &m_pVelmoDevice->GetNodeMap());
    collection.attachNodeMap(Path::DeviceTransportLayer, &m_pVelmoDevice->GetTLNodeMap());
    collection.attachNodeMap(Path::StreamGrabber0, &m_pVelmoDevice->GetStreamGrabberNodeMap());
    collection.attachNodeMap(Path::EventGrabber, &m_pVelmoDevice->GetEventGrabberNodeMap());
    collection.attachNodeMap(Path::CameraInstance, &m_pVelmoDevice->GetInstantCameraNodeMap());
}

void CCamera::detachVelmoDeviceFromParameterCollection()
{
    if (m_ptrParameterCollection.isNull())
    {
        return;
    }
    const char* const message =
        "Could not detach from camera node maps. Unexpected exceptions e.g. from callbacks. Reason: ";
    const auto detach = [this]
    {
        m_ptrParameterCollection->detachAllNodeMaps();
    };
    if (!attemptAnything(message, detach))
    {
        // The node maps are about to go; whoever threw must not keep them in the collection.
        const QSignalBlocker blocker(m_ptrParameterCollection.data());
        attemptAnything(message, detach);
    }
}

void CCamera::lazyCreateVelmoDevice()
{
    if (m_pVelmoDevice->IsVelmoDeviceAttached() && !m_pVelmoDevice->IsCameraDeviceRemoved())
    {
        return;
    }
    attempt("Velmo device creation failed. Reason: ",
            [this]
            {
                // A removed device may still hold what the new one needs.
                m_pVelmoDevice->DestroyDevice();
                auto& factory = Velmo::CTlFactory::GetInstance();
                m_pVelmoDevice->Attach(m_ptrCameraInfo.isNull()
                                           ? factory.CreateFirstDevice(Velmo::CDeviceInfo())
                                           : factory.CreateDevice(m_ptrCameraInfo->getVelmoDeviceInfo()),
                                       Velmo::Cleanup_Delete);
            });
}

bool CCamera::open(bool monitorMode)
{
    const CScopedObjectStateLock lock(m_instanceState);
    if (isOpen())
    {
        return true;
    }
    lazyCreateVelmoDevice();
    if (!m_pVelmoDevice->IsVelmoDeviceAttached())
    {
        return false;
    }
    bool opened = false;
    try
    {
        opened = attempt("Camera could not be opened. Reason: ",
                         [&]
                         {
                             openVelmoDevice(monitorMode);
                             emit deviceOpened();
                         });
    }
    catch (...)
    {
        undoOpen();
        throw;
    }
    if (!opened)
    {
        undoOpen();
    }
    return opened;
}

void CCamera::undoOpen()
{
    if (m_deviceState.state() == ParameterCollection::ObjectState_Open)
    {
        // It was open and some receiver has been told so.
        attemptAnything(s_closeFailed, [this] { close(); });
        return;
    }
    const CScopedObjectStateLock lock(m_deviceState);
    detachVelmoDeviceFromParameterCollection();
    attemptAnything(s_closeFailed, [this] { m_pVelmoDevice->Close(); });
}

void CCamera::openVelmoDevice(bool monitorMode)
{
    m_pVelmoDevice->MonitorModeActive.SetValue(monitorMode);
    m_pVelmoDevice->GrabCameraEvents.SetValue(!monitorMode);
    m_connectionLost = false;
    m_pVelmoDevice->Open();
    enableClearBufferMode(m_pVelmoDevice->GetNodeMap());
    shareOpenVelmoDevice();
}

void CCamera::shareOpenVelmoDevice()
{
    attachVelmoDeviceToParameterCollection();
    m_deviceState.setState(ParameterCollection::ObjectState_Open);
    if (m_connectionLost)
    {
        // Lost since it was opened: the removal came before the line above.
        m_deviceState.setState(ParameterCollection::ObjectState_ConnectionLost);
    }
}

void CCamera::close()
{
    const CScopedObjectStateLock instanceLock(m_instanceState);
    const CScopedObjectStateLock deviceLock(m_deviceState);
    if (m_isClosing || !isOpen())
    {
        return;
    }
    closeVelmoDevice();
    emit deviceClosed();
}

void CCamera::closeVelmoDevice()
{
    // Receivers of what is emitted on the way may call back in.
    const QScopedValueRollback<bool> closing(m_isClosing, true);
    if (isGrabbing())
    {
        stopGrabbing();
    }
    m_deviceState.setState(ParameterCollection::ObjectState_Closed);
    detachVelmoDeviceFromParameterCollection();
    attemptAnything(s_closeFailed, [this] { m_pVelmoDevice->Close(); });
    attemptAnything(s_destroyFailed, [this] { m_pVelmoDevice->DestroyDevice(); });
    // A removal may have been reported since; now none comes any more.
    m_deviceState.setState(ParameterCollection::ObjectState_Closed);
}

void CCamera::dispose()
{
    const CScopedObjectStateLock instanceLock(m_instanceState);
    const CScopedObjectStateLock deviceLock(m_deviceState);
    detachVelmoDeviceFromParameterCollection();
    attemptAnything(s_destroyFailed, [this] { m_pVelmoDevice->DestroyDevice(); });
    deregisterEventHandlers();
    m_pVelmoDevice.reset();
    m_instanceState.setState(ParameterCollection::ObjectState_Disposed);
    m_deviceState.setState(ParameterCollection::ObjectState_Disposed);
}

void CCamera::OnCameraDeviceRemoved(Velmo::CInstantCamera& /*camera*/)
{
    const bool isNews = !m_connectionLost.exchange(true);
    m_deviceState.setState(ParameterCollection::ObjectState_ConnectionLost);
    if (isNews)
    {
        emit cameraConnectionLost();
    }
}

QSharedPointer<Plugin::AppCore::IInfo> CCamera::getInfo() const
{
    return m_ptrCameraInfo;
}

bool CCamera::isConnected() const
{
    const CScopedObjectStateLock lock(m_instanceState);
    return isOpen() && !m_pVelmoDevice->IsCameraDeviceRemoved();
}

bool CCamera::isOpen() const
{
    return m_pVelmoDevice != nullptr && m_pVelmoDevice->IsOpen();
}

bool CCamera::isMonitorModeActive() const
{
    return isOpen() && m_pVelmoDevice->MonitorModeActive.GetValue();
}

QSharedPointer<ParameterCollection::IParameterCollection> CCamera::getParameterCollection() const
{
    return m_ptrParameterCollection;
}

void CCamera::raiseExceptionIfDisposed() const
{
    if (m_pVelmoDevice == nullptr)
    {
        throw Core::Exception::ObjectDisposedException(tr("Camera object has been disposed."));
    }
}

void CCamera::raiseExceptionIfInUse() const
{
    if (m_instanceState.entryCount() > 1)
    {
        throw Core::Exception::InvalidOperationException(
            tr("Action cannot be performed. The camera instance is in use."));
    }
    if (m_instanceState.isInUse())
    {
        throw Core::Exception::InvalidOperationException(
            tr("Action cannot be performed. The stream grabber is still in use."));
    }
}

void CCamera::reportFailure(const char* message, const char* reason)
{
    setErrorStringHelper(m_ptrCameraInfo, reason);
    qDebug("%s%s", message, reason);
}

} // namespace Plugin::CameraPool::Internal
