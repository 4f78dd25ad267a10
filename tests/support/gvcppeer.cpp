// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/gvcppeer.h"

#include "protocols/gvbsregisters.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Test
{

using namespace std::chrono_literals;
namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;
namespace Gvsp = Velmo::Gvsp;

namespace
{

constexpr std::uint32_t Loopback = 0x7F000001;

sockaddr_in AddressOf(std::uint32_t ip, std::uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(ip);
    address.sin_port = htons(port);
    return address;
}

sockaddr_in LocalAddressOf(int socket)
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length);
    return address;
}

int OpenSocket(std::uint32_t ip)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = AddressOf(ip, 0);
    const int bytes = 8 * 1024 * 1024;
    setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes);
    const int on = 1; // others may listen to the same group
    setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    EXPECT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    return descriptor;
}

} // namespace

CGvcpPeer::CGvcpPeer(std::uint32_t cameraIp, std::uint32_t multicastIp)
    : m_cameraIp(cameraIp), m_streamIp(multicastIp == 0 ? Loopback : multicastIp), m_control(OpenSocket(Loopback)),
      m_stream(OpenSocket(m_streamIp))
{
    if (multicastIp != 0)
    {
        const ip_mreq membership{{htonl(multicastIp)}, {htonl(Loopback)}};
        EXPECT_EQ(setsockopt(m_stream, IPPROTO_IP, IP_ADD_MEMBERSHIP, &membership, sizeof membership), 0);
    }
}

CGvcpPeer::~CGvcpPeer()
{
    close(m_control);
    close(m_stream);
}

void CGvcpPeer::Send(const Gvcp::Bytes& command)
{
    const sockaddr_in camera = AddressOf(m_cameraIp, Gvcp::Port);
    const sockaddr_in own = LocalAddressOf(m_control);
    EXPECT_EQ(
        sendto(m_control, command.data(), command.size(), 0, reinterpret_cast<const sockaddr*>(&camera), sizeof camera),
        static_cast<ssize_t>(command.size()));
    m_datagrams.push_back({Loopback, ntohs(own.sin_port), m_cameraIp, Gvcp::Port, command});
}

std::optional<std::vector<std::uint8_t>> CGvcpPeer::ReceiveAt(int socket, std::chrono::milliseconds limit)
{
    pollfd entry{socket, POLLIN, 0};
    if (poll(&entry, 1, static_cast<int>(limit.count())) <= 0)
    {
        return std::nullopt;
    }
    sockaddr_in sender{};
    socklen_t length = sizeof sender;
    const ssize_t bytes =
        recvfrom(socket, m_received.data(), m_received.size(), 0, reinterpret_cast<sockaddr*>(&sender), &length);
    std::vector<std::uint8_t> data(m_received.begin(), m_received.begin() + std::max<ssize_t>(bytes, 0));
    const sockaddr_in own = LocalAddressOf(socket);
    m_datagrams.push_back(
        {ntohl(sender.sin_addr.s_addr), ntohs(sender.sin_port), ntohl(own.sin_addr.s_addr), ntohs(own.sin_port), data});
    return data;
}

std::optional<Gvcp::SAcknowledge> CGvcpPeer::Receive(std::chrono::milliseconds limit)
{
    const auto data = ReceiveAt(m_control, limit);
    Gvcp::SAcknowledge ack;
    if (!data.has_value())
    {
        return std::nullopt;
    }
    m_answer = *data;
    EXPECT_EQ(Gvcp::ParseAcknowledge(m_answer.data(), m_answer.size(), ack), Gvcp::EParseResult::Ok);
    return ack;
}

std::optional<Gvcp::SAcknowledge> CGvcpPeer::Ask(const Gvcp::Bytes& command)
{
    constexpr auto patience = 30s;
    constexpr std::size_t idOffset = 6; // GigE Vision, GVCP command header: req_id
    Send(command);
    const unsigned int id = command.at(idOffset) << 8U | command.at(idOffset + 1);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    std::optional<Gvcp::SAcknowledge> ack;
    do
    {
        const auto left = std::max(deadline - std::chrono::steady_clock::now(), std::chrono::steady_clock::duration(0));
        ack = Receive(std::chrono::duration_cast<std::chrono::milliseconds>(left));
    } while (ack.has_value() && ack->ackId != id);
    return ack;
}

Gvcp::EStatus CGvcpPeer::Write(std::uint32_t address, std::uint32_t value)
{
    const auto ack = Ask(Gvcp::EncodeWriteRegCmd(NextId(), {{address, value}}));
    EXPECT_TRUE(ack.has_value()) << "no answer to a write at " << address;
    return ack.has_value() ? static_cast<Gvcp::EStatus>(ack->status) : Gvcp::EStatus::Error;
}

std::uint32_t CGvcpPeer::Read(std::uint32_t address)
{
    const auto ack = Ask(Gvcp::EncodeReadRegCmd(NextId(), {address}));
    std::vector<std::uint32_t> values;
    EXPECT_TRUE(ack.has_value() && Gvcp::ParseReadRegAck(*ack, values) == Gvcp::EParseResult::Ok) << address;
    return values.empty() ? 0 : values.front();
}

void CGvcpPeer::OpenStream(std::uint32_t packetBytes)
{
    EXPECT_EQ(Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), Gvcp::EStatus::Success);
    EXPECT_EQ(Write(Gvbs::StreamChannelDestination, m_streamIp), Gvcp::EStatus::Success);
    EXPECT_EQ(Write(Gvbs::StreamChannelPacketSize, packetBytes), Gvcp::EStatus::Success);
    EXPECT_EQ(Write(Gvbs::StreamChannelPort, ntohs(LocalAddressOf(m_stream).sin_port)), Gvcp::EStatus::Success);
}

std::optional<std::vector<std::uint8_t>> CGvcpPeer::ReceiveStreamDatagram(std::chrono::milliseconds limit)
{
    return ReceiveAt(m_stream, limit);
}

std::optional<Gvsp::SPacket> CGvcpPeer::ReceivePacket(std::chrono::milliseconds limit)
{
    const auto data = ReceiveAt(m_stream, limit);
    Gvsp::SPacket packet;
    if (!data.has_value())
    {
        return std::nullopt;
    }
    m_packet = *data;
    EXPECT_EQ(Gvsp::ParsePacket(m_packet.data(), m_packet.size(), packet), Gvsp::EParseResult::Ok);
    return packet;
}

std::map<std::uint32_t, std::vector<std::uint8_t>> CGvcpPeer::ReceiveBlock(std::chrono::milliseconds limit)
{
    std::map<std::uint32_t, std::vector<std::uint8_t>> packets;
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < deadline)
    {
        const auto packet = ReceivePacket(limit);
        if (!packet.has_value())
        {
            break;
        }
        packets[packet->header.packetId] = m_packet;
        if (packet->header.format == Gvsp::EPacketFormat::Trailer)
        {
            break;
        }
    }
    return packets;
}

} // namespace Test
