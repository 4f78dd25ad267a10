// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/internal/pluginmetadata.h"

#include "plugincore/internal/pluginspecprivate.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QPluginLoader>

namespace Core::Plugin
{

CPluginSpecPtr CPluginMetadata::fromFile(const QString& filePath)
{
    if (!QFileInfo(filePath).isFile())
    {
        const CPluginSpecPtr spec = CPluginSpecPtr::create();
        spec->m_p->filePath = filePath;
        spec->m_p->errors.append(tr("The plugin file \"%1\" does not exist.").arg(filePath));
        return spec;
    }
    const QPluginLoader loader(filePath);
    return fromJson(filePath, loader.metaData());
}

CPluginSpecPtr CPluginMetadata::fromJson(const QString& filePath, const QJsonObject& library)
{
    const CPluginSpecPtr spec = CPluginSpecPtr::create();
    spec->m_p->filePath = filePath;
    CPluginMetadata(*spec).read(library);
    if (!spec->hasError())
    {
        spec->m_p->state = EPluginState::Read;
    }
    return spec;
}

void CPluginMetadata::read(const QJsonObject& library)
{
    if (library.isEmpty())
    {
        fail(tr("it has no plugin metadata"));
        return;
    }
    const QString iid = library.value(QLatin1String("IID")).toString();
    if (iid != QLatin1String(CORE_PLUGIN_IID))
    {
        fail(tr("its interface identifier is \"%1\" instead of \"%2\"").arg(iid, QLatin1String(CORE_PLUGIN_IID)));
        return;
    }
    const QJsonValue metaData = library.value(QLatin1String("MetaData"));
    if (!metaData.isObject())
    {
        fail(tr("its metadata has no object \"MetaData\""));
        return;
    }
    const QJsonObject object = metaData.toObject();
    readNameAndVersions(object);
    const QJsonValue required = object.value(QLatin1String("Required"));
    if (!required.isUndefined() && !required.isBool())
    {
        fail(tr("the entry \"%1\" of its metadata is not true or false").arg(QLatin1String("Required")));
    }
    m_spec.m_p->required = required.toBool(false);
    m_spec.m_p->description = text(object, "Description");
    m_spec.m_p->vendor = text(object, "Vendor");
    m_spec.m_p->copyright = text(object, "Copyright");
    m_spec.m_p->license = text(object, "License");
    m_spec.m_p->url = text(object, "Url");
    readDependencies(object.value(QLatin1String("Dependencies")));
}

void CPluginMetadata::readNameAndVersions(const QJsonObject& metaData)
{
    m_spec.m_p->name = text(metaData, "Name");
    if (m_spec.m_p->name.isEmpty() && !m_spec.hasError())
    {
        fail(tr("its metadata has no name"));
    }
    m_spec.m_p->version = versionOf(metaData.value(QLatin1String("Version")), QStringLiteral("Version"));
    const QJsonValue compatVersion = metaData.value(QLatin1String("CompatVersion"));
    m_spec.m_p->compatVersion =
        compatVersion.isUndefined() ? m_spec.m_p->version : versionOf(compatVersion, QStringLiteral("CompatVersion"));
    if (!m_spec.hasError() && m_spec.m_p->version.normalized() < m_spec.m_p->compatVersion.normalized())
    {
        fail(tr("its compatible version %1 is newer than its version %2")
                 .arg(m_spec.m_p->compatVersion.toString(), m_spec.m_p->version.toString()));
    }
}

void CPluginMetadata::readDependencies(const QJsonValue& value)
{
    if (value.isUndefined())
    {
        return;
    }
    if (!value.isArray())
    {
        fail(tr("the entry \"%1\" of its metadata is not a list").arg(QLatin1String("Dependencies")));
        return;
    }
    const QJsonArray dependencies = value.toArray();
    for (int i = 0; i < dependencies.size(); ++i)
    {
        readDependency(i, dependencies.at(i));
    }
}

void CPluginMetadata::readDependency(int index, const QJsonValue& value)
{
    const QString name = value.toObject().value(QLatin1String("Name")).toString();
    if (name.isEmpty())
    {
        fail(tr("dependency number %1 of its metadata has no name").arg(index + 1));
        return;
    }
    const QVersionNumber version = versionOf(value.toObject().value(QLatin1String("Version")),
                                             QStringLiteral("Version of the dependency ") + name);
    m_spec.m_p->dependencies.append({name, version});
}

QString CPluginMetadata::text(const QJsonObject& object, const char* key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    if (!value.isUndefined() && !value.isString())
    {
        fail(tr("the entry \"%1\" of its metadata is not a text").arg(QLatin1String(key)));
    }
    return value.toString();
}

QVersionNumber CPluginMetadata::versionOf(const QJsonValue& value, const QString& what)
{
    if (!value.isString())
    {
        fail(value.isUndefined() ? tr("its metadata has no entry \"%1\"").arg(what)
                                 : tr("the entry \"%1\" of its metadata is not a text").arg(what));
        return {};
    }
    int suffix = 0;
    const QVersionNumber version = QVersionNumber::fromString(value.toString(), &suffix);
    if (version.isNull() || suffix != value.toString().size())
    {
        fail(tr("the entry \"%1\" of its metadata, \"%2\", is not a version").arg(what, value.toString()));
        return {};
    }
    return version;
}

void CPluginMetadata::fail(const QString& reason)
{
    const QString file = QFileInfo(m_spec.m_p->filePath).fileName();
    m_spec.m_p->errors.append(
        m_spec.m_p->name.isEmpty()
            ? tr("The file \"%1\" is not a plugin that can be used: %2.").arg(file, reason)
            : tr("The plugin \"%1\" (%2) cannot be used: %3.").arg(m_spec.m_p->name, file, reason));
}

} // namespace Core::Plugin
