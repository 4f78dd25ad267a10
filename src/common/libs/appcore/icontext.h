// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/appcore_export.h"
#include "servicecore/iservice.h"

#include <QSharedPointer>
#include <QVector>

class QSettings;

namespace Plugin::AppCore
{

/** The application as its plugins see it: its services and its settings. Main thread. */
class APPCORE_EXPORT IContext : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit IContext(QObject* parent = nullptr);
    ~IContext() override;

    /** All registered services in the order of registration; empty once the application has begun to end. */
    virtual QVector<QSharedPointer<Core::Service::IService>> services() const = 0;
    /** The settings in the application's default scope; valid as long as the context. */
    virtual QSettings& settings() = 0;

    /** The first registered service with that interface, or null. */
    template <class T> QSharedPointer<T> service() const
    {
        const auto all = services();
        for (const auto& candidate : all)
        {
            if (auto found = candidate.template objectCast<T>())
            {
                return found;
            }
        }
        return {};
    }
};

} // namespace Plugin::AppCore
