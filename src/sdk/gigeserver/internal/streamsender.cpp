// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/streamsender.h"

#include "genapi/exceptions.h"
#include "gigeserver/internal/sockets.h"

#include <algorithm>
#include <limits>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace GigEServer::Internal
{

using std::chrono::nanoseconds;
using Velmo::Gvcp::EStatus;

namespace
{

constexpr int SendBufferBytes = 4 * 1024 * 1024;
constexpr std::int64_t BatchNs = 500'000;        // packets that are due within it leave together
constexpr std::chrono::milliseconds MostLag{20}; // a sender that was held up catches up no more than that
// Blocks kept for requests: applications ask late for what they lost at the end of a block, and more than once.
constexpr std::size_t FewestKeptBlocks = 4;
constexpr std::size_t MostKeptBlocks = 64;
constexpr std::size_t MostKeptBytes = 32 * 1024 * 1024;
constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

} // namespace

CStreamSender::CStreamSender(const SServedCamera& camera, std::shared_ptr<Simulator::CCameraModel> pModel,
                             SLiveCounters& counters, std::function<void()> onDeath)
    : m_camera(camera), m_pModel(std::move(pModel)), m_counters(counters), m_onDeath(std::move(onDeath))
{
    m_socket = OpenSocket(camera.address.ip, 0, false);
    m_port = PortOf(m_socket);
    setsockopt(m_socket, SOL_SOCKET, SO_SNDBUF, &SendBufferBytes, sizeof SendBufferBytes);
    const in_addr adapter{htonl(camera.address.ip)};
    setsockopt(m_socket, IPPROTO_IP, IP_MULTICAST_IF, &adapter, sizeof adapter);
    constexpr std::uint32_t seed = 4711; // what is lost is the same in every run
    m_pStreamWriter = std::make_unique<CPacketWriter>(m_socket, camera.faults, seed, counters);
    m_pControlWriter = std::make_unique<CPacketWriter>(m_socket, camera.faults, seed + 1, counters);
    m_pModel->AddSink(this);
    m_pModel->SetWakeHandler(
        [this]
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_isWoken = true;
            m_changed.notify_all();
        });
    m_thread = std::thread([this] { Run(); });
}

CStreamSender::~CStreamSender()
{
    m_pModel->SetWakeHandler(nullptr);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = true;
        m_changed.notify_all();
    }
    m_thread.join();
    m_pModel->RemoveSink(this);
    close(m_socket);
}

void CStreamSender::Run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    std::int64_t dueNs = 0; // of the model's clock, which is the steady one
    while (!m_isStopping)
    {
        const Time due = Time(nanoseconds(dueNs));
        if (!m_isWoken && (dueNs == Never || std::chrono::steady_clock::now() < due))
        {
            dueNs == Never ? m_changed.wait(lock) : static_cast<void>(m_changed.wait_until(lock, due));
            continue;
        }
        m_isWoken = false;
        lock.unlock();
        dueNs = m_pModel->Produce();
        lock.lock();
    }
}

void CStreamSender::SetTarget(const STarget& target)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (target.ip != m_target.ip || target.port != m_target.port)
    {
        m_history.clear(); // the next stream begins with the same block identifiers
    }
    m_target = target;
    m_changed.notify_all();
}

std::shared_ptr<CBlock> CStreamSender::TakeBlock()
{
    std::size_t kept = 0;
    for (const auto& pKept : m_history)
    {
        kept += pKept->GetBytes();
    }
    const bool isFull = m_history.size() >= MostKeptBlocks || kept >= MostKeptBytes;
    if (isFull && m_history.size() >= FewestKeptBlocks)
    {
        std::shared_ptr<CBlock> pOldest = std::move(m_history.front());
        m_history.pop_front();
        if (pOldest.use_count() == 1) // otherwise some of its packets are being sent again
        {
            return pOldest;
        }
    }
    return std::make_shared<CBlock>();
}

bool CStreamSender::OnFrame(const Simulator::SFrame& frame)
{
    STarget target;
    std::shared_ptr<CBlock> pBlock;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_target.port == 0 || m_isDead || m_camera.faults.isSilent)
        {
            return false;
        }
        target = m_target;
        pBlock = TakeBlock();
    }
    pBlock->Assign(frame, target);
    if (pBlock->CountPackets() == 0)
    {
        return false;
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_history.push_back(pBlock);
    }
    SetFragmentation(target.isFragmented);
    const bool isDying = m_camera.faults.dieInFrame != 0 && frame.blockId >= m_camera.faults.dieInFrame;
    ++m_counters.blocks;
    if (m_camera.faults.delayMs != 0 &&
        !WaitUntil(std::chrono::steady_clock::now() + std::chrono::milliseconds(m_camera.faults.delayMs)))
    {
        return true;
    }
    SendBlock(*pBlock, isDying ? pBlock->CountAvailable() / 2 : pBlock->CountAvailable());
    if (isDying)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_isDead = true;
        }
        m_onDeath();
    }
    return true;
}

void CStreamSender::SendBlock(CBlock& block, std::uint32_t packets)
{
    const STarget& target = block.GetTarget();
    constexpr double bits = 8.0e9; // per byte, in nanoseconds
    const double wireNs = m_camera.linkBitsPerSecond == 0 ? 0.0
                                                          : bits * static_cast<double>(target.packetBytes) /
                                                                static_cast<double>(m_camera.linkBitsPerSecond);
    const std::int64_t packetNs = target.delayNs + static_cast<std::int64_t>(wireNs);
    const std::int64_t most = CPacketWriter::MostPackets;
    const auto together =
        static_cast<std::uint32_t>(packetNs == 0 ? most : std::clamp<std::int64_t>(BatchNs / packetNs, 1, most));
    m_nextPacket = std::max(m_nextPacket, std::chrono::steady_clock::now() - MostLag);
    for (std::uint32_t first = 0; first < packets; first += together)
    {
        if (!WaitUntil(m_nextPacket))
        {
            return;
        }
        const std::uint32_t count = std::min(together, packets - first);
        m_pStreamWriter->Write(block, first, count, false);
        block.sent = first + count;
        m_nextPacket += nanoseconds(packetNs * count);
    }
}

bool CStreamSender::WaitUntil(Time time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_until(lock, time, [this] { return m_isStopping || m_target.port == 0; });
    return !m_isStopping && m_target.port != 0;
}

void CStreamSender::SetFragmentation(bool isFragmented) const
{
    const int mode = isFragmented ? IP_PMTUDISC_DONT : IP_PMTUDISC_DO;
    setsockopt(m_socket, IPPROTO_IP, IP_MTU_DISCOVER, &mode, sizeof mode);
}

void CStreamSender::SendTestPacket()
{
    STarget target;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        target = m_target;
    }
    if (target.port != 0 && !m_camera.faults.hasNoTestPackets)
    {
        SetFragmentation(target.isFragmented);
        m_pControlWriter->WriteTestPacket(target);
    }
}

void CStreamSender::Resend(const Velmo::Gvcp::SPacketResend& resend)
{
    std::shared_ptr<CBlock> pBlock;
    STarget target;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        target = m_target;
        const auto found = std::find_if(m_history.rbegin(), m_history.rend(),
                                        [&](const auto& pKept) { return pKept->GetId() == resend.blockId; });
        if (m_isDead || m_target.port == 0)
        {
            return;
        }
        pBlock = found == m_history.rend() ? nullptr : *found;
    }
    if (pBlock == nullptr || resend.firstPacketId >= pBlock->CountAvailable())
    {
        ++m_counters.missedRequests;
        m_pControlWriter->WriteUnavailable(target, resend.blockId, resend.firstPacketId,
                                           static_cast<std::uint16_t>(EStatus::PacketUnavailable));
        return;
    }
    // What has not left yet comes by itself. The last identifier may be the largest there is: "to the end".
    const std::uint64_t end = std::min<std::uint64_t>(pBlock->sent, std::uint64_t{resend.lastPacketId} + 1);
    for (std::uint64_t id = resend.firstPacketId; id < end; id += CPacketWriter::MostPackets)
    {
        const std::uint64_t count = std::min<std::uint64_t>(CPacketWriter::MostPackets, end - id);
        m_pControlWriter->Write(*pBlock, static_cast<std::uint32_t>(id), static_cast<std::uint32_t>(count), true);
    }
}

} // namespace GigEServer::Internal
