// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/appcore_export.h"

#include <QJsonObject>

namespace Plugin::AppCore
{

/** Something whose settings are stored with a project of the application. */
class APPCORE_EXPORT ISerializable
{
public:
    virtual ~ISerializable();
    virtual QJsonObject save() const = 0;
    /** Takes over what save() wrote; keys that are missing leave their setting as it is. */
    virtual void restore(const QJsonObject& object) = 0;
};

} // namespace Plugin::AppCore
