// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "support/networknamespace.h"
#include "transports/gige/gigetransport.h"
#include "transports/gige/internal/discovery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace Velmo;
using GigE::Internal::Discover;
using GigE::Internal::ListSystemAdapters;
using GigE::Internal::SAdapter;
using Test::CCameraProgram;
using Test::CGigEClient;
using Test::CPeerNamespace;
using Test::RunIp;
using Test::WriteConfig;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using namespace std::chrono_literals;

namespace
{

/** A camera behind the adapter "va", which may lose its address. */
class AdapterAddress : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
        m_far.Visit(
            [this] {
                m_camera.emplace(std::vector<std::string>{"--interface", "vb", "--config", WriteConfig("")});
            });
        GigE::SetAdapters({"va"});
    }
    void TearDown() override { GigE::SetAdapters({}); }

    /** Opens a camera that was found, after its adapter has lost the address, and again with the address. */
    void OpenWithoutAndWithAddress(EDeviceAccess access)
    {
        const auto pDevice = m_client.Create("GC-1");
        RunIp("addr flush dev va");
        try
        {
            pDevice->Open(access);
            FAIL() << "opened through an adapter without an address";
        }
        catch (const GenICam::RuntimeException& e)
        {
            EXPECT_THAT(e.GetDescription(),
                        AllOf(HasSubstr("the network adapter's address 192.168.77.1 cannot be used"),
                              HasSubstr("192.168.77.2")));
        }
        EXPECT_FALSE(pDevice->IsOpen());
        EXPECT_EQ(pDevice->GetNodeMap(), nullptr);
        RunIp("addr add 192.168.77.1/24 broadcast + dev va");
        ASSERT_TRUE(m_client.WaitForUsable("GC-1", 30s));
        pDevice->Open(access);
        EXPECT_TRUE(pDevice->IsOpen());
    }

    CPeerNamespace m_far;
    std::optional<CCameraProgram> m_camera;
    CGigEClient m_client;
};

} // namespace

TEST_F(AdapterAddress, thatIsGoneKeepsACameraFromBeingControlled)
{
    OpenWithoutAndWithAddress(EDeviceAccess::Control);
}

TEST_F(AdapterAddress, thatIsGoneKeepsACameraFromBeingMonitored)
{
    OpenWithoutAndWithAddress(EDeviceAccess::Monitor);
}

TEST_F(AdapterAddress, thatIsNobodysIsAFailureOfDiscoveryAndTheOthersAreSearched)
{
    const std::vector<SAdapter> system = ListSystemAdapters();
    const auto found =
        std::find_if(system.begin(), system.end(), [](const SAdapter& adapter) { return adapter.name == "va"; });
    ASSERT_NE(found, system.end());
    SAdapter foreign;
    foreign.id = "gone";
    foreign.name = "gone";
    foreign.ip = 0xCB007109; // 203.0.113.9, for documentation (RFC 5737)
    foreign.mask = 0xFFFFFF00;
    const auto result = Discover({foreign, *found}, {});
    ASSERT_EQ(result.failures.size(), 1u);
    EXPECT_EQ(result.failures.front().adapterId, "gone");
    EXPECT_THAT(result.failures.front().reason, Not(IsEmpty()));
    ASSERT_EQ(result.devices.size(), 1u);
    EXPECT_EQ(result.devices.front().adapter.name, "va");
}
