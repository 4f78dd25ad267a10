// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/emulationdevice.h"

#include "genapi/exceptions.h"
#include "simulator/registers.h"

#include <chrono>
#include <thread>

namespace Velmo::Emulation::Internal
{

CModelPort::CModelPort(std::shared_ptr<Simulator::CCameraModel> camera, bool isReadOnly)
    : m_camera(std::move(camera)), m_isReadOnly(isReadOnly)
{
}

GenApi::EAccessMode CModelPort::GetAccessMode() const
{
    return m_isReadOnly ? GenApi::EAccessMode::RO : GenApi::EAccessMode::RW;
}

void CModelPort::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    m_camera->Read(buffer, address, length);
}

void CModelPort::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    if (m_isReadOnly)
    {
        GENICAM_THROW(AccessException, "Writing failed: " + GetWriteRefusal().str() + ".");
    }
    m_camera->Write(buffer, address, length);
    const std::int64_t execute = Simulator::Register::FileOperationExecute;
    if (address <= execute && execute < address + length)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(m_camera->GetFaults().fileDelayMs));
    }
}

GenICam::gcstring CModelPort::GetWriteRefusal() const
{
    if (!m_isReadOnly)
    {
        return {};
    }
    return "the emulated camera '" + m_camera->GetConfig().serialNumber +
           "' is open as a monitor, which only watches; the application that controls the camera can write";
}

CEmulationDevice::CEmulationDevice(std::shared_ptr<CEmulatedCamera> camera, std::shared_ptr<CNotifier> notifier)
    : m_camera(std::move(camera)), m_reporter(std::make_shared<CRemovalReporter>(std::move(notifier))),
      m_info(m_camera->GetInfo()), m_stream(std::make_shared<CEmulationStream>(m_camera->GetModel()))
{
}

CEmulationDevice::~CEmulationDevice()
{
    m_reporter->SetCallback(nullptr);
    Close();
}

void CEmulationDevice::Open(EDeviceAccess access)
{
    if (m_isOpen)
    {
        GENICAM_THROW(LogicalErrorException,
                      "The emulated camera '" + m_info.GetSerialNumber().str() + "' is open already.");
    }
    const bool wantsControl = access == EDeviceAccess::Control;
    m_reporter->SetOpen(true); // first: the camera may vanish at any moment from now on
    try
    {
        Connect(wantsControl);
    }
    catch (...)
    {
        m_reporter->SetOpen(false);
        m_camera->RemoveUser(this);
        m_nodeMap.reset();
        m_port.reset();
        throw;
    }
    if (wantsControl)
    {
        MakeEventGrabber();
    }
    m_stream->SetMonitor(!wantsControl);
    m_hasControl = wantsControl;
    m_isOpen = true;
}

void CEmulationDevice::Connect(bool wantsControl)
{
    const std::shared_ptr<Simulator::CCameraModel>& model = m_camera->GetModel();
    m_camera->AddUser(this, wantsControl,
                      [model, reporter = m_reporter, stream = m_stream]
                      {
                          stream->OnRemoved();
                          reporter->SetRemoved(model->GetFaults().removalReports);
                      });
    m_port = std::make_unique<CModelPort>(model, !wantsControl);
    const std::string description = model->GetDescription();
    m_nodeMap = GenApi::CNodeMapFactory::FromData(description.data(), description.size()).CreateNodeMap();
    m_nodeMap->Connect(m_port.get());
}

void CEmulationDevice::MakeEventGrabber()
{
    m_events = std::make_shared<Transport::CEventDelivery>("'" + m_info.GetSerialNumber().str() + "'");
    m_eventParameters = std::make_unique<Transport::CSoftwareNodeMap>("EmulationEventGrabber");
    m_events->AddParameters(*m_eventParameters);
    m_eventParameters->Build();
}

GenApi::INodeMap* CEmulationDevice::GetEventGrabberNodeMap()
{
    return m_eventParameters == nullptr ? nullptr : m_eventParameters->Get();
}

void CEmulationDevice::StartEvents()
{
    if (m_events == nullptr)
    {
        return;
    }
    m_events->Start(*m_nodeMap);
    m_camera->GetModel()->SetMessageHandler(
        [weak = std::weak_ptr<Transport::CEventDelivery>(m_events)](const Gvcp::SEvent& event)
        {
            // The same bytes as on the network: the description says where in them the values are.
            const Gvcp::Bytes message = Gvcp::EncodeEventDataCmd(0, event, false);
            const auto events = weak.lock();
            if (events != nullptr && message.size() >= Gvcp::HeaderBytes)
            {
                events->Push({event.id, {message.begin() + Gvcp::HeaderBytes, message.end()}});
            }
        });
}

void CEmulationDevice::Close()
{
    if (!m_isOpen)
    {
        return;
    }
    m_reporter->SetOpen(false);
    m_stream->Close();
    if (m_hasControl)
    {
        m_camera->GetModel()->SetMessageHandler(nullptr);
        m_events->Stop();
        m_eventParameters.reset();
        m_events.reset();
        // A camera that loses its controller stops sending.
        m_camera->GetModel()->SetFeature("AcquisitionStop", "1");
        m_camera->GetModel()->AbandonFiles();
    }
    m_camera->RemoveUser(this);
    m_chunkParsers.Disconnect();
    m_nodeMap.reset();
    m_port.reset();
    m_isOpen = false;
}

bool CEmulationDevice::IsRemoved() const
{
    return m_reporter->IsRemoved() || m_camera->GetModel()->IsRemoved();
}

Transport::IStream* CEmulationDevice::GetStream(unsigned int index)
{
    return index == 0 ? m_stream.get() : nullptr;
}

IChunkParser* CEmulationDevice::CreateChunkParser()
{
    return m_chunkParsers.Create(m_nodeMap.get(), Chunks::EByteOrder::Big, "'" + m_info.GetSerialNumber().str() + "'");
}

void CEmulationDevice::DestroyChunkParser(IChunkParser* pParser)
{
    m_chunkParsers.Destroy(pParser);
}

void CEmulationDevice::SetRemovalCallback(std::function<void()> callback)
{
    m_reporter->SetCallback(std::move(callback));
}

} // namespace Velmo::Emulation::Internal
