// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/emulationinterface.h"

#include "transports/emulation/internal/records.h"

#include <algorithm>

namespace Velmo::Emulation::Internal
{

CEmulationInterface::CEmulationInterface(std::shared_ptr<CCameraRack> rack, const SInterfaceData& data)
    : m_rack(std::move(rack)), m_data(data), m_info(MakeInterfaceInfo(data))
{
}

void CEmulationInterface::Open()
{
    if (m_nodeMap == nullptr)
    {
        m_nodeMap = CSoftwareNodeMap::MakeInterface(m_data.id, m_data.name, [this] { return CountDevices(); });
    }
}

std::uint64_t CEmulationInterface::CountDevices() const
{
    const auto cameras = m_rack->GetCameras();
    return static_cast<std::uint64_t>(
        std::count_if(cameras.begin(), cameras.end(),
                      [this](const auto& camera) { return camera->GetModel()->GetConfig().interfaceId == m_data.id; }));
}

} // namespace Velmo::Emulation::Internal
