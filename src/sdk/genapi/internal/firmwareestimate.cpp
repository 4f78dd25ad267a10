// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwareestimate.h"

#include <limits>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::uint32_t DefaultStepMs = 100;
constexpr double ReadBytesPerMs = 100000; // unpacking and checking
// Fewer bytes or less time than that say nothing about the rate.
constexpr std::uint64_t MinMeasuredBytes = 4096;
constexpr std::int64_t MinMeasuredMs = 1;

std::uint32_t Saturated(double milliseconds)
{
    constexpr std::uint32_t Max = std::numeric_limits<std::uint32_t>::max();
    return milliseconds >= static_cast<double>(Max) ? Max : static_cast<std::uint32_t>(milliseconds);
}

} // namespace

std::uint32_t CFirmwareEstimate::Step(const SFirmwareStep& step, const SFirmwareUpdate& update) const
{
    if (step.estimatedTimeMs)
    {
        return *step.estimatedTimeMs;
    }
    switch (step.type)
    {
    case EFirmwareUpdateStepType::FileUpload:
        return Saturated(DefaultStepMs + static_cast<double>(update.files.at(step.file).bytes) / m_bytesPerMs);
    case EFirmwareUpdateStepType::DeviceReset:
        return step.expectedTimeMs;
    default:
        return DefaultStepMs;
    }
}

void CFirmwareEstimate::Measured(const SFirmwareUploadResult& upload)
{
    if (upload.writtenBytes >= MinMeasuredBytes && upload.writingMs >= MinMeasuredMs)
    {
        m_bytesPerMs = static_cast<double>(upload.writtenBytes) / static_cast<double>(upload.writingMs);
    }
}

std::uint32_t EstimateReading(const SFirmwareUpdate& update)
{
    double bytes = 0;
    for (const auto& file : update.files)
    {
        bytes += static_cast<double>(file.second.bytes);
    }
    return Saturated(DefaultStepMs + bytes / ReadBytesPerMs);
}

std::uint32_t EstimateTotal(const SFirmwareUpdate& update)
{
    const CFirmwareEstimate estimate;
    double total = static_cast<double>(CheckTimeMs) + EstimateReading(update);
    for (const SFirmwareStep& step : update.procedure->steps)
    {
        total += estimate.Step(step, update);
    }
    return Saturated(total);
}

} // namespace Internal
} // namespace GenApi
