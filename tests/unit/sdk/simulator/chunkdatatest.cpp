// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "fakes.h"
#include "genapi/exceptions.h"
#include "protocols/chunks.h"
#include "simulator/internal/chunkkinds.h"
#include "simulator/registers.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <optional>

namespace Chunks = Velmo::Chunks;
using Simulator::EFramePayload;
using Simulator::SCameraConfig;
using Simulator::Internal::ChunkKinds;
using SimulatorTest::CRecordingSink;
using SimulatorTest::SRig;

namespace
{

constexpr std::size_t ImageBytes = 64 * 48;

SCameraConfig WithChunks(std::initializer_list<const char*> chunks)
{
    SCameraConfig config = SRig::Small();
    config.features["ChunkModeActive"] = "true";
    for (const char* name : chunks)
    {
        config.features[std::string("ChunkEnable[") + name + "]"] = "true";
    }
    return config;
}

SCameraConfig WithAllChunks()
{
    SCameraConfig config = WithChunks({});
    for (const auto& kind : ChunkKinds())
    {
        config.features[std::string("ChunkEnable[") + kind.name + "]"] = "true";
    }
    return config;
}

/** The data of each chunk by ID; nothing when the payload cannot be read. */
std::optional<std::map<std::uint32_t, std::vector<std::uint8_t>>> Read(const CRecordingSink::SSeen& seen)
{
    Chunks::CReader reader(seen.bytes.data(), seen.bytes.size(), Chunks::EByteOrder::Big);
    std::map<std::uint32_t, std::vector<std::uint8_t>> chunks;
    Chunks::SChunk chunk;
    while (reader.Next(chunk))
    {
        chunks[chunk.id].assign(chunk.pData, chunk.pData + chunk.bytes);
    }
    return reader.GetState() == Chunks::CReader::EState::Ok ? std::optional(chunks) : std::nullopt;
}

std::uint64_t Integer(const std::vector<std::uint8_t>& bytes)
{
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes)
    {
        value = value << 8U | byte;
    }
    return value;
}

double Float(const std::vector<std::uint8_t>& bytes)
{
    const std::uint64_t bits = Integer(bytes);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::uint32_t IdOf(const char* name)
{
    for (const auto& kind : ChunkKinds())
    {
        if (std::strcmp(kind.name, name) == 0)
        {
            return kind.id;
        }
    }
    ADD_FAILURE() << name;
    return 0;
}

} // namespace

TEST(ChunkData, isOffAtFirst)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.sink.seen.at(0).frame.payload, EFramePayload::Image);
    EXPECT_EQ(rig.sink.seen.at(0).bytes.size(), ImageBytes);
}

TEST(ChunkData, chunkModeAloneSendsTheImageAsAChunk)
{
    SRig rig(WithChunks({}));
    EXPECT_EQ(rig.camera.GetPayloadBytes(), ImageBytes + Chunks::TrailerBytes);
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.sink.seen.at(0).frame.payload, EFramePayload::ChunkData);
    const auto chunks = Read(rig.sink.seen[0]);
    ASSERT_TRUE(chunks);
    ASSERT_EQ(chunks->size(), 1U);
    EXPECT_EQ(chunks->at(Chunks::ImageChunkId).size(), ImageBytes);
}

TEST(ChunkData, theImageIsTheSameAsWithoutChunks)
{
    SRig plain;
    plain.Start();
    plain.RunFrames(1);
    SRig chunked(WithAllChunks());
    chunked.Start();
    chunked.RunFrames(1);
    EXPECT_EQ(Read(chunked.sink.seen.at(0))->at(Chunks::ImageChunkId), plain.sink.seen.at(0).bytes);
}

TEST(ChunkData, payloadSizeCountsTheEnabledChunks)
{
    SRig rig(WithChunks({"Timestamp"}));
    EXPECT_EQ(rig.camera.GetFeature("PayloadSize"), std::to_string(ImageBytes + 8 + 16));
    rig.camera.SetFeature("ChunkSelector", "Width");
    rig.camera.SetFeature("ChunkEnable", "true");
    EXPECT_EQ(rig.camera.GetFeature("PayloadSize"), std::to_string(ImageBytes + 8 + 16 + 12));
    rig.camera.SetFeature("ChunkModeActive", "false");
    EXPECT_EQ(rig.camera.GetFeature("PayloadSize"), std::to_string(ImageBytes));
}

TEST(ChunkData, framesHaveThePayloadSize)
{
    SRig rig(WithAllChunks());
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.sink.seen.at(0).bytes.size(), rig.camera.GetPayloadBytes());
}

TEST(ChunkData, everyChunkCarriesItsValue)
{
    SCameraConfig config = WithAllChunks();
    config.features["Width"] = "32";
    config.features["Height"] = "20";
    config.features["OffsetX"] = "8";
    config.features["OffsetY"] = "6";
    config.features["PixelFormat"] = "Mono12";
    config.features["ExposureTime"] = "1234.5";
    config.features["Gain"] = "3.25";
    config.features["BlackLevel"] = "1.5";
    SRig rig(config);
    rig.Start();
    rig.RunFrames(2);
    const auto& seen = rig.sink.seen.at(1);
    const auto chunks = Read(seen);
    ASSERT_TRUE(chunks);
    EXPECT_EQ(Integer(chunks->at(IdOf("Timestamp"))), seen.frame.timestamp);
    EXPECT_EQ(Integer(chunks->at(IdOf("FrameID"))), 2U);
    EXPECT_EQ(Float(chunks->at(IdOf("ExposureTime"))), 1234.5);
    EXPECT_EQ(Float(chunks->at(IdOf("Gain"))), 3.25);
    EXPECT_EQ(Float(chunks->at(IdOf("BlackLevel"))), 1.5);
    EXPECT_EQ(Integer(chunks->at(IdOf("Width"))), 32U);
    EXPECT_EQ(Integer(chunks->at(IdOf("Height"))), 20U);
    EXPECT_EQ(Integer(chunks->at(IdOf("OffsetX"))), 8U);
    EXPECT_EQ(Integer(chunks->at(IdOf("OffsetY"))), 6U);
    EXPECT_EQ(Integer(chunks->at(IdOf("PixelFormat"))), 0x01100005U);
}

TEST(ChunkData, theExposureIsThatOfTheFrame)
{
    SRig rig(WithChunks({"ExposureTime"}));
    rig.Start();
    for (const char* exposure : {"100", "200", "300"})
    {
        rig.camera.SetFeature("ExposureTime", exposure);
        rig.RunFrames(1);
        EXPECT_EQ(Float(Read(rig.sink.seen.back())->at(IdOf("ExposureTime"))), std::stod(exposure));
    }
}

TEST(ChunkData, automaticExposureIsToldAsUsed)
{
    SRig rig(WithChunks({"ExposureTime"}));
    rig.camera.SetFeature("ExposureTime", "77");
    rig.camera.SetFeature("ExposureAuto", "Continuous");
    rig.Start();
    rig.RunFrames(1);
    const double told = Float(Read(rig.sink.seen.at(0))->at(IdOf("ExposureTime")));
    EXPECT_NE(told, 77.0);
    EXPECT_EQ(std::to_string(told), rig.camera.GetFeature("ExposureTime"));
}

TEST(ChunkData, theSelectorChoosesWhichChunkIsEnabled)
{
    SRig rig;
    rig.camera.SetFeature("ChunkSelector", "Gain");
    rig.camera.SetFeature("ChunkEnable", "true");
    rig.camera.SetFeature("ChunkSelector", "BlackLevel");
    EXPECT_EQ(rig.camera.GetFeature("ChunkEnable"), "false");
    rig.camera.SetFeature("ChunkSelector", "Gain");
    EXPECT_EQ(rig.camera.GetFeature("ChunkEnable"), "true");
}

TEST(ChunkData, theImageChunkStaysOnWhateverIsWritten)
{
    SRig rig;
    rig.camera.SetFeature("ChunkSelector", "Image");
    EXPECT_EQ(rig.camera.GetFeature("ChunkEnable"), "true");
    rig.camera.SetFeature("ChunkEnable", "false");
    EXPECT_EQ(rig.camera.GetFeature("ChunkEnable"), "true");
    EXPECT_THROW(rig.camera.SetFeature("ChunkEnable", "2"), GenICam::GenericException);
}

TEST(ChunkData, switchesAreLockedWhileAcquiringButNotTheSelector)
{
    SRig rig;
    rig.Start();
    EXPECT_THROW(rig.camera.SetFeature("ChunkModeActive", "true"), GenICam::AccessException);
    rig.camera.SetFeature("ChunkSelector", "Gain");
    EXPECT_THROW(rig.camera.SetFeature("ChunkEnable", "true"), GenICam::AccessException);
}

TEST(ChunkData, switchesAreLockedWhileAStreamRuns)
{
    SRig rig;
    rig.camera.SetTransportLocked(true);
    EXPECT_THROW(rig.camera.SetFeature("ChunkModeActive", "true"), GenICam::AccessException);
    rig.camera.SetTransportLocked(false);
    rig.camera.SetFeature("ChunkModeActive", "true");
}

TEST(ChunkData, userSetsKeepEverySwitch)
{
    SRig rig(WithChunks({"Gain", "PixelFormat"}));
    rig.camera.SetFeature("UserSetSelector", "UserSet1");
    rig.camera.SetFeature("UserSetSave", "1");
    rig.camera.SetFeature("UserSetSelector", "Default");
    rig.camera.SetFeature("UserSetLoad", "1");
    EXPECT_EQ(rig.camera.GetFeature("ChunkModeActive"), "false");
    rig.camera.SetFeature("ChunkSelector", "PixelFormat");
    EXPECT_EQ(rig.camera.GetFeature("ChunkEnable"), "false");
    rig.camera.SetFeature("UserSetSelector", "UserSet1");
    rig.camera.SetFeature("UserSetLoad", "1");
    EXPECT_EQ(rig.camera.GetPayloadBytes(), ImageBytes + 8 + 16 + 12);
}

TEST(ChunkData, aFailedFrameHasNoChunks)
{
    SCameraConfig config = WithChunks({"Gain"});
    config.faults.failEveryNth = 1;
    SRig rig(config);
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.sink.seen.at(0).bytes.size(), ImageBytes / 2);
}

TEST(ChunkData, aMissingChunkLeavesTheOthers)
{
    SRig rig(WithChunks({"Gain", "Width"}));
    rig.camera.SetFeature("FaultChunkMissing", "true");
    rig.Start();
    rig.RunFrames(1);
    const auto chunks = Read(rig.sink.seen.at(0));
    ASSERT_TRUE(chunks);
    EXPECT_EQ(chunks->count(IdOf("Gain")), 1U);
    EXPECT_EQ(chunks->count(IdOf("Width")), 0U);
}

TEST(ChunkData, theImageIsNeverTheMissingChunk)
{
    SCameraConfig config = WithChunks({});
    config.faults.chunkMissing = true;
    SRig rig(config);
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(Read(rig.sink.seen.at(0))->size(), 1U);
    EXPECT_TRUE(rig.camera.GetFaults().chunkMissing);
}

TEST(ChunkData, aLyingChunkMakesThePayloadUnreadable)
{
    SRig rig(WithChunks({"Gain"}));
    Simulator::SFaults faults;
    faults.chunkLies = true;
    rig.camera.SetFaults(faults);
    rig.Start();
    rig.RunFrames(1);
    EXPECT_FALSE(Read(rig.sink.seen.at(0)));
    EXPECT_TRUE(rig.camera.GetFaults().chunkLies);
}

TEST(ChunkData, anUnknownChunkInTheConfigurationIsRefused)
{
    SCameraConfig config = SRig::Small();
    config.features["ChunkEnable[Nonsense]"] = "true";
    EXPECT_THROW(SRig rig(config), GenICam::InvalidArgumentException);
}

TEST(ChunkData, oneWriteMaySwitchSeveralChunks)
{
    SRig rig(WithChunks({}));
    const std::uint8_t two[8] = {0, 0, 0, 1, 0, 0, 0, 1};
    rig.camera.Write(two, Simulator::Register::ChunkEnable + 4, sizeof two);
    EXPECT_EQ(rig.camera.GetPayloadBytes(), ImageBytes + 8 + 16 + 16);
}

TEST(ChunkData, aWriteIntoTheMiddleOfASwitchIsRefused)
{
    SRig rig;
    const std::uint8_t one[4] = {0, 0, 0, 1};
    EXPECT_THROW(rig.camera.Write(one, Simulator::Register::ChunkEnable + 6, sizeof one), GenICam::AccessException);
}
