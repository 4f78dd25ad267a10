// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/eventdelivery.h"
#include "genapi/inodemap.h"
#include "support/waitbox.h"
#include "transport/log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using namespace Velmo;
using Test::CWaitBox;
using Transport::CEventDelivery;

namespace
{

constexpr std::uint16_t Known = 0x9001;
const std::string Xml = "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" "
                        "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
                        "MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\">"
                        "<IntReg Name=\"Value\"><EventID>9001</EventID><Address>2</Address><Length>2</Length>"
                        "<AccessMode>RO</AccessMode><pPort>EventPort</pPort><Endianess>BigEndian</Endianess></IntReg>"
                        "<Port Name=\"EventPort\"><EventID>9001</EventID></Port>"
                        "<Port Name=\"Device\"/></RegisterDescription>";

class EventDelivery : public ::testing::Test
{
protected:
    EventDelivery() { m_parameters.Build(); }
    void OnValue(std::function<void(GenApi::INode*)> callback)
    {
        m_map->GetNode("Value")->RegisterCallback(std::move(callback));
    }
    std::int64_t Parameter(const char* name)
    {
        return GenApi::CIntegerPtr(m_software.Get()->GetNode(name))->GetValue();
    }
    std::string Status() { return GenApi::CEnumerationPtr(m_software.Get()->GetNode("Status"))->ToString().c_str(); }

    std::unique_ptr<GenApi::INodeMap> m_map = GenApi::CNodeMapFactory::FromData(Xml.data(), Xml.size()).CreateNodeMap();
    CWaitBox<std::int64_t> m_values; // before the delivery whose thread fills it
    CEventDelivery m_delivery{"'left'"};
    Transport::CSoftwareNodeMap m_software{"EventGrabber"};
    struct SBuild
    {
        CEventDelivery& delivery;
        Transport::CSoftwareNodeMap& map;
        void Build()
        {
            delivery.AddParameters(map);
            map.Build();
        }
    } m_parameters{m_delivery, m_software};
};

} // namespace

TEST_F(EventDelivery, firesCallbacksOnItsOwnThreadWhereTheValueIsThere)
{
    std::thread::id thread;
    OnValue(
        [&](GenApi::INode* pNode)
        {
            thread = std::this_thread::get_id();
            m_values.Put(GenApi::CIntegerPtr(pNode)->GetValue());
        });
    m_delivery.Start(*m_map);
    m_delivery.Push({Known, {0, 0, 0x12, 0x34}});
    EXPECT_EQ(m_values.Await(1), std::vector<std::int64_t>{0x1234});
    m_delivery.Stop();
    EXPECT_NE(thread, std::this_thread::get_id());
    EXPECT_EQ(Parameter("EventDeliveredCount"), 1);
}

TEST_F(EventDelivery, takesEventsOnlyWhileItRuns)
{
    OnValue([&](GenApi::INode*) { m_values.Put(0); });
    EXPECT_EQ(Status(), "Closed");
    m_delivery.Push({Known, {0, 0, 0, 1}});
    m_delivery.Start(*m_map);
    EXPECT_EQ(Status(), "Open");
    m_delivery.Stop();
    m_delivery.Push({Known, {0, 0, 0, 1}});
    EXPECT_EQ(m_values.Await(0).size(), 0U);
    m_delivery.Start(*m_map);
    m_delivery.Push({Known, {0, 0, 0, 1}});
    EXPECT_EQ(m_values.Await(1).size(), 1U);
}

TEST_F(EventDelivery, unknownAndShortEventsHarmNobody)
{
    OnValue(
        [&](GenApi::INode* pNode)
        {
            const GenApi::CIntegerPtr value(pNode);
            try
            {
                m_values.Put(value->GetValue());
            }
            catch (const GenICam::AccessException&)
            {
                m_values.Put(-1);
            }
        });
    m_delivery.Start(*m_map);
    m_delivery.Push({0x1234, {1, 2, 3}});
    m_delivery.Push({Known, {0, 0, 7}});
    m_delivery.Push({Known, {}});
    m_delivery.Push({Known, {0, 0, 0, 7}});
    EXPECT_EQ(m_values.Await(3), (std::vector<std::int64_t>{-1, -1, 7}));
}

TEST_F(EventDelivery, dropsWhatNoBufferIsLeftFor)
{
    GenApi::CIntegerPtr(m_software.Get()->GetNode("NumBuffer"))->SetValue(2);
    CWaitBox<int> entered;
    CWaitBox<int> released;
    OnValue(
        [&](GenApi::INode*)
        {
            entered.Put(0);
            released.Await(1);
        });
    m_delivery.Start(*m_map);
    m_delivery.Push({Known, {0, 0, 0, 1}});
    ASSERT_EQ(entered.Await(1).size(), 1U);
    for (int i = 0; i < 5; ++i)
    {
        m_delivery.Push({Known, {0, 0, 0, 1}});
    }
    EXPECT_EQ(Parameter("EventDroppedCount"), 3);
    released.Put(0);
    EXPECT_EQ(entered.Await(3).size(), 3U);
    m_delivery.Stop(); // the last callback may still be at the boxes
}

TEST_F(EventDelivery, callbackThatThrowsIsLoggedAndDoesNotEndIt)
{
    CWaitBox<std::string> lines;
    SetLogSink([&](const SLogRecord& record) { lines.Put(record.text); });
    OnValue([](GenApi::INode*) { throw std::runtime_error("no luck"); });
    m_delivery.Start(*m_map);
    m_delivery.Push({Known, {0, 0, 0, 1}});
    m_delivery.Push({Known, {0, 0, 0, 1}});
    const std::vector<std::string> logged = lines.Await(2);
    m_delivery.Stop();
    SetLogSink(nullptr);
    ASSERT_EQ(logged.size(), 2U);
    EXPECT_EQ(logged[1], "Camera 'left': handling the event 0x9001 failed: no luck");
}
