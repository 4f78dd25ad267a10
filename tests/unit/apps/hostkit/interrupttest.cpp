// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/interrupt.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <csignal>

namespace
{

constexpr int limitMs = 30000;

TEST(Interrupt, ctrlCBecomesOneSignalOfTheMainThread)
{
    HostKit::CInterrupt interrupt;
    QSignalSpy spy(&interrupt, &HostKit::CInterrupt::raised);
    std::raise(SIGINT);
    ASSERT_TRUE(spy.count() == 1 || spy.wait(limitMs));
    EXPECT_TRUE(interrupt.wasRaised());
}

TEST(Interrupt, aRequestToTerminateCountsToo)
{
    HostKit::CInterrupt interrupt;
    QSignalSpy spy(&interrupt, &HostKit::CInterrupt::raised);
    std::raise(SIGTERM);
    EXPECT_TRUE(spy.count() == 1 || spy.wait(limitMs));
}

TEST(Interrupt, aClosedTerminalCountsToo)
{
    HostKit::CInterrupt interrupt;
    QSignalSpy spy(&interrupt, &HostKit::CInterrupt::raised);
    std::raise(SIGHUP);
    EXPECT_TRUE(spy.count() == 1 || spy.wait(limitMs));
}

TEST(Interrupt, aClosedTerminalThatIsToBeIgnoredStaysIgnored)
{
    std::signal(SIGHUP, SIG_IGN);
    {
        const HostKit::CInterrupt interrupt;
        std::raise(SIGHUP);
        struct sigaction action = {};
        ASSERT_EQ(sigaction(SIGHUP, nullptr, &action), 0);
        EXPECT_EQ(action.sa_handler, SIG_IGN);
    }
    struct sigaction action = {};
    ASSERT_EQ(sigaction(SIGHUP, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_IGN);
    std::signal(SIGHUP, SIG_DFL);
}

void (*handlerOf(int number))(int)
{
    struct sigaction action = {};
    EXPECT_EQ(sigaction(number, nullptr, &action), 0);
    return action.sa_handler;
}

TEST(Interrupt, whilePatientEveryFurtherOneIsTold)
{
    HostKit::CInterrupt interrupt;
    QSignalSpy spy(&interrupt, &HostKit::CInterrupt::raised);
    interrupt.setPatient(true);
    int told = 0;
    for (const int number : {SIGINT, SIGINT, SIGTERM, SIGTERM, SIGHUP, SIGHUP})
    {
        ASSERT_NE(handlerOf(number), SIG_DFL) << "it would end the program";
        std::raise(number);
        ++told;
        ASSERT_TRUE(spy.count() == told || spy.wait(limitMs));
    }
    interrupt.setPatient(false);
    EXPECT_EQ(handlerOf(SIGINT), SIG_DFL) << "the next is not the first";
}

TEST(Interrupt, afterPatienceTheFirstIsStillTold)
{
    HostKit::CInterrupt interrupt;
    QSignalSpy spy(&interrupt, &HostKit::CInterrupt::raised);
    interrupt.setPatient(true);
    interrupt.setPatient(false);
    ASSERT_NE(handlerOf(SIGINT), SIG_DFL);
    std::raise(SIGINT);
    EXPECT_TRUE(spy.count() == 1 || spy.wait(limitMs));
    EXPECT_EQ(handlerOf(SIGINT), SIG_DFL);
}

TEST(Interrupt, theHandlersAreGoneAfterwards)
{
    {
        const HostKit::CInterrupt interrupt;
    }
    struct sigaction action = {};
    ASSERT_EQ(sigaction(SIGINT, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

} // namespace
