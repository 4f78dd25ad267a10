// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/emulationtransport.h"

#include "genapi/exceptions.h"
#include "transport/log.h"
#include "transports/emulation/internal/camerarack.h"
#include "transports/emulation/internal/emulationdevice.h"
#include "transports/emulation/internal/emulationinterface.h"
#include "transports/emulation/internal/filewatcher.h"
#include "transports/emulation/internal/records.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace Velmo::Emulation
{

IEmulationControl::~IEmulationControl() = default;

namespace
{

using Internal::CCameraRack;

constexpr std::size_t DefaultCameras = 2;
constexpr std::size_t MaxCameras = 10000;

class CEmulationTransport final : public Transport::ITransport
{
public:
    /** file: the one that the rack follows, or "". */
    CEmulationTransport(std::shared_ptr<CCameraRack> rack, const std::string& file)
        : m_rack(std::move(rack)), m_notifier(std::make_shared<Internal::CNotifier>())
    {
        if (!file.empty())
        {
            m_watcher = std::make_unique<Internal::CFileWatcher>(file, [this] { m_rack->Refresh(); });
        }
    }

    const std::shared_ptr<CCameraRack>& GetRack() const { return m_rack; }

    CTlInfo GetTlInfo() const override { return Internal::MakeTlInfo(); }
    void EnumerateInterfaces(InterfaceInfoList& list) override;
    void EnumerateDevices(DeviceInfoList& list, Transport::EDiscoveryScope scope) override;
    std::unique_ptr<IVelmoDevice> CreateDevice(const CDeviceInfo& info) override;
    std::unique_ptr<Transport::IInterface> CreateInterface(const CInterfaceInfo& info) override;
    GenApi::INodeMap* GetNodeMap() override { return nullptr; }

private:
    const std::shared_ptr<CCameraRack> m_rack;
    const std::shared_ptr<Internal::CNotifier> m_notifier;
    std::unique_ptr<Internal::CFileWatcher> m_watcher; // ends before what it calls
};

void CEmulationTransport::EnumerateInterfaces(InterfaceInfoList& list)
{
    m_rack->Refresh();
    for (const Simulator::SInterfaceData& interface : m_rack->GetInterfaces())
    {
        list.push_back(Internal::MakeInterfaceInfo(interface));
    }
}

void CEmulationTransport::EnumerateDevices(DeviceInfoList& list, Transport::EDiscoveryScope)
{
    m_rack->Refresh();
    const auto cameras = m_rack->GetCameras();
    std::uint32_t delayMs = 0;
    for (const auto& camera : cameras)
    {
        delayMs = std::max(delayMs, camera->GetModel()->GetFaults().discoveryDelayMs);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(delayMs)); // the slowest answer
    for (const auto& camera : cameras)
    {
        list.push_back(camera->GetInfo());
    }
}

std::unique_ptr<IVelmoDevice> CEmulationTransport::CreateDevice(const CDeviceInfo& info)
{
    m_rack->Refresh();
    auto camera = m_rack->FindByFullName(info.GetFullName().str());
    if (camera == nullptr)
    {
        GENICAM_THROW(RuntimeException, "There is no emulated camera '" + info.GetFullName().str() + "'.");
    }
    return std::make_unique<Internal::CEmulationDevice>(std::move(camera), m_notifier);
}

std::unique_ptr<Transport::IInterface> CEmulationTransport::CreateInterface(const CInterfaceInfo& info)
{
    m_rack->Refresh();
    const auto interfaces = m_rack->GetInterfaces();
    const auto found =
        std::find_if(interfaces.begin(), interfaces.end(),
                     [&](const Simulator::SInterfaceData& data) { return data.id == info.GetInterfaceID().str(); });
    if (found == interfaces.end())
    {
        GENICAM_THROW(RuntimeException, "There is no emulated interface '" + info.GetInterfaceID().str() + "'.");
    }
    return std::make_unique<Internal::CEmulationInterface>(m_rack, *found);
}

struct SCurrent
{
    std::mutex mutex; // guards rack
    std::weak_ptr<CCameraRack> rack;
};

SCurrent& Current()
{
    static SCurrent current;
    return current;
}

std::shared_ptr<Transport::ITransport> Make(Simulator::SRackData data, const std::string& file)
{
    auto rack = std::make_shared<CCameraRack>(std::move(data), file);
    SCurrent& current = Current();
    const std::lock_guard<std::mutex> lock(current.mutex);
    current.rack = rack;
    return std::make_shared<CEmulationTransport>(std::move(rack), file);
}

/** The number in the environment; the default and a line in the log when it is none. */
std::size_t CountFromEnvironment()
{
    const char* text = std::getenv(CountVariable);
    if (text == nullptr || *text == '\0')
    {
        return DefaultCameras;
    }
    char* end = nullptr;
    const unsigned long count = std::strtoul(text, &end, 10);
    if (*end != '\0' || *text < '0' || *text > '9' || count > MaxCameras)
    {
        Log(ELogLevel::Error, "velmo.emulation",
            std::string(CountVariable) + " must be a number from 0 to " + std::to_string(MaxCameras) + ", not '" +
                text + "'; " + std::to_string(DefaultCameras) + " cameras are emulated.");
        return DefaultCameras;
    }
    return count;
}

} // namespace

std::shared_ptr<Transport::ITransport> CreateTransport()
{
    const char* file = std::getenv(FileVariable);
    const bool hasFile = file != nullptr && *file != '\0';
    return Make(Simulator::MakeDefaultData(hasFile ? 0 : CountFromEnvironment()), hasFile ? file : "");
}

std::shared_ptr<Transport::ITransport> CreateTransport(const std::vector<Simulator::SCameraConfig>& cameras)
{
    Simulator::SRackData data = Simulator::MakeDefaultData(0);
    data.cameras = cameras;
    return Make(std::move(data), "");
}

std::shared_ptr<IEmulationControl> GetControl(const std::shared_ptr<Transport::ITransport>& transport)
{
    const auto emulation = std::dynamic_pointer_cast<CEmulationTransport>(transport);
    return emulation == nullptr ? nullptr : emulation->GetRack();
}

std::shared_ptr<IEmulationControl> GetCurrentControl()
{
    SCurrent& current = Current();
    const std::lock_guard<std::mutex> lock(current.mutex);
    return current.rack.lock();
}

} // namespace Velmo::Emulation
