// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/pluginmanager.h"

#include "plugincore/internal/pluginmetadata.h"
#include "plugincore/internal/pluginresolver.h"
#include "plugincore/internal/pluginspecprivate.h"
#include "plugincore/internal/registryinitializer.h"

#include <QDir>
#include <QLibrary>
#include <QLoggingCategory>
#include <QPluginLoader>

#include <algorithm>
#include <exception>

namespace Core::Plugin
{

namespace
{

Q_LOGGING_CATEGORY(logPlugins, "Plugin Manager")

/** Runs a call into a plugin; what it throws becomes a text. */
template <class F> bool callPlugin(F&& call, QString& failure)
{
    try
    {
        return call();
    }
    catch (const std::exception& e)
    {
        failure = QString::fromUtf8(e.what());
    }
    catch (...)
    {
        failure = CPluginManager::tr("unknown error");
    }
    return false;
}

} // namespace

struct CPluginManager::SPrivate
{
    QPointer<Core::Service::CServiceRegistry> registry;
    QStringList files;
    QStringList errors;
    QVector<CPluginSpecPtr> plugins;
    QVector<CPluginSpecPtr> started;
    QString language;
    bool isStarted = false;
};

CPluginManager::CPluginManager(Core::Service::CServiceRegistry& registry, QObject* parent)
    : QObject(parent), m_p(std::make_unique<SPrivate>())
{
    m_p->registry = &registry;
}

CPluginManager::~CPluginManager()
{
    stop();
}

void CPluginManager::addFolder(const QString& folder)
{
    const QDir dir(folder);
    if (!dir.exists() || !dir.isReadable())
    {
        m_p->errors.append(tr("The plugin folder \"%1\" cannot be read.").arg(folder));
        return;
    }
    const QFileInfoList entries = dir.entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& entry : entries)
    {
        if (QLibrary::isLibrary(entry.fileName()))
        {
            addFile(entry.absoluteFilePath());
        }
    }
}

void CPluginManager::addFile(const QString& filePath)
{
    if (!m_p->files.contains(filePath))
    {
        m_p->files.append(filePath);
    }
}

void CPluginManager::readAll()
{
    m_p->plugins.clear();
    for (const QString& file : qAsConst(m_p->files))
    {
        const CPluginSpecPtr spec = CPluginMetadata::fromFile(file);
        m_p->plugins.append(spec);
        emit pluginStateChanged(spec->name(), static_cast<int>(spec->state()));
    }
}

bool CPluginManager::start()
{
    if (m_p->isStarted)
    {
        return false;
    }
    m_p->isStarted = true;
    readAll();
    const QVector<CPluginSpecPtr> order = CPluginResolver::resolve(m_p->plugins);
    for (const CPluginSpecPtr& spec : order)
    {
        emit pluginStateChanged(spec->name(), static_cast<int>(spec->state()));
    }
    if (!requiredPluginFailed())
    {
        for (const CPluginSpecPtr& spec : order)
        {
            if (startOne(spec))
            {
                m_p->started.append(spec);
            }
        }
        postInitializeAll();
    }
    for (const CPluginSpecPtr& spec : qAsConst(m_p->plugins))
    {
        for (const QString& error : qAsConst(spec->m_p->errors))
        {
            qCWarning(logPlugins, "%s", qUtf8Printable(error));
        }
    }
    if (requiredPluginFailed())
    {
        stop();
        return false;
    }
    return true;
}

bool CPluginManager::startOne(const CPluginSpecPtr& spec)
{
    if (!dependenciesAreStarted(*spec) || !load(*spec))
    {
        return false;
    }
    if (!initialize(*spec))
    {
        deleteInstance(*spec);
        return false;
    }
    return true;
}

bool CPluginManager::dependenciesAreStarted(CPluginSpec& spec) const
{
    const auto dependencies = spec.dependencies();
    for (const SPluginDependency& dependency : dependencies)
    {
        const bool started = std::any_of(m_p->started.begin(), m_p->started.end(),
                                         [&](const CPluginSpecPtr& s) { return s->name() == dependency.name; });
        if (!started)
        {
            spec.m_p->errors.append(
                tr("The plugin \"%1\" was not started, because the plugin \"%2\" that it needs failed.")
                    .arg(spec.name(), dependency.name));
            return false;
        }
    }
    return true;
}

bool CPluginManager::load(CPluginSpec& spec)
{
    QPluginLoader loader(spec.filePath());
    QString failure;
    QObject* pInstance = nullptr;
    callPlugin([&] { return (pInstance = loader.instance()) != nullptr; }, failure);
    if (pInstance == nullptr)
    {
        fail(spec, tr("The plugin \"%1\" could not be loaded: %2.")
                       .arg(spec.name(), failure.isEmpty() ? loader.errorString() : failure));
        return false;
    }
    auto* pPlugin = qobject_cast<IPlugin*>(pInstance);
    if (pPlugin == nullptr)
    {
        delete pInstance;
        fail(spec, tr("The plugin \"%1\" could not be loaded: its instance is not a plugin.").arg(spec.name()));
        return false;
    }
    spec.m_p->plugin = pPlugin;
    setState(spec, EPluginState::Loaded);
    return true;
}

bool CPluginManager::initialize(CPluginSpec& spec)
{
    QString failure;
    spec.m_p->initializer = std::make_unique<CRegistryInitializer>(m_p->registry);
    const bool done = callPlugin(
        [&]
        {
            if (!m_p->language.isEmpty())
            {
                spec.plugin()->setLanguage(m_p->language);
            }
            return spec.plugin()->initialize(spec.m_p->initializer.get());
        },
        failure);
    if (!done)
    {
        fail(spec, failure.isEmpty() ? tr("The plugin \"%1\" could not be initialized.").arg(spec.name())
                                     : tr("The plugin \"%1\" could not be initialized: %2.").arg(spec.name(), failure));
        return false;
    }
    setState(spec, EPluginState::Initialized);
    return true;
}

void CPluginManager::postInitializeAll()
{
    const QVector<CPluginSpecPtr> started = m_p->started;
    for (const CPluginSpecPtr& spec : started)
    {
        QString failure;
        if (callPlugin([&] { return spec->plugin()->postInitialize(); }, failure))
        {
            setState(*spec, EPluginState::Running);
            continue;
        }
        fail(*spec, failure.isEmpty()
                        ? tr("The plugin \"%1\" could not finish its start.").arg(spec->name())
                        : tr("The plugin \"%1\" could not finish its start: %2.").arg(spec->name(), failure));
    }
}

void CPluginManager::stop()
{
    if (!m_p->isStarted)
    {
        return;
    }
    QVector<CPluginSpecPtr> reverse = m_p->started;
    std::reverse(reverse.begin(), reverse.end());
    const auto forAll = [&](EPluginState state, const auto& call)
    {
        for (const CPluginSpecPtr& spec : qAsConst(reverse))
        {
            QString failure;
            callPlugin(
                [&]
                {
                    if (spec->plugin() != nullptr)
                    {
                        call(*spec);
                    }
                    return true;
                },
                failure);
            if (!failure.isEmpty())
            {
                fail(*spec, tr("The plugin \"%1\" failed while stopping: %2.").arg(spec->name(), failure));
                qCWarning(logPlugins, "%s", qUtf8Printable(spec->m_p->errors.last()));
            }
            setState(*spec, state);
        }
    };
    forAll(EPluginState::Stopping, [](CPluginSpec& spec) { spec.plugin()->aboutToUninitialize(); });
    forAll(EPluginState::Uninitialized,
           [](CPluginSpec& spec) { spec.plugin()->unInitialize(spec.m_p->initializer.get()); });
    for (const CPluginSpecPtr& spec : qAsConst(reverse))
    {
        deleteInstance(*spec);
    }
    m_p->started.clear();
    m_p->isStarted = false;
}

bool CPluginManager::isStarted() const
{
    return m_p->isStarted;
}

void CPluginManager::setLanguage(const QString& language)
{
    m_p->language = language;
    for (const CPluginSpecPtr& spec : qAsConst(m_p->started))
    {
        QString failure;
        callPlugin(
            [&]
            {
                spec->plugin()->setLanguage(language);
                return true;
            },
            failure);
        if (!failure.isEmpty())
        {
            qCWarning(logPlugins, "The plugin \"%s\" could not change its language. Reason: %s",
                      qUtf8Printable(spec->name()), qUtf8Printable(failure));
        }
    }
}

QVector<CPluginSpecPtr> CPluginManager::plugins() const
{
    return m_p->plugins;
}

QVector<CPluginSpecPtr> CPluginManager::startedPlugins() const
{
    return m_p->started;
}

CPluginSpecPtr CPluginManager::plugin(const QString& name) const
{
    const auto found = std::find_if(m_p->plugins.begin(), m_p->plugins.end(),
                                    [&](const CPluginSpecPtr& spec) { return spec->name() == name; });
    return found == m_p->plugins.end() ? CPluginSpecPtr() : *found;
}

QStringList CPluginManager::errors() const
{
    QStringList all = m_p->errors;
    for (const CPluginSpecPtr& spec : m_p->plugins)
    {
        all += spec->errors();
    }
    return all;
}

void CPluginManager::setState(CPluginSpec& spec, EPluginState state)
{
    spec.m_p->state = state;
    emit pluginStateChanged(spec.name(), static_cast<int>(state));
}

void CPluginManager::deleteInstance(CPluginSpec& spec)
{
    // The registry would offer, and keep alive, services whose plugin is gone.
    if (spec.m_p->initializer)
    {
        spec.m_p->initializer->unregisterAll();
    }
    delete spec.m_p->plugin.data();
    spec.m_p->initializer.reset();
    setState(spec, EPluginState::Deleted);
}

void CPluginManager::fail(CPluginSpec& spec, const QString& text)
{
    spec.m_p->errors.append(text);
}

bool CPluginManager::requiredPluginFailed() const
{
    return std::any_of(m_p->plugins.begin(), m_p->plugins.end(),
                       [](const CPluginSpecPtr& spec) { return spec->isRequired() && spec->hasError(); });
}

} // namespace Core::Plugin
