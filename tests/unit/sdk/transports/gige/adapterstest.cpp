// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/adapters.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

using namespace Velmo::GigE;
using namespace Velmo::GigE::Internal;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

SAdapter Adapter(const char* id, const char* name, std::uint32_t ip, std::uint32_t mask, bool isLoopback = false)
{
    SAdapter adapter;
    adapter.id = id;
    adapter.name = name;
    adapter.ip = ip;
    adapter.mask = mask;
    adapter.isLoopback = isLoopback;
    return adapter;
}

std::vector<SAdapter> System()
{
    return {Adapter("lo", "lo", 0x7F000001, 0xFF000000, true), Adapter("eth0", "eth0", 0xC0A80105, 0xFFFFFF00),
            Adapter("eth0/10.0.0.5", "eth0", 0x0A000005, 0xFF000000), Adapter("eth1", "eth1", 0xC0A80205, 0xFFFFFF00)};
}

std::vector<std::string> Select(const std::vector<std::string>& wanted, std::vector<std::string>* pUnknown = nullptr)
{
    std::vector<std::string> unknown;
    std::vector<std::string> ids;
    for (const SAdapter& adapter : SelectAdapters(System(), wanted, unknown))
    {
        ids.push_back(adapter.id);
    }
    if (pUnknown != nullptr)
    {
        *pUnknown = unknown;
    }
    return ids;
}

} // namespace

TEST(GigEAdapters, withoutAWishAllButLoopbackAreTaken)
{
    EXPECT_THAT(Select({}), ElementsAre("eth0", "eth0/10.0.0.5", "eth1"));
}

TEST(GigEAdapters, nameTakesAllAddressesOfAnAdapter)
{
    EXPECT_THAT(Select({"eth0"}), ElementsAre("eth0", "eth0/10.0.0.5"));
}

TEST(GigEAdapters, addressTakesThatAddressOnly)
{
    EXPECT_THAT(Select({"10.0.0.5"}), ElementsAre("eth0/10.0.0.5"));
    EXPECT_THAT(Select({"127.0.0.1"}), ElementsAre("lo"));
}

TEST(GigEAdapters, noneTakesNoneAndIsNotUnknown)
{
    std::vector<std::string> unknown;
    EXPECT_THAT(Select({"none"}, &unknown), IsEmpty());
    EXPECT_THAT(unknown, IsEmpty());
}

TEST(GigEAdapters, whatDoesNotExistIsUnknown)
{
    std::vector<std::string> unknown;
    EXPECT_THAT(Select({"eth9", "172.16.0.1", "eth1"}, &unknown), ElementsAre("eth1"));
    EXPECT_THAT(unknown, ElementsAre("eth9", "172.16.0.1"));
}

TEST(GigEAdapters, otherLoopbackAddressStandsForTheLoopbackAdapter)
{
    std::vector<std::string> unknown;
    const std::vector<SAdapter> selected = SelectAdapters(System(), {"127.0.0.7"}, unknown);
    ASSERT_EQ(selected.size(), 1u);
    EXPECT_EQ(selected.front().ip, 0x7F000007u);
    EXPECT_TRUE(selected.front().isLoopback);
    EXPECT_THAT(unknown, IsEmpty());
}

TEST(GigEAdapters, listIsSplitAtCommasAndTrimmed)
{
    EXPECT_THAT(SplitList(" eth0, 127.0.0.1 ,,\tnone"), ElementsAre("eth0", "127.0.0.1", "none"));
    EXPECT_THAT(SplitList(""), IsEmpty());
    EXPECT_THAT(SplitList(" , "), IsEmpty());
}

TEST(GigEAdapters, setListComesBeforeTheEnvironments)
{
    ASSERT_EQ(setenv(AdaptersVariable, "eth7,127.0.0.1", 1), 0);
    EXPECT_THAT(WantedAdapters(), ElementsAre("eth7", "127.0.0.1"));
    SetAdapters({"eth8"});
    EXPECT_THAT(WantedAdapters(), ElementsAre("eth8"));
    SetAdapters({});
    EXPECT_THAT(WantedAdapters(), ElementsAre("eth7", "127.0.0.1"));
    ASSERT_EQ(unsetenv(AdaptersVariable), 0);
    EXPECT_THAT(WantedAdapters(), IsEmpty());
}

TEST(GigEAdapters, subnetAndBroadcastFollowFromTheMask)
{
    const SAdapter adapter = Adapter("eth0", "eth0", 0xC0A80105, 0xFFFFFF00);
    EXPECT_EQ(adapter.DirectedBroadcast(), 0xC0A801FFu);
    EXPECT_TRUE(adapter.IsInSubnet(0xC0A801FE));
    EXPECT_FALSE(adapter.IsInSubnet(0xC0A80201));
}
