// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/iplugin.h"

#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QVersionNumber>

#include <memory>

namespace Core::Plugin
{

/**
 * Where a plugin stands. It goes through the states in the order of their numbers; one with an error stays where it
 * was when that happened and goes to Deleted in the end.
 */
enum class EPluginState
{
    Found = 0,         /**< a file that may be a plugin */
    Read = 1,          /**< its metadata was read and is well formed */
    Resolved = 2,      /**< every dependency is there in a version that fits */
    Loaded = 3,        /**< the library is loaded and its instance exists */
    Initialized = 4,   /**< initialize() returned true */
    Running = 5,       /**< postInitialize() returned true */
    Stopping = 6,      /**< aboutToUninitialize() was called */
    Uninitialized = 7, /**< unInitialize() was called */
    Deleted = 8        /**< the instance is gone */
};

/** What a plugin needs of another one. */
struct PLUGINCORE_EXPORT SPluginDependency
{
    QString name;
    QVersionNumber version;
};

/** One plugin of the application: what its metadata says, where it stands and what went wrong. Main thread. */
class PLUGINCORE_EXPORT CPluginSpec
{
public:
    CPluginSpec();
    ~CPluginSpec();
    CPluginSpec(const CPluginSpec&) = delete;
    CPluginSpec& operator=(const CPluginSpec&) = delete;

    QString filePath() const;
    QString name() const;
    QVersionNumber version() const;
    /** The oldest version whose users can use this one; the version itself when the metadata has none. */
    QVersionNumber compatVersion() const;
    /** The application cannot run without it. */
    bool isRequired() const;
    QVector<SPluginDependency> dependencies() const;
    QString description() const;
    QString vendor() const;
    QString copyright() const;
    QString license() const;
    QString url() const;

    EPluginState state() const;
    /** Translated; empty when all is well. */
    QStringList errors() const;
    bool hasError() const;
    /** Null unless loaded. Owned by the plugin manager. */
    IPlugin* plugin() const;

    /** Whether a plugin that asks for that version can use this one: compatVersion <= asked <= version. */
    bool provides(const QVersionNumber& asked) const;

private:
    friend class CPluginMetadata;
    friend class CPluginResolver;
    friend class CPluginManager;
    struct SPrivate;
    std::unique_ptr<SPrivate> m_p;
};

using CPluginSpecPtr = QSharedPointer<CPluginSpec>;

} // namespace Core::Plugin
