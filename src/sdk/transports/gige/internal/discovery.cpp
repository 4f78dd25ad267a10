// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/discovery.h"

#include "protocols/gvbsregisters.h"
#include "transports/gige/internal/udpsocket.h"

#include <algorithm>
#include <chrono>
#include <map>
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
constexpr std::size_t MostDevices = 4096;
constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;
constexpr std::uint32_t LoopbackAddress = 0x7F000001;

/** One discovery on all adapters. */
class CPass
{
public:
    CPass(const std::vector<SAdapter>& adapters, std::vector<std::uint32_t> addresses, std::set<std::uint32_t> expected,
          bool isBroadcasting)
        : m_addresses(std::move(addresses)), m_expected(std::move(expected)), m_isBroadcasting(isBroadcasting),
          m_discoveryId(static_cast<std::uint16_t>(std::random_device{}() % 0x7FFF + 1))
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
                AskPrivilegesAgain();
            }
            const Clock::time_point next = isRepeated ? GetDeadline() : std::min(GetDeadline(), m_start + RepeatAfter);
            Wait(std::max(milliseconds(1), std::chrono::ceil<milliseconds>(next - now)));
        }
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
            m_asked.empty() ? m_deadline : std::max(m_deadline, m_lastAsked + PrivilegeWait);
        return m_expected.empty() ? std::min(quiet, latest) : latest;
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
            Gvcp::SAcknowledge ack;
            if (senderPort != Gvcp::Port || Gvcp::ParseAcknowledge(data, bytes, ack) != Gvcp::EParseResult::Ok)
            {
                continue;
            }
            if (ack.command == static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryAck))
            {
                OnDiscovered(sockets, ack, senderIp);
            }
            else if (ack.command == static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegAck))
            {
                OnPrivilege(ack, senderIp);
            }
        }
    }

    void OnDiscovered(SSockets& sockets, const Gvcp::SAcknowledge& ack, std::uint32_t senderIp)
    {
        SFoundDevice device;
        if (ack.ackId != m_discoveryId || ack.status != 0 || m_result.devices.size() >= MostDevices ||
            Gvcp::ParseDiscoveryAck(ack, device.ack) != Gvcp::EParseResult::Ok)
        {
            return;
        }
        device.isRemote = std::find(m_addresses.begin(), m_addresses.end(), senderIp) != m_addresses.end();
        // A camera behind a router or with a fresh address is reached where it answered from.
        device.ip = device.isRemote || device.ack.currentIp == 0 ? senderIp : device.ack.currentIp;
        device.adapter = sockets.adapter;
        if (!IsUnicast(device.ip) || device.adapter.IsBroadcast(device.ip))
        {
            return; // whoever reads or opens it would talk to everybody
        }
        const bool isReachable = device.isRemote || device.adapter.IsInSubnet(device.ip);
        for (SFoundDevice& known : m_result.devices)
        {
            const bool isSame = known.ack.mac == device.ack.mac && known.ack.serialNumber == device.ack.serialNumber &&
                                known.ack.modelName == device.ack.modelName;
            if (!isSame)
            {
                continue;
            }
            if (isReachable && !known.isRemote && !known.adapter.IsInSubnet(known.ip))
            {
                known = device;
                AskPrivilege(static_cast<std::size_t>(&known - m_result.devices.data()));
            }
            return;
        }
        if (m_result.devices.empty())
        {
            // Cameras answer about alike: where the first is slow, the others may be.
            const auto slow = 2 * std::chrono::ceil<milliseconds>(Clock::now() - m_start);
            m_quietWait = std::clamp<milliseconds>(slow, QuietWait, MostQuietWait);
        }
        m_result.devices.push_back(device);
        m_expected.erase(device.ip);
        m_deadline = Clock::now() + m_quietWait;
        if (isReachable)
        {
            AskPrivilege(m_result.devices.size() - 1);
        }
    }

    void AskPrivilege(std::size_t index)
    {
        const SFoundDevice& device = m_result.devices[index];
        const auto id = static_cast<std::uint16_t>(0x8000 + index);
        for (SSockets& sockets : m_sockets)
        {
            if (sockets.adapter.id == device.adapter.id)
            {
                sockets.unicast.Send(Gvcp::EncodeReadRegCmd(id, {Gvbs::ControlChannelPrivilege}), device.ip,
                                     Gvcp::Port);
                m_asked[id] = index;
                m_lastAsked = Clock::now();
            }
        }
    }

    void AskPrivilegesAgain()
    {
        const std::map<std::uint16_t, std::size_t> asked = m_asked;
        for (const auto& [id, index] : asked)
        {
            AskPrivilege(index);
        }
    }

    void OnPrivilege(const Gvcp::SAcknowledge& ack, std::uint32_t senderIp)
    {
        const auto found = m_asked.find(ack.ackId);
        if (found == m_asked.end() || m_result.devices[found->second].ip != senderIp)
        {
            return;
        }
        std::vector<std::uint32_t> values;
        const bool isRead = ack.status == 0 && Gvcp::ParseReadRegAck(ack, values) == Gvcp::EParseResult::Ok;
        constexpr std::uint32_t held = Gvbs::CcpExclusiveAccess | Gvbs::CcpControlAccess;
        const bool isHeld = isRead ? (values.front() & held) != 0 : true; // only its owner may read from some
        m_result.devices[found->second].access = isHeld ? EAccessStatus::InUse : EAccessStatus::Free;
        m_asked.erase(found);
    }

    std::vector<std::uint32_t> m_addresses;
    std::set<std::uint32_t> m_expected; // of those that have not answered yet
    bool m_isBroadcasting;
    std::uint16_t m_discoveryId;
    std::vector<SSockets> m_sockets;
    std::map<std::uint16_t, std::size_t> m_asked; // request identifier to index of the device
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
