// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "gvcpresponder.h"
#include "protocols/gvbsregisters.h"
#include "support/fakecamera.h"
#include "transport/log.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

using namespace Velmo;
using Test::CFakeCamera;
using Test::CGvcpResponder;
using Transport::EDiscoveryScope;

namespace
{

class GigEDiscovery : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override { GigE::SetAdapters({}); }

    DeviceInfoList Find(EDiscoveryScope scope = EDiscoveryScope::All)
    {
        DeviceInfoList list;
        m_pTransport->EnumerateDevices(list, scope);
        return list;
    }

    std::shared_ptr<Transport::ITransport> m_pTransport = GigE::CreateTransport();
};

Gvcp::SDiscoveryAck SomeCamera(const std::string& ip, const std::string& serial)
{
    Gvcp::SDiscoveryAck ack;
    ack.manufacturerName = "Maker";
    ack.modelName = "Model";
    ack.serialNumber = serial;
    Gvcp::ParseIp(ip, ack.currentIp);
    return ack;
}

std::vector<std::string> AddressesOf(const DeviceInfoList& list)
{
    std::vector<std::string> addresses;
    for (const CDeviceInfo& info : list)
    {
        addresses.push_back(info.GetIpAddress().str());
    }
    return addresses;
}

bool IsCommand(const Gvcp::SCommand& command, Gvcp::ECommand kind)
{
    return command.command == static_cast<std::uint16_t>(kind);
}

} // namespace

TEST_F(GigEDiscovery, cameraIsFoundWithItsRecordComplete)
{
    const CFakeCamera camera("GV77");
    const DeviceInfoList list = Find();
    ASSERT_EQ(list.size(), 1u);
    const CDeviceInfo& info = list.front();
    EXPECT_EQ(info.GetDeviceClass(), "KorvelGigE");
    EXPECT_EQ(info.GetDeviceFactory(), "KorvelGigE");
    EXPECT_EQ(info.GetTLType(), "GEV");
    EXPECT_EQ(info.GetVendorName(), "Aravis");
    EXPECT_EQ(info.GetSerialNumber(), "GV77");
    EXPECT_EQ(info.GetIpAddress(), "127.0.0.1");
    EXPECT_EQ(info.Get(Key::Interface), "127.0.0.1");
    EXPECT_EQ(info.Get(Key::AccessStatus), "ReadWrite");
    EXPECT_FALSE(info.GetModelName().empty());
    EXPECT_FALSE(info.GetDeviceVersion().empty());
    EXPECT_THAT(info.GetFriendlyName().str(), ::testing::HasSubstr("(GV77)"));
}

TEST_F(GigEDiscovery, freeCameraIsUsable)
{
    const CFakeCamera camera;
    EXPECT_EQ(Find(EDiscoveryScope::Usable).size(), 1u);
}

TEST_F(GigEDiscovery, fullNameSurvivesARestart)
{
    CFakeCamera camera;
    const DeviceInfoList before = Find();
    camera.Restart();
    const DeviceInfoList after = Find();
    ASSERT_EQ(before.size(), 1u);
    ASSERT_EQ(after.size(), 1u);
    EXPECT_EQ(before.front().GetFullName(), after.front().GetFullName());
}

TEST_F(GigEDiscovery, camerasThatDifferInTheirSerialNumberOnlyHaveDifferentFullNames)
{
    CGvcpResponder twoInOne("127.0.0.1",
                            [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                            {
                                return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.1", "A")),
                                        Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.1", "B"))};
                            });
    const DeviceInfoList list = Find();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_NE(list[0].GetFullName(), list[1].GetFullName());
}

TEST_F(GigEDiscovery, takesWellBelowASecondWithAndWithoutACamera)
{
    const auto measure = [this]
    {
        const auto start = std::chrono::steady_clock::now();
        Find();
        return std::chrono::steady_clock::now() - start;
    };
    EXPECT_LT(measure(), std::chrono::milliseconds(700));
    const CFakeCamera camera;
    EXPECT_LT(measure(), std::chrono::milliseconds(700));
}

TEST_F(GigEDiscovery, cameraOfTheLastSearchThatAnswersLateDoesNotVanish)
{
    GigE::SetAdapters({"127.0.0.1", "127.0.0.2"});
    std::mutex mutex;
    std::condition_variable changed;
    bool isLate = false;
    bool isOver = false;
    CGvcpResponder prompt("127.0.0.1",
                          [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                          { return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.1", "A"))}; });
    CGvcpResponder late("127.0.0.2",
                        [&](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                        {
                            std::unique_lock<std::mutex> lock(mutex);
                            if (isLate)
                            {
                                changed.wait_for(lock, std::chrono::milliseconds(250), [&] { return isOver; });
                            }
                            return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.2", "B"))};
                        });
    ASSERT_EQ(Find().size(), 2u);
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isLate = true;
    }
    EXPECT_EQ(Find().size(), 2u);
    const std::lock_guard<std::mutex> lock(mutex);
    isOver = true;
    changed.notify_all();
}

TEST_F(GigEDiscovery, noCameraGivesAnEmptyList)
{
    EXPECT_TRUE(Find().empty());
}

TEST_F(GigEDiscovery, cameraHeldByAnotherApplicationIsReportedButNotUsable)
{
    CGvcpResponder held(
        "127.0.0.1",
        [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
        {
            if (IsCommand(command, Gvcp::ECommand::DiscoveryCmd))
            {
                return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.1", "held"))};
            }
            return {Gvcp::EncodeReadRegAck(command.requestId, Gvcp::EStatus::Success, {Gvbs::CcpControlAccess})};
        });
    const DeviceInfoList all = Find();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all.front().Get(Key::AccessStatus), "InUse");
    EXPECT_TRUE(Find(EDiscoveryScope::Usable).empty());
}

TEST_F(GigEDiscovery, cameraInAnotherSubnetIsReportedAsUnreachable)
{
    CGvcpResponder elsewhere("127.0.0.1",
                             [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                             { return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("10.9.8.7", "far"))}; });
    const DeviceInfoList all = Find();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all.front().Get(Key::AccessStatus), "Unreachable");
    EXPECT_EQ(all.front().GetIpAddress(), "10.9.8.7");
    EXPECT_TRUE(Find(EDiscoveryScope::Usable).empty());
}

TEST_F(GigEDiscovery, garbageAndForeignAnswersAreIgnored)
{
    CGvcpResponder liar(
        "127.0.0.1",
        [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
        {
            const auto other = static_cast<std::uint16_t>(command.requestId + 1);
            Gvcp::Bytes cut = Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.1", "cut"));
            cut.resize(100);
            Gvcp::Bytes shortPayload =
                Gvcp::EncodeErrorAck(command.requestId, Gvcp::ECommand::DiscoveryAck, Gvcp::EStatus::Success);
            Gvcp::Bytes refused =
                Gvcp::EncodeErrorAck(command.requestId, Gvcp::ECommand::DiscoveryAck, Gvcp::EStatus::Busy);
            return {{},
                    {0x42},
                    Gvcp::Bytes(1500, 0xFF),
                    cut,
                    shortPayload,
                    refused,
                    Gvcp::EncodeReadRegAck(0x8000, Gvcp::EStatus::Success, {0}),
                    Gvcp::EncodeDiscoveryAck(other, SomeCamera("127.0.0.1", "spoofed"))};
        });
    EXPECT_TRUE(Find().empty());
}

TEST_F(GigEDiscovery, answersThatClaimAnAddressOfNoCameraAreIgnored)
{
    CGvcpResponder liar("127.0.0.1",
                        [](const Gvcp::SCommand& command)
                        {
                            std::vector<Gvcp::Bytes> answers;
                            for (const char* ip : {"127.255.255.255", "255.255.255.255", "239.1.1.1", "240.0.0.1"})
                            {
                                answers.push_back(Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera(ip, ip)));
                            }
                            return answers;
                        });
    EXPECT_THAT(AddressesOf(Find()), ::testing::IsEmpty());
}

TEST_F(GigEDiscovery, answersFromAnotherPortThanGvcpsAreIgnored)
{
    CGvcpResponder liar(
        "127.0.0.1",
        [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
        { return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.1", "other port"))}; },
        "127.0.0.1", 0);
    EXPECT_TRUE(Find().empty());
}

TEST_F(GigEDiscovery, nobodyElseTellsWhetherACameraIsFree)
{
    const auto answer = [](const char* ip, std::uint32_t privilege)
    {
        return [ip, privilege](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
        {
            if (!IsCommand(command, Gvcp::ECommand::DiscoveryCmd))
            {
                return {Gvcp::EncodeReadRegAck(command.requestId, Gvcp::EStatus::Success, {privilege})};
            }
            // Answers that nobody has asked for yet; those of the first two questions about the privilege.
            return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera(ip, ip)),
                    Gvcp::EncodeReadRegAck(0x8000, Gvcp::EStatus::Success, {privilege}),
                    Gvcp::EncodeReadRegAck(0x8001, Gvcp::EStatus::Success, {privilege})};
        };
    };
    CGvcpResponder held("127.0.0.1", answer("127.0.0.1", Gvbs::CcpControlAccess));
    CGvcpResponder free("127.5.5.5", answer("127.5.5.5", 0));
    CDeviceInfo info;
    info.SetIpAddress("127.5.5.5");
    ASSERT_TRUE(m_pTransport->GetGigEExtension()->AnnounceRemoteDevice(info));
    EXPECT_THAT(AddressesOf(Find()), ::testing::UnorderedElementsAre("127.0.0.1", "127.5.5.5"));
    EXPECT_THAT(AddressesOf(Find(EDiscoveryScope::Usable)), ::testing::ElementsAre("127.5.5.5"));
}

TEST_F(GigEDiscovery, textsOfACameraCannotBreakLines)
{
    CGvcpResponder rude("127.0.0.1",
                        [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                        {
                            Gvcp::SDiscoveryAck ack = SomeCamera("127.0.0.1", "1\n2");
                            ack.userDefinedName = "\x1b[31mred\r\n";
                            return {Gvcp::EncodeDiscoveryAck(command.requestId, ack)};
                        });
    const DeviceInfoList list = Find();
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list.front().GetUserDefinedName(), " [31mred");
    EXPECT_EQ(list.front().GetSerialNumber(), "1 2");
}

TEST_F(GigEDiscovery, repeatedAnswersOfOneCameraMakeOneRecord)
{
    CGvcpResponder eager("127.0.0.1",
                         [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                         {
                             const auto packet =
                                 Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.0.0.1", "one"));
                             return std::vector<Gvcp::Bytes>(50, packet);
                         });
    EXPECT_EQ(Find().size(), 1u);
}

TEST_F(GigEDiscovery, adapterThatDoesNotExistIsSkippedAndLoggedOnce)
{
    std::mutex mutex;
    std::vector<std::string> lines;
    SetLogSink(
        [&](const SLogRecord& record)
        {
            const std::lock_guard<std::mutex> lock(mutex);
            lines.push_back(record.text);
        });
    GigE::SetAdapters({"nonesuch7", "127.0.0.1"});
    const CFakeCamera camera;
    EXPECT_EQ(Find().size(), 1u);
    EXPECT_EQ(Find().size(), 1u);
    SetLogSink(nullptr);
    const std::lock_guard<std::mutex> lock(mutex);
    EXPECT_THAT(lines, ::testing::ElementsAre(::testing::HasSubstr("nonesuch7")));
}

TEST_F(GigEDiscovery, withoutAnAdapterThereIsTheDefaultInterfaceAndNoCamera)
{
    const CFakeCamera camera;
    GigE::SetAdapters({"none"});
    InterfaceInfoList interfaces;
    m_pTransport->EnumerateInterfaces(interfaces);
    ASSERT_EQ(interfaces.size(), 1u);
    EXPECT_EQ(interfaces.front().GetInterfaceID(), "DefaultInterface");
    EXPECT_TRUE(Find().empty());
}

TEST_F(GigEDiscovery, adapterHasAnInterfaceRecord)
{
    InterfaceInfoList interfaces;
    m_pTransport->EnumerateInterfaces(interfaces);
    ASSERT_EQ(interfaces.size(), 1u);
    const CInterfaceInfo& info = interfaces.front();
    EXPECT_EQ(info.GetInterfaceID(), "lo");
    EXPECT_EQ(info.GetTLType(), "GEV");
    EXPECT_EQ(info.Get(Key::IpAddress), "127.0.0.1");
    EXPECT_EQ(info.Get(Key::SubnetMask), "255.0.0.0");
    EXPECT_EQ(info.Get(Key::MacAddress), "00:00:00:00:00:00");
}

TEST_F(GigEDiscovery, announcedRemoteCameraIsFoundFromThenOn)
{
    CGvcpResponder remote("127.5.5.5",
                          [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                          {
                              if (IsCommand(command, Gvcp::ECommand::DiscoveryCmd))
                              {
                                  return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("10.0.0.9", "r"))};
                              }
                              return {Gvcp::EncodeReadRegAck(command.requestId, Gvcp::EStatus::Success, {0})};
                          });
    EXPECT_TRUE(Find().empty());
    CDeviceInfo info;
    info.SetIpAddress("127.5.5.5");
    EXPECT_TRUE(m_pTransport->GetGigEExtension()->AnnounceRemoteDevice(info));
    const DeviceInfoList list = Find(EDiscoveryScope::Usable);
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list.front().GetIpAddress(), "127.5.5.5");
}

TEST_F(GigEDiscovery, announcingAnAddressWhereNothingAnswersIsFalse)
{
    CDeviceInfo info;
    info.SetIpAddress("127.5.5.6");
    EXPECT_FALSE(m_pTransport->GetGigEExtension()->AnnounceRemoteDevice(info));
}

TEST_F(GigEDiscovery, announcingIsFalseWhenAnotherAddressAnswers)
{
    CGvcpResponder liar(
        "127.5.5.7",
        [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
        { return {Gvcp::EncodeDiscoveryAck(command.requestId, SomeCamera("127.5.5.7", "elsewhere"))}; },
        "127.5.5.8", Gvcp::Port);
    CDeviceInfo info;
    info.SetIpAddress("127.5.5.7");
    EXPECT_FALSE(m_pTransport->GetGigEExtension()->AnnounceRemoteDevice(info));
    EXPECT_THROW(m_pTransport->CreateDevice(info), GenICam::RuntimeException) << "it must not be remembered either";
}

TEST_F(GigEDiscovery, announcingWhatIsNoAddressOfACameraThrows)
{
    const CFakeCamera camera; // that would answer to a broadcast
    for (const char* address : {"camera.example", "", "0.0.0.0", "239.1.1.1", "255.255.255.255", "127.255.255.255"})
    {
        CDeviceInfo info;
        info.SetIpAddress(address);
        EXPECT_THROW(m_pTransport->GetGigEExtension()->AnnounceRemoteDevice(info), GenICam::InvalidArgumentException)
            << address;
    }
}

TEST_F(GigEDiscovery, creatingADeviceThatIsNotThereThrows)
{
    CDeviceInfo info;
    info.SetDeviceClass("KorvelGigE").SetFullName("No Such#KorvelGigE#0#00:00:00:00:00:00");
    EXPECT_THROW(m_pTransport->CreateDevice(info), GenICam::RuntimeException);
}
