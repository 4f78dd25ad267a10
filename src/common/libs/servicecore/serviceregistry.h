// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "servicecore/iservice.h"

#include <QSharedPointer>
#include <QVector>

namespace Core::Service
{

/** The services of the application, found by interface. Main thread. Holds a reference to each. */
class SERVICECORE_EXPORT CServiceRegistry : public QObject
{
    Q_OBJECT
public:
    explicit CServiceRegistry(QObject* parent = nullptr);
    ~CServiceRegistry() override;

    /** Null and a service that is registered already are refused with false. */
    bool registerService(const QSharedPointer<IService>& service);
    bool unregisterService(const QSharedPointer<IService>& service);
    QVector<QSharedPointer<IService>> services() const;

    /** The first registered service with that interface, or null. */
    template <class T> QSharedPointer<T> find() const
    {
        for (const auto& service : services())
        {
            if (auto found = service.objectCast<T>())
            {
                return found;
            }
        }
        return {};
    }

signals:
    void serviceRegistered(const QSharedPointer<Core::Service::IService>& service);
    void serviceUnregistered(const QSharedPointer<Core::Service::IService>& service);

private:
    QVector<QSharedPointer<IService>> m_services;
};

} // namespace Core::Service
