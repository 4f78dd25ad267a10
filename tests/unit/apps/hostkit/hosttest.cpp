// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/host.h"

#include <gtest/gtest.h>

#include <QSettings>

namespace
{

constexpr const char* variable = "CAMERAPOOL_GIGE_ADAPTERS";

/** Hosts without plugins, which search no network. */
class HostAdapters : public ::testing::Test
{
protected:
    void SetUp() override { qunsetenv(variable); }
    void TearDown() override
    {
        QSettings().clear();
        qputenv(variable, "none");
    }
    static void set(const QVariant& adapters) { QSettings().setValue(QStringLiteral("GigE/Adapters"), adapters); }
    /** What the plugins of a host would find. */
    static QByteArray adaptersOf(HostKit::CHost& host)
    {
        host.start(QStringLiteral("en"));
        return qgetenv(variable);
    }

    HostKit::CHost m_host{QStringLiteral("nowhere")};
};

TEST_F(HostAdapters, comeFromTheSettingsUntilTheHostStops)
{
    set(QStringLiteral("eth1"));
    EXPECT_EQ(adaptersOf(m_host), "eth1");
    m_host.stop();
    EXPECT_FALSE(qEnvironmentVariableIsSet(variable));
    set(QStringLiteral("eth2"));
    HostKit::CHost next(QStringLiteral("nowhere"));
    EXPECT_EQ(adaptersOf(next), "eth2");
}

TEST_F(HostAdapters, mayBeSeveral)
{
    set(QStringList{QStringLiteral("eth1"), QStringLiteral("192.168.5.1")}); // as "eth1, 192.168.5.1" is read
    EXPECT_EQ(adaptersOf(m_host), "eth1,192.168.5.1");
}

TEST_F(HostAdapters, comeFromTheEnvironmentFirst)
{
    set(QStringLiteral("eth1"));
    qputenv(variable, "lo");
    EXPECT_EQ(adaptersOf(m_host), "lo");
    m_host.stop();
    EXPECT_EQ(qgetenv(variable), "lo") << "it is not the host's";
}

TEST_F(HostAdapters, areLeftOpenWithoutASetting)
{
    EXPECT_EQ(adaptersOf(m_host), "");
    EXPECT_FALSE(qEnvironmentVariableIsSet(variable));
}

} // namespace
