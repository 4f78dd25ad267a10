// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"

#include <arpa/inet.h>

#include <cstdio>

namespace Velmo::Gvcp
{

namespace
{

struct SStatusText
{
    EStatus status;
    const char* text;
};

constexpr SStatusText StatusTexts[] = {
    {EStatus::Success, "success"},
    {EStatus::PacketResend, "packet resent"},
    {EStatus::NotImplemented, "not implemented"},
    {EStatus::InvalidParameter, "invalid parameter"},
    {EStatus::InvalidAddress, "invalid address"},
    {EStatus::WriteProtect, "write protected"},
    {EStatus::BadAlignment, "bad alignment"},
    {EStatus::AccessDenied, "access denied"},
    {EStatus::Busy, "busy"},
    {EStatus::LocalProblem, "local problem"},
    {EStatus::MessageMismatch, "message mismatch"},
    {EStatus::InvalidProtocol, "protocol version not supported"},
    {EStatus::NoMessage, "no message"},
    {EStatus::PacketUnavailable, "packet unavailable"},
    {EStatus::DataOverrun, "data overrun"},
    {EStatus::InvalidHeader, "invalid header"},
    {EStatus::WrongConfig, "wrong configuration"},
    {EStatus::PacketNotYetAvailable, "packet not yet available"},
    {EStatus::PacketAndPreviousRemoved, "packet and those before removed"},
    {EStatus::PacketRemoved, "packet removed"},
    {EStatus::NoReferenceTime, "no reference time"},
    {EStatus::PacketTemporarilyUnavailable, "packet temporarily unavailable"},
    {EStatus::Overflow, "overflow"},
    {EStatus::ActionLate, "action late"},
    {EStatus::Error, "unspecified error"},
};

} // namespace

std::string StatusText(std::uint16_t status)
{
    for (const SStatusText& known : StatusTexts)
    {
        if (static_cast<std::uint16_t>(known.status) == status)
        {
            return known.text;
        }
    }
    char text[24];
    std::snprintf(text, sizeof text, "status 0x%04x", static_cast<unsigned int>(status));
    return text;
}

std::string MacText(const std::array<std::uint8_t, 6>& mac)
{
    char text[18];
    std::snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
    return text;
}

std::string IpText(std::uint32_t ip)
{
    char text[INET_ADDRSTRLEN];
    std::snprintf(text, sizeof text, "%u.%u.%u.%u", ip >> 24, ip >> 16 & 0xFF, ip >> 8 & 0xFF, ip & 0xFF);
    return text;
}

bool ParseIp(const std::string& text, std::uint32_t& ip)
{
    in_addr address{};
    if (inet_pton(AF_INET, text.c_str(), &address) != 1)
    {
        return false;
    }
    ip = ntohl(address.s_addr);
    return true;
}

} // namespace Velmo::Gvcp
