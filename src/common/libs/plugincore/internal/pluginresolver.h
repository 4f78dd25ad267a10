// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/plugincore_testexport.h"
#include "plugincore/pluginspec.h"

#include <QCoreApplication>
#include <QMap>

namespace Core::Plugin
{

/** Checks that plugins fit together and puts them into the order of their dependencies. */
class PLUGINCORE_TEST_EXPORT CPluginResolver
{
    Q_DECLARE_TR_FUNCTIONS(Core::Plugin::CPluginResolver)
public:
    /**
     * The plugins that can be started, each after all that it depends on, otherwise in the order given; they are
     * Resolved then. The others get errors: a name used twice (the first keeps it), a dependency that is missing, has
     * the wrong version, is part of a circle or cannot be used itself.
     */
    static QVector<CPluginSpecPtr> resolve(const QVector<CPluginSpecPtr>& plugins);

private:
    enum class EMark
    {
        Visiting,
        Done
    };

    void collectNames(const QVector<CPluginSpecPtr>& plugins);
    void checkDependencies(CPluginSpec& spec) const;
    void visit(const CPluginSpecPtr& spec, QVector<CPluginSpecPtr>& way);
    void reportCircle(const CPluginSpecPtr& start, const QVector<CPluginSpecPtr>& way) const;

    QMap<QString, CPluginSpecPtr> m_byName;
    QMap<CPluginSpec*, EMark> m_marks;
    QVector<CPluginSpecPtr> m_order;
};

} // namespace Core::Plugin
