// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/pixelformats.h"
#include "simulator/simulator_testexport.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Simulator::Internal
{

/** What an image shows; equal ones share their bytes. */
struct SIMULATOR_TEST_EXPORT SImageKey
{
    std::uint32_t pfnc = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t offsetX = 0;
    std::uint32_t offsetY = 0;
    std::uint32_t sensorWidth = 1;
    std::uint32_t pattern = 0; // value of TestPattern
    bool isReversedX = false;
    double amplification = 1.0; // by gain and exposure
    double blackLevel = 0.0;    // part of full scale, 0 to 1

    bool operator<(const SImageKey& other) const;
};

class CSettings;
/** What the camera sees under its present settings. */
SImageKey MakeImageKey(const CSettings& settings, std::uint32_t sensorWidth);

/**
 * A prepared test image, from which the images of a moving scene are cut by lines: every pattern repeats after
 * LinePeriod lines, so a frame is one contiguous piece of memory that begins at a line below LinePeriod.
 * Samples of more than 8 bits are little-endian and use all significant bits. Threads: immutable.
 */
class SIMULATOR_TEST_EXPORT CTestImage
{
public:
    static constexpr std::uint32_t LinePeriod = 256;

    explicit CTestImage(const SImageKey& key);
    /** A shared image of that key: prepared if nobody holds one. Threads: any. */
    static std::shared_ptr<const CTestImage> Get(const SImageKey& key);

    /** The payload of a frame: height lines. frame counts from 0; phase lets cameras differ. */
    const std::uint8_t* GetFrame(std::uint64_t frame, std::uint32_t phase) const;
    std::size_t GetFrameBytes() const { return m_frameBytes; }

private:
    void FillLine(const SImageKey& key, const SPixelFormat& format, std::uint32_t line, std::uint8_t* out) const;

    std::size_t m_lineBytes;
    std::size_t m_frameBytes;
    std::uint32_t m_linesPerFrame; // how far the scene moves
    std::vector<std::uint8_t> m_bytes;
};

} // namespace Simulator::Internal
