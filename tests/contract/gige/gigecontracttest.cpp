// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "contract/transportcontract.h"

#include "support/fakecamera.h"
#include "transports/gige/gigetransport.h"

#include <stdexcept>

namespace Contract
{

namespace
{

class CGigEHarness final : public IHarness
{
public:
    CGigEHarness() { Velmo::GigE::SetAdapters({"127.0.0.1"}); }
    ~CGigEHarness() override { Velmo::GigE::SetAdapters({}); }
    std::shared_ptr<Velmo::Transport::ITransport> GetTransport() override { return m_transport; }
    Velmo::CDeviceInfo GetCamera() override
    {
        Velmo::DeviceInfoList list;
        m_transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::All);
        if (list.empty())
        {
            throw std::runtime_error("The fake camera was not found.");
        }
        return list.front();
    }
    void SendImage() override {} // it runs freely
    bool Unplug() override
    {
        m_camera.Kill();
        return true;
    }

private:
    Test::CFakeCamera m_camera;
    std::shared_ptr<Velmo::Transport::ITransport> m_transport = Velmo::GigE::CreateTransport();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(GigE, TransportContract,
                         ::testing::Values(SHarnessFactory{"GigE", []
                                                           {
                                                               return std::make_unique<CGigEHarness>();
                                                           }}));

INSTANTIATE_TEST_SUITE_P(GigE, InterfaceContract,
                         ::testing::Values(SHarnessFactory{"GigE", []
                                                           {
                                                               return std::make_unique<CGigEHarness>();
                                                           }}));

} // namespace Contract
