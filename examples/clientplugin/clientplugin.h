// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/iimagedecompressorservice.h"
#include "genapi/inodes.h"
#include "plugincore/iplugin.h"

#include <QByteArray>

/** Example of a plugin that uses cameras: opens the first one that is found and looks at each of its images. */
class CClientPlugin : public Core::Plugin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CORE_PLUGIN_IID FILE "clientplugin.json")
public:
    using IPlugin::IPlugin;

    /** False when a service is missing. */
    bool initialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;
    bool postInitialize() override;
    /** Closes the camera while the services of the other plugins are still there. */
    void aboutToUninitialize() override;
    bool unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;

private:
    void onDeviceConnected(const QSharedPointer<Plugin::CameraPool::IBaseInfo>& info);
    void onGone(const QSharedPointer<Plugin::CameraPool::IBaseInfo>& info);
    void onImageGrabbed(const QSharedPointer<Plugin::CameraPool::ICameraInfo>& info,
                        const Velmo::CGrabResultPtr& result);

    void switchChunksOn() const;
    GenApi::INode* chunkNode() const;
    void watchChunks();
    void stopWatchingChunks();
    QString decode(const Velmo::CGrabResultPtr& result);

    QSharedPointer<Plugin::CameraPool::ICameraControlService> m_control;
    QSharedPointer<Plugin::CameraPool::ICameraStatusService> m_status;
    QSharedPointer<Plugin::CameraPool::ICameraStreamControlService> m_stream;
    QSharedPointer<Plugin::CameraPool::IDeviceParameterService> m_parameters;
    QSharedPointer<Plugin::CameraPool::IImageDecompressorService> m_decompressors;
    QSharedPointer<Plugin::CameraPool::ICameraInfo> m_camera; // null: none is in use
    GenApi::CallbackHandle m_onChunks = 0;                    // while the camera is open
    QByteArray m_pixels;                                      // of the latest compressed image
};
