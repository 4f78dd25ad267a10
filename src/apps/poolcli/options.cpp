// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/options.h"

#include "poolcli/output.h"
#include "poolcli/texts.h"

#include "hostkit/host.h"

#include <CLI/CLI.hpp>

#include <QTranslator>

#include <cmath>
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
    std::string network;
    double linkMegabits = 0.0;
    double frameRate = 0.0;
    double reservePercent = 10.0;
    bool isToApply = false;
    std::string firmware;
    std::string packageFile;
    std::string descriptionFile;
    std::string version;
    bool yes = false;
    int images = 0;
    bool isToGrab = false;
    bool json = false;
};

std::string utf8(const QString& text)
{
    return text.toStdString();
}

constexpr double shortestSeconds = 0.001; // 0 ms would mean no limit
constexpr double longestSeconds = 1e6;

/** A range of the parser's own lets "nan" through, which is neither below nor above anything. */
CLI::Validator numberIn(double least, double most)
{
    return CLI::Range(least, most) & CLI::Validator(
                                         [](const std::string& text)
                                         {
                                             double value = 0.0;
                                             const bool isRead = CLI::detail::lexical_cast(text, value);
                                             return isRead && std::isnan(value) ? "Value " + text + " is no number"
                                                                                : std::string();
                                         },
                                         "");
}

/** The parser reads "-5" as 2^64 - 5. */
std::string isNotNegative(const std::string& text)
{
    return text.rfind('-', 0) == 0 ? "Value " + text + " is negative" : std::string();
}

/** Zero is refused; what is no number at all the parser refuses itself. */
std::string isNotZero(const std::string& text)
{
    std::uint64_t value = 0;
    return CLI::detail::lexical_cast(text, value) && value == 0 ? "Value " + text + " has no bit set" : std::string();
}

void addCommon(CLI::App& verb, SRaw& raw)
{
    verb.add_flag("--json", raw.json, utf8(CTexts::tr("Print JSON")));
    verb.add_option("--discovery-timeout", raw.discoverySeconds,
                    utf8(CTexts::tr("Seconds to wait for cameras to be found")))
        ->check(numberIn(0.0, longestSeconds))
        ->capture_default_str();
}

void addCamera(CLI::App& verb, SRaw& raw)
{
    verb.add_option(
        "camera", raw.camera,
        utf8(CTexts::tr(
            "User name, serial number, vendor-model-serial or full name; may be left out when there is only one")));
}

void addSeconds(CLI::App& verb, SRaw& raw, const std::string& text)
{
    verb.add_option("-s,--seconds", raw.seconds, text)->check(numberIn(shortestSeconds, longestSeconds));
}

void addFilter(CLI::App& verb, SRaw& raw)
{
    verb.add_option("-f,--filter", raw.filter, utf8(CTexts::tr("Only features whose name holds this text")));
    verb.add_option("-v,--visibility", raw.visibility, utf8(CTexts::tr("Beginner, Expert, Guru or Invisible")))
        ->check(CLI::IsMember({"Beginner", "Expert", "Guru", "Invisible"}))
        ->capture_default_str();
}

void addParameterVerbs(CLI::App& app, SRaw& raw)
{
    CLI::App* pFeatures =
        app.add_subcommand("features", utf8(CTexts::tr("Show a camera's features as a tree, with values")));
    addCommon(*pFeatures, raw);
    addCamera(*pFeatures, raw);
    addFilter(*pFeatures, raw);
    pFeatures
        ->add_option(
            "-m,--module", raw.module,
            utf8(CTexts::tr(
                "Only the node map of: camera, instant (the SDK's camera object), stream, tl (transport layer), "
                "event (event grabber), interface (that the camera is on); all shows every one of them")))
        ->check(CLI::IsMember({"camera", "instant", "stream", "tl", "event", "interface", "all"}));

    CLI::App* pGet = app.add_subcommand("get", utf8(CTexts::tr("Read features")));
    addCommon(*pGet, raw);
    pGet->add_option("camera", raw.camera, utf8(CTexts::tr("The camera")))->required();
    pGet->add_option(
            "feature", raw.arguments,
            utf8(CTexts::tr("Names, such as ExposureTime, @StreamGrabber0/PayloadSize or @Interface/InterfaceID")))
        ->required();

    CLI::App* pSet = app.add_subcommand("set", utf8(CTexts::tr("Write features and execute commands")));
    addCommon(*pSet, raw);
    pSet->add_option("camera", raw.camera, utf8(CTexts::tr("The camera")))->required();
    pSet->add_option("setting", raw.arguments, utf8(CTexts::tr("NAME=VALUE writes, NAME executes a command")))
        ->required();
}

void addGrabVerbs(CLI::App& app, SRaw& raw)
{
    CLI::App* pGrab = app.add_subcommand("grab", utf8(CTexts::tr("Grab from one, several or all cameras at once")));
    addCommon(*pGrab, raw);
    pGrab->add_option("camera", raw.cameras, utf8(CTexts::tr("Cameras; all when none is named")));
    pGrab->add_option("-n,--images", raw.images, utf8(CTexts::tr("Stop after that many images of each camera")))
        ->check(CLI::Range(1, 1000000000));
    addSeconds(*pGrab, raw, utf8(CTexts::tr("Stop after that time; without this and without -n, Ctrl-C ends")));
    pGrab->add_option("--set", raw.settings, utf8(CTexts::tr("NAME=VALUE to write before grabbing")))
        ->take_all()
        ->expected(1);
    pGrab
        ->add_option("--set-for", raw.cameraSettings,
                     utf8(CTexts::tr("CAMERA NAME=VALUE: the same for one of the cameras")))
        ->allow_extra_args(false);
    pGrab->add_option("-o,--output", raw.output, utf8(CTexts::tr("Folder for one PNG of each camera's last image")));

    CLI::App* pSnapshot = app.add_subcommand(
        "snapshot", utf8(CTexts::tr("Take one image and write it as PNG (16 bits for deep formats)")));
    addCommon(*pSnapshot, raw);
    addCamera(*pSnapshot, raw);
    pSnapshot->add_option("-o,--output", raw.output, utf8(CTexts::tr("The file; by default model-serial.png")));
    pSnapshot->add_option("--set", raw.settings, utf8(CTexts::tr("NAME=VALUE to write before grabbing")))
        ->take_all()
        ->expected(1);
    pSnapshot->add_option("-t,--timeout", raw.timeoutSeconds, utf8(CTexts::tr("Seconds to wait for the image")))
        ->check(numberIn(shortestSeconds, longestSeconds))
        ->capture_default_str();

    CLI::App* pStats =
        app.add_subcommand("stats", utf8(CTexts::tr("Grab from one camera and print its statistics every second")));
    addCommon(*pStats, raw);
    addCamera(*pStats, raw);
    pStats->add_option("-n,--images", raw.images, utf8(CTexts::tr("Stop after that many images")))
        ->check(CLI::Range(1, 1000000000));
    addSeconds(*pStats, raw, utf8(CTexts::tr("Stop after that time; 5 by default")));
}

void addMonitor(CLI::App& app, SRaw& raw)
{
    CLI::App* pMonitor = app.add_subcommand(
        "monitor", utf8(CTexts::tr("Watch a camera that another application controls, without touching it")));
    addCommon(*pMonitor, raw);
    addCamera(*pMonitor, raw);
    pMonitor->add_option("-n,--images", raw.images, utf8(CTexts::tr("Stop after that many images")))
        ->check(CLI::Range(1, 1000000000));
    addSeconds(*pMonitor, raw, utf8(CTexts::tr("Stop after that time; without this and without -n, Ctrl-C ends")));
    pMonitor->add_option("-o,--output", raw.output, utf8(CTexts::tr("Folder for one PNG of each camera's last image")));
}

void addChunks(CLI::App& app, SRaw& raw)
{
    CLI::App* pChunks =
        app.add_subcommand("chunks", utf8(CTexts::tr("Grab with chunk data and show each image's values")));
    addCommon(*pChunks, raw);
    addCamera(*pChunks, raw);
    pChunks->add_option("-n,--images", raw.images, utf8(CTexts::tr("Stop after that many images; 10 by default")))
        ->check(CLI::Range(1, 1000000000));
    addSeconds(*pChunks, raw, utf8(CTexts::tr("Stop after that time")));
    pChunks->add_option(
        "--enable", raw.chunks,
        utf8(CTexts::tr("Only these chunks, with commas between, such as Timestamp,Gain; all that the camera has by "
                        "default. Settings are restored at the end")));
}

void addEvents(CLI::App& app, SRaw& raw)
{
    CLI::App* pEvents = app.add_subcommand("events", utf8(CTexts::tr("Show what a camera reports by itself")));
    addCommon(*pEvents, raw);
    pEvents->add_option("camera", raw.camera, utf8(CTexts::tr("The camera")))->required();
    pEvents->add_option("event", raw.arguments,
                        utf8(CTexts::tr("Events, such as ExposureEnd; all that the camera has when none is named. They "
                                        "are switched on, and at the end as they were")));
    pEvents->add_option("-n,--events", raw.images, utf8(CTexts::tr("Stop after that many events")))
        ->check(CLI::Range(1, 1000000000));
    pEvents
        ->add_option("-t,-s,--seconds", raw.seconds,
                     utf8(CTexts::tr("Stop after that time; without this and without -n, Ctrl-C ends")))
        ->check(numberIn(shortestSeconds, longestSeconds));
    pEvents->add_flag("-g,--grab", raw.isToGrab, utf8(CTexts::tr("Grab meanwhile: most events are of images")));
    pEvents
        ->add_option("--set", raw.settings,
                     utf8(CTexts::tr("NAME=VALUE to write, or NAME of a command to execute, when events are on")))
        ->take_all()
        ->expected(1);
}

void addActionCommand(CLI::App& action, SRaw& raw, const char* name, const std::string& text)
{
    CLI::App* pVerb = action.add_subcommand(name, text);
    pVerb->callback([&raw, name] { raw.action = name; });
    addCommon(*pVerb, raw);
    pVerb->add_option("camera", raw.cameras,
                      utf8(CTexts::tr("Cameras that must take it; without any, all that are found are listed")));
    pVerb
        ->add_option("-d,--device-key", raw.deviceKey,
                     utf8(CTexts::tr("ActionDeviceKey of the cameras; 0x... is hexadecimal")))
        ->required();
    pVerb->add_option("-g,--group-key", raw.groupKey, utf8(CTexts::tr("ActionGroupKey of one of their action signals")))
        ->required();
    pVerb
        ->add_option("-k,--group-mask", raw.groupMask,
                     utf8(CTexts::tr("Signals whose ActionGroupMask has a bit in common with this; not 0")))
        ->check(isNotZero)
        ->required();
    pVerb
        ->add_option("-a,--address", raw.address,
                     utf8(CTexts::tr(
                         "255.255.255.255 for every adapter, the broadcast address of a network, or one camera's own")))
        ->check(CLI::ValidIPV4)
        ->capture_default_str();
    constexpr double longestWaitSeconds = 3600.0;
    pVerb
        ->add_option("-t,--timeout", raw.answerSeconds,
                     utf8(CTexts::tr("Seconds to wait for answers; 0 asks for none")))
        ->check(numberIn(0.0, longestWaitSeconds))
        ->capture_default_str();
    if (std::string(name) == "schedule")
    {
        pVerb
            ->add_option("--time", raw.actionTime,
                         utf8(CTexts::tr("When, in ticks of the cameras' clocks (TimestampLatchValue)")))
            ->check(isNotNegative)
            ->required();
    }
}

void addAction(CLI::App& app, SRaw& raw)
{
    CLI::App* pAction =
        app.add_subcommand("action", utf8(CTexts::tr("Trigger many GigE Vision cameras at once (action commands)")));
    pAction->require_subcommand(1);
    addActionCommand(*pAction, raw, "issue", utf8(CTexts::tr("Trigger now")));
    addActionCommand(*pAction, raw, "schedule",
                     utf8(CTexts::tr("Trigger at a time of the cameras' synchronised clocks")));
    CLI::App* pSupport =
        pAction->add_subcommand("support", utf8(CTexts::tr("Open cameras and tell which take action commands")));
    pSupport->callback([&raw] { raw.action = "support"; });
    addCommon(*pSupport, raw);
    pSupport->add_option("camera", raw.cameras, "Cameras; all when none is named");
}

void addNetworkPlan(CLI::App& network, SRaw& raw)
{
    constexpr double mostMegabits = 1e6;
    constexpr double mostFramesPerSecond = 1e6;
    constexpr double mostPercent = 90.0;
    CLI::App* pPlan = network.add_subcommand(
        "plan",
        utf8(CTexts::tr("Divide each adapter's link among its cameras: bandwidth of each, pause between packets")));
    pPlan->callback([&raw] { raw.network = "plan"; });
    addCommon(*pPlan, raw);
    pPlan->add_option("camera", raw.cameras, utf8(CTexts::tr("Cameras; all of GigE Vision when none is named")));
    pPlan->add_flag("--apply", raw.isToApply, utf8(CTexts::tr("Write the pauses into the cameras (GevSCPD)")));
    pPlan
        ->add_option("--link-speed", raw.linkMegabits,
                     utf8(CTexts::tr("Mbit/s of the link, where the adapter does not tell")))
        ->check(numberIn(1.0, mostMegabits));
    pPlan
        ->add_option("--rate", raw.frameRate,
                     utf8(CTexts::tr("Images per second of every camera, such as those of a trigger")))
        ->check(numberIn(shortestSeconds, mostFramesPerSecond));
    pPlan->add_option("--reserve", raw.reservePercent, utf8(CTexts::tr("Per cent of the link to keep free")))
        ->check(numberIn(0.0, mostPercent))
        ->capture_default_str();
}

void addNetwork(CLI::App& app, SRaw& raw)
{
    CLI::App* pNetwork = app.add_subcommand(
        "network",
        utf8(CTexts::tr("Show network adapters and the cameras on them; plan bandwidth, find what stops images")));
    pNetwork->require_subcommand(0, 1);
    addCommon(*pNetwork, raw);
    addNetworkPlan(*pNetwork, raw);
    CLI::App* pCheck = pNetwork->add_subcommand(
        "check", utf8(CTexts::tr("Open a camera, try the way to it, grab for a moment and say what stops images")));
    pCheck->callback([&raw] { raw.network = "check"; });
    addCommon(*pCheck, raw);
    addCamera(*pCheck, raw);
    addSeconds(*pCheck, raw, utf8(CTexts::tr("How long to grab; 2 by default")));
    pCheck->add_option("--set", raw.settings, utf8(CTexts::tr("NAME=VALUE to write before grabbing")))
        ->take_all()
        ->expected(1);
}

CLI::App* addFirmwareCommand(CLI::App& firmware, SRaw& raw, const char* name, const std::string& text)
{
    CLI::App* pVerb = firmware.add_subcommand(name, text);
    pVerb->callback([&raw, name] { raw.firmware = name; });
    return pVerb;
}

void addFirmware(CLI::App& app, SRaw& raw)
{
    CLI::App* pFirmware =
        app.add_subcommand("firmware", utf8(CTexts::tr("Look into firmware packages and update cameras with them")));
    pFirmware->require_subcommand(1);
    const auto addFile = [&raw](CLI::App& verb)
    {
        verb.add_option("file", raw.packageFile, utf8(CTexts::tr("The firmware package")))->required();
    };
    CLI::App* pList = addFirmwareCommand(*pFirmware, raw, "list", utf8(CTexts::tr("List the updates of a package")));
    pList->add_flag("--json", raw.json, utf8(CTexts::tr("Print JSON")));
    addFile(*pList);
    CLI::App* pMatch = addFirmwareCommand(*pFirmware, raw, "match",
                                          utf8(CTexts::tr("List the updates that fit a camera, newest first")));
    addCommon(*pMatch, raw);
    addFile(*pMatch);
    addCamera(*pMatch, raw);
    CLI::App* pUpdate =
        addFirmwareCommand(*pFirmware, raw, "update", utf8(CTexts::tr("Write an update into a camera")));
    addCommon(*pUpdate, raw);
    addFile(*pUpdate);
    addCamera(*pUpdate, raw);
    pUpdate->add_option("--version", raw.version,
                        utf8(CTexts::tr("The version of the update; the newest that fits by default")));
    pUpdate->add_flag("-y,--yes", raw.yes, utf8(CTexts::tr("Do not ask before a downgrade")));
    CLI::App* pCreate = addFirmwareCommand(*pFirmware, raw, "create",
                                           utf8(CTexts::tr("Make a package of its description and its files")));
    pCreate->add_option("description", raw.descriptionFile, utf8(CTexts::tr("The package's description, XML")))
        ->required();
    addFile(*pCreate);
}

void addVerbs(CLI::App& app, SRaw& raw)
{
    addCommon(*app.add_subcommand("list", utf8(CTexts::tr("List the cameras that can be found"))), raw);
    CLI::App* pWatch = app.add_subcommand("watch", utf8(CTexts::tr("Show cameras coming and going, until Ctrl-C")));
    addCommon(*pWatch, raw);
    addSeconds(*pWatch, raw, utf8(CTexts::tr("End after that time")));
    CLI::App* pInfo = app.add_subcommand("info", utf8(CTexts::tr("Show all that discovery tells of one camera")));
    addCommon(*pInfo, raw);
    addCamera(*pInfo, raw);
    CLI::App* pInterfaces = app.add_subcommand(
        "interfaces", utf8(CTexts::tr("List the interfaces; with a name: its features and the devices on it")));
    addCommon(*pInterfaces, raw);
    pInterfaces->add_option("interface", raw.interfaceName, utf8(CTexts::tr("Identifier, name or full name")));
    addFilter(*pInterfaces, raw);
    addParameterVerbs(app, raw);
    addGrabVerbs(app, raw);
    addMonitor(app, raw);
    addChunks(app, raw);
    addEvents(app, raw);
    addAction(app, raw);
    addNetwork(app, raw);
    addFirmware(app, raw);
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
    options.isToGrab = raw.isToGrab;
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
    options.network = {QString::fromStdString(raw.network), raw.linkMegabits, raw.frameRate, raw.reservePercent,
                       raw.isToApply};
    options.firmware = {QString::fromStdString(raw.firmware), QString::fromStdString(raw.packageFile),
                        QString::fromStdString(raw.descriptionFile), QString::fromStdString(raw.version), raw.yes};
    options.language = QString::fromStdString(raw.language);
}

/** Of --language, which is needed before the command line is parsed: the help that the parser shows is in it. */
QString languageOf(int argc, char** argv)
{
    const std::string option = "--language";
    QString language = QStringLiteral("en");
    for (int i = 1; i < argc; ++i)
    {
        const std::string argument = argv[i];
        if (argument == option && i + 1 < argc)
        {
            language = QString::fromLocal8Bit(argv[i + 1]);
        }
        else if (argument.rfind(option + '=', 0) == 0)
        {
            language = QString::fromStdString(argument.substr(option.size() + 1));
        }
    }
    return language;
}

/** What the parser itself says in a help text. Before verbs are added: they take the help's description over. */
void translateLabels(CLI::App& app)
{
    app.set_help_flag("-h,--help", utf8(CTexts::tr("Show this help and end")));
    auto& formatter = *app.get_formatter();
    formatter.label("Usage", utf8(CTexts::tr("Usage")));
    formatter.label("OPTIONS", utf8(CTexts::tr("OPTIONS")));
    formatter.label("Positionals", utf8(CTexts::tr("Positionals")));
    formatter.label("SUBCOMMAND", utf8(CTexts::tr("SUBCOMMAND")));
    formatter.label("REQUIRED", utf8(CTexts::tr("REQUIRED")));
}

/** The headings above options and verbs are the names of their groups. */
void translateGroups(CLI::App& app)
{
    for (CLI::Option* pOption : app.get_options())
    {
        pOption->group(utf8(CTexts::tr("Options")));
    }
    for (CLI::App* pVerb : app.get_subcommands({}))
    {
        pVerb->group(utf8(CTexts::tr("Subcommands")));
        translateGroups(*pVerb);
    }
}

} // namespace

bool parseCommandLine(int argc, char** argv, SOptions& options, int& exitCode)
{
    constexpr int wrongUsage = 2;
    QTranslator translator;
    HostKit::CHost::installTexts(languageOf(argc, argv), translator);
    SRaw raw;
    CLI::App app(utf8(CTexts::tr("Find, open and use cameras through the CameraPool plugin")), "poolcli");
    translateLabels(app);
    app.set_version_flag("--version", POOLCLI_VERSION, utf8(CTexts::tr("Show the version and end")));
    app.add_option("--language", raw.language, utf8(CTexts::tr("Language of messages: en, ja, zh or ko")))
        ->check(CLI::IsMember({"en", "ja", "zh", "ko"}))
        ->capture_default_str();
    app.require_subcommand(1);
    app.failure_message(CLI::FailureMessage::help);
    app.footer(utf8(CTexts::tr(
        "Exit codes: 0 done, 1 the camera or the plugin refused (the reason is on stderr), 2 wrong usage.")));
    addVerbs(app, raw);
    translateGroups(app);
    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::RequiredError& e)
    {
        // The parser misses a command where there is one that it does not know.
        const std::vector<std::string> unknown = app.remaining();
        if (app.get_subcommands().empty() && !unknown.empty())
        {
            printError(CTexts::tr("There is no command \"%1\"; 'poolcli --help' lists them.")
                           .arg(printable(QString::fromStdString(unknown.front()))));
        }
        else
        {
            app.exit(e, std::cout, std::cerr);
        }
        exitCode = wrongUsage;
        return false;
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
