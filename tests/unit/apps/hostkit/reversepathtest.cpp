// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/reversepath.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{

using HostKit::dropsOtherSubnets;
using HostKit::reversePathFilter;

const QString eth0 = QStringLiteral("eth0");

/** A system's settings in a folder. */
class ReversePath : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        m_files.adapterSettings = m_folder.filePath(QStringLiteral("conf"));
        m_files.routes = m_folder.filePath(QStringLiteral("route"));
        route({});
    }

    void write(const QString& name, const QByteArray& text)
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    void filter(const QString& of, const QByteArray& value)
    {
        const QString folder = m_files.adapterSettings + QLatin1Char('/') + of;
        ASSERT_TRUE(QDir().mkpath(folder));
        write(folder + QStringLiteral("/rp_filter"), value + "\n");
    }
    /** The system's routes: to the adapter's own network, and those. */
    void route(const QByteArray& others)
    {
        write(m_files.routes, "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n"
                              "eth0\t0001A8C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0\n" +
                                  others);
    }
    static QByteArray defaultRoute(const QByteArray& adapter)
    {
        return adapter + "\t00000000\t0101A8C0\t0003\t0\t0\t0\t00000000\t0\t0\t0\n";
    }

    HostKit::SSystemFiles m_files;
    QTemporaryDir m_folder;
};

TEST_F(ReversePath, theLargerOfTheTwoSettingsCounts)
{
    for (int all = 0; all <= 2; ++all)
    {
        for (int own = 0; own <= 2; ++own)
        {
            filter(QStringLiteral("all"), QByteArray::number(all));
            filter(eth0, QByteArray::number(own));
            EXPECT_EQ(reversePathFilter(eth0, m_files), std::max(all, own)) << all << " and " << own;
            EXPECT_EQ(dropsOtherSubnets(eth0, m_files), all + own > 0) << all << " and " << own;
        }
    }
}

TEST_F(ReversePath, whatCannotBeReadFiltersNothing)
{
    EXPECT_EQ(reversePathFilter(eth0, m_files), 0);
    filter(QStringLiteral("all"), "0");
    EXPECT_FALSE(dropsOtherSubnets(eth0, m_files));
    filter(QStringLiteral("all"), "1");
    QFile::remove(m_files.routes);
    EXPECT_TRUE(dropsOtherSubnets(eth0, m_files));
}

TEST_F(ReversePath, aDefaultRouteByThatAdapterIsAWayBack)
{
    route(defaultRoute("eth0"));
    filter(QStringLiteral("all"), "0");
    for (const char* value : {"1", "2"})
    {
        filter(eth0, value);
        EXPECT_FALSE(dropsOtherSubnets(eth0, m_files)) << value;
    }
}

TEST_F(ReversePath, aDefaultRouteByAnotherAdapterIsOneForTheLooseFilterOnly)
{
    route(defaultRoute("eth1"));
    filter(QStringLiteral("all"), "0");
    filter(eth0, "1");
    EXPECT_TRUE(dropsOtherSubnets(eth0, m_files));
    filter(eth0, "2");
    EXPECT_FALSE(dropsOtherSubnets(eth0, m_files));
}

} // namespace
