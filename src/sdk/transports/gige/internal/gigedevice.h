// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/nodemapchunkparser.h"
#include "transport/transport.h"
#include "transports/gige/internal/eventgrabber.h"
#include "transports/gige/internal/gigestream.h"
#include "transports/gige/internal/monitorcamera.h"
#include "transports/gige/internal/monitorstream.h"
#include "transports/gige/internal/opencamera.h"
#include "transports/gige/internal/services.h"

namespace Velmo::GigE::Internal
{

/**
 * One GigE Vision camera. Control is the engine's; who holds the camera and whether it lives we ask ourselves. A
 * monitor does without the engine, which cannot open a camera without taking control.
 */
class CGigEDevice : public IVelmoDevice
{
public:
    CGigEDevice(CDeviceInfo info, std::shared_ptr<SServices> pServices);
    ~CGigEDevice() override;

    const CDeviceInfo& GetDeviceInfo() const override { return m_info; }
    void Open(EDeviceAccess access) override;
    void Close() override;
    bool IsOpen() const override { return m_pCamera != nullptr || m_pMonitor != nullptr; }
    bool IsRemoved() const override { return m_pRemoval->IsRemoved(); }
    GenApi::INodeMap* GetNodeMap() override;
    GenApi::INodeMap* GetTLNodeMap() override;
    GenApi::INodeMap* GetEventGrabberNodeMap() override;
    void StartEvents() override;
    unsigned int GetNumStreams() const override { return 1; }
    /** Another one for a monitor than for control. */
    Transport::IStream* GetStream(unsigned int index) override;
    void SetRemovalCallback(std::function<void()> callback) override;
    IChunkParser* CreateChunkParser() override;
    void DestroyChunkParser(IChunkParser* pParser) override;

private:
    std::string Name() const;
    void AwaitEarlierConnection() const;
    void CheckFree() const;
    ObjectPtr<ArvDevice> OpenEngine(CEngineCalls& calls) const;
    void EndLeftOverAcquisition(GenApi::INodeMap& nodeMap) const;
    std::unique_ptr<SOpenCamera> OpenCamera();
    void ConnectFeatures(SOpenCamera& camera) const;
    std::unique_ptr<Transport::CSoftwareNodeMap> MakeParameters();
    void OpenControl();
    void OpenMonitor();
    void CloseControl();
    void CloseMonitor();
    void Watch(CRemoval::Handler onRemoved);
    /** isThere: the end is waited for. */
    void Release(std::unique_ptr<SOpenCamera> pCamera, bool isThere) const;
    bool IsAnswering() const;

    CDeviceInfo m_info;
    std::uint32_t m_deviceIp = 0;
    std::uint32_t m_adapterIp = 0;
    std::shared_ptr<SServices> m_pServices;
    std::shared_ptr<CRemoval> m_pRemoval;
    CGigEStream m_stream;
    CMonitorStream m_monitorStream;
    std::unique_ptr<SOpenCamera> m_pCamera;     // while controlled
    std::unique_ptr<CEventGrabber> m_pEvents;   // while controlled, of a camera that has events
    std::unique_ptr<SMonitorCamera> m_pMonitor; // while monitored
    Transport::CChunkParsers m_chunkParsers;    // after the cameras, whose node maps show the chunks
    std::unique_ptr<Transport::CSoftwareNodeMap> m_pParameters;
    std::uint64_t m_probeId = 0;
    unsigned long m_lostHandler = 0;
};

} // namespace Velmo::GigE::Internal
