// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

#include <QSet>

#include <map>

namespace
{

using PoolCliTest::PoolCliProgram;
using PoolCliTest::SOutcome;

/** Two cameras on a port, one on the interface that stands for none. */
class PoolCliModules : public PoolCliProgram
{
protected:
    void SetUp() override
    {
        PoolCliProgram::SetUp();
        writeData(R"({"interfaces": [{"id": "left", "name": "Left port"}, {"id": "DefaultInterface"}],
            "cameras": [{"serial": "EMU-A", "model": "Mono", "interface": "left"},
                        {"serial": "EMU-B", "model": "Deep", "interface": "left"},
                        {"serial": "EMU-C", "model": "Lone"}]})");
    }

    static QString value(const QJsonArray& features, const char* name)
    {
        for (const auto& feature : features)
        {
            if (feature.toObject().value(QStringLiteral("name")).toString() == QLatin1String(name))
            {
                return feature.toObject().value(QStringLiteral("value")).toString();
            }
        }
        return QStringLiteral("<no such feature>");
    }
};

TEST_F(PoolCliModules, interfacesAreListed)
{
    const SOutcome outcome = run({QStringLiteral("interfaces"), QStringLiteral("--json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    QStringList ids;
    for (const auto& value : outcome.json().array())
    {
        ids.append(value.toObject().value(QStringLiteral("id")).toString());
    }
    EXPECT_TRUE(ids.contains(QStringLiteral("left"))) << outcome.out.constData();
    const SOutcome table = run({QStringLiteral("interfaces")});
    EXPECT_TRUE(table.out.contains("Left port")) << table.out.constData();
}

TEST_F(PoolCliModules, anInterfaceIsFoundByItsNamesAndShowsFeaturesAndDevices)
{
    for (const QString& name : {QStringLiteral("left"), QStringLiteral("Left port")})
    {
        const SOutcome outcome = run({QStringLiteral("interfaces"), name, QStringLiteral("--json")});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
        const QJsonObject object = outcome.json().object();
        const QJsonArray features = object.value(QStringLiteral("features")).toArray();
        EXPECT_EQ(value(features, "InterfaceID"), QStringLiteral("left"));
        EXPECT_EQ(value(features, "DeviceCount"), QStringLiteral("2"));
        const QJsonArray devices = object.value(QStringLiteral("devices")).toArray();
        ASSERT_EQ(devices.size(), 2);
        EXPECT_EQ(devices.at(1).toObject().value(QStringLiteral("DeviceSerialNumber")).toString(),
                  QStringLiteral("EMU-B"));
        EXPECT_EQ(devices.at(1).toObject().value(QStringLiteral("DeviceAccessStatus")).toString(),
                  QStringLiteral("ReadWrite"));
    }
}

TEST_F(PoolCliModules, anInterfaceIsShownAsATreeAndATableOfDevices)
{
    const SOutcome outcome =
        run({QStringLiteral("interfaces"), QStringLiteral("left"), QStringLiteral("--filter"), QStringLiteral("Type")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_TRUE(outcome.out.contains("InterfaceType = Custom")) << outcome.out.constData();
    EXPECT_FALSE(outcome.out.contains("InterfaceID")) << outcome.out.constData();
    EXPECT_TRUE(outcome.out.contains("EMU-A")) << outcome.out.constData();
}

TEST_F(PoolCliModules, aCameraOnNoInterfaceIsToldHowToGetOne)
{
    writeData(R"({"cameras": [{"serial": "EMU-A"}]})");
    const SOutcome outcome = run(
        {QStringLiteral("features"), QStringLiteral("EMU-A"), QStringLiteral("--module"), QStringLiteral("interface")});
    EXPECT_EQ(outcome.exitCode, 1) << outcome.out.constData();
    EXPECT_TRUE(outcome.err.contains("EMU-A") && outcome.err.contains("\"interface\"")) << outcome.err.constData();
}

TEST_F(PoolCliModules, anUnknownInterfaceIsRefusedWithItsName)
{
    const SOutcome outcome = run({QStringLiteral("interfaces"), QStringLiteral("nobody")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("nobody")) << outcome.err.constData();
}

TEST_F(PoolCliModules, moduleShowsItsNodeMapAlone)
{
    const std::map<QString, QString> paths{{QStringLiteral("camera"), QStringLiteral("@CameraDevice")},
                                           {QStringLiteral("instant"), QStringLiteral("@CameraInstance")},
                                           {QStringLiteral("stream"), QStringLiteral("@StreamGrabber0")},
                                           {QStringLiteral("tl"), QStringLiteral("@DeviceTransportLayer")},
                                           {QStringLiteral("event"), QStringLiteral("@EventGrabber")},
                                           {QStringLiteral("interface"), QStringLiteral("@Interface")}};
    for (const auto& [module, path] : paths)
    {
        const SOutcome outcome = run({QStringLiteral("features"), QStringLiteral("EMU-A"), QStringLiteral("--module"),
                                      module, QStringLiteral("--json")});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
        for (const auto& feature : outcome.json().array())
        {
            EXPECT_EQ(feature.toObject().value(QStringLiteral("path")).toString(), path) << module.toStdString();
        }
        // Emulated cameras have nothing to set in their transport layer, and no events yet.
        const bool mayBeEmpty = module == QLatin1String("tl") || module == QLatin1String("event");
        EXPECT_TRUE(mayBeEmpty || !outcome.json().array().isEmpty()) << module.toStdString();
    }
}

TEST_F(PoolCliModules, allShowsTheCamerasOwnNodeMapsAndItsInterface)
{
    const auto pathsOf = [this](const QStringList& more)
    {
        const SOutcome outcome =
            run(QStringList{QStringLiteral("features"), QStringLiteral("EMU-A"), QStringLiteral("--json")} + more);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err.constData();
        QSet<QString> paths;
        for (const auto& feature : outcome.json().array())
        {
            paths.insert(feature.toObject().value(QStringLiteral("path")).toString());
        }
        return paths;
    };
    const QSet<QString> own = pathsOf({});
    const QSet<QString> all = pathsOf({QStringLiteral("--module"), QStringLiteral("all")});
    EXPECT_TRUE(own.contains(QStringLiteral("@CameraDevice")) && own.contains(QStringLiteral("@CameraInstance")));
    EXPECT_FALSE(own.contains(QStringLiteral("@Interface")));
    EXPECT_EQ(all, own + QSet<QString>{QStringLiteral("@Interface")});
}

TEST_F(PoolCliModules, getAndSetTakePathsOfEveryModule)
{
    const SOutcome get =
        run({QStringLiteral("get"), QStringLiteral("EMU-A"), QStringLiteral("@StreamGrabber0/PayloadSize"),
             QStringLiteral("@CameraInstance/MaxNumBuffer"), QStringLiteral("@Interface/DeviceAccessStatus"),
             QStringLiteral("--json")});
    ASSERT_EQ(get.exitCode, 0) << get.err.constData();
    const QJsonObject values = get.json().object();
    EXPECT_GT(values.value(QStringLiteral("@StreamGrabber0/PayloadSize")).toString().toInt(), 0);
    EXPECT_EQ(values.value(QStringLiteral("@CameraInstance/MaxNumBuffer")).toString(), QStringLiteral("10"));
    EXPECT_EQ(values.value(QStringLiteral("@Interface/DeviceAccessStatus")).toString(),
              QStringLiteral("OpenReadWrite")); // by this very program
    const SOutcome set =
        run({QStringLiteral("set"), QStringLiteral("EMU-A"), QStringLiteral("@CameraInstance/MaxNumBuffer=5"),
             QStringLiteral("@Interface/DeviceSelector=1"), QStringLiteral("@Interface/DeviceUpdateList"),
             QStringLiteral("--json")});
    ASSERT_EQ(set.exitCode, 0) << set.err.constData();
    EXPECT_EQ(set.json().object().value(QStringLiteral("@CameraInstance/MaxNumBuffer")).toString(),
              QStringLiteral("5"));
    EXPECT_EQ(set.json().object().value(QStringLiteral("@Interface/DeviceSelector")).toString(), QStringLiteral("1"));
}

TEST_F(PoolCliModules, aFeatureThatTheModuleDoesNotHaveIsRefusedWithItsPath)
{
    const SOutcome outcome =
        run({QStringLiteral("get"), QStringLiteral("EMU-A"), QStringLiteral("@StreamGrabber0/Width")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("@StreamGrabber0/Width")) << outcome.err.constData();
}

TEST_F(PoolCliModules, anUnknownModuleIsWrongUsage)
{
    EXPECT_EQ(run({QStringLiteral("features"), QStringLiteral("EMU-A"), QStringLiteral("--module"),
                   QStringLiteral("everything")})
                  .exitCode,
              2);
}

} // namespace
