// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/camerasettings.h"

#include <array>

namespace Velmo::Internal
{

namespace
{

enum class EKind
{
    Number,
    Switch,
    State, // a switch that only the camera turns
    Status // a number that is computed when read
};

struct SSetting
{
    const char* name;
    EKind kind;
    std::int64_t defaultValue;
    std::int64_t minimum;
    std::int64_t maximum;
    const char* lockedBy;
    const char* toolTip;
};

constexpr std::int64_t ManyBuffers = 1000000;
constexpr std::int64_t LongestTimeoutMs = 0xffffffff;

constexpr std::array<SSetting, 17> Settings = {{
    {"MaxNumBuffer", EKind::Number, 10, 1, ManyBuffers, "IsGrabbing", "Buffers that a grab makes."},
    {"MaxNumQueuedBuffer", EKind::Number, 10, 1, ManyBuffers, "IsGrabbing",
     "Buffers that wait in the stream to be filled, at most."},
    {"OutputQueueSize", EKind::Number, 1, 1, ManyBuffers, "IsGrabbing",
     "Images that the grab strategy 'latest images' keeps."},
    {"MonitorModeActive", EKind::Switch, 0, 0, 1, "IsOpen",
     "Opens the camera beside the application that controls it, for watching only."},
    {"GrabCameraEvents", EKind::Switch, 0, 0, 1, "IsOpen", "Receives the camera's event messages."},
    {"GrabLoopThreadUseTimeout", EKind::Switch, 0, 0, 1, "IsGrabbing",
     "Ends a grab of the grab loop thread when no image arrives in time."},
    {"GrabLoopThreadTimeout", EKind::Number, 5000, 0, LongestTimeoutMs, "IsGrabbing",
     "How long the grab loop thread waits for an image, in milliseconds."},
    {"GrabLoopThreadPriorityOverride", EKind::Switch, 0, 0, 1, "IsGrabbing",
     "Gives the grab loop thread a real-time priority."},
    {"GrabLoopThreadPriority", EKind::Number, 15, 0, 99, "IsGrabbing", "Real-time priority of the grab loop thread."},
    {"InternalGrabEngineThreadPriorityOverride", EKind::Switch, 0, 0, 1, "IsGrabbing",
     "Gives the thread that takes buffers from the stream a real-time priority."},
    {"InternalGrabEngineThreadPriority", EKind::Number, 25, 0, 99, "IsGrabbing",
     "Real-time priority of the thread that takes buffers from the stream."},
    {"IsOpen", EKind::State, 0, 0, 1, nullptr, "The camera is open."},
    {"IsGrabbing", EKind::State, 0, 0, 1, nullptr, "A grab is running."},
    {"NumQueuedBuffers", EKind::Status, 0, 0, 0, nullptr, "Buffers that wait in the stream to be filled, now."},
    {"Statistic_Total_Image_Count", EKind::Status, 0, 0, 0, nullptr, "Results of the present or last grab."},
    {"Statistic_Failed_Image_Count", EKind::Status, 0, 0, 0, nullptr, "Of those, the failed ones."},
    {"Statistic_Skipped_Image_Count", EKind::Status, 0, 0, 0, nullptr, "Images that the grab strategy dropped."},
}};

Transport::SSoftwareParameter ParameterOf(const SSetting& setting)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = setting.name;
    parameter.toolTip = setting.toolTip;
    parameter.isCustom = true;
    parameter.value = setting.defaultValue;
    parameter.isWritable = setting.kind == EKind::Number || setting.kind == EKind::Switch;
    parameter.lockedBy = setting.lockedBy == nullptr ? "" : setting.lockedBy;
    if (setting.kind == EKind::Number)
    {
        parameter.min = setting.minimum;
        parameter.max = setting.maximum;
    }
    return parameter;
}

} // namespace

CCameraSettings::CCameraSettings(const ReadStatus& readStatus) : m_parameters("InstantCamera")
{
    int status = 0;
    for (const SSetting& setting : Settings)
    {
        Transport::SSoftwareParameter parameter = ParameterOf(setting);
        if (setting.kind == EKind::Status)
        {
            parameter.getter = [readStatus, which = static_cast<EStatus>(status++)]
            {
                return readStatus(which);
            };
        }
        const bool isBoolean = setting.kind == EKind::Switch || setting.kind == EKind::State;
        isBoolean ? m_parameters.AddBoolean(std::move(parameter)) : m_parameters.AddInteger(std::move(parameter));
    }
    m_parameters.Build();
}

CCameraSettings::~CCameraSettings() = default;

std::unique_ptr<Transport::CSoftwareNodeMap> MakeEmptyNodeMap()
{
    auto parameters = std::make_unique<Transport::CSoftwareNodeMap>("None");
    parameters->Build();
    return parameters;
}

} // namespace Velmo::Internal
