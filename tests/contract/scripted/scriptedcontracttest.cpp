// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "contract/transportcontract.h"

#include "support/scriptedtransport.h"

namespace Contract
{

namespace
{

class CScriptedHarness final : public IHarness
{
public:
    CScriptedHarness()
    {
        m_transport->AddInterface("port0");
        Test::SScriptedCamera camera;
        camera.interfaceId = "port0";
        m_transport->AddCamera(camera);
    }
    std::shared_ptr<Velmo::Transport::ITransport> GetTransport() override { return m_transport; }
    Velmo::CDeviceInfo GetCamera() override { return m_transport->GetDeviceInfo("1001"); }
    void SendImage() override { EXPECT_TRUE(m_transport->DeliverImage("1001")); }
    bool Unplug() override
    {
        m_transport->RemoveCamera("1001");
        return true;
    }

private:
    std::shared_ptr<Test::CScriptedTransport> m_transport = std::make_shared<Test::CScriptedTransport>();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Scripted, TransportContract,
                         ::testing::Values(SHarnessFactory{"Scripted", []
                                                           {
                                                               return std::make_unique<CScriptedHarness>();
                                                           }}));

INSTANTIATE_TEST_SUITE_P(Scripted, InterfaceContract,
                         ::testing::Values(SHarnessFactory{"Scripted", []
                                                           {
                                                               return std::make_unique<CScriptedHarness>();
                                                           }}));

} // namespace Contract
