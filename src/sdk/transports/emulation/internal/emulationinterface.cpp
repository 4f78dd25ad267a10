// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/emulationinterface.h"

#include "transports/emulation/internal/records.h"

#include "genapi/exceptions.h"

#include <algorithm>

namespace Velmo::Emulation::Internal
{

CEmulationInterface::CEmulationInterface(std::shared_ptr<CCameraRack> rack, const Simulator::SInterfaceData& data)
    : m_rack(std::move(rack)), m_info(MakeInterfaceInfo(data))
{
}

CEmulationInterface::~CEmulationInterface()
{
    CEmulationInterface::Close();
}

void CEmulationInterface::Open()
{
    if (m_parameters != nullptr)
    {
        return;
    }
    const Transport::SDeviceSource source{[this] { return Look(); },
                                          [this](const CDeviceInfo& info)
                                          {
                                              return IsOpenHere(info);
                                          }};
    auto devices = std::make_unique<Transport::CDeviceListParameters>(source, Look());
    auto parameters = std::make_unique<Transport::CSoftwareNodeMap>("EmulationInterface");
    Transport::AddInterfaceInformation(*parameters, m_info, Transport::EInterfaceType::Custom);
    devices->AddTo(*parameters, false);
    parameters->Build();
    m_devices = std::move(devices);
    m_parameters = std::move(parameters);
}

void CEmulationInterface::Close()
{
    m_parameters.reset();
    m_devices.reset();
}

DeviceInfoList CEmulationInterface::Look() const
{
    m_rack->Refresh();
    const std::string id = m_info.GetInterfaceID().str();
    const auto interfaces = m_rack->GetInterfaces();
    if (std::none_of(interfaces.begin(), interfaces.end(),
                     [&id](const Simulator::SInterfaceData& data) { return data.id == id; }))
    {
        GENICAM_THROW(RuntimeException, "The emulated interface '" + id +
                                            "' is gone: the data of the emulation do not name it any more.");
    }
    DeviceInfoList devices;
    for (const auto& camera : m_rack->GetCameras())
    {
        if (camera->GetModel()->GetConfig().interfaceId == id)
        {
            devices.push_back(camera->GetInfo());
            if (camera->IsControlled())
            {
                // In use by this process: free as soon as it is closed here.
                devices.back().SetPropertyValue(Key::AccessStatus, AccessFree);
            }
        }
    }
    return devices;
}

bool CEmulationInterface::IsOpenHere(const CDeviceInfo& info) const
{
    const auto camera = m_rack->FindByFullName(info.GetFullName().str());
    return camera != nullptr && camera->IsControlled();
}

} // namespace Velmo::Emulation::Internal
