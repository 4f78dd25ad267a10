// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerainfo.h"
#include "parametercollection/parameternames.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"

#include <QSettings>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>
#include <tuple>
#include <vector>

namespace Test
{

/** A running SDK whose only transport is scripted, with one camera "1001", and the log. */
class CameraPoolFixture : public ::testing::Test
{
protected:
    using CCamera = Plugin::CameraPool::Internal::CCamera;
    using CCameraInfo = Plugin::CameraPool::Internal::CCameraInfo;
    using CameraInfoPtr = Plugin::CameraPool::CameraInfoPtr;

    CameraPoolFixture()
        : m_transport(std::make_shared<CScriptedTransport>(config())),
          m_sdk(std::vector<std::shared_ptr<CScriptedTransport>>{m_transport})
    {
        QSettings().remove(QStringLiteral("Grab"));
        m_transport->AddCamera(SScriptedCamera());
    }

    static SScriptedTransportConfig config()
    {
        SScriptedTransportConfig config;
        config.deviceClass = "KorvelGigE";
        config.tlType = "GEV";
        config.gige = true;
        return config;
    }

    QSharedPointer<CCameraInfo> record(const std::string& serialNumber = s_serial) const
    {
        return CCameraInfo::fromDeviceInfo(m_transport->GetDeviceInfo(serialNumber));
    }
    QSharedPointer<CCamera> makeCamera(const CameraInfoPtr& info) const
    {
        QSharedPointer<CCamera> camera(new CCamera(info, nullptr));
        camera->initialize();
        return camera;
    }
    QSharedPointer<CCamera> makeCamera() const { return makeCamera(record()); }

    static inline const std::string s_serial = "1001";
    CMessageLog m_log;
    std::shared_ptr<CScriptedTransport> m_transport;
    CScriptedSdk m_sdk;
};

/** Order in which signals came, by the names they are watched under. Emitted on another thread, they come queued. */
class CSignalOrder
{
public:
    template <class Sender, class Signal> void watch(const Sender* pSender, Signal signal, const QString& name)
    {
        QObject::connect(pSender, signal, &m_context, [this, name] { m_names.append(name); });
    }
    QStringList names() const { return m_names; }
    int count(const QString& name) const { return m_names.count(name); }
    void clear() { m_names.clear(); }

private:
    QObject m_context;
    QStringList m_names;
};

/** Keeps the arguments of a signal. Emitted on another thread, it comes queued. */
template <class... Args> class CSignalRecord
{
public:
    template <class Sender, class Owner> CSignalRecord(const Sender* pSender, void (Owner::*signal)(Args...))
    {
        QObject::connect(pSender, signal, &m_context,
                         [this](const std::decay_t<Args>&... args) { m_calls.emplace_back(args...); });
    }
    int count() const { return static_cast<int>(m_calls.size()); }
    const std::tuple<std::decay_t<Args>...>& at(int index) const { return m_calls.at(static_cast<std::size_t>(index)); }
    const std::tuple<std::decay_t<Args>...>& last() const { return m_calls.back(); }

private:
    QObject m_context;
    std::vector<std::tuple<std::decay_t<Args>...>> m_calls;
};

template <class Sender, class Owner, class... Args>
CSignalRecord(const Sender*, void (Owner::*)(Args...)) -> CSignalRecord<Args...>;

} // namespace Test
