// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/camerasettings.h"

#include <array>

namespace Velmo::Internal
{

namespace
{

constexpr std::int64_t RegisterBytes = 8;

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
constexpr std::int64_t LongestTimeoutMs = 0x7fffffff;

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

std::int64_t AddressOf(std::size_t index)
{
    return static_cast<std::int64_t>(index) * RegisterBytes;
}

std::string NodeOf(const SSetting& setting, std::size_t index)
{
    const bool isBoolean = setting.kind == EKind::Switch || setting.kind == EKind::State;
    const bool isWritable = setting.kind == EKind::Number || setting.kind == EKind::Switch;
    const std::string name = setting.name;
    const std::string element = isBoolean ? "Boolean" : "Integer";
    std::string text = "<" + element + " Name=\"" + name + "\"><ToolTip>" + setting.toolTip + "</ToolTip>";
    if (setting.lockedBy != nullptr)
    {
        text += "<pIsLocked>" + std::string(setting.lockedBy) + "</pIsLocked>";
    }
    text += "<pValue>" + name + "Register</pValue>";
    if (setting.kind == EKind::Number)
    {
        text += "<Min>" + std::to_string(setting.minimum) + "</Min><Max>" + std::to_string(setting.maximum) + "</Max>";
    }
    text += isBoolean ? "<OnValue>1</OnValue><OffValue>0</OffValue>" : "";
    return text + "</" + element + ">\n<IntReg Name=\"" + name + "Register\"><Address>" +
           std::to_string(AddressOf(index)) + "</Address><Length>" + std::to_string(RegisterBytes) +
           "</Length><AccessMode>" + (isWritable ? "RW" : "RO") +
           "</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Signed</Sign>"
           "<Endianess>LittleEndian</Endianess></IntReg>\n";
}

std::string Description(const std::string& modelName, const std::string& features, const std::string& nodes)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"" + modelName +
           "\" VendorName=\"CameraPool\" ToolTip=\"\" StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" "
           "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" "
           "SubMinorVersion=\"0\" ProductGuid=\"00000000-0000-0000-0000-000000000000\" "
           "VersionGuid=\"00000000-0000-0000-0000-000000000000\" "
           "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n<Category Name=\"Root\">" +
           features + "</Category>\n" + nodes + "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
}

const std::string& SettingsDescription()
{
    static const std::string description = []
    {
        std::string features;
        std::string nodes;
        for (std::size_t i = 0; i < Settings.size(); ++i)
        {
            features += "<pFeature>" + std::string(Settings[i].name) + "</pFeature>";
            nodes += NodeOf(Settings[i], i);
        }
        return Description("InstantCamera", features, nodes);
    }();
    return description;
}

std::unique_ptr<GenApi::INodeMap> Make(const std::string& description)
{
    return GenApi::CNodeMapFactory::FromData(description.data(), description.size()).CreateNodeMap();
}

} // namespace

CCameraSettings::CCameraSettings(ReadStatus readStatus)
    : m_memory(Settings.size() * RegisterBytes), m_nodeMap(Make(SettingsDescription()))
{
    int status = 0;
    for (std::size_t i = 0; i < Settings.size(); ++i)
    {
        const std::int64_t address = AddressOf(i);
        m_memory.Poke(address, static_cast<std::uint64_t>(Settings[i].defaultValue), RegisterBytes);
        if (Settings[i].kind == EKind::Status)
        {
            const auto which = static_cast<EStatus>(status++);
            m_memory.SetReadHook(
                address, RegisterBytes,
                [this, address, which, readStatus](std::int64_t, std::int64_t)
                { m_memory.Poke(address, static_cast<std::uint64_t>(readStatus(which)), RegisterBytes); });
        }
    }
    m_nodeMap->Connect(&m_memory);
}

CCameraSettings::~CCameraSettings() = default;

void CCameraSettings::SetState(const char* node, bool value)
{
    for (std::size_t i = 0; i < Settings.size(); ++i)
    {
        if (std::string(node) == Settings[i].name)
        {
            m_memory.Poke(AddressOf(i), value ? 1 : 0, RegisterBytes);
        }
    }
    m_nodeMap->GetNode(node)->InvalidateNode();
}

std::unique_ptr<GenApi::INodeMap> MakeEmptyNodeMap()
{
    return Make(Description("None", "", ""));
}

} // namespace Velmo::Internal
