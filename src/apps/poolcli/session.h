// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/cameranames.h"
#include "hostkit/host.h"
#include "hostkit/interrupt.h"
#include "parametercollection/iparametercollection.h"

#include <QString>

#include <functional>

namespace PoolCli
{

/** Exit codes of the program. */
enum EExitCode
{
    ExitDone = 0,
    ExitRefused = 1,
    ExitUsage = 2
};

/** Raised by a verb to end the program with ExitRefused and this text on stderr. */
class CRefusal : public std::runtime_error
{
public:
    explicit CRefusal(const QString& reason) : std::runtime_error(reason.toStdString()) {}
};

/** One run of the program: the started plugins and Ctrl-C. Main thread. */
class CSession
{
public:
    explicit CSession(const QString& language);

    HostKit::CHost& host() { return m_host; }
    HostKit::CInterrupt& interrupt() { return m_interrupt; }

    /** Handles events until the condition holds (true), the time is over or Ctrl-C came (false). Negative: no limit. */
    bool waitUntil(const std::function<bool()>& condition, int timeoutMs);

    /** Waits for the end of the first discovery, at most timeoutMs. */
    void waitForDiscovery(int timeoutMs);
    /** Cameras of the latest discovery, in its order. */
    QVector<HostKit::CameraInfoPtr> cameras();
    /** Waits for a camera of that name; throws CRefusal when there is none, or several. "" takes the only camera. */
    HostKit::CameraInfoPtr camera(const QString& name, int timeoutMs);
    /** Those cameras, or all when no name is given (at least one). */
    QVector<HostKit::CameraInfoPtr> camerasCalled(const QStringList& names, int timeoutMs);

    /** Throws CRefusal with the camera's own reason. */
    void open(const HostKit::CameraInfoPtr& camera);
    void close(const HostKit::CameraInfoPtr& camera);
    /** Of an open camera; throws CRefusal when there is none. */
    QSharedPointer<ParameterCollection::IParameterCollection> parameters(const HostKit::CameraInfoPtr& camera);

private:
    HostKit::CHost m_host;
    HostKit::CInterrupt m_interrupt;
    bool m_discovered = false;
};

/** Opens a camera for the life of the object. */
class COpenCamera
{
public:
    COpenCamera(CSession& session, HostKit::CameraInfoPtr camera) : m_session(session), m_camera(std::move(camera))
    {
        m_session.open(m_camera);
    }
    ~COpenCamera() { m_session.close(m_camera); }
    COpenCamera(const COpenCamera&) = delete;
    COpenCamera& operator=(const COpenCamera&) = delete;
    const HostKit::CameraInfoPtr& info() const { return m_camera; }

private:
    CSession& m_session;
    HostKit::CameraInfoPtr m_camera;
};

} // namespace PoolCli
