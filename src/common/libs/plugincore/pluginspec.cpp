// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/pluginspec.h"

#include "plugincore/internal/pluginspecprivate.h"

namespace Core::Plugin
{

CPluginSpec::CPluginSpec() : m_p(std::make_unique<SPrivate>()) {}

CPluginSpec::~CPluginSpec() = default;

QString CPluginSpec::filePath() const
{
    return m_p->filePath;
}

QString CPluginSpec::name() const
{
    return m_p->name;
}

QVersionNumber CPluginSpec::version() const
{
    return m_p->version;
}

QVersionNumber CPluginSpec::compatVersion() const
{
    return m_p->compatVersion;
}

bool CPluginSpec::isRequired() const
{
    return m_p->required;
}

QVector<SPluginDependency> CPluginSpec::dependencies() const
{
    return m_p->dependencies;
}

QString CPluginSpec::description() const
{
    return m_p->description;
}

QString CPluginSpec::vendor() const
{
    return m_p->vendor;
}

QString CPluginSpec::copyright() const
{
    return m_p->copyright;
}

QString CPluginSpec::license() const
{
    return m_p->license;
}

QString CPluginSpec::url() const
{
    return m_p->url;
}

EPluginState CPluginSpec::state() const
{
    return m_p->state;
}

QStringList CPluginSpec::errors() const
{
    return m_p->errors;
}

bool CPluginSpec::hasError() const
{
    return !m_p->errors.isEmpty();
}

IPlugin* CPluginSpec::plugin() const
{
    return m_p->plugin;
}

bool CPluginSpec::provides(const QVersionNumber& asked) const
{
    return m_p->compatVersion.normalized() <= asked.normalized() && asked.normalized() <= m_p->version.normalized();
}

} // namespace Core::Plugin
