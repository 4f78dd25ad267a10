// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/grabsettings.h"

#include "camerapool/internal/unusablesettings.h"

#include <QSettings>
#include <QtDebug>

#include <algorithm>
#include <limits>

namespace Plugin::CameraPool::Internal
{

namespace
{

constexpr int s_buffersLimit = 65535; // beyond any use; keeps a slip of the pen from exhausting the memory
const QString s_group = QStringLiteral("Grab");
const QString s_minNumBuffers = QStringLiteral("MinNumBuffersContinuousShot");
const QString s_maxNumBuffers = QStringLiteral("MaxNumBuffersContinuousShot");
const QString s_usedBufferMemory = QStringLiteral("UsedBufferMemory");

void report(const QString& key, bool isUsable, const QVariant& found, const QString& used)
{
    const QString text = settingText(found);
    if (isNewlyUnusable(s_group + QLatin1Char('/') + key, isUsable, text))
    {
        qWarning("The setting Grab/%s has the unusable value \"%s\"; %s is used.", qUtf8Printable(key),
                 qUtf8Printable(text), qUtf8Printable(used));
    }
}

int readBuffers(const QSettings& settings, const QString& key, int fallback, int lowest, bool& isReplaced)
{
    const QVariant found = settings.value(key, fallback);
    bool isNumber = false;
    const int value = found.toInt(&isNumber);
    const int usable = isNumber ? std::clamp(value, lowest, s_buffersLimit) : std::max(fallback, lowest);
    isReplaced = !isNumber || usable != value;
    report(key, !isReplaced, found, QString::number(usable));
    return usable;
}

/** Qt turns a negative integer into a huge unsigned one; only what is a number of bytes as written is taken. */
unsigned int readBytes(const QSettings& settings, const QString& key, unsigned int fallback, bool& isReplaced)
{
    const QVariant found = settings.value(key, fallback);
    bool isNumber = false;
    const qlonglong value = found.toLongLong(&isNumber);
    isReplaced = !isNumber || value < 0 || value > static_cast<qlonglong>(std::numeric_limits<unsigned int>::max());
    report(key, !isReplaced, found, QString::number(fallback));
    return isReplaced ? fallback : static_cast<unsigned int>(value);
}

// Writing an entry, also with the value it has, costs a synchronised write of the whole file: 15 ms for each camera.
template <class Number> void store(QSettings& settings, const QString& key, Number value, bool isReplaced)
{
    const bool isSomebodysOwn = isReplaced && settings.contains(key);
    if (!isSomebodysOwn && settings.value(key).toString() != QString::number(value))
    {
        settings.setValue(key, value);
    }
}

} // namespace

SGrabSettings SGrabSettings::read()
{
    QSettings settings;
    settings.beginGroup(s_group);
    const SGrabSettings defaults;
    SGrabSettings result;
    result.minNumBuffers = readBuffers(settings, s_minNumBuffers, defaults.minNumBuffers, 1, result.isMinReplaced);
    result.maxNumBuffers =
        readBuffers(settings, s_maxNumBuffers, defaults.maxNumBuffers, result.minNumBuffers, result.isMaxReplaced);
    result.usedBufferMemoryBytes =
        readBytes(settings, s_usedBufferMemory, defaults.usedBufferMemoryBytes, result.isMemoryReplaced);
    return result;
}

void SGrabSettings::write() const
{
    QSettings settings;
    settings.beginGroup(s_group);
    store(settings, s_minNumBuffers, minNumBuffers, isMinReplaced);
    store(settings, s_maxNumBuffers, maxNumBuffers, isMaxReplaced);
    store(settings, s_usedBufferMemory, usedBufferMemoryBytes, isMemoryReplaced);
}

int SGrabSettings::buffersFor(std::uint64_t payloadBytes) const
{
    const std::uint64_t fitting = usedBufferMemoryBytes / payloadBytes;
    const auto atMost = std::min(fitting, static_cast<std::uint64_t>(maxNumBuffers));
    return std::max(static_cast<int>(atMost), minNumBuffers);
}

} // namespace Plugin::CameraPool::Internal
