// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/actions.h"

#include "genapi/exceptions.h"
#include "transport/log.h"
#include "transports/gige/internal/udpsocket.h"

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <netinet/in.h>
#include <poll.h>
#include <random>
#include <set>
#include <sys/socket.h>
#include <unistd.h>

namespace Velmo::GigE::Internal
{

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr const char* LogCategory = "velmo.gige";

/** Which of its addresses the system would send from; nothing is sent. 0 when it knows no way. */
std::uint32_t FindRouteSource(std::uint32_t target)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
    {
        return 0;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(target);
    address.sin_port = htons(Gvcp::Port);
    sockaddr_in own{};
    socklen_t length = sizeof own;
    const bool isFound = connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                         getsockname(descriptor, reinterpret_cast<sockaddr*>(&own), &length) == 0;
    close(descriptor);
    return isFound ? ntohl(own.sin_addr.s_addr) : 0;
}

void RouteBroadcast(const std::vector<SAdapter>& adapters, std::uint32_t target, std::vector<SActionRoute>& routes)
{
    std::set<std::pair<unsigned int, std::uint32_t>> served; // an adapter's further addresses reach the same cameras
    for (const SAdapter& adapter : adapters)
    {
        const bool isHere = target == LimitedBroadcast || adapter.IsBroadcast(target);
        // The loopback adapter does not do limited broadcasts.
        const std::uint32_t address = adapter.isLoopback ? adapter.DirectedBroadcast() : target;
        if (isHere && served.emplace(adapter.index, address).second)
        {
            routes.push_back({adapter, address, true});
        }
    }
}

std::string Describe(const Transport::SActionCommand& command, const char* did)
{
    return std::string(command.time.has_value() ? "The scheduled action" : "The action") + " for " + command.address +
           " " + did;
}

/** One action command on its way. */
class CActionCall
{
public:
    explicit CActionCall(const Transport::SActionCommand& command)
        : m_command(command), m_isAckRequired(command.timeoutMs != 0 && command.expectedAnswers != 0),
          m_requestId(static_cast<std::uint16_t>(std::random_device{}() % 0xFFFF + 1)), // 0 is not allowed
          m_answers(m_requestId, m_isAckRequired ? command.expectedAnswers : 0)
    {
    }

    void Send(const std::vector<SActionRoute>& routes)
    {
        Gvcp::SAction action{m_command.deviceKey, m_command.groupKey, m_command.groupMask};
        action.isScheduled = m_command.time.has_value();
        action.time = m_command.time.value_or(0);
        const Gvcp::Bytes packet = Gvcp::EncodeActionCmd(m_requestId, action, m_isAckRequired);
        // All sockets first: cameras on different adapters should hear it as close together as can be.
        for (const SActionRoute& route : routes)
        {
            m_ways.push_back({route, CUdpSocket()});
            if (!m_ways.back().socket.Bind(route.adapter.ip))
            {
                Fail(route, m_ways.back().socket.GetError());
                m_ways.pop_back();
            }
        }
        const auto isLost = [&](SWay& way)
        {
            const bool isSent = way.socket.Send(packet, way.route.target, Gvcp::Port, way.route.adapter.index);
            if (!isSent)
            {
                Fail(way.route, way.socket.GetError());
            }
            return !isSent;
        };
        m_ways.erase(std::remove_if(m_ways.begin(), m_ways.end(), isLost), m_ways.end());
        for (const std::string& failure : m_failures)
        {
            Log(ELogLevel::Warning, LogCategory, Describe(m_command, "did not go through ") + failure);
        }
        if (m_ways.empty())
        {
            GENICAM_THROW(RuntimeException, Describe(m_command, "could not be sent through ") + m_failures.front());
        }
    }

    std::vector<Transport::SActionAnswer> Wait()
    {
        const Clock::time_point deadline = Clock::now() + milliseconds(m_command.timeoutMs);
        while (!m_answers.IsComplete())
        {
            const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
            if (left.count() <= 0)
            {
                break;
            }
            Receive(static_cast<int>(std::min<milliseconds::rep>(left.count(), LongestPollMs)));
        }
        return m_answers.Get();
    }
    const std::vector<Transport::SActionAnswer>& GetContradictions() const { return m_answers.GetContradictions(); }

private:
    static constexpr milliseconds::rep LongestPollMs = 3600 * 1000;

    struct SWay
    {
        SActionRoute route;
        CUdpSocket socket;
    };

    void Fail(const SActionRoute& route, const std::string& reason)
    {
        m_failures.push_back("the network adapter \"" + route.adapter.id + "\": " + reason + ".");
    }

    void Receive(int timeoutMs)
    {
        std::vector<pollfd> entries;
        for (const SWay& way : m_ways)
        {
            entries.push_back({way.socket.GetDescriptor(), POLLIN, 0});
        }
        if (poll(entries.data(), entries.size(), timeoutMs) <= 0)
        {
            return;
        }
        for (SWay& way : m_ways)
        {
            // Bounded, so that a flood on one adapter cannot hold up the others or the end of the wait.
            constexpr int mostAtOnce = 256;
            std::uint8_t data[Gvcp::HeaderBytes + Gvcp::MaxPayloadBytes];
            std::uint32_t senderIp = 0;
            std::uint16_t senderPort = 0;
            for (int i = 0; i < mostAtOnce; ++i)
            {
                const std::size_t bytes = way.socket.Receive(data, sizeof data, senderIp, senderPort);
                if (bytes == 0)
                {
                    break;
                }
                m_answers.Take(data, bytes, senderIp, senderPort, way.route);
            }
        }
    }

    const Transport::SActionCommand& m_command;
    const bool m_isAckRequired;
    const std::uint16_t m_requestId;
    CActionAnswers m_answers;
    std::vector<SWay> m_ways;
    std::vector<std::string> m_failures;
};

std::uint32_t CheckedTarget(const Transport::SActionCommand& command)
{
    std::uint32_t target = 0;
    if (!Gvcp::ParseIp(command.address, target) || (!IsUnicast(target) && target != LimitedBroadcast))
    {
        GENICAM_THROW(InvalidArgumentException,
                      "\"" + command.address +
                          "\" is no address for an action command. Give 255.255.255.255 for every camera, the "
                          "broadcast address of a network such as 192.168.1.255, or the address of one camera.");
    }
    if (command.groupMask == 0)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "The group mask of an action command must not be 0: no camera would react to it.");
    }
    return target;
}

void LogAnswers(const Transport::SActionCommand& command, const std::vector<Transport::SActionAnswer>& answers,
                const std::vector<Transport::SActionAnswer>& contradictions)
{
    const auto log = [&command](const Transport::SActionAnswer& answer, const std::string& end)
    {
        const std::string how = answer.status == 0 ? "was taken by " + answer.address
                                                   : "was refused by " + answer.address + ": " +
                                                         Gvcp::StatusText(static_cast<std::uint16_t>(answer.status));
        Log(ELogLevel::Debug, LogCategory, Describe(command, how.c_str()) + end);
    };
    for (const Transport::SActionAnswer& answer : answers)
    {
        log(answer, ".");
    }
    for (const Transport::SActionAnswer& answer : contradictions)
    {
        log(answer, ", which had answered otherwise before: two cameras may have that address.");
    }
    if (command.timeoutMs != 0 && answers.size() < command.expectedAnswers)
    {
        Log(ELogLevel::Debug, LogCategory,
            Describe(command, "drew ") + std::to_string(answers.size()) + " answers within " +
                std::to_string(command.timeoutMs) + " ms; " + std::to_string(command.expectedAnswers) +
                " were expected.");
    }
}

} // namespace

std::vector<SActionRoute> RouteAction(const std::vector<SAdapter>& adapters, std::uint32_t target,
                                      std::uint32_t routeSource)
{
    std::vector<SActionRoute> routes;
    RouteBroadcast(adapters, target, routes);
    if (!routes.empty() || target == LimitedBroadcast)
    {
        return routes;
    }
    const auto isNear = [target](const SAdapter& adapter)
    {
        return adapter.IsInSubnet(target);
    };
    const auto isSource = [routeSource](const SAdapter& adapter)
    {
        return adapter.ip == routeSource;
    };
    auto found = std::find_if(adapters.begin(), adapters.end(),
                              [&](const SAdapter& adapter) { return isNear(adapter) && isSource(adapter); });
    if (found == adapters.end())
    {
        found = std::find_if(adapters.begin(), adapters.end(), isNear);
    }
    if (found == adapters.end())
    {
        found = std::find_if(adapters.begin(), adapters.end(), isSource);
    }
    if (found != adapters.end())
    {
        routes.push_back({*found, target, false});
    }
    return routes;
}

CActionAnswers::CActionAnswers(std::uint16_t requestId, std::size_t expected)
    : m_requestId(requestId), m_expected(expected)
{
}

void CActionAnswers::Take(const std::uint8_t* data, std::size_t bytes, std::uint32_t senderIp, std::uint16_t senderPort,
                          const SActionRoute& route)
{
    Gvcp::SAcknowledge ack;
    if (IsComplete() || senderPort != Gvcp::Port ||
        Gvcp::ParseAcknowledge(data, bytes, ack) != Gvcp::EParseResult::Ok ||
        !Gvcp::IsAnswer(ack, Gvcp::ECommand::ActionAck, m_requestId))
    {
        return;
    }
    const bool isFromThere = route.isBroadcast ? route.target == LimitedBroadcast || route.adapter.IsInSubnet(senderIp)
                                               : senderIp == route.target;
    if (!isFromThere)
    {
        return;
    }
    const std::string address = Gvcp::IpText(senderIp);
    const auto first = std::find_if(m_answers.begin(), m_answers.end(),
                                    [&](const Transport::SActionAnswer& known) { return known.address == address; });
    if (first == m_answers.end())
    {
        m_answers.push_back({address, ack.status});
        return;
    }
    constexpr std::size_t mostContradictions = 64;
    const bool isTold =
        first->status == ack.status || std::any_of(m_contradictions.begin(), m_contradictions.end(),
                                                   [&](const Transport::SActionAnswer& known)
                                                   { return known.address == address && known.status == ack.status; });
    if (!isTold && m_contradictions.size() < mostContradictions)
    {
        m_contradictions.push_back({address, ack.status});
    }
}

std::vector<Transport::SActionAnswer> IssueAction(const std::vector<SAdapter>& adapters,
                                                  const Transport::SActionCommand& command)
{
    const std::uint32_t target = CheckedTarget(command);
    const std::vector<SActionRoute> routes = RouteAction(adapters, target, FindRouteSource(target));
    if (routes.empty())
    {
        GENICAM_THROW(RuntimeException,
                      Describe(command, "cannot be sent: no network adapter in use leads there. There are: ") +
                          AdapterNames() + ".");
    }
    CActionCall call(command);
    call.Send(routes);
    std::vector<Transport::SActionAnswer> answers = call.Wait();
    LogAnswers(command, answers, call.GetContradictions());
    return answers;
}

} // namespace Velmo::GigE::Internal
