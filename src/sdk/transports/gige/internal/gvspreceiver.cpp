// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gvspreceiver.h"

#include "genapi/exceptions.h"
#include "protocols/gvcp.h"
#include "transport/log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::size_t BatchSize = 64;
constexpr std::size_t JumboBytes = 9216;     // what adapters with jumbo frames take
constexpr std::size_t DatagramBytes = 65536; // what UDP can carry
constexpr std::chrono::seconds LookPeriod{1};

bool Set(int socket, int level, int option, const void* pValue, std::size_t bytes)
{
    return setsockopt(socket, level, option, pValue, static_cast<socklen_t>(bytes)) == 0;
}

int JoinGroup(const CGvspReceiver::SConfig& config)
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int on = 1;
    const int off = 0;
    const int bufferBytes = static_cast<int>(config.socketBufferBytes);
    // Bound to the group, not to the adapter: the port alone would let in what is sent to others.
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(config.group.ip);
    address.sin_port = htons(config.group.port);
    ip_mreqn membership{};
    membership.imr_multiaddr = address.sin_addr;
    membership.imr_address.s_addr = htonl(config.adapterIp);
    const bool isJoined = socket >= 0 && Set(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) &&
                          (bufferBytes == 0 || Set(socket, SOL_SOCKET, SO_RCVBUF, &bufferBytes, sizeof bufferBytes)) &&
                          Set(socket, IPPROTO_IP, IP_MULTICAST_ALL, &off, sizeof off) &&
                          bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                          Set(socket, IPPROTO_IP, IP_ADD_MEMBERSHIP, &membership, sizeof membership);
    if (!isJoined)
    {
        const std::string reason = std::strerror(errno);
        if (socket >= 0)
        {
            close(socket);
        }
        GENICAM_THROW(RuntimeException, "The stream of camera " + config.cameraName + " cannot be received: joining " +
                                            Gvcp::IpText(config.group.ip) + ", UDP port " +
                                            std::to_string(config.group.port) + ", through the adapter at " +
                                            Gvcp::IpText(config.adapterIp) + " failed: " + reason + ".");
    }
    return socket;
}

SMulticastGroup GroupOf(int socket)
{
    sockaddr_in address{};
    socklen_t bytes = sizeof address;
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &bytes);
    return {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
}

} // namespace

CGvspReceiver::CGvspReceiver(SConfig config, SSink sink)
    : m_config(std::move(config)), m_sink(std::move(sink)), m_socket(JoinGroup(m_config)), m_joined(GroupOf(m_socket)),
      m_stopDescriptor(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      m_slotBytes(std::min(DatagramBytes, std::max(JumboBytes, m_config.packetBytes)))
{
    m_batch.reserve(BatchSize);
    m_thread = std::thread([this] { Run(); });
}

CGvspReceiver::~CGvspReceiver()
{
    const std::uint64_t one = 1;
    // It can only fail when the counter is full, and then the thread wakes up anyway.
    static_cast<void>(!write(m_stopDescriptor, &one, sizeof one));
    m_thread.join();
    close(m_stopDescriptor);
    close(m_socket);
}

void CGvspReceiver::Run()
{
    Time lastDatagram = Clock::now();
    std::optional<Time> deadline;
    for (;;)
    {
        Wait(std::min(deadline.value_or(lastDatagram + LookPeriod), lastDatagram + LookPeriod));
        std::uint64_t count = 0;
        if (read(m_stopDescriptor, &count, sizeof count) == sizeof count)
        {
            return;
        }
        const bool hasArrived = ReceiveBatch();
        const Time now = Clock::now();
        if (hasArrived || (deadline && *deadline <= now))
        {
            deadline = m_sink.take(m_batch, now);
        }
        if (hasArrived)
        {
            lastDatagram = now;
        }
        else if (now - lastDatagram >= LookPeriod)
        {
            LookAgain();
            lastDatagram = Clock::now();
        }
    }
}

void CGvspReceiver::Wait(Time deadline) const
{
    std::array<pollfd, 2> entries{{{m_socket, POLLIN, 0}, {m_stopDescriptor, POLLIN, 0}}};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    poll(entries.data(), entries.size(), static_cast<int>(std::max<std::int64_t>(0, left.count())));
}

bool CGvspReceiver::ReceiveBatch()
{
    m_memory.resize(BatchSize * m_slotBytes);
    std::array<mmsghdr, BatchSize> messages{};
    std::array<iovec, BatchSize> parts{};
    std::array<sockaddr_in, BatchSize> senders{};
    for (std::size_t i = 0; i < BatchSize; ++i)
    {
        parts[i] = {m_memory.data() + i * m_slotBytes, m_slotBytes};
        messages[i].msg_hdr.msg_iov = &parts[i];
        messages[i].msg_hdr.msg_iovlen = 1;
        messages[i].msg_hdr.msg_name = &senders[i];
        messages[i].msg_hdr.msg_namelen = sizeof senders[i];
    }
    m_batch.clear();
    const int received = recvmmsg(m_socket, messages.data(), BatchSize, MSG_DONTWAIT, nullptr);
    bool isCut = false;
    for (int i = 0; i < received; ++i)
    {
        const auto index = static_cast<std::size_t>(i);
        const bool isTooLong = (messages[index].msg_hdr.msg_flags & MSG_TRUNC) != 0;
        isCut = isCut || isTooLong;
        if (!isTooLong && ntohl(senders[index].sin_addr.s_addr) == m_config.cameraIp)
        {
            m_batch.push_back({m_memory.data() + index * m_slotBytes, messages[index].msg_len});
        }
    }
    m_slotBytes = isCut ? DatagramBytes : m_slotBytes; // the memory grows with the next batch
    return !m_batch.empty();
}

void CGvspReceiver::LookAgain()
{
    const std::optional<SMulticastGroup> group = m_sink.lookAgain();
    if (!group || *group == m_config.group)
    {
        return;
    }
    SConfig config = m_config;
    config.group = *group;
    try
    {
        const int socket = JoinGroup(config);
        close(m_socket);
        m_socket = socket;
        m_config = config;
        Log(ELogLevel::Info, "velmo.gige",
            "Camera " + config.cameraName + " streams to " + Gvcp::IpText(group->ip) + ", UDP port " +
                std::to_string(group->port) + ", from now on.");
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Warning, "velmo.gige", e.GetDescription());
    }
}

} // namespace Velmo::GigE::Internal
