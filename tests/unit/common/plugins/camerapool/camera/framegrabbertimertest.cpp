// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/framegrabbertimer.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <gtest/gtest.h>

using Plugin::CameraPool::Internal::CFrameGrabberTimer;
using Test::waitUntil;

TEST(FrameGrabberTimer, expiresOnceOneIntervalAfterItsStart)
{
    CFrameGrabberTimer timer;
    QSignalSpy expired(&timer, &QTimer::timeout);
    QElapsedTimer clock;
    clock.start();
    timer.postpone(100);
    ASSERT_TRUE(expired.wait(30000));
    EXPECT_GE(clock.elapsed(), 90);
    EXPECT_FALSE(timer.isActive());
    EXPECT_FALSE(expired.wait(250));
}

TEST(FrameGrabberTimer, postponingCountsFromTheLastCall)
{
    CFrameGrabberTimer timer;
    QSignalSpy expired(&timer, &QTimer::timeout);
    QElapsedTimer sinceFirst;
    sinceFirst.start();
    timer.postpone(1500);
    ASSERT_FALSE(waitUntil([&] { return expired.count() > 0; }, 500));
    QElapsedTimer sinceLast;
    sinceLast.start();
    timer.postpone(1500);
    ASSERT_TRUE(expired.wait(30000));
    EXPECT_GE(sinceLast.elapsed(), 1400);
    EXPECT_GE(sinceFirst.elapsed(), 1900);
    EXPECT_EQ(expired.count(), 1);
}

TEST(FrameGrabberTimer, runsItsFullIntervalAgainAfterAPostponedRun)
{
    CFrameGrabberTimer timer;
    QSignalSpy expired(&timer, &QTimer::timeout);
    timer.postpone(1000);
    ASSERT_FALSE(waitUntil([&] { return expired.count() > 0; }, 300));
    timer.postpone(1000);
    ASSERT_TRUE(expired.wait(30000));
    QElapsedTimer clock;
    clock.start();
    timer.postpone(1000);
    ASSERT_TRUE(expired.wait(30000));
    EXPECT_GE(clock.elapsed(), 930);
}
