// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"

#include "velmo/log.h"
#include "velmo/velmo.h"

#include <linux/capability.h>
#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

using namespace Velmo;
using Test::CCameraTest;
using Test::EStep;

namespace
{

struct SScheduling
{
    int policy = -1;
    int priority = -1;
    friend bool operator==(const SScheduling& left, const SScheduling& right)
    {
        return left.policy == right.policy && left.priority == right.priority;
    }
    friend std::ostream& operator<<(std::ostream& stream, const SScheduling& scheduling)
    {
        return stream << "policy " << scheduling.policy << ", priority " << scheduling.priority;
    }
};

SScheduling OfThisThread()
{
    SScheduling scheduling;
    sched_param parameters{};
    pthread_getschedparam(pthread_self(), &scheduling.policy, &parameters);
    scheduling.priority = parameters.sched_priority;
    return scheduling;
}

/** What a thread has after it asked the system itself for that priority. */
SScheduling AfterAskingFor(int priority)
{
    SScheduling scheduling;
    std::thread(
        [&]
        {
            sched_param parameters{};
            parameters.sched_priority = priority;
            pthread_setschedparam(pthread_self(), SCHED_RR, &parameters);
            scheduling = OfThisThread();
        })
        .join();
    return scheduling;
}

/** Takes the right to real-time priorities from the threads that this one makes from now on. */
bool ForbidRealTime()
{
    const rlimit none{0, 0};
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};
    if (setrlimit(RLIMIT_RTPRIO, &none) != 0 || syscall(SYS_capget, &header, data) != 0)
    {
        return false;
    }
    data[0].effective &= ~(1U << CAP_SYS_NICE);
    data[0].permitted &= ~(1U << CAP_SYS_NICE);
    return syscall(SYS_capset, &header, data) == 0 && AfterAskingFor(10).policy == SCHED_OTHER;
}

} // namespace

class Priority : public CCameraTest
{
protected:
    /** The scheduling of the thread that calls the image handlers. */
    SScheduling OfTheLoop()
    {
        recorder.At("ImageGrabbed", [this](CInstantCamera&) { m_ofTheLoop = OfThisThread(); });
        StartLoop();
        EXPECT_TRUE(transport->DeliverImage(serial));
        EXPECT_TRUE(recorder.WaitFor("ImageGrabbed"));
        camera->StopGrabbing();
        return m_ofTheLoop;
    }

private:
    SScheduling m_ofTheLoop; // the recorder goes on writing it in later grabs
};

TEST_F(Priority, rangeIsThatOfTheSystem)
{
    int lowest = 0;
    int highest = 0;
    ASSERT_TRUE(GetRTThreadPriorityCapabilities(&lowest, &highest));
    EXPECT_EQ(sched_get_priority_min(SCHED_RR), lowest);
    EXPECT_EQ(sched_get_priority_max(SCHED_RR), highest);
    EXPECT_TRUE(GetRTThreadPriorityCapabilities(nullptr, nullptr));
}

TEST_F(Priority, loopThatTakesFromTheStreamRunsAtTheEnginesPriorityWhereThatIsPermitted)
{
    Open();
    camera->InternalGrabEngineThreadPriorityOverride.SetValue(true);
    camera->InternalGrabEngineThreadPriority.SetValue(50);
    camera->GrabLoopThreadPriorityOverride.SetValue(true);
    camera->GrabLoopThreadPriority.SetValue(7);
    EXPECT_EQ(AfterAskingFor(50), OfTheLoop());
}

TEST_F(Priority, loopRunsAtItsOwnPriorityWhereThatIsPermitted)
{
    Open();
    camera->GrabLoopThreadPriorityOverride.SetValue(true);
    camera->GrabLoopThreadPriority.SetValue(7);
    EXPECT_EQ(AfterAskingFor(7), OfTheLoop());
}

TEST_F(Priority, loopWithoutAnOverrideRunsAsTheThreadThatStartedIt)
{
    Open();
    EXPECT_EQ(OfThisThread(), OfTheLoop());
}

TEST_F(Priority, priorityBelowTheSystemsRangeIsBroughtIntoIt)
{
    Open();
    camera->GrabLoopThreadPriorityOverride.SetValue(true);
    camera->GrabLoopThreadPriority.SetValue(0);
    EXPECT_EQ(AfterAskingFor(sched_get_priority_min(SCHED_RR)), OfTheLoop());
}

TEST_F(Priority, engineAndLoopHaveAPriorityEach)
{
    Open();
    camera->InternalGrabEngineThreadPriorityOverride.SetValue(true);
    camera->InternalGrabEngineThreadPriority.SetValue(50);
    camera->GrabLoopThreadPriorityOverride.SetValue(true);
    camera->GrabLoopThreadPriority.SetValue(7);
    SScheduling engine;
    SScheduling loop;
    std::atomic<bool> seen{false};
    transport->SetHook(EStep::RetrieveResult,
                       [&](const std::string&)
                       {
                           if (!seen.exchange(true))
                           {
                               engine = OfThisThread();
                           }
                       });
    recorder.At("ImageGrabbed", [&](CInstantCamera&) { loop = OfThisThread(); });
    StartLoop(GrabStrategy_LatestImageOnly);
    EXPECT_TRUE(transport->DeliverImage(serial));
    EXPECT_TRUE(recorder.WaitFor("ImageGrabbed"));
    camera->StopGrabbing();
    transport->SetHook(EStep::RetrieveResult, nullptr);
    EXPECT_EQ(AfterAskingFor(50), engine);
    EXPECT_EQ(AfterAskingFor(7), loop);
}

using PriorityDeathTest = Priority;

TEST_F(PriorityDeathTest, refusalIsLoggedInExactlyOneLineAndTheGrabGoesOn)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            std::atomic<int> lines{0};
            SetLogSink(
                [&](const SLogRecord& record)
                {
                    const bool isRefusal = record.level == ELogLevel::Warning && record.category == "velmo.camera" &&
                                           record.text.find("real-time priority 50 is refused") != std::string::npos;
                    lines += isRefusal ? 1 : 100; // any other line is one too many
                });
            if (!ForbidRealTime())
            {
                std::_Exit(101);
            }
            Open();
            camera->InternalGrabEngineThreadPriorityOverride.SetValue(true);
            camera->InternalGrabEngineThreadPriority.SetValue(50);
            const bool isOrdinary = OfTheLoop().policy == SCHED_OTHER;
            StartLoop(GrabStrategy_LatestImages);
            transport->DeliverImage(serial);
            const bool grabbed = recorder.WaitFor("ImageGrabbed", 2);
            camera->StopGrabbing();
            std::_Exit(isOrdinary && grabbed ? lines.load() : 102);
        },
        ::testing::ExitedWithCode(1), "");
}
