// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/plugincore_export.h"
#include "servicecore/iservice.h"

#include <QObject>
#include <QSharedPointer>

namespace Core::Plugin
{

/** What a plugin is given to make its services known. Main thread. */
class PLUGINCORE_EXPORT IPluginInitializer : public QObject
{
    Q_OBJECT
public:
    explicit IPluginInitializer(QObject* parent = nullptr);
    ~IPluginInitializer() override;
    virtual void registerService(const QSharedPointer<Core::Service::IService>& service) = 0;
    virtual void unregisterService(const QSharedPointer<Core::Service::IService>& service) = 0;
};

} // namespace Core::Plugin
