// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/lossycable.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <linux/if_ether.h>
#include <net/if.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace Test
{

namespace
{

constexpr unsigned int gvcpPort = 3956;
constexpr unsigned int packetResend = 0x0040; // GigE Vision, PACKETRESEND_CMD
constexpr std::size_t gvspHeaderBytes = 8;
constexpr std::size_t keptPackets = 4096;

unsigned int Number(const std::uint8_t* data, int bytes)
{
    unsigned int number = 0;
    for (int i = 0; i < bytes; ++i)
    {
        number = number << 8 | data[i];
    }
    return number;
}

/** The UDP datagram in an Ethernet frame; data is null when there is none. */
struct SDatagram
{
    std::size_t offset = 0; // of the UDP header in the frame
    unsigned int sourcePort = 0;
    unsigned int destinationPort = 0;
    const std::uint8_t* data = nullptr;
    std::size_t bytes = 0;
};

SDatagram FindDatagram(const std::vector<std::uint8_t>& frame)
{
    constexpr std::size_t udpHeaderBytes = 8;
    constexpr std::size_t leastIpBytes = 20;
    SDatagram datagram;
    if (frame.size() < ETH_HLEN + leastIpBytes + udpHeaderBytes || Number(&frame[12], 2) != ETH_P_IP ||
        frame[ETH_HLEN + 9] != IPPROTO_UDP)
    {
        return datagram;
    }
    datagram.offset = ETH_HLEN + (frame[ETH_HLEN] & 0x0Fu) * 4;
    if (frame.size() < datagram.offset + udpHeaderBytes)
    {
        return datagram;
    }
    datagram.sourcePort = Number(&frame[datagram.offset], 2);
    datagram.destinationPort = Number(&frame[datagram.offset + 2], 2);
    datagram.data = &frame[datagram.offset] + udpHeaderBytes;
    datagram.bytes = frame.size() - datagram.offset - udpHeaderBytes;
    return datagram;
}

/** A socket for whole Ethernet frames at an adapter of the calling thread's namespace. */
int OpenAdapter(const char* name)
{
    const int descriptor = socket(AF_PACKET, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, htons(ETH_P_ALL));
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons(ETH_P_ALL);
    address.sll_ifindex = static_cast<int>(if_nametoindex(name));
    constexpr int bufferBytes = 4 << 20; // the cable loses what it is told to, and nothing else
    if (descriptor < 0 || bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &bufferBytes, sizeof bufferBytes) != 0)
    {
        throw std::runtime_error(std::string("The cable cannot use its adapter: ") + std::strerror(errno));
    }
    return descriptor;
}

} // namespace

CLossyCable::CLossyCable(const std::string& adapter, const std::string& address, CPeerNamespace& cameraNamespace,
                         const std::string& cameraAdapter, const std::string& cameraAddress, Loses loses)
    : m_loses(std::move(loses))
{
    m_middle.Connect(adapter, address, "near", "");
    m_middle.Visit(
        [&]
        {
            cameraNamespace.Connect("far", "", cameraAdapter, cameraAddress);
            m_near = OpenAdapter("near");
            m_far = OpenAdapter("far");
        });
    m_thread = std::thread([this] { Run(); });
}

CLossyCable::~CLossyCable()
{
    m_isStopping = true;
    m_thread.join();
    close(m_near);
    close(m_far);
}

void CLossyCable::Run()
{
    constexpr int checkMs = 20; // how soon the end of the cable is seen
    while (!m_isStopping)
    {
        std::array<pollfd, 2> entries{{{m_near, POLLIN, 0}, {m_far, POLLIN, 0}}};
        if (poll(entries.data(), entries.size(), checkMs) > 0)
        {
            Carry(m_near, m_far);
            Carry(m_far, m_near);
        }
    }
}

void CLossyCable::Carry(int from, int to)
{
    constexpr int mostAtOnce = 64;
    for (int i = 0; i < mostAtOnce; ++i)
    {
        sockaddr_ll origin{};
        socklen_t originBytes = sizeof origin;
        const ssize_t bytes =
            recvfrom(from, m_received.data(), m_received.size(), 0, reinterpret_cast<sockaddr*>(&origin), &originBytes);
        if (bytes <= 0)
        {
            return;
        }
        Frame frame(m_received.begin(), m_received.begin() + bytes);
        if (origin.sll_pkttype == PACKET_OUTGOING)
        {
            continue;
        }
        const SDatagram datagram = FindDatagram(frame);
        if (datagram.data != nullptr)
        {
            // The kernel leaves the checksum to hardware that a veth does not have; 0 stands for none.
            frame[datagram.offset + 6] = 0;
            frame[datagram.offset + 7] = 0;
        }
        const bool isKept = from == m_far ? IsLost(frame) : SendAgain(frame);
        if (!isKept)
        {
            send(to, frame.data(), frame.size(), MSG_NOSIGNAL);
        }
    }
}

bool CLossyCable::Decide(unsigned int block, unsigned int packet, SSent& sent)
{
    const bool isLost = m_loses(block, packet, sent.attempts++);
    m_lost += isLost ? 1 : 0;
    return isLost;
}

bool CLossyCable::IsLost(const Frame& frame)
{
    const SDatagram datagram = FindDatagram(frame);
    if (datagram.data == nullptr || datagram.sourcePort == gvcpPort || datagram.bytes < gvspHeaderBytes)
    {
        return false;
    }
    // GVSP: status, block id, format and packet id
    const unsigned int block = Number(datagram.data + 2, 2);
    const unsigned int packet = Number(datagram.data + 5, 3);
    if (m_memory.size() >= keptPackets)
    {
        m_memory.clear();
    }
    SSent& sent = m_memory[{block, packet}];
    sent = {frame, 0};
    return Decide(block, packet, sent);
}

bool CLossyCable::SendAgain(const Frame& frame)
{
    const SDatagram datagram = FindDatagram(frame);
    constexpr std::size_t commandBytes = 20;
    if (datagram.data == nullptr || datagram.destinationPort != gvcpPort || datagram.bytes < commandBytes ||
        Number(datagram.data + 2, 2) != packetResend)
    {
        return false;
    }
    // Behind the header of 8 bytes: channel, block id, first and last packet id
    const unsigned int block = Number(datagram.data + 10, 2);
    const unsigned int last = Number(datagram.data + 17, 3);
    for (unsigned int packet = Number(datagram.data + 13, 3); packet <= last; ++packet)
    {
        ++m_askedFor;
        const auto found = m_memory.find({block, packet});
        if (found != m_memory.end() && !Decide(block, packet, found->second))
        {
            send(m_near, found->second.frame.data(), found->second.frame.size(), MSG_NOSIGNAL);
        }
    }
    return true;
}

} // namespace Test
