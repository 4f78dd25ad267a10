// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "transports/emulation/internal/camerarack.h"
#include "transports/emulation/internal/softwarenodemaps.h"

namespace Velmo::Emulation::Internal
{

/** An interface of the emulation: its name and how many cameras it sees. */
class CEmulationInterface final : public Transport::IInterface
{
public:
    CEmulationInterface(std::shared_ptr<CCameraRack> rack, const SInterfaceData& data);

    const CInterfaceInfo& GetInterfaceInfo() const override { return m_info; }
    void Open() override;
    void Close() override { m_nodeMap.reset(); }
    bool IsOpen() const override { return m_nodeMap != nullptr; }
    GenApi::INodeMap* GetNodeMap() override { return m_nodeMap == nullptr ? nullptr : m_nodeMap->Get(); }

private:
    std::uint64_t CountDevices() const;

    const std::shared_ptr<CCameraRack> m_rack;
    const SInterfaceData m_data;
    const CInterfaceInfo m_info;
    std::unique_ptr<CSoftwareNodeMap> m_nodeMap; // while open
};

} // namespace Velmo::Emulation::Internal
