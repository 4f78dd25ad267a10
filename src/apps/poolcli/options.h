// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <utility>

namespace PoolCli
{

/** What the verb action is to do. */
struct SActionOptions
{
    QString what; // "issue", "schedule" or "support"
    quint32 deviceKey = 0;
    quint32 groupKey = 0;
    quint32 groupMask = 0;
    quint64 time = 0; // of a scheduled one, ticks of the cameras' clocks
    QString address;
    unsigned int timeoutMs = 0; // 0: no answer is asked for
};

/** What the verb network is to do. */
struct SNetworkOptions
{
    QString what;            // "" lists, "plan", "check"
    double linkMegabits = 0; // 0: what the adapter says
    double frameRate = 0;    // of every camera; 0: what the camera says
    double reservePercent = 0;
    bool isToApply = false;
};

/** What the verb firmware is to do. */
struct SFirmwareOptions
{
    QString what;        // "list", "match", "update" or "create"
    QString file;        // the package
    QString description; // what it is created from
    QString version;     // "" for the newest
    bool isAgreed = false;
};

/** What the command line asks for. Times in milliseconds; 0 images or time: no limit. */
struct SOptions
{
    QString verb;
    QStringList cameras;
    QStringList arguments;
    QStringList settings;                                // NAME=VALUE, applied before a grab
    QVector<std::pair<QString, QString>> cameraSettings; // camera and NAME=VALUE, applied after those
    bool json = false;
    int discoveryTimeoutMs = 3000;
    int durationMs = 0;
    int images = 0;        // or events
    bool isToGrab = false; // while events are shown
    int timeoutMs = 5000;
    QString output;
    QString filter;
    QString visibility = QStringLiteral("Guru");
    QString module;        // "camera", "instant" ...; "" for all of the camera's own
    QString interfaceName; // "" for all
    QStringList chunks;    // to enable; empty for all that the camera has
    SActionOptions action;
    SNetworkOptions network;
    SFirmwareOptions firmware;
    QString language = QStringLiteral("en");
};

/** False: the program ends with exitCode (help was asked for: 0, wrong usage: 2); the text has been printed. */
bool parseCommandLine(int argc, char** argv, SOptions& options, int& exitCode);

} // namespace PoolCli
