// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/lifeprobe.h"

#include "protocols/gvbsregisters.h"
#include "transports/gige/internal/udpsocket.h"

#include <algorithm>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{
using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds Period{500};
constexpr int MostUnanswered = 4;
} // namespace

struct CLifeProbe::SCamera
{
    CUdpSocket socket;
    std::uint32_t deviceIp = 0;
    std::shared_ptr<CRemoval> pRemoval;
    std::uint16_t requestId = 0;
    int unanswered = 0;

    void Receive()
    {
        std::uint8_t data[Gvcp::HeaderBytes + Gvcp::MaxPayloadBytes];
        std::uint32_t senderIp = 0;
        std::uint16_t senderPort = 0;
        while (const std::size_t bytes = socket.Receive(data, sizeof data, senderIp, senderPort))
        {
            Gvcp::SAcknowledge ack;
            if (senderIp == deviceIp && Gvcp::ParseAcknowledge(data, bytes, ack) == Gvcp::EParseResult::Ok)
            {
                unanswered = 0;
            }
        }
    }
};

CLifeProbe::CLifeProbe() : m_wakeDescriptor(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

CLifeProbe::~CLifeProbe()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = true;
    }
    Wake();
    if (m_thread.joinable())
    {
        m_thread.join();
    }
    close(m_wakeDescriptor);
}

std::uint64_t CLifeProbe::Watch(std::uint32_t adapterIp, std::uint32_t deviceIp, std::shared_ptr<CRemoval> pRemoval)
{
    auto pCamera = std::make_shared<SCamera>();
    pCamera->deviceIp = deviceIp;
    pCamera->pRemoval = std::move(pRemoval);
    if (!pCamera->socket.Bind(adapterIp))
    {
        return 0;
    }
    std::uint64_t id = 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        id = ++m_lastId;
        m_cameras[id] = std::move(pCamera);
        if (!m_thread.joinable())
        {
            m_thread = std::thread([this] { Run(); });
        }
    }
    Wake();
    return id;
}

void CLifeProbe::Forget(std::uint64_t id)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_cameras.erase(id);
}

void CLifeProbe::Wake()
{
    const std::uint64_t one = 1;
    // It can only fail when the counter is full, and then the thread wakes up anyway.
    static_cast<void>(!write(m_wakeDescriptor, &one, sizeof one));
}

void CLifeProbe::Wait(const Cameras& cameras, std::chrono::milliseconds timeout)
{
    std::vector<pollfd> entries{{m_wakeDescriptor, POLLIN, 0}};
    for (const auto& [id, pCamera] : cameras)
    {
        entries.push_back({pCamera->socket.GetDescriptor(), POLLIN, 0});
    }
    poll(entries.data(), entries.size(), cameras.empty() ? -1 : static_cast<int>(timeout.count()));
    std::uint64_t count = 0;
    static_cast<void>(!read(m_wakeDescriptor, &count, sizeof count));
    for (const auto& [id, pCamera] : cameras)
    {
        pCamera->Receive();
    }
}

void CLifeProbe::Ask(const Cameras& cameras)
{
    for (const auto& [id, pCamera] : cameras)
    {
        if (pCamera->unanswered >= MostUnanswered)
        {
            pCamera->pRemoval->MarkLost();
            continue;
        }
        // Some cameras take a read of the control privilege for a heartbeat; the version is harmless.
        pCamera->requestId = pCamera->requestId == 0xFFFF ? 1 : static_cast<std::uint16_t>(pCamera->requestId + 1);
        pCamera->socket.Send(Gvcp::EncodeReadRegCmd(pCamera->requestId, {Gvbs::Version}), pCamera->deviceIp,
                             Gvcp::Port);
        ++pCamera->unanswered;
    }
}

void CLifeProbe::Run()
{
    Clock::time_point nextQuestion = Clock::now();
    for (;;)
    {
        Cameras cameras;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (m_isStopping)
            {
                return;
            }
            cameras = m_cameras;
        }
        const Clock::time_point now = Clock::now();
        if (now >= nextQuestion)
        {
            Ask(cameras);
            nextQuestion = now + Period;
        }
        for (const auto& [id, pCamera] : cameras)
        {
            if (pCamera->pRemoval->IsLost())
            {
                Forget(id);
                pCamera->pRemoval->Report();
            }
        }
        Wait(cameras, std::max(std::chrono::milliseconds(1),
                               std::chrono::ceil<std::chrono::milliseconds>(nextQuestion - Clock::now())));
    }
}

} // namespace Velmo::GigE::Internal
