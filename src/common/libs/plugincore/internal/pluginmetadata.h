// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/plugincore_testexport.h"
#include "plugincore/pluginspec.h"

#include <QCoreApplication>
#include <QJsonObject>

namespace Core::Plugin
{

/** Reads what a plugin library says about itself. */
class PLUGINCORE_TEST_EXPORT CPluginMetadata
{
    Q_DECLARE_TR_FUNCTIONS(Core::Plugin::CPluginMetadata)
public:
    /** From the library's embedded metadata; the result has errors when they are missing or wrong, else is Read. */
    static CPluginSpecPtr fromFile(const QString& filePath);
    /** The same from an object as QPluginLoader gives it: "IID", "className", "MetaData". */
    static CPluginSpecPtr fromJson(const QString& filePath, const QJsonObject& library);

private:
    explicit CPluginMetadata(CPluginSpec& spec) : m_spec(spec) {}
    void read(const QJsonObject& library);
    void readNameAndVersions(const QJsonObject& metaData);
    void readDependencies(const QJsonValue& value);
    void readDependency(int index, const QJsonValue& value);
    QString text(const QJsonObject& object, const char* key);
    QVersionNumber versionOf(const QJsonValue& value, const QString& what);
    void fail(const QString& reason);

    CPluginSpec& m_spec;
};

} // namespace Core::Plugin
