// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/pluginspec.h"

#include <QPointer>

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
};

} // namespace Core::Plugin
