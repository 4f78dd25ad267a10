// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/emulationtransport.h"

#include "genapi/exceptions.h"
#include "transports/emulation/internal/cameradata.h"
#include "transports/emulation/internal/records.h"

#include <mutex>

namespace Velmo::Emulation
{

IEmulationControl::~IEmulationControl() = default;

namespace
{

class CEmulationTransport final : public Transport::ITransport
{
public:
    explicit CEmulationTransport(Internal::SRackData data) : m_data(std::move(data)) { Internal::CheckData(m_data); }

    CTlInfo GetTlInfo() const override { return Internal::MakeTlInfo(); }
    void EnumerateInterfaces(InterfaceInfoList& list) override
    {
        for (const Internal::SInterfaceData& interface : m_data.interfaces)
        {
            list.push_back(Internal::MakeInterfaceInfo(interface));
        }
    }
    void EnumerateDevices(DeviceInfoList& list, Transport::EDiscoveryScope) override
    {
        for (const Simulator::SCameraConfig& camera : m_data.cameras)
        {
            list.push_back(Internal::MakeDeviceInfo(camera, camera.userDefinedName));
        }
    }
    std::unique_ptr<IVelmoDevice> CreateDevice(const CDeviceInfo& info) override
    {
        GENICAM_THROW(RuntimeException, "There is no emulated camera '" + info.GetFullName().str() + "' to open.");
    }
    std::unique_ptr<Transport::IInterface> CreateInterface(const CInterfaceInfo& info) override
    {
        GENICAM_THROW(RuntimeException,
                      "There is no emulated interface '" + info.GetInterfaceID().str() + "' to open.");
    }
    GenApi::INodeMap* GetNodeMap() override { return nullptr; }

private:
    const Internal::SRackData m_data;
};

} // namespace

std::shared_ptr<Transport::ITransport> CreateTransport()
{
    return std::make_shared<CEmulationTransport>(Internal::MakeDefaultData(2));
}

std::shared_ptr<Transport::ITransport> CreateTransport(const std::vector<Simulator::SCameraConfig>& cameras)
{
    Internal::SRackData data = Internal::MakeDefaultData(0);
    data.cameras = cameras;
    return std::make_shared<CEmulationTransport>(std::move(data));
}

std::shared_ptr<IEmulationControl> GetControl(const std::shared_ptr<Transport::ITransport>& transport)
{
    return std::dynamic_pointer_cast<IEmulationControl>(transport);
}

std::shared_ptr<IEmulationControl> GetCurrentControl()
{
    return nullptr;
}

} // namespace Velmo::Emulation
