// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/internal/pluginresolver.h"

#include "plugincore/internal/pluginspecprivate.h"

#include <QFileInfo>

namespace Core::Plugin
{

QVector<CPluginSpecPtr> CPluginResolver::resolve(const QVector<CPluginSpecPtr>& plugins)
{
    CPluginResolver resolver;
    resolver.collectNames(plugins);
    for (const CPluginSpecPtr& spec : plugins)
    {
        if (!spec->hasError())
        {
            resolver.checkDependencies(*spec);
        }
    }
    for (const CPluginSpecPtr& spec : plugins)
    {
        QVector<CPluginSpecPtr> way;
        resolver.visit(spec, way);
    }
    for (const CPluginSpecPtr& spec : qAsConst(resolver.m_order))
    {
        spec->m_p->state = EPluginState::Resolved;
    }
    return resolver.m_order;
}

void CPluginResolver::collectNames(const QVector<CPluginSpecPtr>& plugins)
{
    for (const CPluginSpecPtr& spec : plugins)
    {
        if (spec->name().isEmpty())
        {
            continue;
        }
        const CPluginSpecPtr first = m_byName.value(spec->name());
        if (first.isNull())
        {
            m_byName.insert(spec->name(), spec);
            continue;
        }
        spec->m_p->errors.append(
            tr("The plugin \"%1\" (%2) cannot be used: %3 has the same name.")
                .arg(spec->name(), QFileInfo(spec->filePath()).fileName(), QFileInfo(first->filePath()).fileName()));
    }
}

void CPluginResolver::checkDependencies(CPluginSpec& spec) const
{
    const auto dependencies = spec.dependencies();
    for (const SPluginDependency& dependency : dependencies)
    {
        const CPluginSpecPtr other = m_byName.value(dependency.name);
        if (other.isNull())
        {
            spec.m_p->errors.append(tr("The plugin \"%1\" needs the plugin \"%2\" in version %3, which is missing.")
                                        .arg(spec.name(), dependency.name, dependency.version.toString()));
        }
        else if (!other->hasError() && !other->provides(dependency.version))
        {
            spec.m_p->errors.append(
                tr("The plugin \"%1\" needs the plugin \"%2\" in version %3, but that one has version %4, compatible "
                   "down to %5.")
                    .arg(spec.name(), dependency.name, dependency.version.toString(), other->version().toString(),
                         other->compatVersion().toString()));
        }
    }
}

void CPluginResolver::visit(const CPluginSpecPtr& spec, QVector<CPluginSpecPtr>& way)
{
    const auto mark = m_marks.constFind(spec.data());
    if (mark != m_marks.constEnd())
    {
        if (*mark == EMark::Visiting)
        {
            reportCircle(spec, way);
        }
        return;
    }
    m_marks.insert(spec.data(), EMark::Visiting);
    way.append(spec);
    const auto dependencies = spec->dependencies();
    for (const SPluginDependency& dependency : dependencies)
    {
        const CPluginSpecPtr other = m_byName.value(dependency.name);
        if (other.isNull())
        {
            continue;
        }
        visit(other, way);
        if (other->hasError() && !spec->hasError())
        {
            spec->m_p->errors.append(tr("The plugin \"%1\" needs the plugin \"%2\", which cannot be used.")
                                         .arg(spec->name(), dependency.name));
        }
    }
    way.removeLast();
    m_marks.insert(spec.data(), EMark::Done);
    if (!spec->hasError())
    {
        m_order.append(spec);
    }
}

void CPluginResolver::reportCircle(const CPluginSpecPtr& start, const QVector<CPluginSpecPtr>& way) const
{
    const QVector<CPluginSpecPtr> circle = way.mid(way.indexOf(start));
    QStringList names;
    for (const CPluginSpecPtr& member : circle)
    {
        names.append(member->name());
    }
    names.append(start->name());
    for (const CPluginSpecPtr& member : circle)
    {
        member->m_p->errors.append(
            tr("The plugin \"%1\" depends on itself: %2.").arg(member->name(), names.join(QStringLiteral(" -> "))));
    }
}

} // namespace Core::Plugin
