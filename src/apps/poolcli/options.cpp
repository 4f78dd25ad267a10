// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/options.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace PoolCli
{
namespace
{

/** The command line as CLI11 fills it; plain texts and numbers, turned into SOptions afterwards. */
struct SRaw
{
    std::vector<std::string> cameras;
    std::string camera;
    std::vector<std::string> arguments;
    std::vector<std::string> settings;
    std::vector<std::pair<std::string, std::string>> cameraSettings;
    std::string output;
    std::string filter;
    std::string visibility = "Guru";
    std::string module;
    std::string interfaceName;
    std::string chunks;
    std::string language = "en";
    double seconds = 0.0;
    double discoverySeconds = 3.0;
    double timeoutSeconds = 5.0;
    double answerSeconds = 0.5;
    std::string action;
    std::uint32_t deviceKey = 0;
    std::uint32_t groupKey = 0;
    std::uint32_t groupMask = 0;
    std::uint64_t actionTime = 0;
    std::string address = "255.255.255.255";
    int images = 0;
    bool json = false;
};

constexpr double shortestSeconds = 0.001; // 0 ms would mean no limit
constexpr double longestSeconds = 1e6;

void addCommon(CLI::App& verb, SRaw& raw)
{
    verb.add_flag("--json", raw.json, "Print JSON");
    verb.add_option("--discovery-timeout", raw.discoverySeconds, "Seconds to wait for cameras to be found")
        ->check(CLI::Range(0.0, longestSeconds))
        ->capture_default_str();
}

void addCamera(CLI::App& verb, SRaw& raw)
{
    verb.add_option(
        "camera", raw.camera,
        "User name, serial number, vendor-model-serial or full name; may be left out when there is only one");
}

void addSeconds(CLI::App& verb, SRaw& raw, const std::string& text)
{
    verb.add_option("-s,--seconds", raw.seconds, text)->check(CLI::Range(shortestSeconds, longestSeconds));
}

void addFilter(CLI::App& verb, SRaw& raw)
{
    verb.add_option("-f,--filter", raw.filter, "Only features whose name holds this text");
    verb.add_option("-v,--visibility", raw.visibility, "Beginner, Expert, Guru or Invisible")
        ->check(CLI::IsMember({"Beginner", "Expert", "Guru", "Invisible"}))
        ->capture_default_str();
}

void addParameterVerbs(CLI::App& app, SRaw& raw)
{
    CLI::App* pFeatures = app.add_subcommand("features", "Show a camera's features as a tree, with values");
    addCommon(*pFeatures, raw);
    addCamera(*pFeatures, raw);
    addFilter(*pFeatures, raw);
    pFeatures
        ->add_option("-m,--module", raw.module,
                     "Only the node map of: camera, instant (the SDK's camera object), stream, tl (transport layer), "
                     "event (event grabber), interface (that the camera is on); all shows every one of them")
        ->check(CLI::IsMember({"camera", "instant", "stream", "tl", "event", "interface", "all"}));

    CLI::App* pGet = app.add_subcommand("get", "Read features");
    addCommon(*pGet, raw);
    pGet->add_option("camera", raw.camera, "The camera")->required();
    pGet->add_option("feature", raw.arguments,
                     "Names, such as ExposureTime, @StreamGrabber0/PayloadSize or @Interface/InterfaceID")
        ->required();

    CLI::App* pSet = app.add_subcommand("set", "Write features and execute commands");
    addCommon(*pSet, raw);
    pSet->add_option("camera", raw.camera, "The camera")->required();
    pSet->add_option("setting", raw.arguments, "NAME=VALUE writes, NAME executes a command")->required();
}

void addGrabVerbs(CLI::App& app, SRaw& raw)
{
    CLI::App* pGrab = app.add_subcommand("grab", "Grab from one, several or all cameras at once");
    addCommon(*pGrab, raw);
    pGrab->add_option("camera", raw.cameras, "Cameras; all when none is named");
    pGrab->add_option("-n,--images", raw.images, "Stop after that many images of each camera")
        ->check(CLI::Range(1, 1000000000));
    addSeconds(*pGrab, raw, "Stop after that time; without this and without -n, Ctrl-C ends");
    pGrab->add_option("--set", raw.settings, "NAME=VALUE to write before grabbing")->take_all()->expected(1);
    pGrab->add_option("--set-for", raw.cameraSettings, "CAMERA NAME=VALUE: the same for one of the cameras")
        ->allow_extra_args(false);
    pGrab->add_option("-o,--output", raw.output, "Folder for one PNG of each camera's last image");

    CLI::App* pSnapshot =
        app.add_subcommand("snapshot", "Take one image and write it as PNG (16 bits for deep formats)");
    addCommon(*pSnapshot, raw);
    addCamera(*pSnapshot, raw);
    pSnapshot->add_option("-o,--output", raw.output, "The file; by default model-serial.png");
    pSnapshot->add_option("--set", raw.settings, "NAME=VALUE to write before grabbing")->take_all()->expected(1);
    pSnapshot->add_option("-t,--timeout", raw.timeoutSeconds, "Seconds to wait for the image")
        ->check(CLI::Range(shortestSeconds, longestSeconds))
        ->capture_default_str();

    CLI::App* pStats = app.add_subcommand("stats", "Grab from one camera and print its statistics every second");
    addCommon(*pStats, raw);
    addCamera(*pStats, raw);
    pStats->add_option("-n,--images", raw.images, "Stop after that many images")->check(CLI::Range(1, 1000000000));
    addSeconds(*pStats, raw, "Stop after that time; 5 by default");
}

void addChunks(CLI::App& app, SRaw& raw)
{
    CLI::App* pChunks = app.add_subcommand("chunks", "Grab with chunk data and show each image's values");
    addCommon(*pChunks, raw);
    addCamera(*pChunks, raw);
    pChunks->add_option("-n,--images", raw.images, "Stop after that many images; 10 by default")
        ->check(CLI::Range(1, 1000000000));
    addSeconds(*pChunks, raw, "Stop after that time");
    pChunks->add_option("--enable", raw.chunks,
                        "Only these chunks, with commas between, such as Timestamp,Gain; all that the camera has by "
                        "default. Settings are restored at the end");
}

void addActionCommand(CLI::App& action, SRaw& raw, const char* name, const char* text)
{
    CLI::App* pVerb = action.add_subcommand(name, text);
    pVerb->callback([&raw, name] { raw.action = name; });
    addCommon(*pVerb, raw);
    pVerb->add_option("camera", raw.cameras, "Cameras that must take it; without any, all that are found are listed");
    pVerb->add_option("-d,--device-key", raw.deviceKey, "ActionDeviceKey of the cameras; 0x... is hexadecimal")
        ->required();
    pVerb->add_option("-g,--group-key", raw.groupKey, "ActionGroupKey of one of their action signals")->required();
    pVerb
        ->add_option("-k,--group-mask", raw.groupMask,
                     "Signals whose ActionGroupMask has a bit in common with this; not 0")
        ->check(CLI::PositiveNumber)
        ->required();
    pVerb
        ->add_option("-a,--address", raw.address,
                     "255.255.255.255 for every adapter, the broadcast address of a network, or one camera's own")
        ->check(CLI::ValidIPV4)
        ->capture_default_str();
    constexpr double longestWaitSeconds = 3600.0;
    pVerb->add_option("-t,--timeout", raw.answerSeconds, "Seconds to wait for answers; 0 asks for none")
        ->check(CLI::Range(0.0, longestWaitSeconds))
        ->capture_default_str();
    if (std::string(name) == "schedule")
    {
        pVerb->add_option("--time", raw.actionTime, "When, in ticks of the cameras' clocks (TimestampLatchValue)")
            ->required();
    }
}

void addAction(CLI::App& app, SRaw& raw)
{
    CLI::App* pAction = app.add_subcommand("action", "Trigger many GigE Vision cameras at once (action commands)");
    pAction->require_subcommand(1);
    addActionCommand(*pAction, raw, "issue", "Trigger now");
    addActionCommand(*pAction, raw, "schedule", "Trigger at a time of the cameras' synchronised clocks");
    CLI::App* pSupport = pAction->add_subcommand("support", "Open cameras and tell which take action commands");
    pSupport->callback([&raw] { raw.action = "support"; });
    addCommon(*pSupport, raw);
    pSupport->add_option("camera", raw.cameras, "Cameras; all when none is named");
}

void addVerbs(CLI::App& app, SRaw& raw)
{
    addCommon(*app.add_subcommand("list", "List the cameras that can be found"), raw);
    CLI::App* pWatch = app.add_subcommand("watch", "Show cameras coming and going, until Ctrl-C");
    addCommon(*pWatch, raw);
    addSeconds(*pWatch, raw, "End after that time");
    CLI::App* pInfo = app.add_subcommand("info", "Show all that discovery tells of one camera");
    addCommon(*pInfo, raw);
    addCamera(*pInfo, raw);
    CLI::App* pInterfaces =
        app.add_subcommand("interfaces", "List the interfaces; with a name: its features and the devices on it");
    addCommon(*pInterfaces, raw);
    pInterfaces->add_option("interface", raw.interfaceName, "Identifier, name or full name");
    addFilter(*pInterfaces, raw);
    addParameterVerbs(app, raw);
    addGrabVerbs(app, raw);
    addChunks(app, raw);
    addAction(app, raw);
}

QStringList toList(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
    {
        list.append(QString::fromStdString(text));
    }
    return list;
}

int milliseconds(double seconds)
{
    constexpr double millisecondsPerSecond = 1000.0;
    return static_cast<int>(seconds * millisecondsPerSecond);
}

void fill(SOptions& options, const SRaw& raw)
{
    options.cameras = toList(raw.cameras);
    if (!raw.camera.empty())
    {
        options.cameras = QStringList{QString::fromStdString(raw.camera)};
    }
    options.arguments = toList(raw.arguments);
    options.settings = toList(raw.settings);
    for (const auto& [camera, setting] : raw.cameraSettings)
    {
        options.cameraSettings.append({QString::fromStdString(camera), QString::fromStdString(setting)});
    }
    options.json = raw.json;
    options.discoveryTimeoutMs = milliseconds(raw.discoverySeconds);
    options.durationMs = milliseconds(raw.seconds);
    options.timeoutMs = milliseconds(raw.timeoutSeconds);
    options.images = raw.images;
    options.output = QString::fromStdString(raw.output);
    options.filter = QString::fromStdString(raw.filter);
    options.visibility = QString::fromStdString(raw.visibility);
    options.module = QString::fromStdString(raw.module);
    options.interfaceName = QString::fromStdString(raw.interfaceName);
    options.chunks = QString::fromStdString(raw.chunks).split(QLatin1Char(','), Qt::SkipEmptyParts);
    options.action = {QString::fromStdString(raw.action),
                      raw.deviceKey,
                      raw.groupKey,
                      raw.groupMask,
                      raw.actionTime,
                      QString::fromStdString(raw.address),
                      static_cast<unsigned int>(milliseconds(raw.answerSeconds))};
    options.language = QString::fromStdString(raw.language);
}

} // namespace

bool parseCommandLine(int argc, char** argv, SOptions& options, int& exitCode)
{
    constexpr int wrongUsage = 2;
    SRaw raw;
    CLI::App app("Find, open and use cameras through the CameraPool plugin", "poolcli");
    app.set_version_flag("--version", POOLCLI_VERSION);
    app.add_option("--language", raw.language, "Language of messages: en, ja, zh or ko")
        ->check(CLI::IsMember({"en", "ja", "zh", "ko"}))
        ->capture_default_str();
    app.require_subcommand(1);
    app.failure_message(CLI::FailureMessage::help);
    app.footer("Exit codes: 0 done, 1 the camera or the plugin refused (the reason is on stderr), 2 wrong usage.");
    addVerbs(app, raw);
    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::ParseError& e)
    {
        exitCode = app.exit(e, std::cout, std::cerr) == 0 ? 0 : wrongUsage;
        return false;
    }
    fill(options, raw);
    options.verb = QString::fromStdString(app.get_subcommands().front()->get_name());
    return true;
}

} // namespace PoolCli
