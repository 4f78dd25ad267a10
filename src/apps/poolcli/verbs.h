// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/options.h"
#include "poolcli/session.h"

#include <QJsonArray>

namespace PoolCli
{

// One function a verb. Each prints its result on stdout, throws CRefusal when the camera or the plugin refuses, and
// returns an exit code. A Ctrl-C ends what was begun in order and is no failure.
int runList(CSession& session, const SOptions& options);
int runWatch(CSession& session, const SOptions& options);
int runInfo(CSession& session, const SOptions& options);
int runInterfaces(CSession& session, const SOptions& options);
int runFeatures(CSession& session, const SOptions& options);
int runGet(CSession& session, const SOptions& options);
int runSet(CSession& session, const SOptions& options);
int runGrab(CSession& session, const SOptions& options);
int runMonitor(CSession& session, const SOptions& options);
int runSnapshot(CSession& session, const SOptions& options);
int runChunks(CSession& session, const SOptions& options);
int runEvents(CSession& session, const SOptions& options);
int runStats(CSession& session, const SOptions& options);
int runAction(CSession& session, const SOptions& options);
int runNetwork(CSession& session, const SOptions& options);
/** Any but "create". A Ctrl-C in the midst of an update is a failure: the update is not complete. */
int runFirmware(CSession& session, const SOptions& options);
/** Needs no plugins. */
int runFirmwareCreate(const SOptions& options);

/** The devices on an open interface, by their features' names; its selection stays as it is. Empty when it does not
 *  list devices. */
QJsonArray readDevices(const ParameterCollection::IParameterCollection& collection);

/** "NAME=VALUE" writes, "NAME" executes a command; throws CRefusal. */
void applySetting(const QSharedPointer<ParameterCollection::IParameterCollection>& collection, const QString& setting);

/** Those of the options that are for every camera, then those for this one. */
void applySettings(CSession& session, const HostKit::CameraInfoPtr& camera, const SOptions& options);
/** Throws CRefusal when a setting is for a camera that is not among these. */
void checkCameraSettings(const QVector<HostKit::CameraInfoPtr>& cameras, const SOptions& options);

} // namespace PoolCli
