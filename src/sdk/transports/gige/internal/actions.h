// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "transport/transport.h"
#include "transports/gige/gige_testexport.h"
#include "transports/gige/internal/adapters.h"

#include <vector>

namespace Velmo::GigE::Internal
{

constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;

/** One datagram of an action command: from where and to where. */
struct SActionRoute
{
    SAdapter adapter;
    std::uint32_t target = 0; // host byte order
    bool isBroadcast = false;
};

/**
 * The ways by which an action command to that address goes, one for each network adapter that it concerns, so that no
 * camera gets it twice: the limited broadcast goes through all of them (as the network's own broadcast on the loopback
 * one), a network's broadcast through those of that network, anything else through routeSource's.
 * routeSource: the address of the adapter by which the system would reach the target; 0 when there is none.
 */
GIGE_TEST_EXPORT std::vector<SActionRoute> RouteAction(const std::vector<SAdapter>& adapters, std::uint32_t target,
                                                       std::uint32_t routeSource);

/** Sorts the answers to one action command from everything else that arrives. No sockets. Threads: one at a time. */
class GIGE_TEST_EXPORT CActionAnswers
{
public:
    CActionAnswers(std::uint16_t requestId, std::size_t expected);
    /** A datagram that came by that route. Ignored: what is no whole answer to this command, what does not come from
     *  where the route leads, and every further answer of a camera. */
    void Take(const std::uint8_t* data, std::size_t bytes, std::uint32_t senderIp, std::uint16_t senderPort,
              const SActionRoute& route);
    bool IsComplete() const { return m_answers.size() >= m_expected; }
    const std::vector<Transport::SActionAnswer>& Get() const { return m_answers; }
    /** Further answers with another status than the first of the same address had; each once, the first few. */
    const std::vector<Transport::SActionAnswer>& GetContradictions() const { return m_contradictions; }

private:
    std::uint16_t m_requestId;
    std::size_t m_expected;
    std::vector<Transport::SActionAnswer> m_answers;
    std::vector<Transport::SActionAnswer> m_contradictions;
};

/** IGigEExtension::IssueAction by these adapters. */
GIGE_TEST_EXPORT std::vector<Transport::SActionAnswer> IssueAction(const std::vector<SAdapter>& adapters,
                                                                   const Transport::SActionCommand& command);

} // namespace Velmo::GigE::Internal
