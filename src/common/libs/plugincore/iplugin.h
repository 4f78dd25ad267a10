// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/iplugininitializer.h"

#include <QPointer>

/** The interface identifier in the metadata of every plugin of the application. */
#define CORE_PLUGIN_IID "org.camerapool.Core.Plugin.IPlugin/1.2"

namespace Core::Plugin
{

/**
 * A plugin of the application. All calls on the main thread, by the plugin manager:
 * initialize (in dependency order) -> postInitialize (same order) -> ... -> aboutToUninitialize (reverse order) ->
 * unInitialize (reverse order) -> destroyed.
 */
class PLUGINCORE_EXPORT IPlugin : public QObject
{
    Q_OBJECT
public:
    explicit IPlugin(QObject* parent = nullptr);
    ~IPlugin() override;
    virtual bool initialize(QPointer<Core::Plugin::IPluginInitializer> initializer) = 0;
    virtual bool postInitialize() = 0;
    virtual bool unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer) = 0;
    virtual void aboutToUninitialize();
    virtual void setLanguage(const QString& language);
};

} // namespace Core::Plugin
