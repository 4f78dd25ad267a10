// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/enginecalls.h"

#include "genapi/exceptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <memory>

using namespace Velmo::GigE::Internal;
using namespace std::chrono_literals;

namespace
{

/** A call of the engine that the camera keeps waiting until the test lets it end. */
struct SBlockedCall
{
    std::promise<void> begun;
    std::promise<void> mayEnd;
    std::promise<void> ended;

    void operator()()
    {
        begun.set_value();
        mayEnd.get_future().wait();
        ended.set_value();
    }
};

} // namespace

TEST(GigEEngineCalls, aCallEndsBeforeRunReturnsAndRunsOnAnotherThread)
{
    CEngineCalls calls("\"C\"", std::make_shared<CRemoval>());
    std::thread::id thread;
    for (int i = 0; i < 3; ++i)
    {
        calls.Run("Reading failed", [&thread] { thread = std::this_thread::get_id(); });
        EXPECT_NE(thread, std::thread::id());
        EXPECT_NE(thread, std::this_thread::get_id());
    }
}

TEST(GigEEngineCalls, whatACallHoldsIsGoneWhenRunReturns)
{
    CEngineCalls calls("\"C\"", std::make_shared<CRemoval>());
    const auto pHeld = std::make_shared<int>();
    calls.Run("Reading failed", [pHeld] { ++*pHeld; });
    EXPECT_EQ(pHeld.use_count(), 1);
}

TEST(GigEEngineCalls, oneThatTakesTooLongLosesTheCameraAndKeepsNobody)
{
    const auto pRemoval = std::make_shared<CRemoval>();
    const auto pBlocked = std::make_shared<SBlockedCall>();
    {
        CEngineCalls calls("\"C\"", pRemoval);
        try
        {
            calls.Run(
                "Writing failed", [pBlocked] { (*pBlocked)(); }, 1ms);
            FAIL() << "it waited";
        }
        catch (const GenICam::TimeoutException& e)
        {
            EXPECT_THAT(e.GetDescription(), ::testing::AllOf(::testing::StartsWith("Writing failed: "),
                                                             ::testing::HasSubstr("keeps asking for more time")));
        }
        EXPECT_TRUE(pRemoval->IsLost());
        bool isRun = false;
        EXPECT_THROW(calls.Run("Writing failed", [&isRun] { isRun = true; }), GenICam::TimeoutException);
        EXPECT_FALSE(isRun);
        pBlocked->begun.get_future().wait();
    } // ends though the call has not
    pBlocked->mayEnd.set_value();
    EXPECT_EQ(pBlocked->ended.get_future().wait_for(60s), std::future_status::ready);
}
