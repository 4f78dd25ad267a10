// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/chunkkinds.h"

#include "simulator/internal/limits.h"
#include "simulator/pixelformats.h"
#include "simulator/registers.h"

namespace Simulator::Internal
{

namespace
{

constexpr auto Category = "ChunkDataControl";

SFeature MakeSetting(const char* name, EKind kind, std::int64_t address, const char* toolTip)
{
    SFeature feature;
    feature.category = Category;
    feature.name = name;
    feature.kind = kind;
    feature.address = address;
    feature.toolTip = toolTip;
    feature.isInUserSet = true;
    feature.invalidators = {"UserSetLoad"};
    return feature;
}

} // namespace

const std::vector<SChunkKind>& ChunkKinds()
{
    static const std::vector<SChunkKind> kinds = {
        {EChunk::Timestamp, "Timestamp", 0x10, 8, EKind::Integer, "ns", "When the exposure of the image began."},
        {EChunk::FrameID, "FrameID", 0x11, 8, EKind::Integer, "", "Number of the image in its acquisition."},
        {EChunk::ExposureTime, "ExposureTime", 0x12, 8, EKind::Float, "us", "Time of exposure of the image."},
        {EChunk::Gain, "Gain", 0x13, 8, EKind::Float, "dB", "Amplification of the image."},
        {EChunk::BlackLevel, "BlackLevel", 0x14, 8, EKind::Float, "%", "Level of black of the image."},
        {EChunk::Width, "Width", 0x15, 4, EKind::Integer, "px", "Width of the image."},
        {EChunk::Height, "Height", 0x16, 4, EKind::Integer, "px", "Height of the image."},
        {EChunk::OffsetX, "OffsetX", 0x17, 4, EKind::Integer, "px", "First column of the image."},
        {EChunk::OffsetY, "OffsetY", 0x18, 4, EKind::Integer, "px", "First line of the image."},
        {EChunk::PixelFormat, "PixelFormat", 0x19, 4, EKind::Enumeration, "", "Format of the pixels of the image."},
    };
    return kinds;
}

void AddChunkControl(std::vector<SFeature>& features)
{
    SFeature active = MakeSetting("ChunkModeActive", EKind::Boolean, Register::ChunkModeActive,
                                  "Sends values of each image together with the image.");
    active.isLockedWhileGrabbing = true;
    features.push_back(active);
    SFeature selector =
        MakeSetting("ChunkSelector", EKind::Enumeration, Register::ChunkSelector, "Chunk to switch on or off.");
    selector.entries = {{"Image", static_cast<std::int64_t>(EChunk::Image)}};
    for (const SChunkKind& kind : ChunkKinds())
    {
        selector.entries.emplace_back(kind.name, static_cast<std::int64_t>(kind.selector));
    }
    selector.selected = "ChunkEnable";
    features.push_back(selector);
    SFeature enable = MakeSetting("ChunkEnable", EKind::Boolean, Register::ChunkEnable,
                                  "Whether the selected chunk is sent. The image always is.");
    enable.isLockedWhileGrabbing = true;
    enable.selector = selector.name;
    enable.selectorAddress = selector.address;
    enable.banks = static_cast<std::int64_t>(EChunk::Count);
    features.push_back(enable);
}

std::vector<SFeature> MakeChunkValues(const SCameraConfig& config)
{
    std::vector<SFeature> values;
    for (const SChunkKind& kind : ChunkKinds())
    {
        SFeature value;
        value.category = Category;
        value.name = std::string("Chunk") + kind.name;
        value.kind = kind.kind;
        value.bytes = kind.bytes;
        value.access = EAccess::ReadOnly;
        value.toolTip = kind.toolTip;
        value.unit = kind.unit;
        value.chunkId = kind.id;
        value.max = kind.bytes == 8 ? 9223372036854775807.0 : 4294967295.0;
        values.push_back(value);
    }
    for (SFeature& value : values)
    {
        if (value.kind == EKind::Enumeration)
        {
            for (const std::string& name : config.pixelFormats)
            {
                value.entries.emplace_back(name, FindPixelFormat(std::string_view(name))->pfnc);
            }
        }
    }
    return values;
}

} // namespace Simulator::Internal
