// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/scriptedtransportstream.h"

#include <thread>

namespace Test
{

/** Who is told of a removal, apart from the device so that it may be destroyed by the one who is told. */
class CRemovalSlot
{
public:
    /** Waits for a report that runs on another thread. */
    void SetCallback(std::function<void()> callback);
    void Report();

private:
    std::mutex m_mutex; // guards the members below; not held while the callback runs
    std::condition_variable m_changed;
    std::function<void()> m_callback;
    bool m_running = false;
    std::thread::id m_runner;
};

/** What the transport keeps of each living device. */
struct SLivingDevice
{
    std::shared_ptr<CScriptedCamera> camera;
    std::shared_ptr<CScriptedStream> stream;
    std::shared_ptr<CRemovalSlot> removal = std::make_shared<CRemovalSlot>();
    std::atomic<bool> open{false};
};

/** A device on a scripted camera. Threads: as IVelmoDevice. */
class CScriptedDevice final : public Velmo::IVelmoDevice
{
public:
    CScriptedDevice(std::shared_ptr<SLivingDevice> self, std::function<void(const SLivingDevice*)> onDestroyed);
    ~CScriptedDevice() override;

    const Velmo::CDeviceInfo& GetDeviceInfo() const override { return m_info; }
    void Open(Velmo::EDeviceAccess access) override;
    void Close() override;
    bool IsOpen() const override { return m_self->open.load(); }
    bool IsRemoved() const override { return m_self->camera->IsRemoved(); }
    GenApi::INodeMap* GetNodeMap() override { return m_nodeMap.get(); }
    GenApi::INodeMap* GetTLNodeMap() override { return m_tlNodeMap.get(); }
    GenApi::INodeMap* GetEventGrabberNodeMap() override { return m_eventNodeMap.get(); }
    void StartEvents() override { Pass(EStep::StartEvents); }
    unsigned int GetNumStreams() const override { return m_self->camera->GetConfig().hasStream ? 1 : 0; }
    Velmo::Transport::IStream* GetStream(unsigned int index) override
    {
        return index < GetNumStreams() ? m_self->stream.get() : nullptr;
    }
    void SetRemovalCallback(std::function<void()> callback) override
    {
        m_self->removal->SetCallback(std::move(callback));
    }
    Velmo::IChunkParser* CreateChunkParser() override;
    void DestroyChunkParser(Velmo::IChunkParser* pParser) override;

private:
    void Pass(EStep step) const;

    const std::shared_ptr<SLivingDevice> m_self;
    const std::function<void(const SLivingDevice*)> m_onDestroyed;
    const Velmo::CDeviceInfo m_info;
    std::unique_ptr<CScriptedPort> m_port;
    std::unique_ptr<CScriptedPort> m_tlPort; // host-side settings: also writable for a monitor
    std::unique_ptr<GenApi::INodeMap> m_nodeMap;
    std::unique_ptr<GenApi::INodeMap> m_tlNodeMap;
    std::unique_ptr<GenApi::INodeMap> m_eventNodeMap;
};

} // namespace Test
