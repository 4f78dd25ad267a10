// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/nodemapchunkparser.h"
#include "transport/transport.h"
#include "transports/gige/internal/gigestream.h"
#include "transports/gige/internal/opencamera.h"
#include "transports/gige/internal/services.h"

namespace Velmo::GigE::Internal
{

/** One GigE Vision camera. Control is the engine's; who holds the camera and whether it lives we ask ourselves. */
class CGigEDevice : public IVelmoDevice
{
public:
    CGigEDevice(CDeviceInfo info, std::shared_ptr<SServices> pServices);
    ~CGigEDevice() override;

    const CDeviceInfo& GetDeviceInfo() const override { return m_info; }
    void Open(EDeviceAccess access) override;
    void Close() override;
    bool IsOpen() const override { return m_pCamera != nullptr; }
    bool IsRemoved() const override { return m_pRemoval->IsRemoved(); }
    GenApi::INodeMap* GetNodeMap() override;
    GenApi::INodeMap* GetTLNodeMap() override;
    GenApi::INodeMap* GetEventGrabberNodeMap() override { return nullptr; }
    unsigned int GetNumStreams() const override { return 1; }
    Transport::IStream* GetStream(unsigned int index) override { return index == 0 ? &m_stream : nullptr; }
    void SetRemovalCallback(std::function<void()> callback) override;
    IChunkParser* CreateChunkParser() override;
    void DestroyChunkParser(IChunkParser* pParser) override;

private:
    std::string Name() const;
    void AwaitEarlierConnection() const;
    void CheckFree() const;
    ObjectPtr<ArvDevice> OpenEngine() const;
    void EndLeftOverAcquisition(GenApi::INodeMap& nodeMap) const;
    std::unique_ptr<SOpenCamera> OpenCamera();
    std::unique_ptr<Transport::CSoftwareNodeMap> MakeParameters();
    void Watch();
    void ReleaseEngine(ObjectPtr<ArvDevice> pEngine) const;
    bool IsAnswering() const;

    CDeviceInfo m_info;
    std::uint32_t m_deviceIp = 0;
    std::uint32_t m_adapterIp = 0;
    std::shared_ptr<SServices> m_pServices;
    std::shared_ptr<CRemoval> m_pRemoval;
    CGigEStream m_stream;
    std::unique_ptr<SOpenCamera> m_pCamera;  // null while closed
    Transport::CChunkParsers m_chunkParsers; // after the camera, whose node map shows the chunks
    std::unique_ptr<Transport::CSoftwareNodeMap> m_pParameters;
    std::uint64_t m_probeId = 0;
    unsigned long m_lostHandler = 0;
};

} // namespace Velmo::GigE::Internal
