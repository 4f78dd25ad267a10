// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/server.h"

#include "genapi/exceptions.h"
#include "gigeserver/internal/networkcamera.h"
#include "gigeserver/internal/sockets.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cstring>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <set>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace GigEServer
{

using Internal::CNetworkCamera;
using Internal::SPeer;
using Time = CNetworkCamera::Time;
using Clock = std::chrono::steady_clock;

namespace
{

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t LoopbackNetwork = 127;

} // namespace

struct CServer::SPrivate
{
    ~SPrivate();
    void Wake() const;
    void OpenSharedSockets();
    void OpenShared(std::uint32_t ip, bool isShared);
    void Receive(int socket, Time now);
    void ReceiveOf(CNetworkCamera& camera, Time now);
    void AddTwins();
    int GetTimeoutMs(Time now) const;
    void Run();

    const int wakeDescriptor = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    std::mutex growthMutex; // guards cameras against those who count while the control thread adds one
    std::vector<std::unique_ptr<CNetworkCamera>> cameras;
    std::set<std::string> twins;    // serial numbers of those that have one
    std::vector<int> sharedSockets; // their datagrams are for all cameras of the adapter they came in by
    std::atomic<bool> isStopping{false};
    std::thread thread; // the control thread; the cameras are its own while it runs
};

CServer::SPrivate::~SPrivate()
{
    isStopping = true;
    Wake();
    if (thread.joinable())
    {
        thread.join();
    }
    cameras.clear();
    for (const int socket : sharedSockets)
    {
        close(socket);
    }
    close(wakeDescriptor);
}

void CServer::SPrivate::Wake() const
{
    const std::uint64_t one = 1;
    // It can only fail when the counter is full, and then the thread wakes up anyway.
    static_cast<void>(!write(wakeDescriptor, &one, sizeof one));
}

void CServer::SPrivate::OpenShared(std::uint32_t ip, bool isShared)
{
    sharedSockets.push_back(Internal::OpenSocket(ip, Velmo::Gvcp::Port, isShared));
}

void CServer::SPrivate::OpenSharedSockets()
{
    OpenShared(Internal::LimitedBroadcast, true);
    std::set<std::uint32_t> broadcasts;
    bool isLoopback = false;
    bool isLoopbackTaken = false;
    for (const auto& pCamera : cameras)
    {
        const SAddress& address = pCamera->GetAddress();
        broadcasts.insert(address.broadcast);
        isLoopback = isLoopback || address.ip >> 24 == LoopbackNetwork;
        isLoopbackTaken = isLoopbackTaken || address.ip == Loopback;
    }
    for (const std::uint32_t broadcast : broadcasts)
    {
        OpenShared(broadcast, true);
    }
    if (isLoopback && !isLoopbackTaken)
    {
        try
        {
            OpenShared(Loopback, false);
        }
        catch (const GenICam::RuntimeException&)
        {
            // Another camera is there. Ours are found by broadcast and by their own addresses.
        }
    }
}

/** Datagrams for all cameras of an adapter: broadcasts, and on the loopback adapter, where clients seldom send any,
 *  what its first address got. */
void CServer::SPrivate::Receive(int socket, Time now)
{
    std::uint8_t data[2048];
    iovec part{data, sizeof data};
    sockaddr_in sender{};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(in_pktinfo))] = {};
    msghdr message{};
    message.msg_name = &sender;
    message.msg_namelen = sizeof sender;
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    const ssize_t bytes = recvmsg(socket, &message, MSG_DONTWAIT);
    if (bytes <= 0)
    {
        return;
    }
    unsigned int adapterIndex = 0;
    for (cmsghdr* p = CMSG_FIRSTHDR(&message); p != nullptr; p = CMSG_NXTHDR(&message, p))
    {
        if (p->cmsg_level == IPPROTO_IP && p->cmsg_type == IP_PKTINFO)
        {
            in_pktinfo info{};
            std::memcpy(&info, CMSG_DATA(p), sizeof info);
            adapterIndex = static_cast<unsigned int>(info.ipi_ifindex);
        }
    }
    const SPeer peer{ntohl(sender.sin_addr.s_addr), ntohs(sender.sin_port)};
    for (const auto& pCamera : cameras)
    {
        if (pCamera->GetAddress().adapterIndex == adapterIndex)
        {
            pCamera->Handle(data, static_cast<std::size_t>(bytes), peer, now);
        }
    }
}

void CServer::SPrivate::ReceiveOf(CNetworkCamera& camera, Time now)
{
    if (camera.GetAddress().ip != Loopback)
    {
        camera.Receive(now, nullptr);
        return;
    }
    camera.Receive(now,
                   [&](const std::uint8_t* data, std::size_t bytes, const SPeer& peer)
                   {
                       for (const auto& pOther : cameras)
                       {
                           const bool isBeside = pOther->GetAddress().ip >> 24 == LoopbackNetwork;
                           if (pOther.get() != &camera && isBeside)
                           {
                               pOther->Handle(data, bytes, peer, now);
                           }
                       }
                   });
}

/** Cameras that faults want at the addresses after others'. Only loopback has addresses that nobody set up. */
void CServer::SPrivate::AddTwins()
{
    constexpr int mostAttempts = 256; // addresses that are taken
    std::vector<SServedCamera> wanted;
    for (const auto& pCamera : cameras)
    {
        std::optional<SServedCamera> twin = pCamera->TakeTwin();
        if (twin.has_value() && twin->address.ip >> 24 == LoopbackNetwork &&
            twins.insert(twin->config.serialNumber).second)
        {
            wanted.push_back(*twin);
        }
    }
    for (SServedCamera& twin : wanted)
    {
        for (int attempt = 0; attempt < mostAttempts; ++attempt, ++twin.address.ip)
        {
            try
            {
                auto pTwin = std::make_unique<CNetworkCamera>(twin, [this] { Wake(); });
                const std::lock_guard<std::mutex> lock(growthMutex);
                cameras.push_back(std::move(pTwin));
                break;
            }
            catch (const GenICam::RuntimeException&)
            {
                continue; // the address is taken
            }
        }
    }
}

int CServer::SPrivate::GetTimeoutMs(Time now) const
{
    std::optional<Time> next;
    for (const auto& pCamera : cameras)
    {
        const std::optional<Time> deadline = pCamera->GetDeadline();
        if (deadline.has_value() && (!next.has_value() || *deadline < *next))
        {
            next = deadline;
        }
    }
    if (!next.has_value())
    {
        return -1;
    }
    constexpr std::int64_t longest = 60'000;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - now).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, longest));
}

void CServer::SPrivate::Run()
{
    std::vector<pollfd> entries;
    while (!isStopping)
    {
        entries.assign(1, {wakeDescriptor, POLLIN, 0});
        for (const int socket : sharedSockets)
        {
            entries.push_back({socket, POLLIN, 0});
        }
        for (const auto& pCamera : cameras) // a camera's sockets change with its address and with a reset
        {
            entries.push_back({pCamera->GetSocket(), POLLIN, 0});
            entries.push_back({pCamera->GetMessageSocket(), POLLIN, 0});
        }
        poll(entries.data(), entries.size(), GetTimeoutMs(Clock::now()));
        std::uint64_t count = 0;
        static_cast<void>(!read(wakeDescriptor, &count, sizeof count));
        const Time now = Clock::now();
        for (std::size_t i = 0; i < sharedSockets.size(); ++i)
        {
            if (entries[1 + i].revents != 0)
            {
                Receive(sharedSockets[i], now);
            }
        }
        for (std::size_t i = 0; i < cameras.size(); ++i)
        {
            const std::size_t entry = 1 + sharedSockets.size() + 2 * i;
            if (entries[entry].revents != 0)
            {
                ReceiveOf(*cameras[i], now);
            }
            if (entries[entry + 1].revents != 0)
            {
                cameras[i]->ReceiveAcknowledges(now);
            }
            cameras[i]->OnTime(now);
        }
        AddTwins();
    }
}

CServer::CServer(const std::vector<SServedCamera>& cameras) : m_p(std::make_unique<SPrivate>())
{
    for (const SServedCamera& camera : cameras)
    {
        m_p->cameras.push_back(std::make_unique<CNetworkCamera>(camera, [p = m_p.get()] { p->Wake(); }));
    }
    m_p->OpenSharedSockets();
    m_p->thread = std::thread([p = m_p.get()] { p->Run(); });
}

CServer::~CServer() = default;

SCounters CServer::GetCounters(std::size_t camera) const
{
    const std::lock_guard<std::mutex> lock(m_p->growthMutex);
    return m_p->cameras.at(camera)->GetCounters();
}

} // namespace GigEServer
