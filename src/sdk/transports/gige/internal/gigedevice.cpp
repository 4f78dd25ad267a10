// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigedevice.h"

#include "protocols/gvbsregisters.h"
#include "protocols/gvcp.h"
#include "transport/log.h"
#include "transports/gige/internal/gvcpclient.h"
#include "transports/gige/internal/lastreference.h"

#include <algorithm>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

using std::chrono::milliseconds;

ObjectPtr<GInetAddress> MakeAddress(std::uint32_t ip)
{
    return ObjectPtr<GInetAddress>(g_inet_address_new_from_string(Gvcp::IpText(ip).c_str()));
}

/** The engine's word that control was lost; on the engine's thread. */
void OnControlLost(ArvGvDevice*, gpointer pUser)
{
    (*static_cast<std::shared_ptr<CRemoval>*>(pUser))->MarkLost();
}

void DeleteHandlerData(gpointer pUser, GClosure*)
{
    delete static_cast<std::shared_ptr<CRemoval>*>(pUser);
}

struct SRegisterTexts
{
    const char* name;
    const char* toolTip;
    const char* unit;
};

/** What a bootstrap register of that many words says; 0 when the camera does not have it. */
void AddRegister(Transport::CSoftwareNodeMap& parameters, CDevicePort* pPort, std::uint32_t address,
                 std::uint32_t words, const SRegisterTexts& texts)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = texts.name;
    parameter.toolTip = texts.toolTip;
    parameter.unit = texts.unit;
    parameter.isCustom = true;
    parameter.getter = [pPort, address, words]
    {
        std::uint64_t value = 0;
        try
        {
            for (std::uint32_t i = 0; i < words; ++i)
            {
                value = value << 32 | pPort->ReadRegister(address + 4 * i);
            }
        }
        catch (const GenICam::TimeoutException&)
        {
            throw;
        }
        catch (const GenICam::GenericException&)
        {
            return std::int64_t{0};
        }
        return static_cast<std::int64_t>(std::min<std::uint64_t>(value, INT64_MAX));
    };
    parameters.AddInteger(std::move(parameter));
}

} // namespace

CGigEDevice::CGigEDevice(CDeviceInfo info, std::shared_ptr<SServices> pServices)
    : m_info(std::move(info)), m_pServices(std::move(pServices)), m_pRemoval(std::make_shared<CRemoval>()),
      m_stream(m_pServices->reaper)
{
    Gvcp::ParseIp(m_info.GetIpAddress().str(), m_deviceIp);
    Gvcp::ParseIp(m_info.Get(Key::Interface).str(), m_adapterIp);
}

CGigEDevice::~CGigEDevice()
{
    SetRemovalCallback(nullptr);
    Close();
}

std::string CGigEDevice::Name() const
{
    return "\"" + m_info.GetFriendlyName().str() + "\" at " + m_info.GetIpAddress().str();
}

void CGigEDevice::AwaitEarlierConnection() const
{
    // What is left of a connection that broke still tries to end its stream and to give up control. Some cameras know
    // an application by its address only: it would end the new stream.
    constexpr std::chrono::seconds longest{6}; // the engine asks five times for each of the two, every 500 ms
    if (m_pServices->reaper.IsBusyWith(m_deviceIp) && IsAnswering() &&
        !m_pServices->reaper.WaitFor(m_deviceIp, longest))
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + Name() + ": the earlier connection has not ended yet; it may disturb the new one.");
    }
}

void CGigEDevice::CheckFree() const
{
    CGvcpClient client;
    if (!client.Open(m_adapterIp, m_deviceIp))
    {
        GENICAM_THROW(RuntimeException, "The camera " + Name() + " cannot be opened: the network adapter's address " +
                                            Gvcp::IpText(m_adapterIp) + " cannot be used: " + client.GetError() + ".");
    }
    constexpr int attempts = 3;
    const SRegisterAnswer privilege = client.ReadRegister(Gvbs::ControlChannelPrivilege, milliseconds(200), attempts);
    if (privilege.result == ERequest::Silent || privilege.result == ERequest::NotSent)
    {
        GENICAM_THROW(RuntimeException, "The camera " + Name() + " cannot be opened: it does not answer.");
    }
    if (privilege.result == ERequest::Pending)
    {
        GENICAM_THROW(RuntimeException, "The camera " + Name() +
                                            " cannot be opened: it keeps asking for more time and does not say whether "
                                            "it is free. Restart it if that does not end.");
    }
    constexpr std::uint32_t held = Gvbs::CcpExclusiveAccess | Gvbs::CcpControlAccess;
    if (privilege.result == ERequest::Answered && (privilege.value & held) == 0)
    {
        return;
    }
    const SRegisterAnswer owner = client.ReadRegister(Gvbs::PrimaryApplicationIpAddress, milliseconds(200), attempts);
    const bool isNamed = owner.result == ERequest::Answered && owner.value != 0;
    GENICAM_THROW(
        AccessException,
        "The camera " + Name() + " is in use by " +
            (isNamed ? "the application at " + Gvcp::IpText(owner.value) : std::string("another application")) + ".");
}

ObjectPtr<ArvDevice> CGigEDevice::OpenEngine(CEngineCalls& calls) const
{
    struct SOpening
    {
        std::uint32_t adapterIp = 0;
        std::uint32_t deviceIp = 0;
        ObjectPtr<ArvDevice> pEngine;
        CEngineError error;
    };
    const auto pOpening = std::make_shared<SOpening>();
    pOpening->adapterIp = m_adapterIp;
    pOpening->deviceIp = m_deviceIp;
    const std::string what = "Opening the camera " + Name() + " failed";
    constexpr milliseconds patience{60000}; // it reads the description of the features
    calls.Run(
        what,
        [pOpening]
        {
            const ObjectPtr<GInetAddress> pAdapter = MakeAddress(pOpening->adapterIp);
            const ObjectPtr<GInetAddress> pCamera = MakeAddress(pOpening->deviceIp);
            pOpening->pEngine.reset(arv_gv_device_new(pAdapter.get(), pCamera.get(), pOpening->error.Receive()));
        },
        patience);
    ObjectPtr<ArvDevice> pEngine = std::move(pOpening->pEngine);
    if (pEngine == nullptr || pOpening->error.IsSet())
    {
        pOpening->error.Throw("The camera " + Name() + " cannot be opened");
    }
    if (!arv_gv_device_is_controller(ARV_GV_DEVICE(pEngine.get())))
    {
        GENICAM_THROW(AccessException, "The camera " + Name() + " was taken by another application.");
    }
    arv_gv_device_set_packet_size_adjustment(ARV_GV_DEVICE(pEngine.get()), ARV_GV_PACKET_SIZE_ADJUSTMENT_NEVER);
    // Where it may, the engine takes images from a packet socket. Until that has its filter, which takes a busy machine
    // seconds, it gets everybody's packets. The engine takes them for images, for which it uses up all buffers.
    arv_gv_device_set_stream_options(ARV_GV_DEVICE(pEngine.get()), ARV_GV_STREAM_OPTION_PACKET_SOCKET_DISABLED);
    return pEngine;
}

void CGigEDevice::EndLeftOverAcquisition(GenApi::INodeMap& nodeMap) const
{
    // An application that lost the camera could not stop it. A camera that still acquires takes up the stream again as
    // soon as it is controlled, some to where the stream had been before we can say where it is now.
    try
    {
        const GenApi::CCommandPtr pStop(nodeMap.GetNode("AcquisitionStop"));
        if (pStop && GenApi::IsWritable(pStop->GetAccessMode()))
        {
            pStop->Execute();
        }
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Info, "velmo.gige",
            "Camera " + Name() + ": an acquisition that may be left over was not stopped: " + e.GetDescription());
    }
}

std::unique_ptr<SOpenCamera> CGigEDevice::OpenCamera()
{
    AwaitEarlierConnection();
    CheckFree();
    auto pCamera = std::make_unique<SOpenCamera>();
    pCamera->name = Name();
    pCamera->deviceIp = m_deviceIp;
    pCamera->adapterIp = m_adapterIp;
    constexpr std::uint32_t loopbackNetwork = 127;
    pCamera->isLoopback = m_adapterIp >> 24 == loopbackNetwork;
    pCamera->pRemoval = m_pRemoval;
    pCamera->isAnswering = [this]
    {
        return IsAnswering();
    };
    pCamera->pCalls = std::make_unique<CEngineCalls>(Name(), m_pRemoval);
    pCamera->pEngine = OpenEngine(*pCamera->pCalls);
    try
    {
        ConnectFeatures(*pCamera);
    }
    catch (...)
    {
        Release(std::move(pCamera), true);
        throw;
    }
    return pCamera;
}

void CGigEDevice::ConnectFeatures(SOpenCamera& camera) const
{
    std::size_t bytes = 0;
    const char* xml = arv_device_get_genicam_xml(camera.pEngine.get(), &bytes);
    if (xml == nullptr || bytes == 0)
    {
        GENICAM_THROW(RuntimeException, "The camera " + Name() + " has no description of its features.");
    }
    camera.pPort = std::make_unique<CDevicePort>(
        SDevicePortConfig{Name(), m_adapterIp, m_deviceIp, camera.pEngine.get(), camera.pCalls.get(), m_pRemoval});
    camera.pNodeMap = GenApi::CNodeMapFactory::FromData(xml, bytes).CreateNodeMap();
    camera.pNodeMap->Connect(camera.pPort.get());
    camera.packetSettingAtOpen = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize);
    EndLeftOverAcquisition(*camera.pNodeMap);
}

void CGigEDevice::Open(EDeviceAccess access)
{
    if (IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera " + Name() + " was removed.");
    }
    if (IsOpen())
    {
        return;
    }
    access == EDeviceAccess::Monitor ? OpenMonitor() : OpenControl();
}

void CGigEDevice::OpenMonitor()
{
    try
    {
        m_pMonitor = OpenMonitorCamera(Name(), m_adapterIp, m_deviceIp, m_pRemoval);
        m_monitorStream.Attach(*m_pMonitor);
        Watch([this] { m_monitorStream.OnRemoved(); });
    }
    catch (...)
    {
        m_monitorStream.Detach();
        m_pMonitor.reset();
        throw;
    }
}

void CGigEDevice::OpenControl()
{
    if (!m_pServices->openCameras.Add(m_deviceIp))
    {
        GENICAM_THROW(AccessException, "The camera " + Name() + " is in use by this application already.");
    }
    try
    {
        m_pCamera = OpenCamera();
        m_pParameters = MakeParameters();
        m_pEvents = CEventGrabber::Create(Name(), m_adapterIp, m_deviceIp, *m_pCamera->pPort);
        m_stream.Attach(*m_pCamera);
        Watch([this] { m_stream.OnRemoved(); });
        m_lostHandler =
            g_signal_connect_data(m_pCamera->pEngine.get(), "control-lost", G_CALLBACK(&OnControlLost),
                                  new std::shared_ptr<CRemoval>(m_pRemoval), &DeleteHandlerData, GConnectFlags(0));
    }
    catch (...)
    {
        m_stream.Detach();
        m_pEvents.reset();
        m_pParameters.reset();
        if (m_pCamera != nullptr)
        {
            Release(std::move(m_pCamera), true);
        }
        m_pServices->openCameras.Remove(m_deviceIp);
        throw;
    }
}

std::unique_ptr<Transport::CSoftwareNodeMap> CGigEDevice::MakeParameters()
{
    CDevicePort* pPort = m_pCamera->pPort.get();
    auto pParameters = std::make_unique<Transport::CSoftwareNodeMap>("GigETransportLayer");
    Transport::SSoftwareParameter heartbeat;
    heartbeat.name = "HeartbeatTimeout";
    heartbeat.toolTip = "Time after which the camera gives up an application that fell silent.";
    heartbeat.unit = "ms";
    heartbeat.min = 2500; // the engine says that it lives once a second
    heartbeat.max = 600000;
    heartbeat.getter = [pPort]
    {
        return std::int64_t{pPort->ReadRegister(Gvbs::HeartbeatTimeout)};
    };
    heartbeat.setter = [pPort](std::int64_t value)
    {
        pPort->WriteRegister(Gvbs::HeartbeatTimeout, static_cast<std::uint32_t>(value));
    };
    heartbeat.isCustom = true;
    pParameters->AddInteger(std::move(heartbeat));
    AddRegister(
        *pParameters, pPort, Gvbs::TimestampTickFrequencyHigh, 2,
        {"TimestampTickFrequency", "Ticks of the camera's clock, in which GevSCPD is counted; 0: not told.", "Hz"});
    AddRegister(*pParameters, pPort, Gvbs::LinkSpeed, 1,
                {"LinkSpeed", "Speed of the camera's link; 0: not told.", "Mbps"});
    pParameters->Build();
    return pParameters;
}

void CGigEDevice::Watch(CRemoval::Handler onRemoved)
{
    m_pRemoval->Arm(std::move(onRemoved));
    m_probeId = m_pServices->probe.Watch(m_adapterIp, m_deviceIp, m_pRemoval);
    if (m_probeId == 0)
    {
        m_pRemoval->Disarm();
        GENICAM_THROW(RuntimeException, "The camera " + Name() + " cannot be watched: no socket is left.");
    }
}

void CGigEDevice::Close()
{
    if (!IsOpen())
    {
        return;
    }
    m_pRemoval->Disarm();
    m_pServices->probe.Forget(m_probeId);
    m_pMonitor != nullptr ? CloseMonitor() : CloseControl();
}

void CGigEDevice::CloseMonitor()
{
    m_monitorStream.Detach();
    m_chunkParsers.Disconnect();
    m_pMonitor.reset();
}

void CGigEDevice::CloseControl()
{
    // What is written to a camera that does not answer takes seconds.
    const bool isThere = !IsRemoved() && !m_pRemoval->IsLost() && IsAnswering();
    m_stream.Detach();
    if (m_pEvents != nullptr)
    {
        m_pEvents->Stop(isThere);
        m_pEvents.reset();
    }
    m_pParameters.reset();
    g_signal_handler_disconnect(m_pCamera->pEngine.get(), m_lostHandler);
    m_chunkParsers.Disconnect();
    Release(std::move(m_pCamera), isThere);
    m_pServices->openCameras.Remove(m_deviceIp);
}

bool CGigEDevice::IsAnswering() const
{
    CGvcpClient client;
    constexpr int attempts = 2;
    return client.Open(m_adapterIp, m_deviceIp) &&
           client.ReadRegister(Gvbs::Version, milliseconds(150), attempts).result != ERequest::Silent;
}

void CGigEDevice::Release(std::unique_ptr<SOpenCamera> pCamera, bool isThere) const
{
    ObjectPtr<ArvDevice> pEngine = std::move(pCamera->pEngine);
    pCamera.reset();
    // The engine's thread may be telling the loss of control now, and holds a reference then; so does a call that the
    // camera keeps waiting. Later nobody takes one: the handler is gone, and so is the port.
    m_pServices->reaper.Add(m_deviceIp,
                            [pDevice = pEngine.release(), name = Name()]
                            {
                                constexpr std::chrono::minutes patience(10);
                                if (!EndAlone(ObjectPtr<GObject>(G_OBJECT(pDevice)), patience))
                                {
                                    Log(ELogLevel::Warning, "velmo.gige",
                                        "The engine of camera " + name + " is in use still and stays.");
                                }
                            });
    constexpr std::chrono::seconds longest{6}; // see AwaitEarlierConnection
    if (isThere && !m_pRemoval->IsLost() && !m_pServices->reaper.WaitFor(m_deviceIp, longest))
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + Name() + " does not give up the connection, which ends in the background; it may stay in use.");
    }
}

GenApi::INodeMap* CGigEDevice::GetNodeMap()
{
    if (m_pMonitor != nullptr)
    {
        return m_pMonitor->pNodeMap.get();
    }
    return m_pCamera != nullptr ? m_pCamera->pNodeMap.get() : nullptr;
}

Transport::IStream* CGigEDevice::GetStream(unsigned int index)
{
    if (index != 0)
    {
        return nullptr;
    }
    return m_pMonitor != nullptr ? static_cast<Transport::IStream*>(&m_monitorStream) : &m_stream;
}

GenApi::INodeMap* CGigEDevice::GetTLNodeMap()
{
    return m_pParameters == nullptr ? nullptr : m_pParameters->Get();
}

GenApi::INodeMap* CGigEDevice::GetEventGrabberNodeMap()
{
    return m_pEvents == nullptr ? nullptr : m_pEvents->GetParameters();
}

void CGigEDevice::StartEvents()
{
    if (m_pEvents != nullptr)
    {
        m_pEvents->Start(*m_pCamera->pNodeMap);
    }
}

void CGigEDevice::SetRemovalCallback(std::function<void()> callback)
{
    m_pRemoval->SetHandler(std::move(callback));
}

IChunkParser* CGigEDevice::CreateChunkParser()
{
    return m_chunkParsers.Create(GetNodeMap(), Chunks::EByteOrder::Big, Name());
}

void CGigEDevice::DestroyChunkParser(IChunkParser* pParser)
{
    m_chunkParsers.Destroy(pParser);
}

} // namespace Velmo::GigE::Internal
