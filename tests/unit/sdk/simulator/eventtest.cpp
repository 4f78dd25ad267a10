// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "fakes.h"
#include "genapi/exceptions.h"
#include "genapi/inodemap.h"
#include "genapi/memoryport.h"

#include <gtest/gtest.h>

using SimulatorTest::SRig;
using Velmo::Gvcp::SEvent;

namespace
{

constexpr std::uint16_t FrameStart = 0x9001;
constexpr std::uint16_t ExposureStart = 0x9002;
constexpr std::uint16_t ExposureEnd = 0x9003;
constexpr std::uint16_t TestEvent = 0x9010;

struct SEventRig : SRig
{
    explicit SEventRig(const std::vector<const char*>& events) : SRig(Small())
    {
        for (const char* event : events)
        {
            camera.SetFeature("EventSelector", event);
            camera.SetFeature("EventNotification", "On");
        }
        camera.SetMessageHandler([this](const SEvent& event) { messages.push_back(event); });
    }
    std::vector<std::uint16_t> Ids() const
    {
        std::vector<std::uint16_t> ids;
        for (const SEvent& message : messages)
        {
            ids.push_back(message.id);
        }
        return ids;
    }

    std::vector<SEvent> messages;
};

using Ids = std::vector<std::uint16_t>;

} // namespace

TEST(Events, areOffUntilTheyAreSwitchedOn)
{
    SEventRig rig({});
    rig.Start();
    rig.RunFrames(3);
    rig.camera.SetFeature("TestEventGenerate", "1");
    EXPECT_EQ(rig.sink.seen.size(), 3U);
    EXPECT_EQ(rig.Ids(), Ids{});
}

TEST(Events, ofAFrameTellItsNumberAndTheirTime)
{
    SEventRig rig({"FrameStart", "ExposureStart", "ExposureEnd"});
    rig.camera.SetFeature("ExposureTime", "2000");
    rig.Start();
    rig.RunFrames(2); // to the frame's time, then to the end of its exposure
    ASSERT_EQ(rig.Ids(), (Ids{FrameStart, ExposureStart, ExposureEnd}));
    ASSERT_EQ(rig.sink.seen.size(), 1U);
    const std::uint64_t began = rig.sink.seen[0].frame.timestamp;
    EXPECT_EQ(rig.messages[0].timestamp, began);
    EXPECT_EQ(rig.messages[1].timestamp, began);
    EXPECT_EQ(rig.messages[2].timestamp, began + 2'000'000);
    for (const SEvent& message : rig.messages)
    {
        EXPECT_EQ(message.streamChannel, 0);
        EXPECT_EQ(message.blockId, 1U);
        EXPECT_EQ(message.data, (std::vector<std::uint8_t>{0, 0, 0, 0, 0, 0, 0, 1}));
    }
}

TEST(Events, endOfTheExposureIsToldAlsoAfterTheAcquisitionEnded)
{
    SEventRig rig({"ExposureEnd"});
    rig.camera.SetFeature("AcquisitionMode", "SingleFrame");
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.Ids(), Ids{});
    rig.RunFrames(1);
    EXPECT_EQ(rig.Ids(), Ids{ExposureEnd});
    EXPECT_EQ(rig.camera.Produce(), INT64_MAX);
}

TEST(Events, testIsToldAtOnceAndBelongsToNoStream)
{
    SEventRig rig({"Test"});
    rig.camera.SetFeature("TestEventGenerate", "1");
    ASSERT_EQ(rig.Ids(), Ids{TestEvent});
    EXPECT_EQ(rig.messages[0].streamChannel, 0xFFFF);
    EXPECT_TRUE(rig.messages[0].data.empty());
}

TEST(Events, selectorTellsThemApart)
{
    SEventRig rig({"ExposureStart"});
    rig.camera.SetFeature("EventSelector", "FrameStart");
    EXPECT_EQ(rig.camera.GetFeature("EventNotification"), "Off");
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.Ids(), Ids{ExposureStart});
}

TEST(Events, ofARemovedCameraAreNotTold)
{
    SEventRig rig({"ExposureEnd"});
    rig.Start();
    rig.RunFrames(1);
    rig.camera.Remove();
    rig.clock.Advance(1'000'000'000);
    rig.camera.Produce();
    EXPECT_EQ(rig.Ids(), Ids{});
}

TEST(Events, valuesAreReadWhereTheDescriptionSays)
{
    SEventRig rig({"ExposureEnd"});
    rig.Start();
    rig.RunFrames(2);
    ASSERT_EQ(rig.messages.size(), 1U);
    const Velmo::Gvcp::Bytes message = Velmo::Gvcp::EncodeEventDataCmd(1, rig.messages[0], true);
    const std::string xml = rig.camera.GetDescription();
    const auto map = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap();
    const auto integer = [&](const char* name)
    {
        return GenApi::CIntegerPtr(map->GetNode(name));
    };
    ASSERT_TRUE(integer("EventExposureEnd").IsValid());
    EXPECT_EQ(map->GetNode("EventExposureEnd")->GetEventID(), "9003");
    EXPECT_FALSE(GenApi::IsReadable(integer("EventExposureEndFrameID").Get()));
    map->AttachEvent("9003", message.data() + Velmo::Gvcp::HeaderBytes, message.size() - Velmo::Gvcp::HeaderBytes);
    EXPECT_EQ(integer("EventExposureEnd")->GetValue(), ExposureEnd);
    EXPECT_EQ(integer("EventExposureEndTimestamp")->GetValue(), std::int64_t(rig.messages[0].timestamp));
    EXPECT_EQ(integer("EventExposureEndFrameID")->GetValue(), 1);
    EXPECT_FALSE(GenApi::IsReadable(integer("EventExposureStart").Get()));
}
