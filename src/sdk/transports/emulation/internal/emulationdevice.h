// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/device.h"
#include "transport/eventdelivery.h"
#include "transport/nodemapchunkparser.h"
#include "transports/emulation/internal/emulatedcamera.h"
#include "transports/emulation/internal/emulationstream.h"
#include "transports/emulation/internal/removalreporter.h"

#include <atomic>

namespace Velmo::Emulation::Internal
{

/** The registers of a camera as a GenApi port. */
class CModelPort final : public GenApi::IPort
{
public:
    CModelPort(std::shared_ptr<Simulator::CCameraModel> camera, bool isReadOnly);
    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void* buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override;
    GenICam::gcstring GetWriteRefusal() const override;

private:
    const std::shared_ptr<Simulator::CCameraModel> m_camera;
    const bool m_isReadOnly;
};

/** An emulated camera as the SDK sees it. A monitor reads registers and gets the same stream, but writes nothing. */
class CEmulationDevice final : public IVelmoDevice
{
public:
    CEmulationDevice(std::shared_ptr<CEmulatedCamera> camera, std::shared_ptr<CNotifier> notifier);
    ~CEmulationDevice() override;

    const CDeviceInfo& GetDeviceInfo() const override { return m_info; }
    void Open(EDeviceAccess access) override;
    void Close() override;
    bool IsOpen() const override { return m_isOpen; }
    bool IsRemoved() const override;
    GenApi::INodeMap* GetNodeMap() override { return m_nodeMap.get(); }
    GenApi::INodeMap* GetTLNodeMap() override { return nullptr; }
    GenApi::INodeMap* GetEventGrabberNodeMap() override;
    void StartEvents() override;
    unsigned int GetNumStreams() const override { return 1; }
    Transport::IStream* GetStream(unsigned int index) override;
    void SetRemovalCallback(std::function<void()> callback) override;
    IChunkParser* CreateChunkParser() override;
    void DestroyChunkParser(IChunkParser* pParser) override;

private:
    void Connect(bool wantsControl);
    void MakeEventGrabber();

    const std::shared_ptr<CEmulatedCamera> m_camera;
    const std::shared_ptr<CRemovalReporter> m_reporter;
    const CDeviceInfo m_info;
    const std::shared_ptr<CEmulationStream> m_stream;
    std::unique_ptr<CModelPort> m_port;
    std::unique_ptr<GenApi::INodeMap> m_nodeMap; // after the port that it reads
    Transport::CChunkParsers m_chunkParsers;     // after the node map that they show chunks in
    // While open with control; shared with the camera's reports, which may be under way when it is closed.
    std::shared_ptr<Transport::CEventDelivery> m_events;
    std::unique_ptr<Transport::CSoftwareNodeMap> m_eventParameters; // after what its getters read
    std::atomic<bool> m_isOpen{false};
    bool m_hasControl = false;
};

} // namespace Velmo::Emulation::Internal
