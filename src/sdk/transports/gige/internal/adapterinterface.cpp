// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/adapterinterface.h"

#include "genapi/exceptions.h"
#include "protocols/gvcp.h"
#include "transports/gige/internal/adapterlink.h"
#include "transports/gige/internal/records.h"
#include "transports/gige/internal/socketbuffer.h"

#include <algorithm>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr int PollingMs = 2000; // links and addresses change when somebody plugs a cable

Transport::SSoftwareParameter Number(const char* name, const char* toolTip, std::function<std::int64_t()> getter)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.getter = std::move(getter);
    parameter.pollingMs = PollingMs;
    return parameter;
}

/** The number, and a hidden one beside it that says whether the system knows it. */
void AddIfKnown(Transport::CSoftwareNodeMap& parameters, Transport::SSoftwareParameter parameter)
{
    Transport::SSoftwareParameter known;
    known.name = parameter.name + "Known";
    known.pollingMs = PollingMs;
    known.getter = [getter = parameter.getter]
    {
        return std::int64_t{getter() == UnknownLinkValue ? 0 : 1};
    };
    parameter.availableBy = known.name;
    parameter.isCustom = true;
    parameters.AddHidden(std::move(known));
    parameters.AddInteger(std::move(parameter));
}

} // namespace

CAdapterInterface::CAdapterInterface(CInterfaceInfo info, std::weak_ptr<INetworkView> network)
    : m_info(std::move(info)), m_network(std::move(network))
{
}

CAdapterInterface::~CAdapterInterface()
{
    CAdapterInterface::Close();
}

std::shared_ptr<INetworkView> CAdapterInterface::Network() const
{
    auto network = m_network.lock();
    if (network == nullptr)
    {
        GENICAM_THROW(RuntimeException, "The GigE Vision transport layer of the interface \"" +
                                            m_info.GetInterfaceID().str() + "\" is gone.");
    }
    return network;
}

bool CAdapterInterface::HasAdapter() const
{
    return m_info.GetInterfaceID() != MakeDefaultInterfaceInfo().GetInterfaceID();
}

SAdapter CAdapterInterface::Adapter() const
{
    const std::string id = m_info.GetInterfaceID().str();
    const std::vector<SAdapter> adapters = Network()->GetAdapters();
    const auto found =
        std::find_if(adapters.begin(), adapters.end(), [&id](const SAdapter& adapter) { return adapter.id == id; });
    if (found == adapters.end())
    {
        GENICAM_THROW(RuntimeException, "The network adapter \"" + id +
                                            "\" is gone: it was removed, is down or has lost its address. Plug it in, "
                                            "or set it up, and search again.");
    }
    return *found;
}

std::vector<SAdapter> CAdapterInterface::Addresses() const
{
    std::vector<SAdapter> addresses{Adapter()};
    const SAdapter own = addresses.front();
    for (SAdapter& other : ListSystemAdapters())
    {
        if (other.name == own.name && other.ip != own.ip)
        {
            addresses.push_back(std::move(other));
        }
    }
    return addresses;
}

SAdapter CAdapterInterface::Address() const
{
    const std::vector<SAdapter> addresses = Addresses();
    return addresses[std::min(m_address, addresses.size() - 1)];
}

void CAdapterInterface::Open()
{
    if (m_pParameters != nullptr)
    {
        return;
    }
    Transport::SDeviceSource source;
    source.look = [this]
    {
        return HasAdapter() ? Network()->Look(Adapter()) : DeviceInfoList();
    };
    source.isOpenHere = [this](const CDeviceInfo& info)
    {
        return Network()->IsOpenHere(info);
    };
    auto pDevices = std::make_unique<Transport::CDeviceListParameters>(
        std::move(source), HasAdapter() ? Network()->GetSeen(Adapter()) : DeviceInfoList());
    auto pParameters = std::make_unique<Transport::CSoftwareNodeMap>("GigEInterface");
    Transport::AddInterfaceInformation(*pParameters, m_info, Transport::EInterfaceType::GigEVision);
    if (HasAdapter())
    {
        AddLink(*pParameters);
        AddAddresses(*pParameters);
    }
    pDevices->AddTo(*pParameters, true);
    pParameters->Build();
    m_address = 0;
    m_pDevices = std::move(pDevices);
    m_pParameters = std::move(pParameters);
}

void CAdapterInterface::AddLink(Transport::CSoftwareNodeMap& parameters)
{
    Transport::SSoftwareParameter name;
    name.name = "GevInterfaceAdapterName";
    name.toolTip = "Name that the system gives the network adapter.";
    name.isCustom = true;
    name.text = Adapter().name;
    parameters.AddText(std::move(name));
    parameters.BeginCategory("GevInterfaceLink", "The network adapter's link.");
    auto mac = Number("GevInterfaceMACAddress", "Hardware address of the network adapter.",
                      [this] { return Transport::MacOf(Gvcp::MacText(Adapter().mac)); });
    mac.representation = "MACAddress";
    mac.max = Transport::LargestMac;
    parameters.AddInteger(std::move(mac));
    auto mtu = Number("GevInterfaceMTU", "Largest packet that the network adapter sends in one piece.",
                      [this] { return ReadMtu(Adapter()); });
    mtu.unit = "B";
    AddIfKnown(parameters, std::move(mtu));
    auto speed = Number("GevInterfaceLinkSpeed", "Speed of the link; not available while it is down or not known.",
                        [this] { return ReadLinkSpeedMbps(Adapter()); });
    speed.unit = "Mbps";
    AddIfKnown(parameters, std::move(speed));
    auto limit = Number("GevInterfaceReceiveBufferLimit",
                        "The largest receive buffer that the system allows a socket (net.core.rmem_max).",
                        []
                        {
                            const std::size_t bytes = ReceiveBufferLimit();
                            return bytes == 0 ? UnknownLinkValue : static_cast<std::int64_t>(bytes);
                        });
    limit.unit = "B";
    AddIfKnown(parameters, std::move(limit));
}

void CAdapterInterface::AddAddresses(Transport::CSoftwareNodeMap& parameters)
{
    constexpr const char* lastIndex = "GevInterfaceSubnetLastIndex";
    constexpr const char* selectorName = "GevInterfaceSubnetSelector";
    parameters.BeginCategory("GevInterfaceAddresses", "The network adapter's IP addresses.");
    parameters.AddHidden(Number(lastIndex, "", [this] { return static_cast<std::int64_t>(Addresses().size()) - 1; }));
    auto selector = Number(selectorName, "Which of the adapter's addresses is shown; the first is the interface's own.",
                           [this] { return static_cast<std::int64_t>(m_address); });
    selector.maxFrom = lastIndex;
    selector.selects = {"GevInterfaceSubnetIPAddress", "GevInterfaceSubnetMask"};
    selector.setter = [this](std::int64_t value)
    {
        m_address = static_cast<std::size_t>(value);
    };
    parameters.AddInteger(std::move(selector));
    const auto address = [&](const char* name, const char* toolTip, std::function<std::int64_t()> getter)
    {
        auto parameter = Number(name, toolTip, std::move(getter));
        parameter.representation = "IPV4Address";
        parameter.max = Transport::LargestIp;
        parameters.AddInteger(std::move(parameter));
    };
    address("GevInterfaceSubnetIPAddress", "IP address.", [this] { return std::int64_t{Address().ip}; });
    address("GevInterfaceSubnetMask", "Subnet mask.", [this] { return std::int64_t{Address().mask}; });
    address("GevInterfaceGateway", "Default gateway of the adapter; 0.0.0.0 when there is none.",
            [this] { return std::int64_t{ReadGateway(Adapter())}; });
}

void CAdapterInterface::Close()
{
    m_pParameters.reset();
    m_pDevices.reset();
}

GenApi::INodeMap* CAdapterInterface::GetNodeMap()
{
    return m_pParameters == nullptr ? nullptr : m_pParameters->Get();
}

} // namespace Velmo::GigE::Internal
