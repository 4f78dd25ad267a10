// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "contract/transportcontract.h"

#include "transports/emulation/emulationtransport.h"

namespace Contract
{

namespace
{

constexpr const char* Serial = "EMU-1001";

Simulator::SCameraConfig MakeCamera(const std::string& serial)
{
    Simulator::SCameraConfig camera;
    camera.serialNumber = serial;
    camera.sensorWidth = 64;
    camera.sensorHeight = 48;
    camera.frameRate = 200.0;
    return camera;
}

/** Two cameras that send by themselves; the second stays plugged. */
class CEmulationHarness final : public IHarness
{
public:
    std::shared_ptr<Velmo::Transport::ITransport> GetTransport() override { return m_transport; }
    Velmo::CDeviceInfo GetCamera() override
    {
        Velmo::DeviceInfoList list;
        m_transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::All);
        const auto found =
            std::find_if(list.begin(), list.end(), [](const auto& info) { return info.GetSerialNumber() == Serial; });
        return found == list.end() ? Velmo::CDeviceInfo() : *found;
    }
    void SendImage() override {}
    bool HasChunks() const override { return true; }
    bool Unplug() override { return Velmo::Emulation::GetControl(m_transport)->Unplug(Serial); }

private:
    const std::shared_ptr<Velmo::Transport::ITransport> m_transport =
        Velmo::Emulation::CreateTransport({MakeCamera(Serial), MakeCamera("EMU-1002")});
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Emulation, TransportContract,
                         ::testing::Values(SHarnessFactory{"Emulation", []
                                                           {
                                                               return std::make_unique<CEmulationHarness>();
                                                           }}));

INSTANTIATE_TEST_SUITE_P(Emulation, InterfaceContract,
                         ::testing::Values(SHarnessFactory{"Emulation", []
                                                           {
                                                               return std::make_unique<CEmulationHarness>();
                                                           }}));

} // namespace Contract
