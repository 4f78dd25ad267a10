// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_testexport.h"
#include "gigeserver/internal/packetwriter.h"
#include "protocols/gvcp.h"
#include "simulator/cameramodel.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace GigEServer::Internal
{

/**
 * The stream channel of a camera: makes the frames when they are due and sends them at the network's pace.
 *
 * Threads: its own sender thread runs the acquisition and sends; everything else comes from the control thread.
 */
class GIGESERVER_TEST_EXPORT CStreamSender final : public Simulator::IFrameSink
{
public:
    /** onDeath is called on the sender thread when the camera dies in the middle of a frame, as the faults want it.
     *  Throws GenICam::RuntimeException when there is no socket for the camera's address. */
    CStreamSender(const SServedCamera& camera, std::shared_ptr<Simulator::CCameraModel> pModel, SLiveCounters& counters,
                  std::function<void()> onDeath);
    /** Ends the sender thread, in the middle of a frame if it must be. */
    ~CStreamSender() override;
    CStreamSender(const CStreamSender&) = delete;
    CStreamSender& operator=(const CStreamSender&) = delete;

    /** From the next frame on; a frame under way is not finished when the target becomes none. */
    void SetTarget(const STarget& target);
    void SendTestPacket();
    /** Those packets of the range that have left once; the range comes from a stranger. Says so when the block, or its
     *  first packet, is not there. */
    void Resend(const Velmo::Gvcp::SPacketResend& resend);
    std::uint16_t GetPort() const { return m_port; }

    bool OnFrame(const Simulator::SFrame& frame) override;

private:
    using Time = std::chrono::steady_clock::time_point;

    void Run();
    std::shared_ptr<CBlock> TakeBlock();
    void SendBlock(CBlock& block, std::uint32_t packets);
    /** False when the block is not to be finished. */
    bool WaitUntil(Time time);
    void SetFragmentation(bool isFragmented) const;

    const SServedCamera m_camera;
    const std::shared_ptr<Simulator::CCameraModel> m_pModel;
    SLiveCounters& m_counters;
    const std::function<void()> m_onDeath;
    int m_socket = -1;
    std::uint16_t m_port = 0;
    std::unique_ptr<CPacketWriter> m_pStreamWriter;  // the sender thread's
    std::unique_ptr<CPacketWriter> m_pControlWriter; // the control thread's
    Time m_nextPacket{};                             // the sender thread's

    std::mutex m_mutex; // guards all below; never held while sending or calling the model
    std::condition_variable m_changed;
    STarget m_target;
    std::deque<std::shared_ptr<CBlock>> m_history; // the oldest first
    bool m_isWoken = true;
    bool m_isStopping = false;
    bool m_isDead = false;
    std::thread m_thread;
};

} // namespace GigEServer::Internal
