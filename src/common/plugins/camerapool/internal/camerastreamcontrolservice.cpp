// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camerastreamcontrolservice.h"

#include <utility>

namespace Plugin::CameraPool::Internal
{

CCameraStreamControlService::CCameraStreamControlService(QPointer<CCameraPool> pool, QObject* parent)
    : ICameraStreamControlService(parent), m_pool(std::move(pool))
{
}

CCameraStreamControlService::~CCameraStreamControlService() = default;

void CCameraStreamControlService::startGrabbing(QSharedPointer<ICameraInfo> info)
{
    if (m_pool)
    {
        m_pool->startGrabbing(info);
    }
}

void CCameraStreamControlService::stopGrabbing(QSharedPointer<ICameraInfo> info)
{
    if (m_pool)
    {
        m_pool->stopGrabbing(info);
    }
}

void CCameraStreamControlService::singleShot(QSharedPointer<ICameraInfo> info, unsigned int timeout)
{
    if (m_pool)
    {
        m_pool->singleShot(info, timeout);
    }
}

void CCameraStreamControlService::startGrabbing()
{
    if (m_pool)
    {
        m_pool->startGrabbing();
    }
}

void CCameraStreamControlService::stopGrabbing()
{
    if (m_pool)
    {
        m_pool->stopGrabbing();
    }
}

void CCameraStreamControlService::stopGrabbingAll()
{
    if (m_pool)
    {
        m_pool->stopGrabbingAll();
    }
}

void CCameraStreamControlService::singleShot(unsigned int timeout)
{
    if (m_pool)
    {
        m_pool->singleShot(timeout);
    }
}

} // namespace Plugin::CameraPool::Internal
