// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/camerastreamcontrolservice.h"
#include "camerapool/internal/controlservice.h"
#include "camerapool/internal/statusservice.h"
#include "parametercollection/parameters.h"
#include "unit/common/plugins/camerapool/testing/poolfixture.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <memory>

namespace Test
{

/** A record of a kind that no pool has. */
class COtherRecord : public Plugin::CameraPool::IBaseInfo
{
public:
    QString getFriendlyName() const override { return {}; }
    QString getFullName() const override { return QStringLiteral("other"); }
    QString getVendorName() const override { return {}; }
    QString getTLType() const override { return {}; }
    int getType() const override { return 1; }
    QString errorString() const override { return {}; }
    void clearError() override {}
};

/** The services on a camera pool with the camera "1001" and an interface pool with the interface "port0". */
class ServicesFixture : public PoolFixture
{
protected:
    using ADevicePool = Plugin::CameraPool::Internal::ADevicePool;
    using CInterfacePool = Plugin::CameraPool::Internal::CInterfacePool;

    ServicesFixture()
    {
        m_transport->AddInterface("port0");
        m_interfaces->announceDevice(m_port);
    }
    BaseInfoPtr other() const { return BaseInfoPtr(new COtherRecord); }
    std::int64_t grabLoopTimeout() const
    {
        return ParameterCollection::CIntegerParameter(camera()->getParameterCollection(),
                                                      QStringLiteral("@CameraInstance/GrabLoopThreadTimeout"))
            .value();
    }
    void destroyPools()
    {
        m_pool.reset();
        m_interfaces.reset();
    }

    std::unique_ptr<CInterfacePool> m_interfaces = std::make_unique<CInterfacePool>(nullptr);
    BaseInfoPtr m_port = Plugin::CameraPool::Internal::CInterfaceInfo::fromInterfaceInfo(interfaceInfo("port0"));
    Plugin::CameraPool::Internal::CControlService m_control{m_pool.get(), m_interfaces.get(), nullptr};
    Plugin::CameraPool::Internal::CStatusService m_status{m_pool.get(), m_interfaces.get(), nullptr};
    Plugin::CameraPool::Internal::CCameraStreamControlService m_stream{m_pool.get(), nullptr};
};

} // namespace Test
