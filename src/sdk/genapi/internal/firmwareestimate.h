// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarecontrol.h"
#include "genapi/internal/firmwareupload.h"

namespace GenApi
{
namespace Internal
{

/** How long the steps of an update take: what the package says, else computed. Milliseconds. */
class CFirmwareEstimate
{
public:
    std::uint32_t Step(const SFirmwareStep& step, const SFirmwareUpdate& update) const;
    /** Later uploads are taken to be as fast as this one. */
    void Measured(const SFirmwareUploadResult& upload);

private:
    double m_bytesPerMs = 1000; // what a camera on a gigabit link may do, until it is measured
};

/** Of the step CheckPreconditions. */
constexpr std::uint32_t CheckTimeMs = 1000;
/** Of the step AcquireUpdateData. */
std::uint32_t EstimateReading(const SFirmwareUpdate& update);
/** Of all steps together. */
std::uint32_t EstimateTotal(const SFirmwareUpdate& update);

} // namespace Internal
} // namespace GenApi
