// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/networkverbs.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"

#include "genapi/exceptions.h"
#include "hostkit/networkcheck.h"
#include "hostkit/reversepath.h"
#include "parametercollection/parameters.h"
#include "transport/infos.h"

#include <algorithm>

namespace PoolCli
{
namespace
{

QString property(const HostKit::InterfaceInfoPtr& info, const char* key)
{
    return QString::fromUtf8(info->getVelmoInterfaceInfo().Get(key).c_str());
}

QString unknownOr(qint64 value, const QString& text)
{
    return value > 0 ? text.arg(value) : CTexts::tr("unknown");
}

QJsonValue nullOr(qint64 value)
{
    return value > 0 ? QJsonValue(value) : QJsonValue();
}

/** What is wrong with a camera where it is; "" when nothing is. */
QString problemOf(const SAdapterFacts& adapter, const QJsonObject& device)
{
    const QString status = device.value(QStringLiteral("DeviceAccessStatus")).toString();
    const QString address = device.value(QStringLiteral("GevDeviceIPAddress")).toString();
    if (status == QLatin1String("NoAccess"))
    {
        HostKit::SNetworkFacts facts;
        facts.address = address;
        facts.subnetMask = device.value(QStringLiteral("GevDeviceSubnetMask")).toString();
        facts.adapter = adapter.id;
        facts.adapterAddress = adapter.address;
        facts.adapterMask = adapter.mask;
        facts.accessStatus = QStringLiteral("Unreachable");
        return HostKit::diagnoseNetwork(facts).value(0).text;
    }
    return {};
}

/** The system's name of the adapter: its further addresses have identifiers of their own, "eth0/192.168.1.5". */
QString systemNameOf(const SAdapterFacts& adapter)
{
    return adapter.id.section(QLatin1Char('/'), 0, 0);
}

/** Would the system drop what cameras in another subnet answer there? Not where one was heard. */
bool isDeaf(const SAdapterFacts& adapter)
{
    const bool isHeard = std::any_of(adapter.devices.begin(), adapter.devices.end(),
                                     [&adapter](const QJsonValue& value)
                                     {
                                         const QString key = QStringLiteral("GevDeviceIPAddress");
                                         return !HostKit::isInSubnet(value.toObject().value(key).toString(),
                                                                     adapter.address, adapter.mask);
                                     });
    const bool isLoopback = adapter.address.startsWith(QLatin1String("127."));
    return !isHeard && !isLoopback && HostKit::dropsOtherSubnets(systemNameOf(adapter));
}

QJsonObject describe(const SAdapterFacts& adapter)
{
    QJsonArray cameras;
    for (const auto& value : adapter.devices)
    {
        const QJsonObject device = value.toObject();
        const QString address = device.value(QStringLiteral("GevDeviceIPAddress")).toString();
        cameras.append(QJsonObject{{"name", device.value(QStringLiteral("DeviceDisplayName"))},
                                   {"serial", device.value(QStringLiteral("DeviceSerialNumber"))},
                                   {"address", address},
                                   {"subnet_mask", device.value(QStringLiteral("GevDeviceSubnetMask"))},
                                   {"access", device.value(QStringLiteral("DeviceAccessStatus"))},
                                   {"same_subnet", HostKit::isInSubnet(address, adapter.address, adapter.mask)},
                                   {"problem", problemOf(adapter, device)}});
    }
    return {{"id", adapter.id},
            {"name", adapter.name},
            {"address", adapter.address},
            {"subnet_mask", adapter.mask},
            {"mac_address", adapter.mac},
            {"mtu", nullOr(adapter.mtu)},
            {"link_mbps", nullOr(adapter.linkMegabits)},
            {"receive_buffer_limit", nullOr(adapter.receiveBuffer)},
            {"reverse_path_filter", HostKit::reversePathFilter(systemNameOf(adapter))},
            {"drops_other_subnets", isDeaf(adapter)},
            {"cameras", cameras}};
}

void printAdapters(const QVector<SAdapterFacts>& adapters)
{
    QVector<QVector<QString>> rows{{CTexts::tr("ADAPTER"), CTexts::tr("ADDRESS"), QStringLiteral("MTU"),
                                    CTexts::tr("LINK"), CTexts::tr("CAMERAS")}};
    for (const SAdapterFacts& adapter : adapters)
    {
        rows.append({printable(adapter.id), HostKit::addressWithPrefix(adapter.address, adapter.mask),
                     unknownOr(adapter.mtu, QStringLiteral("%1")),
                     unknownOr(adapter.linkMegabits, QStringLiteral("%1 Mbit/s")),
                     QString::number(adapter.devices.size())});
    }
    printTable(rows);
}

void printCameras(const QVector<SAdapterFacts>& adapters)
{
    QVector<QVector<QString>> rows{
        {CTexts::tr("CAMERA"), CTexts::tr("ADAPTER"), CTexts::tr("ADDRESS"), CTexts::tr("ACCESS")}};
    QStringList problems;
    for (const SAdapterFacts& adapter : adapters)
    {
        for (const auto& value : adapter.devices)
        {
            const QJsonObject device = value.toObject();
            const QString name = printable(device.value(QStringLiteral("DeviceDisplayName")).toString());
            rows.append({name, printable(adapter.id),
                         HostKit::addressWithPrefix(device.value(QStringLiteral("GevDeviceIPAddress")).toString(),
                                                    device.value(QStringLiteral("GevDeviceSubnetMask")).toString()),
                         device.value(QStringLiteral("DeviceAccessStatus")).toString()});
            if (const QString problem = problemOf(adapter, device); !problem.isEmpty())
            {
                problems.append(QStringLiteral("%1: %2").arg(name, printable(problem)));
            }
        }
    }
    if (rows.size() == 1)
    {
        printLine(CTexts::tr("No GigE Vision camera answers."));
        return;
    }
    printTable(rows);
    for (const QString& problem : problems)
    {
        printLine(problem);
    }
}

void printDeafAdapters(const QVector<SAdapterFacts>& adapters)
{
    QStringList told;
    for (const SAdapterFacts& adapter : adapters)
    {
        const QString name = systemNameOf(adapter);
        if (!told.contains(name) && isDeaf(adapter))
        {
            told.append(name);
            printLine(CTexts::tr("%1: cameras in another subnet are not heard, for the system drops their answers "
                                 "(rp_filter is %2). To hear them: sysctl -w net.ipv4.conf.all.rp_filter=0 "
                                 "net.ipv4.conf.%1.rp_filter=0")
                          .arg(printable(name))
                          .arg(HostKit::reversePathFilter(name)));
        }
    }
}

QVector<SAdapterFacts> readAdapters(CSession& session, const SOptions& options)
{
    session.waitForDiscovery(options.discoveryTimeoutMs);
    QVector<SAdapterFacts> adapters;
    const auto interfaces = session.interfaces();
    for (const auto& info : interfaces)
    {
        if (isGigE(*info) && !property(info, Velmo::Key::IpAddress).isEmpty())
        {
            adapters.append(readAdapter(session, info));
        }
    }
    return adapters;
}

} // namespace

bool isGigE(const Plugin::CameraPool::IBaseInfo& info)
{
    return info.getTLType() == QLatin1String("GEV");
}

qint64 readInteger(const QSharedPointer<ParameterCollection::IParameterCollection>& collection, const QString& name,
                   qint64 fallback)
{
    return ParameterCollection::CIntegerParameter(collection, name).valueOr(fallback);
}

QString probePacketSize(const QSharedPointer<ParameterCollection::IParameterCollection>& collection)
{
    try
    {
        ParameterCollection::CCommandParameter(collection, QStringLiteral("@StreamGrabber0/ProbePacketSize")).execute();
    }
    catch (const GenICam::GenericException& e)
    {
        return QString::fromUtf8(e.GetDescription());
    }
    return {};
}

SAdapterFacts readAdapter(CSession& session, const HostKit::InterfaceInfoPtr& info)
{
    const COpenInterface interface(session, info);
    const auto collection = session.parameters(info);
    SAdapterFacts facts;
    facts.id = info->getInterfaceId();
    facts.name = info->getFriendlyName();
    facts.address = property(info, Velmo::Key::IpAddress);
    facts.mask = property(info, Velmo::Key::SubnetMask);
    facts.mac = property(info, Velmo::Key::MacAddress);
    facts.mtu = readInteger(collection, QStringLiteral("@Interface/GevInterfaceMTU"));
    facts.linkMegabits = readInteger(collection, QStringLiteral("@Interface/GevInterfaceLinkSpeed"));
    facts.receiveBuffer = readInteger(collection, QStringLiteral("@Interface/GevInterfaceReceiveBufferLimit"));
    try
    {
        facts.devices = readDevices(*collection);
    }
    catch (const GenICam::GenericException& e)
    {
        throw CRefusal(CTexts::tr("%1 cannot be read: %2").arg(facts.name, QString::fromUtf8(e.GetDescription())));
    }
    return facts;
}

int runNetwork(CSession& session, const SOptions& options)
{
    if (options.network.what == QLatin1String("plan"))
    {
        return runNetworkPlan(session, options);
    }
    if (options.network.what == QLatin1String("check"))
    {
        return runNetworkCheck(session, options);
    }
    const QVector<SAdapterFacts> adapters = readAdapters(session, options);
    if (options.json)
    {
        QJsonArray array;
        for (const SAdapterFacts& adapter : adapters)
        {
            array.append(describe(adapter));
        }
        printJson(array);
        return ExitDone;
    }
    if (adapters.isEmpty())
    {
        printLine(CTexts::tr("No network adapter is searched for cameras."));
        return ExitDone;
    }
    printAdapters(adapters);
    printCameras(adapters);
    printDeafAdapters(adapters);
    if (const qint64 limit = adapters.first().receiveBuffer; limit > 0)
    {
        printLine(CTexts::tr("Socket buffers: capped at %1 bytes (net.core.rmem_max).").arg(limit));
    }
    return ExitDone;
}

} // namespace PoolCli
