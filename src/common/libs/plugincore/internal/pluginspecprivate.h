// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/pluginspec.h"

#include "plugincore/internal/registryinitializer.h"

#include <QPointer>

#include <memory>

namespace Core::Plugin
{

struct CPluginSpec::SPrivate
{
    QString filePath;
    QString name;
    QVersionNumber version;
    QVersionNumber compatVersion;
    bool required = false;
    QVector<SPluginDependency> dependencies;
    QString description;
    QString vendor;
    QString copyright;
    QString license;
    QString url;
    EPluginState state = EPluginState::Found;
    QStringList errors;
    QPointer<IPlugin> plugin;
    std::unique_ptr<CRegistryInitializer> initializer; // what the plugin registers with; from initialize() to deletion
};

} // namespace Core::Plugin
