// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// Emulated cameras of 512x512 at 30 images a second through the plugin: whether any image is lost, and what one costs.

#include "streams.h"
#include "streams/childrun.h"
#include "streams/sdkstreams.h"
#include "support/figures.h"

#include <QCoreApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace
{

using namespace Benchmarks;

constexpr int CameraCounts[] = {1, 16, 64, 128};
constexpr int ImagesPerSecond = 30;
constexpr int DefaultSeconds = 5;

QByteArray describe(int cameras)
{
    return QStringLiteral("{\"cameras\":[{\"count\":%1,\"serial\":\"EMU-0001\",\"sensor\":{\"width\":512,"
                          "\"height\":512},\"frameRate\":%2}]}")
        .arg(cameras)
        .arg(ImagesPerSecond)
        .toUtf8();
}

void report(CFigures& figures, int cameras, int seconds)
{
    const auto plugin = runInChild("plugin", cameras, seconds);
    const auto sdk = runInChild("sdk", cameras, seconds);
    const std::string of = ", " + std::to_string(cameras) + (cameras == 1 ? " camera" : " cameras");
    const auto images = static_cast<double>(plugin.images);
    figures.add(
        {"images lost" + of, static_cast<double>(plugin.losses), "images", "", 0, CFigures::EGoal::AtMost, 0, false});
    figures.add({"images lost by the SDK alone" + of, static_cast<double>(sdk.losses), "images", "", 0});
    figures.add({"rate" + of, images / plugin.seconds, "images/s", "what the cameras send",
                 static_cast<double>(cameras) * ImagesPerSecond, CFigures::EGoal::AtLeast, 0.98});
    figures.add({"processor time of one image" + of, plugin.cpuMicroseconds / images, "us", "the SDK alone",
                 sdk.cpuMicroseconds / static_cast<double>(sdk.images)});
    figures.add({"load" + of, plugin.cpuMicroseconds / plugin.seconds / 1e6, "cores", "", 0});
    figures.add({"threads" + of, static_cast<double>(plugin.threads), "", "", 0});
    figures.add({"file descriptors" + of, static_cast<double>(plugin.descriptors), "", "", 0});
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_NO_GLIB", "1");
    qputenv("CAMERAPOOL_GIGE_ADAPTERS", "none");
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QCoreApplication application(argc, argv);
    // Cameras keep settings; not among the user's.
    const QTemporaryDir settings;
    QCoreApplication::setOrganizationName(QStringLiteral("CameraPool"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 5 && arguments.at(1) == QLatin1String("--one"))
    {
        // In a process of its own, since the cameras of a process are fixed by its environment.
        const int cameras = arguments.at(3).toInt();
        const int ownSeconds = arguments.at(4).toInt();
        return printRun(
            [&]
            {
                return arguments.at(2) == QLatin1String("plugin") ? streamThroughThePlugin(cameras, ownSeconds)
                                                                  : streamThroughTheSdk(cameras, ownSeconds);
            });
    }
    const int seconds = arguments.size() == 2 ? arguments.at(1).toInt() : DefaultSeconds;
    const QTemporaryDir folder;
    CFigures figures("Emulated cameras, 512x512 at 30 images/s each, through the plugin");
    try
    {
        for (const int cameras : CameraCounts)
        {
            QFile file(folder.filePath(QStringLiteral("cameras.json")));
            if (!file.open(QIODevice::WriteOnly) || file.write(describe(cameras)) < 0)
            {
                throw std::runtime_error("the file of the cameras cannot be written");
            }
            file.close();
            qputenv("CAMERAPOOL_EMULATION_FILE", file.fileName().toUtf8());
            report(figures, cameras, seconds);
        }
    }
    catch (const std::exception& e)
    {
        std::fprintf(stderr, "bench_streaming: %s\n", e.what());
        return 1;
    }
    return 0;
}
