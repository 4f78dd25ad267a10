// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/interfaceparameters.h"
#include "transport/transport.h"
#include "transports/emulation/internal/camerarack.h"

namespace Velmo::Emulation::Internal
{

/** An interface of the emulation: its name and the cameras on it. */
class EMULATION_TEST_EXPORT CEmulationInterface final : public Transport::IInterface
{
public:
    CEmulationInterface(std::shared_ptr<CCameraRack> rack, const Simulator::SInterfaceData& data);
    ~CEmulationInterface() override;

    const CInterfaceInfo& GetInterfaceInfo() const override { return m_info; }
    /** Throws RuntimeException when the data do not name the interface any more. */
    void Open() override;
    void Close() override;
    bool IsOpen() const override { return m_parameters != nullptr; }
    GenApi::INodeMap* GetNodeMap() override { return m_parameters == nullptr ? nullptr : m_parameters->Get(); }

private:
    DeviceInfoList Look() const;
    bool IsOpenHere(const CDeviceInfo& info) const;

    const std::shared_ptr<CCameraRack> m_rack;
    const CInterfaceInfo m_info;
    std::unique_ptr<Transport::CDeviceListParameters> m_devices; // while open
    std::unique_ptr<Transport::CSoftwareNodeMap> m_parameters;   // while open; goes before the devices it shows
};

} // namespace Velmo::Emulation::Internal
