// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/interrupt.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <csignal>

namespace
{

constexpr int limitMs = 5000;

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
