// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "servicecore/servicecore_export.h"

#include <QObject>

namespace Core::Service
{

/** Base of every service that a plugin offers to the application. Lives in the main thread. */
class SERVICECORE_EXPORT IService : public QObject
{
    Q_OBJECT
public:
    explicit IService(QObject* parent = nullptr);
    ~IService() override;
};

} // namespace Core::Service
