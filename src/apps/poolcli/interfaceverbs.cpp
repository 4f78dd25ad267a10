// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/featuretree.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "genapi/inodes.h"
#include "parametercollection/parameterpath.h"
#include "transport/infos.h"

namespace PoolCli
{
namespace
{

QString property(const HostKit::InterfaceInfoPtr& info, const char* key)
{
    return QString::fromUtf8(info->getVelmoInterfaceInfo().Get(key).c_str());
}

QJsonObject describe(const HostKit::InterfaceInfoPtr& info)
{
    QJsonObject object{{"id", info->getInterfaceId()},
                       {"friendly_name", info->getFriendlyName()},
                       {"full_name", info->getFullName()},
                       {"type", info->getTLType()},
                       {"device_class", property(info, Velmo::Key::DeviceClass)}};
    for (const auto& [name, key] :
         {std::pair{"ip_address", Velmo::Key::IpAddress}, std::pair{"subnet_mask", Velmo::Key::SubnetMask},
          std::pair{"mac_address", Velmo::Key::MacAddress}})
    {
        const QString value = property(info, key);
        if (!value.isEmpty())
        {
            object.insert(QLatin1String(name), value);
        }
    }
    return object;
}

/** What the interface tells of the selected device: the features that the selector selects and that can be read. */
QJsonObject readDevice(GenApi::INodeMap& nodeMap)
{
    constexpr std::array names{
        "DeviceID",     "DeviceDisplayName",  "DeviceVendorName",   "DeviceModelName",     "DeviceSerialNumber",
        "DeviceUserID", "DeviceAccessStatus", "GevDeviceIPAddress", "GevDeviceSubnetMask", "GevDeviceMACAddress"};
    QJsonObject device;
    for (const char* name : names)
    {
        GenApi::INode* pNode = nodeMap.GetNode(name);
        if (const GenApi::CValuePtr value(pNode); value && GenApi::IsReadable(pNode))
        {
            device.insert(QLatin1String(name), QString::fromUtf8(value->ToString().c_str()));
        }
    }
    return device;
}

void printDevices(const QJsonArray& devices)
{
    if (devices.isEmpty())
    {
        printLine(CTexts::tr("No device on this interface."));
        return;
    }
    QVector<QVector<QString>> rows{
        {CTexts::tr("NAME"), CTexts::tr("MODEL"), CTexts::tr("SERIAL"), CTexts::tr("ACCESS"), CTexts::tr("ADDRESS")}};
    for (const auto& value : devices)
    {
        const QJsonObject device = value.toObject();
        const auto text = [&device](const char* name)
        {
            return printable(device.value(QLatin1String(name)).toString());
        };
        rows.append({text("DeviceDisplayName"), text("DeviceModelName"), text("DeviceSerialNumber"),
                     text("DeviceAccessStatus"), text("GevDeviceIPAddress")});
    }
    printTable(rows);
}

int listInterfaces(CSession& session, const SOptions& options)
{
    session.waitForDiscovery(options.discoveryTimeoutMs);
    const auto interfaces = session.interfaces();
    if (interfaces.isEmpty() && !options.json)
    {
        printLine(CTexts::tr("No interface found."));
        return ExitDone;
    }
    QJsonArray array;
    QVector<QVector<QString>> rows{
        {CTexts::tr("NAME"), CTexts::tr("IDENTIFIER"), CTexts::tr("TYPE"), CTexts::tr("ADDRESS")}};
    for (const auto& info : interfaces)
    {
        array.append(describe(info));
        rows.append({printable(info->getFriendlyName()), printable(info->getInterfaceId()), info->getTLType(),
                     property(info, Velmo::Key::IpAddress)});
    }
    if (options.json)
    {
        printJson(array);
    }
    else
    {
        printTable(rows);
    }
    return ExitDone;
}

} // namespace

QJsonArray readDevices(const ParameterCollection::IParameterCollection& collection)
{
    const ParameterCollection::CScopedObjectStateLock lock(collection.objectState());
    GenApi::INodeMap* pNodeMap = collection.nodeMap(ParameterCollection::ParameterPath::Interface);
    const GenApi::CIntegerPtr selector(pNodeMap == nullptr ? nullptr : pNodeMap->GetNode("DeviceSelector"));
    QJsonArray devices;
    if (!selector || !GenApi::IsWritable(selector.Get()))
    {
        return devices;
    }
    const std::int64_t selected = selector->GetValue();
    for (std::int64_t i = 0; i <= selector->GetMax(); ++i)
    {
        selector->SetValue(i);
        devices.append(readDevice(*pNodeMap));
    }
    selector->SetValue(selected);
    return devices;
}

int runInterfaces(CSession& session, const SOptions& options)
{
    if (options.interfaceName.isEmpty())
    {
        return listInterfaces(session, options);
    }
    const COpenInterface interface(session, session.interfaceCalled(options.interfaceName, options.discoveryTimeoutMs));
    const auto collection = session.parameters(interface.info());
    try
    {
        const QJsonArray devices = readDevices(*collection);
        const auto features = readFeatures(*collection, options.filter, options.visibility);
        if (options.json)
        {
            QJsonObject object = describe(interface.info());
            object.insert(QStringLiteral("features"), toJson(features));
            object.insert(QStringLiteral("devices"), devices);
            printJson(object);
            return ExitDone;
        }
        printTree(features);
        printDevices(devices);
        return ExitDone;
    }
    catch (const GenICam::GenericException& e)
    {
        throw CRefusal(CTexts::tr("%1 cannot be read: %2")
                           .arg(interface.info()->getFriendlyName(), QString::fromUtf8(e.GetDescription())));
    }
}

} // namespace PoolCli
