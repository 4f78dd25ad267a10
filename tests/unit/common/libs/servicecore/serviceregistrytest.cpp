// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "servicecore/serviceregistry.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace
{

using Core::Service::CServiceRegistry;
using Core::Service::IService;

class IGreeter : public IService
{
    Q_OBJECT
public:
    virtual QString greet() const = 0;
};

class CGreeter : public IGreeter
{
    Q_OBJECT
public:
    explicit CGreeter(const QString& text) : m_text(text) {}
    QString greet() const override { return m_text; }

private:
    QString m_text;
};

class COther : public IService
{
    Q_OBJECT
};

TEST(ServiceRegistry, findsAServiceByItsInterface)
{
    CServiceRegistry registry;
    registry.registerService(QSharedPointer<COther>::create());
    registry.registerService(QSharedPointer<CGreeter>::create(QStringLiteral("hello")));
    const auto greeter = registry.find<IGreeter>();
    ASSERT_FALSE(greeter.isNull());
    EXPECT_EQ(greeter->greet(), QStringLiteral("hello"));
}

TEST(ServiceRegistry, findsTheFirstOfSeveral)
{
    CServiceRegistry registry;
    registry.registerService(QSharedPointer<CGreeter>::create(QStringLiteral("first")));
    registry.registerService(QSharedPointer<CGreeter>::create(QStringLiteral("second")));
    EXPECT_EQ(registry.find<IGreeter>()->greet(), QStringLiteral("first"));
}

TEST(ServiceRegistry, findIsNullWithoutSuchAService)
{
    CServiceRegistry registry;
    registry.registerService(QSharedPointer<COther>::create());
    EXPECT_TRUE(registry.find<IGreeter>().isNull());
}

TEST(ServiceRegistry, refusesNullAndASecondRegistration)
{
    CServiceRegistry registry;
    const auto service = QSharedPointer<COther>::create();
    EXPECT_FALSE(registry.registerService({}));
    EXPECT_TRUE(registry.registerService(service));
    EXPECT_FALSE(registry.registerService(service));
    EXPECT_EQ(registry.services().size(), 1);
}

TEST(ServiceRegistry, announcesServicesThatComeAndGo)
{
    CServiceRegistry registry;
    int registered = 0;
    int unregistered = 0;
    QObject::connect(&registry, &CServiceRegistry::serviceRegistered, [&] { ++registered; });
    QObject::connect(&registry, &CServiceRegistry::serviceUnregistered, [&] { ++unregistered; });
    const auto service = QSharedPointer<COther>::create();
    registry.registerService(service);
    registry.registerService(service);
    EXPECT_TRUE(registry.unregisterService(service));
    EXPECT_FALSE(registry.unregisterService(service));
    EXPECT_EQ(registered, 1);
    EXPECT_EQ(unregistered, 1);
}

TEST(ServiceRegistry, holdsAReferenceUntilUnregistered)
{
    CServiceRegistry registry;
    auto service = QSharedPointer<COther>::create();
    const QWeakPointer<COther> watched = service;
    registry.registerService(service);
    service.clear();
    ASSERT_FALSE(watched.isNull());
    registry.unregisterService(watched.toStrongRef());
    EXPECT_TRUE(watched.isNull());
}

} // namespace

#include "serviceregistrytest.moc"
