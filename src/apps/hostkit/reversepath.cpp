// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/reversepath.h"

#include <QFile>
#include <QStringList>
#include <QVector>

#include <algorithm>

namespace HostKit
{

namespace
{

QString contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

/** Adapters by which a default route goes. */
QStringList defaultRoutes(const QString& routes)
{
    // Linux, /proc/net/route: adapter, destination, gateway, flags, reference count, use, metric, mask ...
    constexpr int destination = 1;
    constexpr int mask = 7;
    QStringList adapters;
    const QStringList lines = contentOf(routes).split(QLatin1Char('\n'));
    for (const QString& line : lines)
    {
        const QStringList columns = line.simplified().split(QLatin1Char(' '));
        const QString none = QStringLiteral("00000000");
        if (columns.size() > mask && columns.at(destination) == none && columns.at(mask) == none)
        {
            adapters.append(columns.first());
        }
    }
    return adapters;
}

} // namespace

int reversePathFilter(const QString& adapterName, const SSystemFiles& files)
{
    const auto setting = [&files](const QString& of)
    {
        return contentOf(QStringLiteral("%1/%2/rp_filter").arg(files.adapterSettings, of)).trimmed().toInt();
    };
    return std::max(setting(QStringLiteral("all")), setting(adapterName));
}

bool dropsOtherSubnets(const QString& adapterName, const SSystemFiles& files)
{
    constexpr int loose = 2;
    const int filter = reversePathFilter(adapterName, files);
    const QStringList routes = defaultRoutes(files.routes);
    return filter != 0 && (filter == loose ? routes.isEmpty() : !routes.contains(adapterName));
}

} // namespace HostKit
