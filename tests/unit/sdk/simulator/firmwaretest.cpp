// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/firmware.h"

#include "fakes.h"
#include "fileclient.h"
#include "genapi/exceptions.h"
#include "simulator/registers.h"

#include <gtest/gtest.h>

using Simulator::DecodeFirmware;
using Simulator::EAfterReset;
using Simulator::MakeFirmware;
using SimulatorTest::CFileClient;
using SimulatorTest::SRig;

namespace
{

using Image = std::vector<std::uint8_t>;

/** A camera that can be switched off and on; its firmware is 1.0.0, its model Inspector. */
struct SPoweredRig
{
    explicit SPoweredRig(const Simulator::SCameraConfig& config = Config()) { Boot(config); }

    static Simulator::SCameraConfig Config()
    {
        Simulator::SCameraConfig config = SRig::Small();
        config.modelName = "Inspector";
        return config;
    }
    void Boot(const Simulator::SCameraConfig& config)
    {
        rig = std::make_unique<SRig>(config, flash);
        rig->camera.SetEventHandler([this](Simulator::CCameraModel::EEvent event)
                                    { resets += event == Simulator::CCameraModel::EEvent::Reset ? 1 : 0; });
    }
    /** As whoever owns a camera does after EEvent::Reset. */
    void Reset() { Boot(rig->camera.GetAfterReset().config); }
    CFileClient Firmware() { return {rig->camera, CFileClient::FirmwareUpdate}; }
    std::string Status() { return rig->camera.GetFeature("FirmwareStatus"); }
    std::string Version() { return rig->camera.GetFeature("DeviceFirmwareVersion"); }
    void Activate() { Firmware().Put(Simulator::Register::FirmwareActivate, 1); }

    const std::shared_ptr<Simulator::SFlash> flash = std::make_shared<Simulator::SFlash>();
    std::unique_ptr<SRig> rig;
    int resets = 0;
};

/** What an update does, all of it; throws where the power goes. */
void Update(SPoweredRig& power, const Image& image)
{
    power.Firmware().Upload(image);
    power.Activate();
}

std::string FlawOf(const Image& image)
{
    try
    {
        DecodeFirmware(image.data(), image.size());
        return "";
    }
    catch (const GenICam::InvalidArgumentException& error)
    {
        return error.GetDescription();
    }
}

} // namespace

TEST(FirmwareImage, isReadAsItWasWritten)
{
    Simulator::SFirmwareImage image;
    image.version = "2.0.1";
    image.modelName = "Inspector";
    image.payload = {1, 2, 3};
    image.failsToBoot = true;
    const Image bytes = EncodeFirmware(image);
    ASSERT_EQ(bytes.size(), Simulator::SFirmwareImage::HeaderBytes + 3);
    const Simulator::SFirmwareImage read = DecodeFirmware(bytes.data(), bytes.size());
    EXPECT_EQ(read.version, image.version);
    EXPECT_EQ(read.modelName, image.modelName);
    EXPECT_EQ(read.payload, image.payload);
    EXPECT_TRUE(read.failsToBoot);
}

TEST(FirmwareImage, hasTheLayoutOfItsDocument)
{
    Simulator::SFirmwareImage image;
    image.version = "1";
    image.modelName = "M";
    image.payload = {'1', '2', '3'};
    const Image bytes = EncodeFirmware(image);
    EXPECT_EQ(Image(bytes.begin(), bytes.begin() + 10), (Image{'S', 'C', 'F', 'W', 0, 1, 0, 0, '1', 0}));
    EXPECT_EQ(bytes[72], 'M');
    EXPECT_EQ(Image(bytes.begin() + 136, bytes.begin() + 140), (Image{0, 0, 0, 3}));
    // Of an independent implementation: zlib.crc32 over the first 140 bytes and the payload.
    EXPECT_EQ(Image(bytes.begin() + 140, bytes.begin() + 144), (Image{0x5D, 0x65, 0xB4, 0xC5}));
}

TEST(FirmwareImage, anyChangedByteIsFound)
{
    const Image good = MakeFirmware("2.0.0", "Inspector", 40);
    ASSERT_EQ(FlawOf(good), "");
    for (std::size_t i = 0; i < good.size(); ++i)
    {
        Image bad = good;
        bad[i] ^= 0x10;
        EXPECT_NE(FlawOf(bad), "") << "byte " << i;
    }
}

TEST(FirmwareImage, anyOtherLengthIsFound)
{
    const Image good = MakeFirmware("2.0.0", "Inspector", 40);
    for (std::size_t length = 0; length < good.size(); ++length)
    {
        EXPECT_NE(FlawOf({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)}), "") << length;
    }
    Image longer = good;
    longer.push_back(0);
    EXPECT_NE(FlawOf(longer), "");
}

TEST(FirmwareImage, textsMustFit)
{
    EXPECT_THROW(MakeFirmware("", "Inspector", 1), GenICam::InvalidArgumentException);
    EXPECT_THROW(MakeFirmware("1", "", 1), GenICam::InvalidArgumentException);
    EXPECT_THROW(MakeFirmware("1", std::string(64, 'm'), 1), GenICam::InvalidArgumentException);
    EXPECT_NO_THROW(MakeFirmware("1", std::string(63, 'm'), 0));
}

TEST(Firmware, anUpdateRunsAfterTheReset)
{
    SPoweredRig power;
    EXPECT_EQ(power.Status(), "Idle");
    EXPECT_EQ(power.Version(), "1.0.0");
    ASSERT_EQ(power.Firmware().Upload(MakeFirmware("2.0.0", "Inspector", 3000)), "Success");
    EXPECT_EQ(power.Status(), "Verified");
    power.Activate();
    EXPECT_EQ(power.Status(), "ActivationPending");
    EXPECT_EQ(power.Version(), "1.0.0");
    power.Reset();
    EXPECT_EQ(power.Version(), "2.0.0");
    EXPECT_EQ(power.Status(), "Idle");
    power.Reset();
    EXPECT_EQ(power.Version(), "2.0.0") << "an ordinary reset changes nothing";
}

TEST(Firmware, updatesTakeTurnsWithTheSlots)
{
    SPoweredRig power;
    for (const std::string version : {"2.0.0", "3.0.0", "1.5.0"})
    {
        Update(power, MakeFirmware(version, "Inspector", 100));
        power.Reset();
        EXPECT_EQ(power.Version(), version);
    }
}

TEST(Firmware, withoutActivationTheOldOneGoesOn)
{
    SPoweredRig power;
    ASSERT_EQ(power.Firmware().Upload(MakeFirmware("2.0.0", "Inspector", 100)), "Success");
    power.Reset();
    EXPECT_EQ(power.Version(), "1.0.0");
    EXPECT_EQ(power.Status(), "Verified");
    power.Activate();
    power.Reset();
    EXPECT_EQ(power.Version(), "2.0.0");
}

TEST(Firmware, isBeingReceivedWhileTheFileIsOpen)
{
    SPoweredRig power;
    ASSERT_EQ(power.Firmware().DoOpen(CFileClient::ModeWrite), "Success");
    EXPECT_EQ(power.Status(), "Receiving");
    EXPECT_THROW(power.Activate(), GenICam::AccessException);
    EXPECT_EQ(power.Firmware().Do(CFileClient::Close), "Success");
    EXPECT_EQ(power.Status(), "Idle") << "nothing came";
}

TEST(Firmware, aDamagedImageIsRefusedWhenItIsClosed)
{
    SPoweredRig power;
    Image image = MakeFirmware("2.0.0", "Inspector", 1000);
    image[700] ^= 1;
    EXPECT_EQ(power.Firmware().Upload(image), "Failure");
    EXPECT_EQ(power.Status(), "Invalid");
    EXPECT_THROW(power.Activate(), GenICam::AccessException);
    power.Reset();
    EXPECT_EQ(power.Version(), "1.0.0");
    EXPECT_EQ(power.Firmware().Upload(MakeFirmware("2.0.0", "Inspector", 1000)), "Success") << "it can be tried again";
}

TEST(Firmware, ofAnotherModelIsRefused)
{
    SPoweredRig power;
    EXPECT_EQ(power.Firmware().Upload(MakeFirmware("2.0.0", "Watcher", 1000)), "Failure");
    EXPECT_EQ(power.Status(), "Invalid");
}

TEST(Firmware, whatIsDamagedAfterItsActivationIsNotBooted)
{
    SPoweredRig power;
    Update(power, MakeFirmware("2.0.0", "Inspector", 1000));
    power.flash->firmware.Inactive().image[500] ^= 1;
    power.Reset();
    EXPECT_EQ(power.Version(), "1.0.0");
    EXPECT_EQ(power.Status(), "Invalid");
}

TEST(Firmware, whatDoesNotBootFallsBack)
{
    SPoweredRig power;
    Update(power, MakeFirmware("2.0.0", "Inspector", 1000, true));
    EXPECT_EQ(power.Status(), "ActivationPending");
    power.Reset();
    EXPECT_EQ(power.Version(), "1.0.0");
    EXPECT_EQ(power.Status(), "Invalid");
    power.Reset();
    EXPECT_EQ(power.Version(), "1.0.0");
}

TEST(Firmware, anUploadTakesBackAnActivation)
{
    SPoweredRig power;
    Update(power, MakeFirmware("2.0.0", "Inspector", 1000));
    ASSERT_EQ(power.Firmware().DoOpen(CFileClient::ModeWrite), "Success");
    power.Reset();
    EXPECT_EQ(power.Version(), "1.0.0");
    EXPECT_EQ(power.Status(), "Invalid");
}

TEST(Firmware, deletingTakesBackAnActivation)
{
    SPoweredRig power;
    Update(power, MakeFirmware("2.0.0", "Inspector", 1000));
    EXPECT_EQ(power.Firmware().Do(CFileClient::Delete), "Success");
    EXPECT_EQ(power.Status(), "Idle");
    power.Reset();
    EXPECT_EQ(power.Version(), "1.0.0");
}

TEST(Firmware, anUploadOfAnApplicationThatLeftIsInvalid)
{
    SPoweredRig power;
    ASSERT_EQ(power.Firmware().DoOpen(CFileClient::ModeWrite), "Success");
    power.rig->camera.AbandonFiles();
    EXPECT_EQ(power.Status(), "Invalid");
    EXPECT_EQ(power.Firmware().Upload(MakeFirmware("2.0.0", "Inspector", 10)), "Success");
}

TEST(Firmware, powerLostInAnyFileOperationLeavesTheOldOne)
{
    const Image image = MakeFirmware("2.0.0", "Inspector", 1500);
    const std::uint32_t operations = 1 + (static_cast<std::uint32_t>(image.size()) + 511) / 512 + 1;
    for (std::uint32_t nth = 1; nth <= operations; ++nth)
    {
        Simulator::SCameraConfig config = SPoweredRig::Config();
        config.faults.powerLossAtFileOperation = nth;
        SPoweredRig power(config);
        EXPECT_THROW(Update(power, image), GenICam::RuntimeException) << nth;
        EXPECT_TRUE(power.rig->camera.HasLostPower());
        EXPECT_EQ(power.resets, 1) << "whoever owns it hears of it";
        EXPECT_THROW(power.Firmware().Upload(image), GenICam::RuntimeException) << "it does not answer any more";
        power.Reset();
        EXPECT_EQ(power.Version(), "1.0.0") << nth;
        EXPECT_EQ(power.Status(), "Invalid") << nth;
        Update(power, image); // the fault struck once
        power.Reset();
        EXPECT_EQ(power.Version(), "2.0.0") << nth;
    }
}

TEST(Firmware, powerLostBeforeAnyRegisterWriteLeavesTheOldOne)
{
    const Image image = MakeFirmware("2.0.0", "Inspector", 1500);
    std::uint32_t writes = 0;
    for (std::string version = "1.0.0"; version == "1.0.0"; ++writes)
    {
        Simulator::SCameraConfig config = SPoweredRig::Config();
        config.faults.powerLossAtWrite = writes + 1;
        SPoweredRig power(config);
        try
        {
            Update(power, image);
        }
        catch (const GenICam::RuntimeException&)
        {
            EXPECT_TRUE(power.rig->camera.HasLostPower());
        }
        const bool isDone = !power.rig->camera.HasLostPower();
        power.Reset();
        version = power.Version();
        EXPECT_EQ(version, isDone ? "2.0.0" : "1.0.0") << "at write " << writes + 1;
        ASSERT_LT(writes, 100U);
    }
    EXPECT_GT(writes, 20U) << "each step of the update is one of them";
}

TEST(Firmware, anUploadIsContinuedAfterALossOfPower)
{
    const Image image = MakeFirmware("2.0.0", "Inspector", 800);
    Simulator::SCameraConfig config = SPoweredRig::Config();
    config.faults.powerLossAtFileOperation = 3; // open, 512 bytes, half of the rest
    SPoweredRig power(config);
    EXPECT_THROW(Update(power, image), GenICam::RuntimeException);
    power.Reset();
    CFileClient file = power.Firmware();
    const std::uint32_t kept = file.Size();
    EXPECT_EQ(kept, 512 + (image.size() - 512) / 2);
    ASSERT_EQ(file.DoOpen(CFileClient::ModeReadWrite), "Success");
    EXPECT_EQ(power.Status(), "Receiving");
    ASSERT_EQ(file.DoWrite(kept, Image(image.begin() + kept, image.end())), "Success");
    EXPECT_EQ(file.Do(CFileClient::Close), "Success");
    EXPECT_EQ(power.Status(), "Verified");
}

TEST(Firmware, aResetIntoItHasABootTimeOfItsOwn)
{
    Simulator::SCameraConfig config = SPoweredRig::Config();
    config.bootTimeMs = 100;
    config.firmwareBootTimeMs = 700;
    SPoweredRig power(config);
    EXPECT_EQ(power.rig->camera.GetAfterReset().bootTimeMs, 100U);
    Update(power, MakeFirmware("2.0.0", "Inspector", 10));
    EXPECT_EQ(power.rig->camera.GetAfterReset().bootTimeMs, 700U);
    power.Reset();
    EXPECT_EQ(power.rig->camera.GetAfterReset().bootTimeMs, 100U);
}

TEST(Firmware, whatComesBackAfterAResetIsAFault)
{
    SPoweredRig power;
    EXPECT_EQ(power.rig->camera.GetAfterReset().what, EAfterReset::Same);
    power.rig->camera.SetFeature("FaultAfterReset", "OtherSerial");
    EXPECT_EQ(power.rig->camera.GetAfterReset().what, EAfterReset::OtherSerial);
    EXPECT_EQ(power.rig->camera.GetAfterReset().config.serialNumber, "X-1");
    power.rig->camera.SetFeature("FaultAfterReset", "Never");
    EXPECT_EQ(power.rig->camera.GetAfterReset().what, EAfterReset::Never);
    EXPECT_EQ(power.rig->camera.GetAfterReset().config.serialNumber, "T-1");
}
