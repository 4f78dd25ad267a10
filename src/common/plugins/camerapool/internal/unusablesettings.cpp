// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/unusablesettings.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QStringList>

namespace Plugin::CameraPool::Internal
{

QString settingText(const QVariant& value)
{
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}

bool isNewlyUnusable(const QString& key, bool isUsable, const QString& text)
{
    static QMutex mutex; // guards unusable
    static QHash<QString, QString> unusable;
    const QMutexLocker locker(&mutex);
    if (isUsable)
    {
        unusable.remove(key);
        return false;
    }
    const auto known = unusable.constFind(key);
    if (known != unusable.constEnd() && *known == text)
    {
        return false;
    }
    unusable.insert(key, text);
    return true;
}

} // namespace Plugin::CameraPool::Internal
