// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/scriptedtransport.h"

#include "support/scriptedtransportdevice.h"
#include "transport/interfaceparameters.h"
#include "velmo/internal/tlhandles.h"
#include "velmo/internal/transportregistry.h"
#include "velmo/velmo.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <thread>

namespace Test
{

using CameraPtr = std::shared_ptr<CScriptedCamera>;

/** Shared with devices and interfaces, which may outlive the transport. */
struct SScriptedTransportState
{
    mutable std::mutex mutex; // guards the members below
    Velmo::InterfaceInfoList interfaces;
    std::vector<CameraPtr> cameras;
    std::vector<CameraPtr> gone; // removed, still asked about
    std::map<std::string, SScriptedCamera> remote;
    std::vector<std::shared_ptr<SLivingDevice>> devices;
    std::vector<std::thread> reports;
    unsigned int livingInterfaces = 0;
    std::vector<Velmo::Transport::SActionCommand> actions;
    std::vector<Velmo::Transport::SActionAnswer> actionAnswers;

    /** The present camera, or else the one that was removed last. */
    CameraPtr Find(const std::string& serialNumber) const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (const auto* list : {&cameras, &gone})
        {
            const auto found =
                std::find_if(list->rbegin(), list->rend(),
                             [&](const CameraPtr& camera) { return camera->GetSerialNumber() == serialNumber; });
            if (found != list->rend())
            {
                return *found;
            }
        }
        throw std::out_of_range("no scripted camera " + serialNumber);
    }

    std::vector<std::shared_ptr<SLivingDevice>> DevicesOf(const CameraPtr& camera) const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        std::vector<std::shared_ptr<SLivingDevice>> found;
        std::copy_if(devices.begin(), devices.end(), std::back_inserter(found),
                     [&](const auto& device) { return device->camera == camera; });
        return found;
    }

    /** The streams of the camera's open devices that are started, or else of those that are there. */
    std::shared_ptr<CScriptedStream> StreamOf(const std::string& serialNumber) const
    {
        std::shared_ptr<CScriptedStream> stream;
        for (const auto& device : DevicesOf(Find(serialNumber)))
        {
            if (stream == nullptr || device->stream->IsStarted())
            {
                stream = device->stream;
            }
        }
        return stream;
    }
};

namespace
{

class CScriptedInterface final : public Velmo::Transport::IInterface
{
public:
    CScriptedInterface(Velmo::CInterfaceInfo info, std::shared_ptr<CScript> script,
                       std::shared_ptr<SScriptedTransportState> state)
        : m_info(std::move(info)), m_script(std::move(script)), m_state(std::move(state)),
          m_devices({[this] { return Look(); }, nullptr}, {})
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        ++m_state->livingInterfaces;
    }
    ~CScriptedInterface() override
    {
        m_script->Pass(EStep::DestroyInterface, "");
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        --m_state->livingInterfaces;
    }
    const Velmo::CInterfaceInfo& GetInterfaceInfo() const override { return m_info; }
    void Open() override
    {
        m_script->Pass(EStep::OpenInterface, "");
        auto parameters = std::make_unique<Velmo::Transport::CSoftwareNodeMap>("Interface");
        Velmo::Transport::SSoftwareParameter value;
        value.name = "InterfaceValue";
        value.isWritable = true;
        parameters->AddInteger(std::move(value));
        Velmo::Transport::AddInterfaceInformation(*parameters, m_info, Velmo::Transport::EInterfaceType::Custom);
        m_devices.AddTo(*parameters, false);
        parameters->Build();
        m_parameters = std::move(parameters);
    }
    void Close() override
    {
        m_script->Pass(EStep::CloseInterface, "");
        m_parameters.reset();
    }
    bool IsOpen() const override { return m_parameters != nullptr; }
    GenApi::INodeMap* GetNodeMap() override { return m_parameters == nullptr ? nullptr : m_parameters->Get(); }

private:
    Velmo::DeviceInfoList Look() const
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        Velmo::DeviceInfoList list;
        for (const CameraPtr& camera : m_state->cameras)
        {
            if (camera->GetDeviceInfo().GetInterfaceID() == m_info.GetInterfaceID())
            {
                list.push_back(camera->GetDeviceInfo());
            }
        }
        return list;
    }

    const Velmo::CInterfaceInfo m_info;
    const std::shared_ptr<CScript> m_script;
    const std::shared_ptr<SScriptedTransportState> m_state;
    Velmo::Transport::CDeviceListParameters m_devices;
    std::unique_ptr<Velmo::Transport::CSoftwareNodeMap> m_parameters; // goes before the devices it shows
};

} // namespace

CScriptedTransport::CScriptedTransport(SScriptedTransportConfig config)
    : m_config(std::move(config)), m_script(std::make_shared<CScript>()),
      m_state(std::make_shared<SScriptedTransportState>())
{
}

CScriptedTransport::~CScriptedTransport()
{
    for (std::thread& report : m_state->reports)
    {
        report.join();
    }
}

void CScriptedTransport::AddInterface(const Velmo::CInterfaceInfo& info)
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->interfaces.push_back(info);
}

void CScriptedTransport::AddInterface(const std::string& interfaceId)
{
    Velmo::CInterfaceInfo info;
    info.SetDeviceClass(m_config.deviceClass);
    info.SetTLType(m_config.tlType);
    info.SetInterfaceID(interfaceId);
    info.SetFriendlyName(m_config.friendlyName + " " + interfaceId);
    info.SetFullName(m_config.deviceClass + "/" + interfaceId);
    info.SetVendorName("TestVendor");
    AddInterface(info);
}

void CScriptedTransport::RemoveInterface(const std::string& interfaceId)
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    auto& list = m_state->interfaces;
    list.erase(std::remove_if(list.begin(), list.end(),
                              [&](const auto& info) { return info.GetInterfaceID() == interfaceId.c_str(); }),
               list.end());
}

void CScriptedTransport::AddCamera(const SScriptedCamera& config)
{
    auto camera = std::make_shared<CScriptedCamera>(config, m_config, m_script);
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    for (CameraPtr& known : m_state->cameras)
    {
        if (known->GetSerialNumber() == config.serialNumber)
        {
            known = std::move(camera);
            return;
        }
    }
    m_state->cameras.push_back(std::move(camera));
}

void CScriptedTransport::RemoveCamera(const std::string& serialNumber, unsigned int reports, bool wait)
{
    const CameraPtr camera = m_state->Find(serialNumber);
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        auto& list = m_state->cameras;
        list.erase(std::remove(list.begin(), list.end(), camera), list.end());
        m_state->gone.push_back(camera);
    }
    camera->MarkRemoved();
    const auto devices = m_state->DevicesOf(camera);
    for (const auto& device : devices)
    {
        device->stream->CancelAll();
    }
    std::thread report(
        [devices, reports]
        {
            for (unsigned int i = 0; i < reports; ++i)
            {
                for (const auto& device : devices)
                {
                    if (device->open)
                    {
                        device->removal->Report();
                    }
                }
            }
        });
    if (wait)
    {
        report.join();
        return;
    }
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->reports.push_back(std::move(report));
}

void CScriptedTransport::SetUserDefinedName(const std::string& serialNumber, const std::string& name)
{
    m_state->Find(serialNumber)->SetUserDefinedName(name);
}

void CScriptedTransport::SetInUseBy(const std::string& serialNumber, const std::string& owner)
{
    m_state->Find(serialNumber)->SetInUseBy(owner);
}

void CScriptedTransport::SetRemoteCamera(const std::string& ipAddress, const SScriptedCamera& camera)
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->remote[ipAddress] = camera;
}

void CScriptedTransport::SetFault(EStep step, EFault fault, const std::string& text, const std::string& serialNumber,
                                  int times)
{
    m_script->SetFault(step, fault, text, serialNumber, times);
}

void CScriptedTransport::SetHook(EStep step, std::function<void(const std::string&)> hook)
{
    m_script->SetHook(step, std::move(hook));
}

bool CScriptedTransport::DeliverImage(const std::string& serialNumber, const SScriptedImage& image)
{
    bool delivered = false;
    for (const auto& device : m_state->DevicesOf(m_state->Find(serialNumber)))
    {
        delivered = device->stream->Deliver(image) || delivered;
    }
    return delivered;
}

std::size_t CScriptedTransport::DeliverImages(const std::string& serialNumber, std::size_t count)
{
    std::size_t delivered = 0;
    for (std::size_t i = 0; i < count; ++i)
    {
        delivered += DeliverImage(serialNumber) ? 1 : 0;
    }
    return delivered;
}

bool CScriptedTransport::WaitForQueued(const std::string& serialNumber, std::size_t count, unsigned int timeoutMs)
{
    const auto stream = m_state->StreamOf(serialNumber);
    return stream != nullptr && stream->WaitForQueued(count, timeoutMs);
}

std::size_t CScriptedTransport::GetQueuedCount(const std::string& serialNumber) const
{
    const auto stream = m_state->StreamOf(serialNumber);
    return stream == nullptr ? 0 : stream->GetQueuedCount();
}

std::size_t CScriptedTransport::GetAnnouncedCount(const std::string& serialNumber) const
{
    const auto stream = m_state->StreamOf(serialNumber);
    return stream == nullptr ? 0 : stream->GetAnnouncedCount();
}

unsigned int CScriptedTransport::GetCount(EStep step, const std::string& serialNumber) const
{
    return m_script->GetCount(step, serialNumber);
}

bool CScriptedTransport::WaitForCount(EStep step, unsigned int count, unsigned int timeoutMs) const
{
    return m_script->WaitForCount(step, count, timeoutMs);
}

void CScriptedTransport::ResetCounts()
{
    m_script->ResetCounts();
}

std::vector<SWrite> CScriptedTransport::GetWrites(const std::string& serialNumber) const
{
    return m_state->Find(serialNumber)->GetWrites();
}

std::vector<SChunkBuffer> CScriptedTransport::GetChunkBuffers(const std::string& serialNumber) const
{
    return m_state->Find(serialNumber)->GetChunkBuffers();
}

std::string CScriptedTransport::GetLastWrite(const std::string& serialNumber, const std::string& feature) const
{
    std::string value;
    for (const SWrite& write : GetWrites(serialNumber))
    {
        value = write.feature == feature ? write.value : value;
    }
    return value;
}

std::int64_t CScriptedTransport::GetRegister(const std::string& serialNumber, const std::string& feature) const
{
    return static_cast<std::int64_t>(
        m_state->Find(serialNumber)->GetMemory().Peek(CScriptedCamera::FindRegister(feature).address, 8));
}

void CScriptedTransport::SetRegister(const std::string& serialNumber, const std::string& feature, std::int64_t value)
{
    m_state->Find(serialNumber)
        ->GetMemory()
        .Poke(CScriptedCamera::FindRegister(feature).address, static_cast<std::uint64_t>(value), 8);
}

void CScriptedTransport::SetBytes(const std::string& serialNumber, const std::string& feature,
                                  const std::vector<std::uint8_t>& bytes)
{
    const SRegister& entry = CScriptedCamera::FindRegister(feature);
    if (static_cast<std::int64_t>(bytes.size()) > entry.bytes)
    {
        throw std::out_of_range("too many bytes for the feature " + feature);
    }
    GenApi::CMemoryPort& memory = m_state->Find(serialNumber)->GetMemory();
    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        memory.Poke(entry.address + static_cast<std::int64_t>(i), bytes[i], 1);
    }
    SetRegister(serialNumber, feature + "Length", static_cast<std::int64_t>(bytes.size()));
}

unsigned int CScriptedTransport::GetOpenDevices(const std::string& serialNumber) const
{
    unsigned int count = 0;
    for (const auto& device : m_state->DevicesOf(m_state->Find(serialNumber)))
    {
        count += device->open ? 1 : 0;
    }
    return count;
}

unsigned int CScriptedTransport::GetLivingDevices() const
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    return static_cast<unsigned int>(m_state->devices.size());
}

unsigned int CScriptedTransport::GetLivingInterfaces() const
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->livingInterfaces;
}

Velmo::CDeviceInfo CScriptedTransport::GetDeviceInfo(const std::string& serialNumber) const
{
    return m_state->Find(serialNumber)->GetDeviceInfo();
}

Velmo::CTlInfo CScriptedTransport::GetTlInfo() const
{
    Velmo::CTlInfo info;
    info.SetDeviceClass(m_config.deviceClass);
    info.SetTLType(m_config.tlType);
    info.SetFriendlyName(m_config.friendlyName);
    info.SetFullName(m_config.fullName.empty() ? m_config.deviceClass : m_config.fullName);
    info.SetVendorName("TestVendor");
    return info;
}

void CScriptedTransport::EnumerateInterfaces(Velmo::InterfaceInfoList& list)
{
    m_script->Pass(EStep::EnumerateInterfaces, "");
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    list.insert(list.end(), m_state->interfaces.begin(), m_state->interfaces.end());
    if (m_state->interfaces.empty())
    {
        Velmo::CInterfaceInfo info;
        info.SetDeviceClass(m_config.deviceClass);
        info.SetTLType(m_config.tlType);
        info.SetInterfaceID("DefaultInterface");
        info.SetFriendlyName("DefaultInterface");
        info.SetFullName(m_config.deviceClass + "/DefaultInterface");
        list.push_back(info);
    }
}

void CScriptedTransport::EnumerateDevices(Velmo::DeviceInfoList& list, Velmo::Transport::EDiscoveryScope scope)
{
    const bool all = scope == Velmo::Transport::EDiscoveryScope::All;
    m_script->Pass(all ? EStep::EnumerateAllDevices : EStep::EnumerateDevices, "");
    std::vector<CameraPtr> cameras;
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        cameras = m_state->cameras;
    }
    for (const CameraPtr& camera : cameras)
    {
        if (all || (!camera->GetConfig().onlyInAll && camera->GetInUseBy().empty()))
        {
            list.push_back(camera->GetDeviceInfo());
        }
    }
}

std::unique_ptr<Velmo::IVelmoDevice> CScriptedTransport::CreateDevice(const Velmo::CDeviceInfo& info)
{
    m_script->Pass(EStep::CreateDevice, info.GetSerialNumber().str());
    auto self = std::make_shared<SLivingDevice>();
    const auto state = m_state;
    {
        const std::lock_guard<std::mutex> lock(state->mutex);
        const auto found = std::find_if(state->cameras.begin(), state->cameras.end(),
                                        [&](const CameraPtr& camera)
                                        { return camera->GetDeviceInfo().GetFullName() == info.GetFullName(); });
        if (found == state->cameras.end())
        {
            GENICAM_THROW(RuntimeException, "There is no camera '" + info.GetFullName().str() + "'.");
        }
        self->camera = *found;
        self->stream = std::make_shared<CScriptedStream>(*found);
        state->devices.push_back(self);
    }
    return std::make_unique<CScriptedDevice>(
        self,
        [state](const SLivingDevice* pDevice)
        {
            const std::lock_guard<std::mutex> lock(state->mutex);
            state->devices.erase(std::remove_if(state->devices.begin(), state->devices.end(),
                                                [pDevice](const auto& device) { return device.get() == pDevice; }),
                                 state->devices.end());
        });
}

std::unique_ptr<Velmo::Transport::IInterface> CScriptedTransport::CreateInterface(const Velmo::CInterfaceInfo& info)
{
    m_script->Pass(EStep::CreateInterface, "");
    Velmo::InterfaceInfoList list;
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        list = m_state->interfaces;
    }
    for (const Velmo::CInterfaceInfo& known : list)
    {
        if (known.GetInterfaceID() == info.GetInterfaceID())
        {
            return std::make_unique<CScriptedInterface>(known, m_script, m_state);
        }
    }
    return nullptr;
}

Velmo::Transport::IGigEExtension* CScriptedTransport::GetGigEExtension()
{
    m_script->Pass(EStep::CreateTl, "");
    return m_config.gige ? this : nullptr;
}

bool CScriptedTransport::AnnounceRemoteDevice(const Velmo::CDeviceInfo& info)
{
    m_script->Pass(EStep::AnnounceRemoteDevice, "");
    SScriptedCamera camera;
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        const auto found = m_state->remote.find(info.GetIpAddress().str());
        if (found == m_state->remote.end())
        {
            return false;
        }
        camera = found->second;
    }
    AddCamera(camera);
    return true;
}

void CScriptedTransport::SetActionAnswers(const std::vector<Velmo::Transport::SActionAnswer>& answers)
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->actionAnswers = answers;
}

std::vector<Velmo::Transport::SActionCommand> CScriptedTransport::GetActions() const
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->actions;
}

std::vector<Velmo::Transport::SActionAnswer>
CScriptedTransport::IssueAction(const Velmo::Transport::SActionCommand& command)
{
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        m_state->actions.push_back(command);
    }
    m_script->Pass(EStep::IssueAction, "");
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->actionAnswers;
}

CScriptedSdk::CScriptedSdk(std::vector<std::shared_ptr<CScriptedTransport>> transports)
{
    auto& registry = Velmo::Internal::CTransportRegistry::GetInstance();
    registry.SetBuiltInTransportsEnabled(false);
    for (const auto& transport : transports)
    {
        Add(transport);
    }
    Velmo::VelmoInitialize();
}

CScriptedSdk::~CScriptedSdk()
{
    while (!m_transports.empty())
    {
        Remove(m_transports.back());
    }
    Velmo::VelmoTerminate();
    Velmo::Internal::CTransportRegistry::GetInstance().SetBuiltInTransportsEnabled(true);
}

void CScriptedSdk::Add(const std::shared_ptr<CScriptedTransport>& transport)
{
    Velmo::Internal::CTransportRegistry::GetInstance().Register(transport);
    m_transports.push_back(transport);
}

void CScriptedSdk::Remove(const std::shared_ptr<CScriptedTransport>& transport)
{
    // Not by the pointer given: it may be an element of the list.
    const CScriptedTransport* const pGone = transport.get();
    Velmo::Internal::CTransportRegistry::GetInstance().Unregister(pGone->GetTlInfo().GetDeviceClass());
    m_transports.erase(std::remove_if(m_transports.begin(), m_transports.end(),
                                      [pGone](const auto& known) { return known.get() == pGone; }),
                       m_transports.end());
}

unsigned int CScriptedSdk::GetHeldTransportLayers(const std::string& deviceClass) const
{
    return Velmo::Internal::CTlHandles::GetInstance().HeldCount(deviceClass);
}

} // namespace Test
