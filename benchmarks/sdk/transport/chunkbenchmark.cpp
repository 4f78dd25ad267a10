// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/cameramodel.h"
#include "support/figures.h"
#include "transport/nodemapchunkparser.h"

#include <algorithm>
#include <cstdlib>

using namespace Velmo;
using Benchmarks::CFigures;

namespace
{

constexpr int Rounds = 20000;

/** Keeps the payload of the last frame. */
class CKeeper final : public Simulator::IFrameSink
{
public:
    bool OnFrame(const Simulator::SFrame& frame) override
    {
        payload.assign(frame.data, frame.data + frame.bytes);
        payload.insert(payload.end(), frame.tail, frame.tail + frame.tailBytes);
        return true;
    }
    std::vector<std::uint8_t> payload;
};

/** An image of 1280 x 1024 with its chunks, and the description of the camera that sends it. */
std::vector<std::uint8_t> MakePayload(const std::vector<const char*>& chunks, std::string& description)
{
    Simulator::SCameraConfig config;
    config.features["ChunkModeActive"] = "true";
    for (const char* chunk : chunks)
    {
        config.features[std::string("ChunkEnable[") + chunk + "]"] = "true";
    }
    config.features["TriggerMode"] = "On";
    Simulator::CCameraModel camera(config);
    description = camera.GetDescription();
    CKeeper keeper;
    camera.AddSink(&keeper);
    camera.SetFeature("AcquisitionStart", "1");
    camera.SetFeature("TriggerSoftware", "1");
    camera.Produce();
    camera.RemoveSink(&keeper);
    return keeper.payload;
}

/** Microseconds an image takes in each of so many rounds, at the median of the runs. */
double PerImage(int runs, const std::function<void()>& image)
{
    std::vector<double> costs;
    for (int run = 0; run < runs; ++run)
    {
        costs.push_back(Benchmarks::costMicroseconds(
                            [&]
                            {
                                for (int round = 0; round < Rounds; ++round)
                                {
                                    image();
                                }
                            }) /
                        Rounds);
    }
    return Benchmarks::median(costs);
}

void Measure(CFigures& figures, const std::vector<const char*>& chunks, const std::string& what, int runs)
{
    std::string description;
    const std::vector<std::uint8_t> payload = MakePayload(chunks, description);
    const auto nodeMap = GenApi::CNodeMapFactory::FromData(description.data(), description.size()).CreateNodeMap();
    Transport::CNodeMapChunkParser parser(*nodeMap, Chunks::EByteOrder::Big, "benchmark");
    const GenApi::CIntegerPtr frameId(nodeMap->GetNode("ChunkFrameID"));
    const auto attach = [&]
    {
        parser.AttachBuffer(payload.data(), static_cast<std::int64_t>(payload.size()));
    };
    attach();
    if (payload.empty() || frameId->GetValue() != 1)
    {
        std::abort(); // what is measured would mean nothing
    }
    const double walk = PerImage(runs,
                                 [&]
                                 {
                                     Chunks::CReader reader(payload.data(), payload.size(), Chunks::EByteOrder::Big);
                                     Chunks::SChunk chunk;
                                     std::size_t sum = 0;
                                     while (reader.Next(chunk))
                                     {
                                         sum += chunk.id + chunk.bytes;
                                     }
                                     Benchmarks::keep(sum);
                                 });
    const auto add = [&](const std::string& name, double value)
    {
        CFigures::SRow row;
        row.what = name;
        row.value = value;
        row.unit = "us";
        row.boundName = "bare walk over the trailers";
        row.bound = walk;
        figures.add(row);
    };
    add("attaching " + what, PerImage(runs, attach));
    add("attaching " + what + ", reading one of them",
        PerImage(runs,
                 [&]
                 {
                     attach();
                     Benchmarks::keep(static_cast<std::size_t>(frameId->GetValue()));
                 }));
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
    CFigures figures("Chunk data into the node map, per image");
    Measure(figures, {"Timestamp", "FrameID", "ExposureTime"}, "an image and 3 chunks", runs);
    Measure(figures,
            {"Timestamp", "FrameID", "ExposureTime", "Gain", "BlackLevel", "Width", "Height", "OffsetX", "OffsetY",
             "PixelFormat"},
            "an image and 10 chunks", runs);
    return 0;
}
