// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvsp.h"
#include "transport/stream.h"
#include "transports/gige/gige_testexport.h"
#include "transports/gige/internal/blockorder.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace Velmo::GigE::Internal
{

/** What an assembler counted since it was made. */
struct SAssemblerCounters
{
    std::uint64_t delivered = 0;  // images received completely
    std::uint64_t incomplete = 0; // images of which packets are missing, or that do not fit their buffer
    std::uint64_t lost = 0;       // images of which nothing was received or for which there was no buffer
    std::uint64_t resent = 0;     // packets that somebody asked for again
    std::uint64_t missing = 0;    // packets that never came
    std::uint64_t ignored = 0;    // packets that were late, received already, or not understood
};

/**
 * Makes images of stream packets: packets and times go in, filled buffers come out, in the order of the block ids.
 *
 * It has no socket, no clock and no thread; it asks for nothing again. Packets of a block may come in any order and
 * more than once. An image that stays incomplete holds back those behind it until the retention time has passed since
 * its last packet, or until there is no buffer for a new one. A stream that begins again with low block ids is
 * followed. Nothing is taken before the first leader, so that the image under way at the start is not reported as
 * incomplete.
 *
 * Ownership: buffers stay the caller's; between AddBuffer and its result their memory is written.
 * Threads: one at a time.
 */
class GIGE_TEST_EXPORT CFrameAssembler
{
public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::steady_clock::duration;

    /** The stream channel's packet size, which only matters until the first image with a first packet was seen. */
    CFrameAssembler(std::size_t packetBytes, Duration retention);

    void AddBuffer(void* pContext, std::uint8_t* pMemory, std::size_t bytes);
    void Push(const std::uint8_t* data, std::size_t bytes, Time now);
    /** Gives up what has waited long enough. */
    void Expire(Time now);
    /** When Expire is to be called; nothing while no image is under way. */
    std::optional<Time> GetDeadline() const;
    /** False, and the result untouched, when there is none. */
    bool TakeResult(Transport::SStreamResult& result);
    /** Gives all buffers back as Canceled, behind the results there are. */
    void CancelAll();
    const SAssemblerCounters& GetCounters() const { return m_counters; }

private:
    struct SBuffer
    {
        void* pContext = nullptr;
        std::uint8_t* pMemory = nullptr;
        std::size_t bytes = 0;
    };
    struct SFrame
    {
        std::uint64_t number = 0; // the block id, continued beyond its wrap
        bool hasBuffer = false;   // false: it is only waited for its end
        SBuffer buffer;
        bool hasLeader = false;
        Gvsp::SLeader leader;
        bool hasTrailer = false;
        Gvsp::STrailer trailer;
        std::uint32_t trailerPacketId = 0;
        std::size_t packetDataBytes = 0; // of each payload packet but the last; 0: not known yet
        std::uint32_t highestPacketId = 0;
        std::uint32_t shortPacketId = 0; // the one with fewer bytes than the others, which must be the last
        std::uint32_t received = 0;      // payload packets
        std::size_t dataEnd = 0;         // behind the last byte that was written
        bool isTooLarge = false;
        bool isInconsistent = false;
        std::vector<bool> isReceived; // by payload packet, from 1 on
        Time lastPacket;
    };
    using Frames = std::deque<SFrame>; // by number

    bool Accept(const Gvsp::SPacket& packet, Gvsp::SLeader& leader);
    bool IsNewBeginning(const Gvsp::SHeader& header, const Gvsp::SLeader& leader) const;
    void BeginWith(const Gvsp::SHeader& header);
    SFrame& FindFrame(std::uint64_t number);
    void CloseForWantOfBuffers(std::uint64_t number);
    void TakeBuffer(SFrame& frame);
    void AddPacket(SFrame& frame, const Gvsp::SPacket& packet, const Gvsp::SLeader& leader);
    void AddPayload(SFrame& frame, const Gvsp::SPacket& packet);
    bool LearnPacketSize(SFrame& frame, const Gvsp::SPacket& packet);
    void Place(SFrame& frame, const Gvsp::SPacket& packet);
    static bool IsComplete(const SFrame& frame);
    void CloseFinished();
    void CloseFront();
    Transport::SStreamResult MakeResult(const SFrame& frame);
    void Judge(const SFrame& frame, Transport::SStreamResult& result);

    const std::size_t m_packetBytes; // of the stream channel
    const Duration m_retention;
    std::size_t m_packetDataBytes = 0; // as the newest first packet told; 0: not known yet
    CBlockOrder m_order;
    std::uint64_t m_newestTimestamp = 0; // of the leaders of this order
    bool m_hasBegun = false;             // a leader was seen
    std::uint64_t m_lastClosed = 0;      // number of the last image that came out; before: one less than the first's
    std::deque<SBuffer> m_buffers;
    Frames m_frames;
    std::vector<std::vector<bool>> m_spareMaps; // so that no image has to allocate
    std::deque<Transport::SStreamResult> m_results;
    SAssemblerCounters m_counters;
};

} // namespace Velmo::GigE::Internal
