// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <functional>

namespace Benchmarks
{

/** One way for an image: how it is sent off, and where it arrives. */
struct SWay
{
    std::function<void(int number)> sendImage;              // on the grab thread; numbers count from 1
    std::function<void(std::function<void()>)> whenArrived; // called for each image on the main thread, in order
};

struct SThroughput
{
    double imagesPerSecond = 0;
    double cpuMicrosecondsPerImage = 0;  // of both threads
    double grabMicrosecondsPerImage = 0; // processor time of the grab thread
    double allocationsPerImage = 0;
};

struct SLatency
{
    double p50Us = 0;
    double p99Us = 0;
};

/** As fast as it goes, the two threads on processors of their own. Ends the program when images are lost. */
SThroughput measureThroughput(const SWay& way);
/**
 * Each way at that pace, image by image in turns, the threads wherever the system puts them: what the machine does at
 * the time meets both alike. Ends the program when images are lost.
 */
std::array<SLatency, 2> measureLatencies(const std::array<SWay, 2>& ways, int imagesPerSecond);
/** Processor time of the grab thread for one image that nobody receives, microseconds. */
double measureSending(const std::function<void(int number)>& sendImage);

} // namespace Benchmarks
