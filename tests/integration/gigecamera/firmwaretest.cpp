// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/firmware.h"
#include "genapi/exceptions.h"
#include "support/cameraprogram.h"
#include "support/filenodes.h"
#include "support/gigeclient.h"
#include "transports/gige/gigetransport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <unistd.h>

using namespace Velmo;
using Simulator::MakeFirmware;
using Test::CCameraProgram;
using Test::CFileNodes;
using Test::CGigEClient;
using Test::CSignal;
using Transport::EDiscoveryScope;
using namespace std::chrono_literals;

namespace
{

constexpr const char* Model = "EmuMono1280"; // of the program's first camera
constexpr const char* Serial = "GEV-0001";
constexpr auto LossTime = 10s; // until a client takes silence for a loss, and more

/** Firmware of simulated cameras through the SDK's own GigE transport. */
class GigEFirmware : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override { GigE::SetAdapters({}); }

    /** The camera's version once it is back. */
    std::string VersionOf(const std::string& serial = Serial)
    {
        EXPECT_TRUE(m_client.WaitForUsable(serial, 10s));
        const auto pDevice = m_client.Open(serial);
        return CFileNodes(*pDevice->GetNodeMap()).Get("DeviceFirmwareVersion");
    }
    /** Discovers until there are that many cameras. */
    DeviceInfoList WaitFor(std::size_t count)
    {
        const auto end = std::chrono::steady_clock::now() + 10s;
        DeviceInfoList list = m_client.Find(EDiscoveryScope::All);
        while (list.size() != count && std::chrono::steady_clock::now() < end)
        {
            list = m_client.Find(EDiscoveryScope::All);
        }
        return list;
    }
    void Reset() { CFileNodes(*m_client.Open(Serial)->GetNodeMap()).Execute("DeviceReset"); }

    CGigEClient m_client;
};

} // namespace

TEST_F(GigEFirmware, anUpdateThroughTheNodeMapRunsAfterTheReset)
{
    const CCameraProgram cameras({"--boot-time", "100"});
    const std::vector<std::uint8_t> image = MakeFirmware("2.1.0", Model, 5000);
    {
        const auto pDevice = m_client.Open(Serial);
        CSignal loss;
        pDevice->SetRemovalCallback([&loss] { loss.Raise(); });
        CFileNodes nodes(*pDevice->GetNodeMap());
        EXPECT_EQ(nodes.Get("DeviceFirmwareVersion"), "1.0.0");
        ASSERT_EQ(nodes.Upload("FirmwareUpdate", image), "Success");
        EXPECT_EQ(nodes.Get("FirmwareStatus"), "Verified");
        EXPECT_EQ(nodes.Download("FirmwareUpdate"), image);
        nodes.Execute("FirmwareActivate");
        EXPECT_EQ(nodes.Get("FirmwareStatus"), "ActivationPending");
        nodes.Execute("DeviceReset");
        EXPECT_TRUE(loss.Wait(LossTime));
    }
    EXPECT_EQ(VersionOf(), "2.1.0");
}

TEST_F(GigEFirmware, whatTheProgramMakesIsAnImageThatTheCameraTakes)
{
    const std::string file = "firmware_" + std::to_string(getpid()) + ".bin";
    const std::string command =
        std::string(GIGECAMERA) + " --make-firmware 3.0.0 " + Model + " " + file + " --firmware-size 700";
    ASSERT_EQ(std::system(command.c_str()), 0);
    std::ifstream stream(file, std::ios::binary);
    const std::vector<std::uint8_t> image{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    std::remove(file.c_str());
    EXPECT_EQ(image, MakeFirmware("3.0.0", Model, 700));
    const CCameraProgram cameras;
    const auto pDevice = m_client.Open(Serial);
    EXPECT_EQ(CFileNodes(*pDevice->GetNodeMap()).Upload("FirmwareUpdate", image), "Success");
}

TEST_F(GigEFirmware, whatDoesNotBootFallsBack)
{
    const CCameraProgram cameras({"--boot-time", "50"});
    {
        const auto pDevice = m_client.Open(Serial);
        CFileNodes nodes(*pDevice->GetNodeMap());
        ASSERT_EQ(nodes.Upload("FirmwareUpdate", MakeFirmware("2.1.0", Model, 100, true)), "Success");
        nodes.Execute("FirmwareActivate");
        nodes.Execute("DeviceReset");
    }
    EXPECT_EQ(VersionOf(), "1.0.0");
}

TEST_F(GigEFirmware, activatingNothingIsRefused)
{
    const CCameraProgram cameras;
    const auto pDevice = m_client.Open(Serial);
    EXPECT_THROW(CFileNodes(*pDevice->GetNodeMap()).Execute("FirmwareActivate"), GenICam::GenericException);
}

TEST_F(GigEFirmware, powerLostInAnUploadLeavesAnOpenableCameraWithTheOldOne)
{
    const std::vector<std::uint8_t> image = MakeFirmware("2.1.0", Model, 500);
    for (const char* fault : {"power-loss-file=1", "power-loss-file=2", "power-loss-file=4", "power-loss-write=9"})
    {
        const CCameraProgram cameras({"--boot-time", "50", "--fault", fault});
        {
            const auto pDevice = m_client.Open(Serial);
            EXPECT_THROW(CFileNodes(*pDevice->GetNodeMap()).Upload("FirmwareUpdate", image), GenICam::GenericException)
                << fault;
        }
        EXPECT_EQ(VersionOf(), "1.0.0") << fault;
        const auto pDevice = m_client.Open(Serial);
        EXPECT_EQ(CFileNodes(*pDevice->GetNodeMap()).Upload("FirmwareUpdate", image), "Success") << fault;
    }
}

TEST_F(GigEFirmware, anUploadThatIsNotClosedIsInvalidForTheNextApplication)
{
    const CCameraProgram cameras;
    {
        const auto pDevice = m_client.Open(Serial);
        ASSERT_EQ(CFileNodes(*pDevice->GetNodeMap()).Open("FirmwareUpdate", "Write"), "Success");
    }
    const auto pDevice = m_client.Open(Serial);
    EXPECT_EQ(CFileNodes(*pDevice->GetNodeMap()).Get("FirmwareStatus"), "Invalid");
}

TEST_F(GigEFirmware, slowFileOperationsAreWaitedFor)
{
    const CCameraProgram cameras({"--fault", "file-slow=300"});
    const auto pDevice = m_client.Open(Serial);
    CFileNodes nodes(*pDevice->GetNodeMap());
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(nodes.Open("UserFile1", "Write"), "Success");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 300ms);
}

TEST_F(GigEFirmware, fileFaultsStrike)
{
    const CCameraProgram cameras({"--fault", "file-fail=1", "--fault", "file-short=1"});
    const auto pDevice = m_client.Open(Serial);
    CFileNodes nodes(*pDevice->GetNodeMap());
    EXPECT_EQ(nodes.Open("UserFile1", "ReadWrite"), "Failure");
    EXPECT_EQ(nodes.Open("UserFile1", "ReadWrite"), "Success");
    nodes.Set("FileAccessLength", "100");
    EXPECT_EQ(nodes.Do("Write"), "Success");
    EXPECT_EQ(nodes.Get("FileOperationResult"), "50");
}

TEST_F(GigEFirmware, afterAResetTheFaultLetsNothingComeBack)
{
    const CCameraProgram cameras({"--count", "2", "--boot-time", "0", "--fault", "after-reset=never"}, 2);
    Reset();
    ASSERT_EQ(WaitFor(1).size(), 1U);
    const DeviceInfoList list = m_client.Find(EDiscoveryScope::All);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0].GetSerialNumber(), "GEV-0002");
}

TEST_F(GigEFirmware, afterAResetTheFaultLetsTwoComeBack)
{
    const CCameraProgram cameras({"--boot-time", "50", "--fault", "after-reset=twice"});
    Reset();
    const DeviceInfoList list = WaitFor(2);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].GetSerialNumber(), Serial);
    EXPECT_EQ(list[1].GetSerialNumber(), Serial);
    EXPECT_NE(list[0].GetIpAddress(), list[1].GetIpAddress());
}

TEST_F(GigEFirmware, afterAResetTheFaultChangesTheSerialNumber)
{
    const CCameraProgram cameras({"--boot-time", "50", "--fault", "after-reset=otherSerial"});
    Reset();
    EXPECT_EQ(VersionOf("XEV-0001"), "1.0.0");
}
