// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "appcore/icontext.h"
#include "appcore/iinfo.h"

#include <gtest/gtest.h>

#include <QSettings>

namespace
{

class CInfo : public Plugin::AppCore::IInfo
{
public:
    explicit CInfo(const QList<Core::CId>& ids) { setIds(ids); }
};

class CContext : public Plugin::AppCore::IContext
{
public:
    QVector<QSharedPointer<Core::Service::IService>> services() const override { return m_services; }
    QSettings& settings() override { return m_settings; }

    QVector<QSharedPointer<Core::Service::IService>> m_services;

private:
    QSettings m_settings;
};

TEST(Info, withoutIdentifiersIsNotValid)
{
    const CInfo info({});
    EXPECT_FALSE(info.isValid());
    EXPECT_FALSE(info.id().isValid());
}

TEST(Info, firstIdentifierIsTheId)
{
    const CInfo info({Core::CId("a"), Core::CId("b")});
    EXPECT_EQ(info.id(), Core::CId("a"));
    EXPECT_TRUE(info.hasId(Core::CId("b")));
    EXPECT_FALSE(info.hasId(Core::CId("c")));
}

TEST(Context, findsAServiceByInterfaceAmongOthers)
{
    CContext context;
    context.m_services.append(QSharedPointer<Core::Service::IService>::create());
    EXPECT_TRUE(context.service<Plugin::AppCore::IContext>().isNull());
    const auto other = QSharedPointer<CContext>::create();
    context.m_services.append(other);
    EXPECT_EQ(context.service<Plugin::AppCore::IContext>(), other);
}

} // namespace
