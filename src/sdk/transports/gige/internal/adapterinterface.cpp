// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/adapterinterface.h"

#include "protocols/gvcp.h"

#include <cstdlib>

namespace Velmo::GigE::Internal
{

namespace
{

std::int64_t IpOf(const GenICam::gcstring& text)
{
    std::uint32_t ip = 0;
    Gvcp::ParseIp(text.str(), ip);
    return ip;
}

std::int64_t MacOf(const GenICam::gcstring& text)
{
    std::int64_t mac = 0;
    for (const char* p = text.c_str(); *p != 0;)
    {
        char* pEnd = nullptr;
        mac = mac << 8 | static_cast<std::int64_t>(std::strtoul(p, &pEnd, 16) & 0xFF);
        p = *pEnd == ':' ? pEnd + 1 : pEnd;
        if (p == pEnd && *p != 0)
        {
            break;
        }
    }
    return mac;
}

} // namespace

CAdapterInterface::CAdapterInterface(CInterfaceInfo info) : m_info(std::move(info)) {}

CAdapterInterface::~CAdapterInterface() = default;

void CAdapterInterface::Open()
{
    if (m_pParameters != nullptr)
    {
        return;
    }
    auto pParameters = std::make_unique<CSoftwareNodeMap>("GigEInterface");
    pParameters->AddText("InterfaceID", "Identifier of the network adapter.", m_info.GetInterfaceID().str());
    pParameters->AddText("InterfaceType", "Type of the transport layer.", "GigEVision");
    const auto address =
        [&pParameters](const char* name, const char* toolTip, const char* representation, std::int64_t value)
    {
        CSoftwareNodeMap::SInteger parameter;
        parameter.name = name;
        parameter.toolTip = toolTip;
        parameter.representation = representation;
        parameter.value = value;
        pParameters->Add(std::move(parameter));
    };
    address("GevInterfaceMACAddress", "Hardware address.", "MACAddress", MacOf(m_info.Get(Key::MacAddress)));
    address("GevInterfaceSubnetIPAddress", "IP address.", "IPV4Address", IpOf(m_info.Get(Key::IpAddress)));
    address("GevInterfaceSubnetMask", "Subnet mask.", "IPV4Address", IpOf(m_info.Get(Key::SubnetMask)));
    pParameters->Build();
    m_pParameters = std::move(pParameters);
}

void CAdapterInterface::Close()
{
    m_pParameters.reset();
}

GenApi::INodeMap* CAdapterInterface::GetNodeMap()
{
    return m_pParameters == nullptr ? nullptr : m_pParameters->Get();
}

} // namespace Velmo::GigE::Internal
