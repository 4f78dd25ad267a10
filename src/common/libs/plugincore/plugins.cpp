// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/iplugin.h"

namespace Core::Plugin
{

IPluginInitializer::IPluginInitializer(QObject* parent) : QObject(parent) {}

IPluginInitializer::~IPluginInitializer() = default;

QVector<QSharedPointer<Core::Service::IService>> IPluginInitializer::services() const
{
    return {};
}

IPlugin::IPlugin(QObject* parent) : QObject(parent) {}

IPlugin::~IPlugin() = default;

void IPlugin::aboutToUninitialize() {}

void IPlugin::setLanguage(const QString&) {}

} // namespace Core::Plugin
