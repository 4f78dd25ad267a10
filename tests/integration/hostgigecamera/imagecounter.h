// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostongigecamera.h"

#include "camerapool/icamerastatusservice.h"

#include <QTest>

#include <cstdint>

namespace HostGigECamera
{

using Plugin::CameraPool::ICameraStatusService;

/** Counts the images of one camera, those that failed, and the gaps in their numbers. */
class CImageCounter
{
public:
    CImageCounter(ICameraStatusService& status, const CameraInfoPtr& camera)
    {
        QObject::connect(&status, &ICameraStatusService::cameraImageGrabbed, &m_receiver,
                         [this, camera](const CameraInfoPtr& from, const Velmo::CGrabResultPtr& result)
                         {
                             if (from == camera)
                             {
                                 count(result->GetBlockID());
                             }
                         });
        QObject::connect(&status, &ICameraStatusService::cameraImageGrabFailed, &m_receiver,
                         [this, camera](const CameraInfoPtr& from) { failed += from == camera ? 1 : 0; });
    }
    bool waitFor(int wanted) const
    {
        return QTest::qWaitFor([&] { return images >= wanted; }, limitMs);
    }

    int images = 0;
    int failed = 0;
    int gaps = 0;

private:
    void count(std::uint64_t block)
    {
        ++images;
        gaps += m_last != 0 && block != m_last + 1 ? 1 : 0;
        m_last = block;
    }

    std::uint64_t m_last = 0;
    QObject m_receiver; // last: its connections use the rest
};

} // namespace HostGigECamera
