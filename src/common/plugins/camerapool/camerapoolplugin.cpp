// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerapoolplugin.h"

#include "camerapool/internal/cameraactioncommandsservice.h"
#include "camerapool/internal/cameraenumerationservice.h"
#include "camerapool/internal/cameranodedatamodel.h"
#include "camerapool/internal/cameraparameterservice.h"
#include "camerapool/internal/camerastreamcontrolservice.h"
#include "camerapool/internal/controlservice.h"
#include "camerapool/internal/devicefirmwareupdateservice.h"
#include "camerapool/internal/imagedecompressorservice.h"
#include "camerapool/internal/statusservice.h"
#include "dataprocessingcore/inoderegistry.h"

namespace Plugin::CameraPool
{

using namespace Internal;

CCameraPoolPlugin::CCameraPoolPlugin(QObject* parent) : ALocalizedPlugin(QStringLiteral("CameraPool"), parent) {}

CCameraPoolPlugin::~CCameraPoolPlugin()
{
    unregisterNode();
    m_initializer.clear();
    m_ptrImageDecompressorService.reset();
    m_ptrFirmwareUpdateService.reset();
    m_ptrActionCommandsService.reset();
    m_ptrStreamControlService.reset();
    m_ptrParameterService.reset();
    m_ptrControlService.reset();
    m_ptrStatusService.reset();
    m_ptrEnumerationService.reset();
    m_interfacePool.clear();
    m_cameraPool.clear();
}

bool CCameraPoolPlugin::initialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    m_initializer = initializer;
    createPools();
    createServices();
    registerNode();
    return true;
}

void CCameraPoolPlugin::createPools()
{
    m_cameraPool = new CCameraPool(this);
    m_interfacePool = new CInterfacePool(this);
}

bool CCameraPoolPlugin::registerService(const QSharedPointer<Core::Service::IService>& service)
{
    if (!m_initializer)
    {
        return false;
    }
    m_initializer->registerService(service);
    return !m_initializer.isNull();
}

void CCameraPoolPlugin::createServices()
{
    m_ptrEnumerationService.reset(new CCameraEnumerationService(m_cameraPool, m_interfacePool));
    if (!registerService(m_ptrEnumerationService))
    {
        return;
    }
    m_ptrStatusService.reset(new CStatusService(m_cameraPool, m_interfacePool, nullptr));
    if (!registerService(m_ptrStatusService))
    {
        return;
    }
    m_ptrControlService.reset(new CControlService(m_cameraPool, m_interfacePool, nullptr));
    if (!registerService(m_ptrControlService))
    {
        return;
    }
    m_ptrParameterService.reset(new CCameraParameterService);
    m_ptrParameterService->addPool(m_cameraPool.data());
    m_ptrParameterService->addPool(m_interfacePool.data());
    if (!registerService(m_ptrParameterService))
    {
        return;
    }
    m_ptrStreamControlService.reset(new CCameraStreamControlService(m_cameraPool, nullptr));
    if (!registerService(m_ptrStreamControlService))
    {
        return;
    }
    m_ptrActionCommandsService.reset(new CCameraActionCommandsService(m_cameraPool, nullptr));
    if (!registerService(m_ptrActionCommandsService))
    {
        return;
    }
    m_ptrFirmwareUpdateService.reset(new CDeviceFirmwareUpdateService(m_cameraPool, nullptr));
    if (!registerService(m_ptrFirmwareUpdateService))
    {
        return;
    }
    m_ptrImageDecompressorService.reset(new CImageDecompressorService(m_cameraPool, nullptr));
    registerService(m_ptrImageDecompressorService);
}

void CCameraPoolPlugin::registerNode()
{
    if (!m_initializer)
    {
        return;
    }
    const auto registry = m_initializer->findService<DataProcessingCore::INodeRegistry>();
    const auto create = [pool = m_cameraPool](const QSharedPointer<AppCore::IInfo>& info)
    {
        return CCameraNodeDataModel::create(pool, info);
    };
    if (!registry.isNull() && registry->registerNode(CCameraNodeDataModel::nodeName(), create))
    {
        m_nodeRegistry = registry;
    }
}

void CCameraPoolPlugin::unregisterNode()
{
    if (const auto registry = m_nodeRegistry.toStrongRef())
    {
        registry->unregisterNode(CCameraNodeDataModel::nodeName());
    }
    m_nodeRegistry.clear();
}

bool CCameraPoolPlugin::postInitialize()
{
    return true;
}

QVector<QSharedPointer<Core::Service::IService>> CCameraPoolPlugin::services() const
{
    return {m_ptrEnumerationService,    m_ptrStatusService,           m_ptrControlService,
            m_ptrParameterService,      m_ptrStreamControlService,    m_ptrActionCommandsService,
            m_ptrFirmwareUpdateService, m_ptrImageDecompressorService};
}

bool CCameraPoolPlugin::unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    if (!initializer)
    {
        qFatal("CameraPool: the plugin initializer given to unInitialize does not exist any more.");
    }
    unregisterNode();
    const auto all = services();
    for (const auto& service : all)
    {
        initializer->unregisterService(service);
    }
    return true;
}

} // namespace Plugin::CameraPool
