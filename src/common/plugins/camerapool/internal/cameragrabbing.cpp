// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"
#include "camerapool/internal/framegrabbertimer.h"
#include "parametercollection/parameternames.h"
#include "velmo/imagedecompressor.h"
#include "velmo/velmo.h"

#include <QtDebug>

namespace Plugin::CameraPool::Internal
{

using ParameterCollection::CEnumParameter;
using ParameterCollection::CScopedObjectStateLock;
namespace Name = ParameterCollection::ParameterName;

bool CCamera::isGrabbing() const
{
    return m_pVelmoDevice != nullptr && m_pVelmoDevice->IsGrabbing();
}

bool CCamera::isReadyToGrab(const char* operation) const
{
    if (!isConnected())
    {
        qDebug("CCamera::%s failed, because the camera is not connected.", operation);
        return false;
    }
    if (isGrabbing())
    {
        qDebug("CCamera::%s failed, because the camera is currently grabbing.", operation);
        return false;
    }
    return true;
}

void CCamera::startGrabbing()
{
    const CScopedObjectStateLock lock(m_instanceState);
    if (!isReadyToGrab("startGrabbing"))
    {
        return;
    }
    // The monitor's message lacks a letter; it is known, and searched for, in this form.
    attempt(isMonitorModeActive() ? "Could't start grabbing in monitor mode. Reason: "
                                  : "Couldn't start continuous grab. Reason: ",
            [this]
            {
                prepareGrab();
                emit cameraGrabStart();
                startContinuousGrab();
            });
}

void CCamera::startContinuousGrab()
{
    if (isMonitorModeActive())
    {
        // A monitor takes the stream as the controlling application has configured it.
        CEnumParameter(m_ptrParameterCollection, QStringLiteral("TransmissionType"))
            .setValue(QStringLiteral("UseCameraConfig"));
    }
    else
    {
        setAcquisitionMode(QStringLiteral("Continuous"));
    }
    m_pVelmoDevice->GrabLoopThreadUseTimeout.SetValue(false);
    m_pVelmoDevice->StartGrabbing(Velmo::GrabStrategy_OneByOne, Velmo::GrabLoop_ProvidedByInstantCamera);
}

void CCamera::setAcquisitionMode(const QString& mode)
{
    Name::CameraDevice::AcquisitionMode.of(m_ptrParameterCollection).setValue(mode);
}

void CCamera::prepareGrab()
{
    if (m_ptrParameterCollection.isNull())
    {
        return;
    }
    setBufferCount();
    boostGrabEngine();
}

void CCamera::setBufferCount()
{
    const auto camera = Name::CameraDevice::PayloadSize.of(m_ptrParameterCollection);
    const auto streamGrabber = Name::StreamGrabber0::PayloadSize.of(m_ptrParameterCollection);
    if (!camera.isValid() || !streamGrabber.isValid())
    {
        return;
    }
    const std::int64_t streamed = streamGrabber.valueOr(0);
    const std::int64_t payloadBytes = streamed != 0 ? streamed : camera.valueOr(0);
    if (payloadBytes > 0)
    {
        const int buffers =
            m_grabSettings.value_or(SGrabSettings()).buffersFor(static_cast<std::uint64_t>(payloadBytes));
        m_pVelmoDevice->MaxNumBuffer.SetValue(buffers);
        m_pVelmoDevice->MaxNumQueuedBuffer.SetValue(buffers);
    }
}

void CCamera::boostGrabEngine()
{
    const char* const failed = "Boosting Instant Camera Thread Priority failed: ";
    try
    {
        int lowest = 0;
        int highest = 0;
        if (!Velmo::GetRTThreadPriorityCapabilities(&lowest, &highest))
        {
            GENICAM_THROW(RuntimeException, "This system has no real-time thread priorities.");
        }
        const int priority = (lowest + highest) / 2;
        m_pVelmoDevice->InternalGrabEngineThreadPriorityOverride.SetValue(true);
        m_pVelmoDevice->InternalGrabEngineThreadPriority.SetValue(priority);
        qDebug("Boosted Instant Camera Thread Priority to: %d", priority);
    }
    catch (const GenICam::GenericException& e)
    {
        qDebug("%s%s", failed, e.GetDescription());
    }
    catch (const std::exception& e)
    {
        qDebug("%s%s", failed, e.what());
    }
}

void CCamera::singleShot(unsigned int timeout)
{
    const CScopedObjectStateLock lock(m_instanceState);
    if (!isReadyToGrab("singleShot"))
    {
        return;
    }
    attempt("Couldn't start grabbing for single shot. Reason: ",
            [this, timeout]
            {
                emit cameraGrabStart();
                if (!isMonitorModeActive())
                {
                    setAcquisitionMode(QStringLiteral("SingleFrame"));
                }
                m_pVelmoDevice->GrabLoopThreadUseTimeout.SetValue(true);
                m_pVelmoDevice->GrabLoopThreadTimeout.SetValue(timeout);
                m_pVelmoDevice->StartGrabbing(1, Velmo::GrabStrategy_OneByOne, Velmo::GrabLoop_ProvidedByInstantCamera);
            });
}

void CCamera::stopGrabbing()
{
    const CScopedObjectStateLock lock(m_instanceState);
    if (isOpen() && isGrabbing())
    {
        attempt("Couldn't stop grabbing. Reason: ", [this] { m_pVelmoDevice->StopGrabbing(); });
    }
}

void CCamera::OnGrabStart(Velmo::CInstantCamera& /*camera*/)
{
    m_imagesFailed.store(0, std::memory_order_relaxed);
    m_pFpsStatistic->reset();
    m_compressionStatistic.reset();
}

void CCamera::OnGrabStarted(Velmo::CInstantCamera& /*camera*/)
{
    emit cameraGrabStarted();
}

void CCamera::OnGrabStopped(Velmo::CInstantCamera& /*camera*/)
{
    emit cameraGrabStopped();
}

void CCamera::OnGrabError(Velmo::CInstantCamera& /*camera*/, const char* errorMessage)
{
    qDebug("%s", errorMessage == nullptr ? "" : errorMessage);
    emit cameraImageGrabFailed();
}

void CCamera::OnImageGrabbed(Velmo::CInstantCamera& /*camera*/, const Velmo::CGrabResultPtr& result)
{
    countImage(result);
    double fps = 0.0;
    unsigned int bytesPerSecond = 0;
    m_pFpsStatistic->computeResult(fps, bytesPerSecond);
    const std::int64_t imageNumber = result->GetImageNumber();
    emit cameraStatisticChanged(static_cast<int>(imageNumber), m_imagesFailed.load(std::memory_order_relaxed), fps,
                                bytesPerSecond, m_compressionStatistic.statistic());
    emit cameraImageGrabbed(result);
    emit invokeTimeout(imageNumber);
}

void CCamera::countImage(const Velmo::CGrabResultPtr& result)
{
    m_pFpsStatistic->addSample(static_cast<unsigned int>(result->GetPayloadSize()));
    if (!result->GrabSucceeded())
    {
        m_imagesFailed.fetch_add(1, std::memory_order_relaxed);
    }
    Velmo::SCompressionInfo info;
    if (Velmo::CImageDecompressor::GetCompressionInfo(info, result, Velmo::Endianness_Auto))
    {
        m_compressionStatistic.countCompressed(info, result->GetPayloadSize());
    }
    else
    {
        m_compressionStatistic.countUncompressed();
    }
}

void CCamera::onImageArrived(int64_t imageNumber)
{
    m_lastKnownImageNumber = static_cast<std::uint64_t>(imageNumber);
    m_pFrameGrabberTimer->postpone(m_timeoutIntervalMs);
}

void CCamera::onFrameGrabberTimeout()
{
    double fps = 0.0;
    unsigned int bytesPerSecond = 0;
    m_pFpsStatistic->addNoSample();
    m_pFpsStatistic->computeResult(fps, bytesPerSecond);
    emit cameraStatisticChanged(static_cast<int>(m_lastKnownImageNumber),
                                m_imagesFailed.load(std::memory_order_relaxed), fps, bytesPerSecond,
                                m_compressionStatistic.snapshot());
    if (isGrabbing())
    {
        m_pFrameGrabberTimer->postpone(m_timeoutIntervalMs);
    }
}

} // namespace Plugin::CameraPool::Internal
