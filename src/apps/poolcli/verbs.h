// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/options.h"
#include "poolcli/session.h"

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
int runSnapshot(CSession& session, const SOptions& options);
int runChunks(CSession& session, const SOptions& options);
int runStats(CSession& session, const SOptions& options);

/** "NAME=VALUE" writes, "NAME" executes a command; throws CRefusal. */
void applySetting(const QSharedPointer<ParameterCollection::IParameterCollection>& collection, const QString& setting);

} // namespace PoolCli
