// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/plugincore_export.h"
#include "servicecore/iservice.h"

#include <QObject>
#include <QSharedPointer>
#include <QVector>

namespace Core::Plugin
{

/** What a plugin is given to make its services known and to find those of others. Main thread. */
class PLUGINCORE_EXPORT IPluginInitializer : public QObject
{
    Q_OBJECT
public:
    explicit IPluginInitializer(QObject* parent = nullptr);
    ~IPluginInitializer() override;
    virtual void registerService(const QSharedPointer<Core::Service::IService>& service) = 0;
    virtual void unregisterService(const QSharedPointer<Core::Service::IService>& service) = 0;
    /** All services registered so far, in the order of registration; none unless the host offers them. */
    virtual QVector<QSharedPointer<Core::Service::IService>> services() const;

    /** The first registered service with that interface, or null. */
    template <class T> QSharedPointer<T> findService() const
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

} // namespace Core::Plugin
