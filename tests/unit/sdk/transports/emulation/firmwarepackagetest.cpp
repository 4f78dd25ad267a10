// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "genapi/firmwarepackagewriter.h"
#include "genapi/firmwareupdate.h"
#include "rig.h"
#include "simulator/firmware.h"
#include "support/filenodes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>
#include <unistd.h>

using namespace Velmo;
using EmulationTest::DeadlineMs;
using EmulationTest::Small;
using EmulationTest::SRig;

namespace
{

constexpr const char* Model = "Inspector";
constexpr const char* Control = R"(<?xml version="1.0" encoding="UTF-8"?>
<FirmwarePackage xmlns="urn:camerapool:firmwarepackage" version="1.0">
  <Files><File name="main.bin"/></Files>
  <Procedures>
    <Procedure id="all">
      <Steps>
        <FileUpload file="main.bin" deviceFile="FirmwareUpdate" verify="readBack"/>
        <FeatureAssert feature="FirmwareStatus" equals="Verified"/>
        <FeatureExecute feature="FirmwareActivate" activates="true"/>
        <DeviceReset expectedTimeMs="1000"/>
        <FeatureAssert feature="DeviceFirmwareVersion" equals="2.1.0"/>
      </Steps>
    </Procedure>
  </Procedures>
  <Updates>
    <Update id="inspector" procedure="all">
      <Condition feature="DeviceModelName" matches="Inspector"/>
      <Info key="Version"><Text>2.1.0</Text></Info>
    </Update>
  </Updates>
</FirmwarePackage>
)";

/** A package with the simulated firmware in it, in a folder that lives as long. */
class CPackage
{
public:
    CPackage() : m_folder(std::filesystem::temp_directory_path() / ("package_" + std::to_string(getpid())))
    {
        std::filesystem::create_directories(m_folder);
        const std::vector<std::uint8_t> image = Simulator::MakeFirmware("2.1.0", Model, 1000);
        std::ofstream(m_folder / "main.bin", std::ios::binary)
            .write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
        std::ofstream(m_folder / "control.xml") << Control;
        const std::string file = (m_folder / "update.guf").string();
        GenApi::CFirmwarePackageWriter().WritePackage((m_folder / "control.xml").string().c_str(), file.c_str());
        struct SCollector final : GenApi::IFirmwareUpdateInfoCollector
        {
            bool OnUpdateRead(const GenApi::CFirmwareUpdateInfo& info) override
            {
                found = info;
                return true;
            }
            GenApi::CFirmwareUpdateInfo found;
        } collector;
        GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(file.c_str(), collector);
        m_update = collector.found;
    }
    ~CPackage()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    CPackage(const CPackage&) = delete;
    CPackage& operator=(const CPackage&) = delete;

    const GenApi::CFirmwareUpdateInfo& Update() const { return m_update; }

private:
    const std::filesystem::path m_folder;
    GenApi::CFirmwareUpdateInfo m_update;
};

/** The one emulated camera there is, found again after a reset. */
class CUpdatable final : public GenApi::IFirmwareUpdatableDevice
{
public:
    explicit CUpdatable(const SRig& rig) : m_rig(rig) {}

    void PrepareForFirmwareUpdate() override
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(DeadlineMs);
        while (m_rig.Enumerate().empty() && std::chrono::steady_clock::now() < end)
        {
            std::this_thread::yield();
        }
        m_device = m_rig.Open();
    }
    GenApi::INodeMap& GetNodeMapOfDeviceToUpdate() override { return *m_device->GetNodeMap(); }
    GenICam::gcstring GetDisplayName() override { return "Inspector"; }
    void DeviceResetWhileUpdatingFirmware(unsigned int, unsigned int) override
    {
        Test::CFileNodes(*m_device->GetNodeMap()).Execute("DeviceReset");
        PrepareForFirmwareUpdate();
    }
    void CleanupAfterFirmwareUpdate() override { m_device.reset(); }

    std::string Version()
    {
        PrepareForFirmwareUpdate();
        const std::string version = Test::CFileNodes(*m_device->GetNodeMap()).Get("DeviceFirmwareVersion");
        m_device.reset();
        return version;
    }

private:
    const SRig& m_rig;
    std::unique_ptr<IVelmoDevice> m_device;
};

Simulator::SCameraConfig Updatable()
{
    Simulator::SCameraConfig config = Small();
    config.modelName = Model;
    config.bootTimeMs = 10;
    return config;
}

} // namespace

TEST(EmulatedFirmwarePackage, isAppliedByTheFirmwareUpdater)
{
    const CPackage package;
    SRig rig({Updatable()});
    CUpdatable device(rig);
    EXPECT_EQ(device.Version(), "1.0.0");
    GenApi::CFirmwareUpdater().ApplyUpdate(package.Update(), device, nullptr);
    EXPECT_EQ(device.Version(), "2.1.0");
}

TEST(EmulatedFirmwarePackage, powerLostAtAnyFileOperationLeavesTheOldOneAndTheNextTryUpdates)
{
    const CPackage package;
    const GenApi::CFirmwareUpdater updater;
    std::uint32_t lost = 0;
    for (bool isLost = true; isLost; ++lost)
    {
        Simulator::SCameraConfig config = Updatable();
        config.faults.powerLossAtFileOperation = lost + 1;
        SRig rig({config});
        CUpdatable device(rig);
        isLost = false;
        try
        {
            updater.ApplyUpdate(package.Update(), device, nullptr);
        }
        catch (const GenICam::GenericException&)
        {
            isLost = true;
            EXPECT_EQ(device.Version(), "1.0.0") << "operation " << lost + 1;
            EXPECT_NO_THROW(updater.ApplyUpdate(package.Update(), device, nullptr)) << "operation " << lost + 1;
        }
        EXPECT_EQ(device.Version(), "2.1.0") << "operation " << lost + 1;
        ASSERT_LT(lost, 50U);
    }
    EXPECT_GT(lost, 8U) << "open, three writes, close, and the same for reading back";
}

TEST(EmulatedFirmwarePackage, powerLostAtAnyWriteLeavesACameraThatCanBeOpenedAndUpdatedAgain)
{
    const CPackage package;
    const GenApi::CFirmwareUpdater updater;
    std::set<std::string> versions; // after a loss
    std::uint32_t lost = 0;
    for (bool isLost = true; isLost; ++lost)
    {
        SCOPED_TRACE("write " + std::to_string(lost + 1));
        Simulator::SCameraConfig config = Updatable();
        config.faults.powerLossAtWrite = lost + 1;
        SRig rig({config});
        CUpdatable device(rig);
        isLost = false;
        try
        {
            updater.ApplyUpdate(package.Update(), device, nullptr);
        }
        catch (const GenICam::GenericException&)
        {
            isLost = true;
            versions.insert(device.Version());
            EXPECT_NO_THROW(updater.ApplyUpdate(package.Update(), device, nullptr));
        }
        EXPECT_EQ(device.Version(), "2.1.0");
        ASSERT_LT(lost, 200U);
    }
    EXPECT_GT(lost, 25U) << "the file's features, the activation and the reset";
    // Power that comes back starts what was activated.
    EXPECT_EQ(versions, (std::set<std::string>{"1.0.0", "2.1.0"}));
}

TEST(EmulatedFirmwarePackage, aShortWriteIsContinuedWhereItEnded)
{
    const CPackage package;
    Simulator::SCameraConfig config = Updatable();
    config.faults.fileShortWrite = 2;
    SRig rig({config});
    CUpdatable device(rig);
    GenApi::CFirmwareUpdater().ApplyUpdate(package.Update(), device, nullptr);
    EXPECT_EQ(device.Version(), "2.1.0");
}
