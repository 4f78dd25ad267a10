// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"

namespace Test
{

/** Opens the camera "1001" as a test describes it and looks at the settings of its instance. */
class GrabbingFixture : public CameraPoolFixture
{
protected:
    /** With its one camera as described, opened. */
    QSharedPointer<CCamera> openCamera(const SScriptedCamera& config = {}, bool monitorMode = false)
    {
        m_transport->AddCamera(config);
        m_info = record();
        const auto camera = makeCamera(m_info);
        EXPECT_TRUE(camera->open(monitorMode)) << qPrintable(m_info->errorString());
        m_log.clear();
        return camera;
    }
    static qint64 instanceValue(const CCamera& camera, const char* feature)
    {
        return ParameterCollection::CIntegerParameter(camera.getParameterCollection(),
                                                      QStringLiteral("@CameraInstance/") + QLatin1String(feature))
            .value();
    }
    static bool instanceFlag(const CCamera& camera, const char* feature)
    {
        return ParameterCollection::CBooleanParameter(camera.getParameterCollection(),
                                                      QStringLiteral("@CameraInstance/") + QLatin1String(feature))
            .value();
    }
    bool waitForStart(std::size_t buffers = 1) { return m_transport->WaitForQueued(s_serial, buffers); }

    QSharedPointer<CCameraInfo> m_info;
};

} // namespace Test
