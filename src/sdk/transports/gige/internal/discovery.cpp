// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/discovery.h"

#include "protocols/gvbsregisters.h"
#include "transports/gige/internal/udpsocket.h"

#include <algorithm>
#include <chrono>
#include <poll.h>
#include <random>

namespace Velmo::GigE::Internal
{

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds FirstWait{200}; // until something answers
constexpr milliseconds QuietWait{45};  // after the last answer with news, or twice what the first one took
constexpr milliseconds MostQuietWait{150};
constexpr milliseconds PrivilegeWait{100}; // whether a camera is free is asked behind its answer
constexpr milliseconds LongestWait{400};
constexpr milliseconds RepeatAfter{20}; // datagrams get lost: ask once more
constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;
constexpr std::uint32_t LoopbackAddress = 0x7F000001;

/** One discovery on all adapters. */
class CPass
{
public:
    CPass(const std::vector<SAdapter>& adapters, std::vector<std::uint32_t> addresses, std::set<std::uint32_t> expected,
          bool isBroadcasting)
        : m_addresses(std::move(addresses)), m_isBroadcasting(isBroadcasting),
          m_discoveryId(static_cast<std::uint16_t>(std::random_device{}() % 0x7FFF + 1)),
          m_answers(m_discoveryId, m_addresses, std::move(expected))
    {
        for (const SAdapter& adapter : adapters)
        {
            OpenSockets(adapter);
        }
    }

    SDiscoveryResult Run()
    {
        if (m_sockets.empty())
        {
            return std::move(m_result);
        }
        m_start = Clock::now();
        m_deadline = m_start + FirstWait;
        Ask();
        bool isRepeated = false;
        for (Clock::time_point now = m_start; now < GetDeadline(); now = Clock::now())
        {
            if (!isRepeated && now >= m_start + RepeatAfter)
            {
                isRepeated = true;
                Ask();
                for (const SPrivilegeQuestion& question : m_answers.GetOpenQuestions())
                {
                    AskPrivilege(question);
                }
            }
            const Clock::time_point next = isRepeated ? GetDeadline() : std::min(GetDeadline(), m_start + RepeatAfter);
            Wait(std::max(milliseconds(1), std::chrono::ceil<milliseconds>(next - now)));
        }
        m_result.devices = m_answers.GetDevices();
        return std::move(m_result);
    }

private:
    struct SSockets
    {
        SAdapter adapter;
        CUdpSocket unicast;
        CUdpSocket broadcast; // receives acknowledges from cameras in other subnets
    };

    Clock::time_point GetDeadline() const
    {
        const Clock::time_point latest = m_start + LongestWait;
        const Clock::time_point quiet =
            m_answers.HasOpenQuestions() ? std::max(m_deadline, m_lastAsked + PrivilegeWait) : m_deadline;
        return m_answers.IsComplete() ? std::min(quiet, latest) : latest;
    }

    void OpenSockets(const SAdapter& adapter)
    {
        SSockets sockets;
        sockets.adapter = adapter;
        if (!sockets.unicast.Bind(adapter.ip))
        {
            m_result.failures.push_back({adapter.id, sockets.unicast.GetError()});
            return;
        }
        if (m_isBroadcasting && !adapter.isLoopback)
        {
            sockets.broadcast.Bind(LimitedBroadcast, sockets.unicast.GetPort(), true);
        }
        m_sockets.push_back(std::move(sockets));
    }

    void Ask()
    {
        const Gvcp::Bytes packet = Gvcp::EncodeDiscoveryCmd(m_discoveryId, false);
        for (SSockets& sockets : m_sockets)
        {
            const SAdapter& adapter = sockets.adapter;
            if (m_isBroadcasting && adapter.isLoopback)
            {
                sockets.unicast.Send(packet, adapter.ip, Gvcp::Port);
                if (adapter.ip != LoopbackAddress)
                {
                    sockets.unicast.Send(packet, LoopbackAddress, Gvcp::Port);
                }
            }
            else if (m_isBroadcasting)
            {
                sockets.unicast.Send(packet, adapter.DirectedBroadcast(), Gvcp::Port, adapter.index);
                sockets.unicast.Send(Gvcp::EncodeDiscoveryCmd(m_discoveryId, true), LimitedBroadcast, Gvcp::Port,
                                     adapter.index);
            }
            for (const std::uint32_t address : m_addresses)
            {
                sockets.unicast.Send(packet, address, Gvcp::Port);
            }
        }
    }

    void Wait(milliseconds timeout)
    {
        std::vector<pollfd> entries;
        for (const SSockets& sockets : m_sockets)
        {
            entries.push_back({sockets.unicast.GetDescriptor(), POLLIN, 0});
            entries.push_back({sockets.broadcast.GetDescriptor(), POLLIN, 0}); // negative ones are ignored
        }
        if (poll(entries.data(), entries.size(), static_cast<int>(timeout.count())) <= 0)
        {
            return;
        }
        for (SSockets& sockets : m_sockets)
        {
            Drain(sockets, sockets.unicast);
            if (sockets.broadcast.IsOpen())
            {
                Drain(sockets, sockets.broadcast);
            }
        }
    }

    void Drain(SSockets& sockets, CUdpSocket& socket)
    {
        // Bounded, so that a flood on one adapter cannot keep the others waiting.
        constexpr int mostAtOnce = 256;
        std::uint8_t data[2048];
        std::uint32_t senderIp = 0;
        std::uint16_t senderPort = 0;
        for (int i = 0; i < mostAtOnce; ++i)
        {
            const std::size_t bytes = socket.Receive(data, sizeof data, senderIp, senderPort);
            if (bytes == 0)
            {
                return;
            }
            const CDiscoveryAnswers::STaken taken = m_answers.Take(data, bytes, senderIp, senderPort, sockets.adapter);
            if (taken.isNewDevice)
            {
                AwaitMore();
            }
            if (taken.question.has_value())
            {
                AskPrivilege(*taken.question);
            }
        }
    }

    void AwaitMore()
    {
        if (m_answers.GetDevices().size() == 1)
        {
            // Cameras answer about alike: where the first is slow, the others may be.
            const auto slow = 2 * std::chrono::ceil<milliseconds>(Clock::now() - m_start);
            m_quietWait = std::clamp<milliseconds>(slow, QuietWait, MostQuietWait);
        }
        m_deadline = Clock::now() + m_quietWait;
    }

    void AskPrivilege(const SPrivilegeQuestion& question)
    {
        for (SSockets& sockets : m_sockets)
        {
            if (sockets.adapter.id == question.adapterId)
            {
                sockets.unicast.Send(Gvcp::EncodeReadRegCmd(question.requestId, {Gvbs::ControlChannelPrivilege}),
                                     question.ip, Gvcp::Port);
                m_lastAsked = Clock::now();
            }
        }
    }

    std::vector<std::uint32_t> m_addresses;
    bool m_isBroadcasting;
    std::uint16_t m_discoveryId;
    CDiscoveryAnswers m_answers;
    std::vector<SSockets> m_sockets;
    Clock::time_point m_start;
    Clock::time_point m_deadline; // unless an answer is owed
    Clock::time_point m_lastAsked;
    milliseconds m_quietWait = QuietWait;
    SDiscoveryResult m_result;
};

} // namespace

SDiscoveryResult Discover(const std::vector<SAdapter>& adapters, const std::vector<std::uint32_t>& knownAddresses,
                          std::set<std::uint32_t> expectedAddresses)
{
    return CPass(adapters, knownAddresses, std::move(expectedAddresses), true).Run();
}

SDiscoveryResult DiscoverAddress(const std::vector<SAdapter>& adapters, std::uint32_t address)
{
    return CPass(adapters, {address}, {}, false).Run();
}

} // namespace Velmo::GigE::Internal
