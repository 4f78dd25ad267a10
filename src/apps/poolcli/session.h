// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/cameranames.h"
#include "hostkit/host.h"
#include "hostkit/interfacenames.h"
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

using DeviceInfoPtr = QSharedPointer<Plugin::CameraPool::IBaseInfo>;

/** One run of the program: the started plugins and Ctrl-C. Main thread. */
class CSession
{
public:
    explicit CSession(const QString& language);

    HostKit::CHost& host() { return m_host; }
    HostKit::CInterrupt& interrupt() { return m_interrupt; }
    /** Ctrl-C came, or nobody can be shown anything any more. */
    bool isToEnd() const;

    /** Handles events until the condition holds (true), the time is over or isToEnd() (false). Negative: no limit. */
    bool waitUntil(const std::function<bool()>& condition, int timeoutMs);

    /** Waits for the end of the first discovery, at most timeoutMs. */
    void waitForDiscovery(int timeoutMs);
    /** Cameras of the latest discovery, in its order. */
    QVector<HostKit::CameraInfoPtr> cameras();
    /** Waits for a camera of that name; throws CRefusal when there is none, or several. "" takes the only camera. */
    HostKit::CameraInfoPtr camera(const QString& name, int timeoutMs);
    /** Those cameras, or all when no name is given (at least one). */
    QVector<HostKit::CameraInfoPtr> camerasCalled(const QStringList& names, int timeoutMs);

    /** Interfaces of the latest discovery, in its order, each once. */
    QVector<HostKit::InterfaceInfoPtr> interfaces();
    /** Waits for the first discovery; throws CRefusal when it found no such interface, or several. */
    HostKit::InterfaceInfoPtr interfaceCalled(const QString& name, int timeoutMs);
    /** The interface that the camera is on; throws CRefusal when it is not there. */
    HostKit::InterfaceInfoPtr interfaceOf(const HostKit::CameraInfoPtr& camera);

    /** Opens a camera or an interface; a monitored one may be in use elsewhere and is only looked at. Throws CRefusal
     *  with the device's own reason. */
    void open(const DeviceInfoPtr& device, bool monitorMode = false);
    void close(const DeviceInfoPtr& device);
    /** Of an open device; throws CRefusal when there is none. */
    QSharedPointer<ParameterCollection::IParameterCollection> parameters(const DeviceInfoPtr& device);

private:
    HostKit::CHost m_host;
    HostKit::CInterrupt m_interrupt;
    bool m_discovered = false;
};

/** Opens a camera or an interface for the life of the object. */
template <class Info> class COpenDevice
{
public:
    COpenDevice(CSession& session, QSharedPointer<Info> info, bool monitorMode = false)
        : m_session(session), m_info(std::move(info))
    {
        m_session.open(m_info, monitorMode);
    }
    ~COpenDevice() { m_session.close(m_info); }
    COpenDevice(const COpenDevice&) = delete;
    COpenDevice& operator=(const COpenDevice&) = delete;
    const QSharedPointer<Info>& info() const { return m_info; }

private:
    CSession& m_session;
    QSharedPointer<Info> m_info;
};

using COpenCamera = COpenDevice<Plugin::CameraPool::ICameraInfo>;
using COpenInterface = COpenDevice<Plugin::CameraPool::IInterfaceInfo>;

} // namespace PoolCli
