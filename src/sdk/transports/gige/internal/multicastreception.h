// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/frameassembler.h"
#include "transports/gige/internal/gvspreceiver.h"
#include "transports/gige/internal/reception.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Velmo::GigE::Internal
{

/**
 * Receives what a camera sends to a multicast group, which the engine cannot.
 *
 * It speaks to nobody: packets that are missing are not asked for. Results are delivered on the receiver's thread, in
 * the order of the camera's frames.
 */
class CMulticastReception : public IReception
{
public:
    struct SHooks
    {
        /** The group was joined, and what is sent there arrives. What it throws Begin throws. */
        std::function<void(const SMulticastGroup&)> joined;
        /** See CGvspReceiver. */
        std::function<std::optional<SMulticastGroup>()> lookAgain;
        /** The group was left. Must not throw. */
        std::function<void()> left;
    };

    CMulticastReception(CGvspReceiver::SConfig config, CFrameAssembler::Duration retention, SHooks hooks,
                        Deliver deliver);
    ~CMulticastReception() override;
    CMulticastReception(const CMulticastReception&) = delete;
    CMulticastReception& operator=(const CMulticastReception&) = delete;

    /** Throws RuntimeException, naming group, adapter and reason, when the group cannot be joined. */
    void Begin() override;
    void AddBuffer(void* pContext, std::uint8_t* pMemory, std::size_t bytes) override;
    SStreamStatistics GetStatistics() override;
    SStreamStatistics End() override;

private:
    std::optional<CGvspReceiver::Time> Take(const std::vector<CGvspReceiver::SDatagram>& datagrams,
                                            CGvspReceiver::Time now);
    void TakeResults();
    void DeliverResults();

    const CGvspReceiver::SConfig m_config;
    const SHooks m_hooks;
    const Deliver m_deliver;
    std::vector<Transport::SStreamResult> m_results; // taken, to be delivered; of the thread that does
    std::mutex m_mutex;                              // guards the assembler; not held while anything is delivered
    CFrameAssembler m_assembler;
    std::unique_ptr<CGvspReceiver> m_pReceiver; // last: its thread uses the rest
};

} // namespace Velmo::GigE::Internal
