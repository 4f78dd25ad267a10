// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/firmwareversion.h"

#include <QRegExp>

#include <locale>
#include <sstream>

namespace Plugin::CameraPool::Internal
{

bool isComparableFirmwareVersion(const QString& text)
{
    const QRegExp pattern(QStringLiteral("^(\\d{1,9}\\.){1,3}(\\d{1,9})?$"), Qt::CaseSensitive, QRegExp::RegExp);
    return pattern.exactMatch(text);
}

SFirmwareVersion parseFirmwareVersion(const QString& text)
{
    std::istringstream stream(text.toStdString());
    stream.imbue(std::locale::classic()); // no groups of thousands
    SFirmwareVersion version;
    bool isFirst = true;
    for (std::int32_t& component : version.components)
    {
        if (!isFirst)
        {
            stream.get();
        }
        isFirst = false;
        std::int32_t number = 0;
        if (!(stream >> number))
        {
            break;
        }
        component = number;
    }
    version.isShort = stream.fail();
    return version;
}

} // namespace Plugin::CameraPool::Internal
