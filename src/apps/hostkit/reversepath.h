// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"

#include <QString>

namespace HostKit
{

/** Where the system keeps its settings; a test gives others. */
struct SSystemFiles
{
    QString adapterSettings = QStringLiteral("/proc/sys/net/ipv4/conf"); // a folder with one for each adapter and "all"
    QString routes = QStringLiteral("/proc/net/route");
};

/** The reverse path filter that applies to an adapter (rp_filter, RFC 3704): the larger of its own and that of all; 0:
 *  none, 1: strict, 2: loose. 0 also where nothing can be read. */
HOSTKIT_EXPORT int reversePathFilter(const QString& adapterName, const SSystemFiles& files = {});

/** Whether the system drops what comes in on the adapter from an address of a network that it has no route to, as the
 *  answers of cameras in another subnet are. A default route is a way back to everybody: by any adapter for the loose
 *  filter, by this one for the strict one. */
HOSTKIT_EXPORT bool dropsOtherSubnets(const QString& adapterName, const SSystemFiles& files = {});

} // namespace HostKit
