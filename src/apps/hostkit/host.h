// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"

#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <memory>

class QTranslator;

namespace Core::Service
{
class CServiceRegistry;
}

namespace Plugin::CameraPool
{
class ICameraActionCommandsService;
class ICameraControlService;
class ICameraEnumerationService;
class ICameraStatusService;
class ICameraStreamControlService;
class IDeviceFirmwareUpdateService;
class IDeviceParameterService;
class IImageDecompressorService;
} // namespace Plugin::CameraPool

namespace Plugin::DataProcessingCore
{
class IGraphService;
class INodeRegistry;
} // namespace Plugin::DataProcessingCore

namespace HostKit
{

/**
 * An application that runs the plugins: their manager, the service registry, and the services found in it.
 * Main thread only. Needs an application object.
 */
class HOSTKIT_EXPORT CHost
{
public:
    /** Plugins are taken from that folder. */
    explicit CHost(QString pluginFolder);
    /** Stops. */
    ~CHost();

    /** False when a required plugin or service is missing; errors() says why.
     *  The setting "GigE/Adapters" becomes the environment variable CAMERAPOOL_GIGE_ADAPTERS until stop(), unless that
     *  is set. */
    bool start(const QString& language);
    void stop();
    QStringList errors() const;

    /** For texts that a program shows before it starts a host: "en", "ja", "zh" or "ko" for as long as the translator
     *  lives. False when there is no such language. */
    static bool installTexts(const QString& language, QTranslator& translator);

    /** The folder of plugins that belongs to the running program: beside it or, installed, below ../lib; the
     *  environment variable CAMERAPOOL_PLUGIN_PATH overrides it. */
    static QString defaultPluginFolder();

    Core::Service::CServiceRegistry& registry();
    Plugin::CameraPool::ICameraActionCommandsService& actions() const;
    Plugin::CameraPool::ICameraControlService& control() const;
    Plugin::CameraPool::ICameraEnumerationService& enumeration() const;
    Plugin::CameraPool::ICameraStatusService& status() const;
    Plugin::CameraPool::ICameraStreamControlService& stream() const;
    Plugin::CameraPool::IDeviceFirmwareUpdateService& firmware() const;
    Plugin::CameraPool::IDeviceParameterService& parameters() const;
    Plugin::CameraPool::IImageDecompressorService& decompressors() const;
    Plugin::DataProcessingCore::IGraphService& graph() const;
    Plugin::DataProcessingCore::INodeRegistry& nodes() const;

private:
    struct SPrivate;
    std::unique_ptr<SPrivate> m_p;
};

} // namespace HostKit
