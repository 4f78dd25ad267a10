// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/scriptedtransportdevice.h"

namespace Test
{

namespace
{

constexpr const char* TLDescription =
    "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"TL\" VendorName=\"Test\" StandardNameSpace=\"None\" "
    "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
    "MinorVersion=\"0\" SubMinorVersion=\"0\" ToolTip=\"\" ProductGuid=\"0\" VersionGuid=\"0\" "
    "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\"><Category Name=\"Root\"><pFeature>HeartbeatTimeout</pFeature>"
    "</Category><Integer Name=\"HeartbeatTimeout\"><pValue>HeartbeatTimeoutReg</pValue></Integer>"
    "<IntReg Name=\"HeartbeatTimeoutReg\"><Address>120</Address><Length>8</Length><AccessMode>RW</AccessMode>"
    "<pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess>"
    "</IntReg><Port Name=\"Device\"/></RegisterDescription>";

std::unique_ptr<GenApi::INodeMap> MakeNodeMap(const std::string& description, GenApi::IPort* pPort)
{
    auto nodeMap = GenApi::CNodeMapFactory::FromData(description.data(), description.size()).CreateNodeMap();
    nodeMap->Connect(pPort);
    return nodeMap;
}

/** Keeps what it is given; knows its device. */
class CScriptedChunkParser final : public Velmo::IChunkParser
{
public:
    CScriptedChunkParser(std::shared_ptr<CScriptedCamera> camera, const Velmo::IVelmoDevice* pOwner)
        : m_camera(std::move(camera)), m_pOwner(pOwner)
    {
    }
    const Velmo::IVelmoDevice* GetOwner() const { return m_pOwner; }
    void AttachBuffer(const void* pBuffer, std::int64_t bytes, std::int64_t layoutId,
                      std::size_t* pChunkOffset) override
    {
        m_camera->AddChunkBuffer({pBuffer, bytes, layoutId, pChunkOffset});
        m_camera->GetScript().Pass(EStep::AttachChunkBuffer, m_camera->GetSerialNumber());
    }
    void DetachBuffer() override { m_camera->GetScript().Pass(EStep::DetachChunkBuffer, m_camera->GetSerialNumber()); }

private:
    const std::shared_ptr<CScriptedCamera> m_camera;
    const Velmo::IVelmoDevice* const m_pOwner;
};

} // namespace

void CRemovalSlot::SetCallback(std::function<void()> callback)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_running || m_runner == std::this_thread::get_id(); });
    m_callback = std::move(callback);
}

void CRemovalSlot::Report()
{
    std::function<void()> callback;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_callback)
        {
            return;
        }
        callback = m_callback;
        m_running = true;
        m_runner = std::this_thread::get_id();
    }
    callback();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_running = false;
    m_changed.notify_all();
}

CScriptedDevice::CScriptedDevice(std::shared_ptr<SLivingDevice> self,
                                 std::function<void(const SLivingDevice*)> onDestroyed)
    : m_self(std::move(self)), m_onDestroyed(std::move(onDestroyed)), m_info(m_self->camera->GetDeviceInfo())
{
}

CScriptedDevice::~CScriptedDevice()
{
    m_self->removal->SetCallback(nullptr);
    m_self->camera->ReleaseControl(this);
    m_self->open = false;
    m_self->camera->GetScript().Pass(EStep::DestroyDevice, m_self->camera->GetSerialNumber());
    m_onDestroyed(m_self.get());
}

void CScriptedDevice::Pass(EStep step) const
{
    m_self->camera->GetScript().Pass(step, m_self->camera->GetSerialNumber());
}

void CScriptedDevice::Open(Velmo::EDeviceAccess access)
{
    const bool control = access == Velmo::EDeviceAccess::Control;
    Pass(control ? EStep::OpenControl : EStep::OpenMonitor);
    CScriptedCamera& camera = *m_self->camera;
    if (IsOpen())
    {
        GENICAM_THROW(LogicalErrorException, "The device is open already.");
    }
    if (camera.IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera '" + camera.GetSerialNumber() + "' has been removed.");
    }
    const std::string owner = camera.GetInUseBy();
    if (control && (!owner.empty() || !camera.TakeControl(this)))
    {
        GENICAM_THROW(AccessException, "The camera '" + camera.GetSerialNumber() + "' is in use by " +
                                           (owner.empty() ? std::string("another device of this process") : owner) +
                                           ".");
    }
    m_port = std::make_unique<CScriptedPort>(m_self->camera, control);
    m_tlPort = std::make_unique<CScriptedPort>(m_self->camera, true);
    try
    {
        m_nodeMap = MakeNodeMap(camera.GetDescription(), m_port.get());
        m_tlNodeMap = camera.GetConfig().hasTLNodeMap ? MakeNodeMap(TLDescription, m_tlPort.get()) : nullptr;
        m_eventNodeMap = camera.GetConfig().hasEventGrabber ? MakeNodeMap(TLDescription, m_tlPort.get()) : nullptr;
    }
    catch (...)
    {
        camera.ReleaseControl(this);
        throw;
    }
    m_self->open = true;
}

void CScriptedDevice::Close()
{
    m_nodeMap.reset();
    m_tlNodeMap.reset();
    m_eventNodeMap.reset();
    m_self->camera->ReleaseControl(this);
    m_self->open = false;
    Pass(EStep::CloseDevice);
}

Velmo::IChunkParser* CScriptedDevice::CreateChunkParser()
{
    Pass(EStep::CreateChunkParser);
    return m_self->camera->GetConfig().hasChunks ? new CScriptedChunkParser(m_self->camera, this) : nullptr;
}

void CScriptedDevice::DestroyChunkParser(Velmo::IChunkParser* pParser)
{
    Pass(EStep::DestroyChunkParser);
    if (pParser != nullptr && static_cast<CScriptedChunkParser*>(pParser)->GetOwner() != this)
    {
        GENICAM_THROW(InvalidArgumentException, "The chunk parser is another device's.");
    }
    delete pParser;
}

} // namespace Test
