// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/pluginspec.h"
#include "servicecore/serviceregistry.h"

#include <QObject>

#include <memory>

namespace Core::Plugin
{

/**
 * Finds, checks, loads, starts and stops the plugins of an application.
 *
 * start() takes every plugin found through these steps (the numbers are those of EPluginState):
 *   0 -> 1  read the metadata: interface identifier, name (present, used once), versions, dependencies
 *   1 -> 2  resolve the dependencies: present, version fits, no circle
 *   2 -> 3  load the library and create the instance     } each plugin after those it depends on;
 *   3 -> 4  initialize()                                  } a plugin that fails keeps its dependents from
 *   4 -> 5  postInitialize(), when all are initialized    } being started
 * stop() takes them back in the reverse of the order in which they were initialized:
 *   5 -> 6  aboutToUninitialize() of all
 *   6 -> 7  unInitialize() of all
 *   7 -> 8  delete all instances
 * A plugin whose initialize() failed is deleted without unInitialize(). Services that a plugin has not unregistered
 * itself leave the registry before its instance is deleted. Libraries stay loaded until the process ends, since
 * services and metatypes of a plugin may outlive its instance. A plugin's initializer ends with it.
 *
 * Threads: main thread only. Exceptions of plugins are caught and become errors of that plugin.
 */
class PLUGINCORE_EXPORT CPluginManager : public QObject
{
    Q_OBJECT
public:
    /** The registry takes the services of the plugins and must outlive the manager. */
    explicit CPluginManager(Core::Service::CServiceRegistry& registry, QObject* parent = nullptr);
    /** Stops. */
    ~CPluginManager() override;

    /** Every shared library directly in the folder, in the order of names. Before start(). A folder that cannot be read
     *  is an error of the manager. */
    void addFolder(const QString& folder);
    /** One plugin file. Before start(). */
    void addFile(const QString& filePath);

    /** False when a required plugin failed, or when it was started already; all that was started has then been stopped
     *  again (not when started already). Plugins that are not required may fail: see errors(). */
    bool start();
    /** Nothing when not started. */
    void stop();
    bool isStarted() const;

    /** Passed to every plugin that is loaded, and to those loaded later before they are initialized. */
    void setLanguage(const QString& language);

    /** In the order in which they were found; also those with errors. */
    QVector<CPluginSpecPtr> plugins() const;
    /** In the order of initialization; only those that are started. */
    QVector<CPluginSpecPtr> startedPlugins() const;
    /** The first plugin of that name, or null. */
    CPluginSpecPtr plugin(const QString& name) const;
    /** Errors of the manager and of all plugins, translated, each naming its plugin or file. */
    QStringList errors() const;

signals:
    void pluginStateChanged(const QString& name, int state);

private:
    void readAll();
    bool startOne(const CPluginSpecPtr& spec);
    bool load(CPluginSpec& spec);
    bool initialize(CPluginSpec& spec);
    void postInitializeAll();
    bool dependenciesAreStarted(CPluginSpec& spec) const;
    void setState(CPluginSpec& spec, EPluginState state);
    void deleteInstance(CPluginSpec& spec);
    void fail(CPluginSpec& spec, const QString& text);
    bool requiredPluginFailed() const;

    struct SPrivate;
    std::unique_ptr<SPrivate> m_p;
};

} // namespace Core::Plugin
