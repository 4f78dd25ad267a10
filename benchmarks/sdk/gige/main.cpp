// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// GigE Vision over loopback: what a register costs, how soon cameras are found, what their streams cost beside those of
// the bare engine, how soon an action command has reached all of them.

#include "barecameras.h"
#include "cameraprogram.h"
#include "enginestreams.h"
#include "registeraccess.h"
#include "streams/childrun.h"
#include "streams/sdkstreams.h"
#include "support/figures.h"
#include "transports/gige/internal/actions.h"
#include "transports/gige/internal/discovery.h"

#include <QCoreApplication>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace
{

using namespace Benchmarks;
namespace Internal = Velmo::GigE::Internal;

constexpr int ImagesPerSecond = 30;
constexpr int DefaultSeconds = 5;
constexpr int Repetitions = 9;

std::string of(int cameras)
{
    return ", " + std::to_string(cameras) + (cameras == 1 ? " camera" : " cameras");
}

std::vector<Internal::SAdapter> loopback()
{
    std::vector<std::string> unknown;
    return Internal::SelectAdapters(Internal::ListSystemAdapters(), {"127.0.0.1"}, unknown);
}

/** Milliseconds. */
double findCameras(int cameras)
{
    const double start = nowMicroseconds();
    const Internal::SDiscoveryResult result = Internal::Discover(loopback(), {});
    if (result.devices.size() != static_cast<std::size_t>(cameras))
    {
        throw std::runtime_error(std::to_string(result.devices.size()) + " of " + std::to_string(cameras) +
                                 " cameras were found");
    }
    return (nowMicroseconds() - start) / 1e3;
}

void measureDiscovery(CFigures& figures, int cameras)
{
    const CCameraProgram program(cameras, ImagesPerSecond);
    CBareClient client;
    std::vector<double> own;
    std::vector<double> bare;
    for (int i = 0; i < Repetitions; ++i)
    {
        bare.push_back(client.discover(cameras).last / 1e3);
        own.push_back(findCameras(cameras));
    }
    figures.add({"last answer to a bare discovery command" + of(cameras), median(bare), "ms", "", 0});
    figures.add({"discovery" + of(cameras), median(own), "ms", "the engine's", findByTheEngine()});
    figures.add({"discovery's end after the last answer" + of(cameras), median(own) - median(bare), "ms", "", 0,
                 CFigures::EGoal::AtMost, 50, false});
}

void measureStreams(CFigures& figures, int cameras, int seconds)
{
    const CCameraProgram program(cameras, ImagesPerSecond);
    const SStreamFigures engine = runInChild("engine", cameras, seconds);
    const SStreamFigures packets = runInChild("engine-packet-socket", cameras, seconds);
    const SStreamFigures sdk = runInChild("sdk", cameras, seconds);
    const auto rate = [](const SStreamFigures& f)
    {
        return static_cast<double>(f.images) / f.seconds;
    };
    const auto cost = [](const SStreamFigures& f)
    {
        return f.cpuMicroseconds / static_cast<double>(f.images);
    };
    figures.add({"images lost" + of(cameras), static_cast<double>(sdk.losses), "images", "", 0, CFigures::EGoal::AtMost,
                 0, false});
    figures.add({"images lost by the engine" + of(cameras), static_cast<double>(engine.losses), "images", "", 0});
    figures.add({"rate" + of(cameras), rate(sdk), "images/s", "the engine alone", rate(engine),
                 CFigures::EGoal::AtLeast, 0.95});
    figures.add({"processor time of one image" + of(cameras), cost(sdk), "us", "the engine alone", cost(engine)});
    figures.add({"the same by the engine with a packet socket" + of(cameras), cost(packets), "us", "", 0});
    figures.add({"load" + of(cameras), sdk.cpuMicroseconds / sdk.seconds / 1e6, "cores", "", 0});
}

void measureActions(CFigures& figures, int cameras)
{
    const CCameraProgram program(cameras, ImagesPerSecond);
    CBareClient client;
    client.control(cameras);
    Velmo::Transport::SActionCommand command;
    command.deviceKey = command.groupKey = command.groupMask = 1;
    command.address = "255.255.255.255";
    command.timeoutMs = 5000;
    command.expectedAnswers = static_cast<std::size_t>(cameras);
    std::vector<double> own;
    std::vector<double> bare;
    std::vector<double> spread;
    for (int i = 0; i < Repetitions; ++i)
    {
        const SBareAnswers answers = client.act(cameras, {1, 1, 1, false, 0});
        bare.push_back(answers.last / 1e3);
        spread.push_back((answers.last - answers.first) / 1e3);
        const double start = nowMicroseconds();
        if (Internal::IssueAction(loopback(), command).size() != command.expectedAnswers)
        {
            throw std::runtime_error("not every camera acted");
        }
        own.push_back((nowMicroseconds() - start) / 1e3);
    }
    figures.add({"first to last acknowledge of an action" + of(cameras), median(spread), "ms", "", 0});
    figures.add(
        {"an action until its last acknowledge" + of(cameras), median(own), "ms", "one bare socket", median(bare)});
}

void measureRegisters(CFigures& figures)
{
    const CCameraProgram program(1, ImagesPerSecond);
    const SAccessFigures access = measureRegisterAccess();
    figures.add({"read of one register", access.read, "us", "the engine alone", access.engineRead});
    figures.add({"write of one register", access.write, "us", "the engine alone", access.engineWrite});
}

int runOne(const QStringList& arguments)
{
    const int cameras = arguments.at(3).toInt();
    const int seconds = arguments.at(4).toInt();
    return printRun(
        [&]
        {
            const QString& way = arguments.at(2);
            return way == QLatin1String("sdk")
                       ? streamThroughTheSdk(cameras, seconds)
                       : streamThroughTheEngine(cameras, seconds, way == QLatin1String("engine-packet-socket"));
        });
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("CAMERAPOOL_GIGE_ADAPTERS", "127.0.0.1");
    qputenv("CAMERAPOOL_EMULATION_CAMERAS", "0");
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 5 && arguments.at(1) == QLatin1String("--one"))
    {
        return runOne(arguments);
    }
    const int seconds = arguments.size() == 2 ? arguments.at(1).toInt() : DefaultSeconds;
    CFigures figures("GigE Vision over loopback, 512x512 at 30 images/s each");
    try
    {
        measureRegisters(figures);
        for (const int cameras : {1, 8, 64})
        {
            measureDiscovery(figures, cameras);
        }
        for (const int cameras : {1, 8, 40})
        {
            measureStreams(figures, cameras, seconds);
        }
        measureActions(figures, 64);
    }
    catch (const std::exception& e)
    {
        std::fprintf(stderr, "bench_gige: %s\n", e.what());
        return 1;
    }
    return 0;
}
