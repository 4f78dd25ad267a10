// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"
#include "plugincore/alocalizedplugin.h"

#include <QPointer>
#include <QSharedPointer>
#include <QWeakPointer>

namespace Plugin::DataProcessingCore
{
class INodeRegistry;
} // namespace Plugin::DataProcessingCore

namespace Plugin::CameraPool
{

namespace Internal
{
class CCameraActionCommandsService;
class CCameraEnumerationService;
class CCameraParameterService;
class CCameraPool;
class CCameraStreamControlService;
class CControlService;
class CDeviceFirmwareUpdateService;
class CImageDecompressorService;
class CInterfacePool;
class CStatusService;
} // namespace Internal

/**
 * The plugin: makes the pools and the services and registers the services with the host, and the camera source node
 * with the host's registry of nodes when there is one.
 *
 * Hosts get it from the plugin manager and everything else from its services. Main thread.
 */
class CAMERAPOOL_EXPORT CCameraPoolPlugin : public Core::Plugin::ALocalizedPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CORE_PLUGIN_IID FILE "camerapool.json")
public:
    explicit CCameraPoolPlugin(QObject* parent = nullptr);
    /** Lets go of the services in the reverse of their order, then of the pools. */
    ~CCameraPoolPlugin() override;

    /** True also when the initializer is destroyed meanwhile: what would come after that is not made. */
    bool initialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;
    bool postInitialize() override;
    /** The services and pools live on until the plugin is destroyed. */
    bool unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;

private:
    void createPools();
    /** False when the initializer was gone, or is gone now. */
    bool registerService(const QSharedPointer<Core::Service::IService>& service);
    void createServices();
    /** Nothing when the host has no registry of nodes. */
    void registerNode();
    void unregisterNode();
    /** In the order of their creation; null for those that were not made. */
    QVector<QSharedPointer<Core::Service::IService>> services() const;

    QPointer<Internal::CCameraPool> m_cameraPool;
    QPointer<Internal::CInterfacePool> m_interfacePool;
    QSharedPointer<Internal::CCameraEnumerationService> m_ptrEnumerationService;
    QSharedPointer<Internal::CStatusService> m_ptrStatusService;
    QSharedPointer<Internal::CControlService> m_ptrControlService;
    QSharedPointer<Internal::CCameraParameterService> m_ptrParameterService;
    QSharedPointer<Internal::CCameraStreamControlService> m_ptrStreamControlService;
    QSharedPointer<Internal::CCameraActionCommandsService> m_ptrActionCommandsService;
    QSharedPointer<Internal::CDeviceFirmwareUpdateService> m_ptrFirmwareUpdateService;
    QSharedPointer<Internal::CImageDecompressorService> m_ptrImageDecompressorService;
    QPointer<Core::Plugin::IPluginInitializer> m_initializer;
    QWeakPointer<Plugin::DataProcessingCore::INodeRegistry> m_nodeRegistry; // the one that has the node; else null
};

} // namespace Plugin::CameraPool
