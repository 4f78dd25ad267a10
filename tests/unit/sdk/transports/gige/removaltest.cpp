// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/removal.h"
#include "transports/gige/internal/reaper.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <string>
#include <thread>

using namespace Velmo::GigE::Internal;
using namespace std::chrono_literals;

TEST(GigERemoval, bothHandlersRunOnceAndInOrder)
{
    CRemoval removal;
    std::string order;
    removal.SetHandler([&order] { order += "user "; });
    removal.Arm([&order] { order += "first "; });
    removal.Report();
    removal.Report();
    EXPECT_EQ(order, "first user ");
    EXPECT_TRUE(removal.IsRemoved());
}

TEST(GigERemoval, nothingIsToldOfAClosedCamera)
{
    CRemoval removal;
    bool isTold = false;
    removal.SetHandler([&isTold] { isTold = true; });
    removal.Arm([&isTold] { isTold = true; });
    removal.Disarm();
    removal.Report();
    EXPECT_FALSE(isTold);
    EXPECT_FALSE(removal.IsRemoved());
}

TEST(GigERemoval, takingTheHandlerAwayWaitsForTheOneThatRuns)
{
    CRemoval removal;
    std::promise<void> entered;
    std::promise<void> mayEnd;
    std::atomic<bool> isEnded{false};
    removal.SetHandler(
        [&]
        {
            entered.set_value();
            mayEnd.get_future().wait();
            isEnded = true;
        });
    removal.Arm([] {});
    std::thread teller([&removal] { removal.Report(); });
    entered.get_future().wait();
    auto taken = std::async(std::launch::async,
                            [&]
                            {
                                removal.SetHandler(nullptr);
                                return isEnded.load();
                            });
    EXPECT_EQ(taken.wait_for(50ms), std::future_status::timeout);
    mayEnd.set_value();
    EXPECT_TRUE(taken.get());
    teller.join();
}

TEST(GigERemoval, handlerMayTakeItselfAway)
{
    CRemoval removal;
    removal.SetHandler(
        [&removal]
        {
            removal.Disarm();
            removal.SetHandler(nullptr);
        });
    removal.Arm([] {});
    removal.Report();
    EXPECT_TRUE(removal.IsRemoved());
}

TEST(GigEReaper, workIsDoneInOrderBeforeTheReaperGoes)
{
    std::string order;
    {
        CReaper reaper;
        for (const char* item : {"a", "b", "c"})
        {
            reaper.Add(1, [&order, item] { order += item; });
        }
    }
    EXPECT_EQ(order, "abc");
}

TEST(GigEReaper, aCameraThatComesToNoEndKeepsOnlyItsOwnWorkWaiting)
{
    std::promise<void> begun;
    std::promise<void> goOn;
    std::string order;
    CReaper reaper;
    reaper.Add(1,
               [&begun, blocked = goOn.get_future().share(), &order]
               {
                   begun.set_value();
                   blocked.wait();
                   order += '1';
               });
    reaper.Add(1, [&order] { order += '2'; });
    begun.get_future().wait();
    reaper.Add(3, [&order] { order += 'a'; });
    reaper.Add(3, [&order] { order += 'b'; });
    EXPECT_TRUE(reaper.IsBusyWith(1));
    EXPECT_FALSE(reaper.IsBusyWith(4));
    EXPECT_TRUE(reaper.WaitFor(3, std::chrono::seconds(60)));
    EXPECT_FALSE(reaper.IsBusyWith(3));
    EXPECT_FALSE(reaper.WaitFor(1, std::chrono::milliseconds(1)));
    EXPECT_EQ(order, "ab");
    goOn.set_value();
    EXPECT_TRUE(reaper.WaitFor(1, std::chrono::seconds(60)));
    EXPECT_EQ(order, "ab12");
}

TEST(GigEReaper, itsEndDoesNotWaitForEver)
{
    struct SShared
    {
        std::promise<void> goOn;
        std::promise<void> done;
    };
    const auto pShared = std::make_shared<SShared>();
    {
        CReaper reaper(std::chrono::milliseconds(10));
        reaper.Add(1,
                   [pShared]
                   {
                       pShared->goOn.get_future().wait();
                       pShared->done.set_value();
                   });
    }
    auto done = pShared->done.get_future();
    EXPECT_EQ(done.wait_for(0ms), std::future_status::timeout);
    pShared->goOn.set_value();
    EXPECT_EQ(done.wait_for(60s), std::future_status::ready) << "what was left behind must go on";
}

TEST(GigEReaper, nothingToDoIsNotAwaited)
{
    CReaper reaper;
    EXPECT_TRUE(reaper.WaitFor(1, std::chrono::milliseconds(0)));
}
