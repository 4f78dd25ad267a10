// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/multicastreception.h"

#include <utility>

namespace Velmo::GigE::Internal
{

CMulticastReception::CMulticastReception(CGvspReceiver::SConfig config, CFrameAssembler::Duration retention,
                                         SHooks hooks, Deliver deliver)
    : m_config(std::move(config)), m_hooks(std::move(hooks)), m_deliver(std::move(deliver)),
      m_assembler(m_config.packetBytes, retention)
{
}

CMulticastReception::~CMulticastReception() = default;

void CMulticastReception::Begin()
{
    m_pReceiver = std::make_unique<CGvspReceiver>(m_config, CGvspReceiver::SSink{[this](const auto& datagrams, auto now)
                                                                                 { return Take(datagrams, now); },
                                                                                 m_hooks.lookAgain});
    m_hooks.joined(m_pReceiver->GetJoined());
}

void CMulticastReception::AddBuffer(void* pContext, std::uint8_t* pMemory, std::size_t bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_assembler.AddBuffer(pContext, pMemory, bytes);
}

std::optional<CGvspReceiver::Time> CMulticastReception::Take(const std::vector<CGvspReceiver::SDatagram>& datagrams,
                                                             CGvspReceiver::Time now)
{
    std::optional<CGvspReceiver::Time> deadline;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (const CGvspReceiver::SDatagram& datagram : datagrams)
        {
            m_assembler.Push(datagram.data, datagram.bytes, now);
        }
        m_assembler.Expire(now);
        TakeResults();
        deadline = m_assembler.GetDeadline();
    }
    DeliverResults();
    return deadline;
}

void CMulticastReception::TakeResults()
{
    Transport::SStreamResult result;
    while (m_assembler.TakeResult(result))
    {
        m_results.push_back(std::move(result));
    }
}

void CMulticastReception::DeliverResults()
{
    for (Transport::SStreamResult& result : m_results)
    {
        m_deliver(std::move(result));
    }
    m_results.clear();
}

SStreamStatistics CMulticastReception::GetStatistics()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const SAssemblerCounters& counters = m_assembler.GetCounters();
    SStreamStatistics statistics;
    statistics.delivered = counters.delivered;
    statistics.lost = counters.lost;
    statistics.incomplete = counters.incomplete;
    statistics.resent = counters.resent;
    statistics.missing = counters.missing;
    return statistics;
}

SStreamStatistics CMulticastReception::End()
{
    m_pReceiver.reset();
    m_hooks.left();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_assembler.CancelAll();
        TakeResults();
    }
    DeliverResults();
    return GetStatistics();
}

} // namespace Velmo::GigE::Internal
