// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/icontext.h"
#include "plugincore/iplugininitializer.h"

#include <QPointer>
#include <QSettings>

namespace Plugin::AppCore::Internal
{

/** The application context over the services that the host's initializer knows. */
class CContext : public IContext
{
    Q_OBJECT
public:
    explicit CContext(QPointer<Core::Plugin::IPluginInitializer> initializer, QObject* parent = nullptr);
    ~CContext() override;
    QVector<QSharedPointer<Core::Service::IService>> services() const override;
    QSettings& settings() override { return m_settings; }

private:
    QPointer<Core::Plugin::IPluginInitializer> m_initializer;
    QSettings m_settings;
};

} // namespace Plugin::AppCore::Internal
