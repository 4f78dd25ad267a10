// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"

#include <QString>
#include <QVector>

namespace HostKit
{

/** What was seen of a GigE camera and its way to this computer. Bytes; 0 and "" for what is not known. */
struct SNetworkFacts
{
    QString address;
    QString subnetMask;
    QString adapter; // identifier
    QString adapterAddress;
    QString adapterMask;
    QString accessStatus; // of the discovery: "ReadWrite", "InUse", "Unreachable"
    bool isOpen = false;
    QString openError; // why not
    qint64 mtu = 0;    // of the adapter
    qint64 packetBytes = 0;
    qint64 pathBytes = 0;     // the largest test packet that arrived
    bool isTested = false;    // test packets were asked for
    bool isUsersSize = false; // the packet size is the user's choice
    bool isTriggered = false; // the camera waits for a trigger
    qint64 bufferBytes = 0;   // receive buffer of the stream's socket
    qint64 bufferWanted = 0;  // what it should have
    bool hasGrabbed = false;  // images were asked for
    QString grabError;        // why the grab did not start
    bool isConnectionLost = false;
    qint64 images = 0; // that arrived complete
    qint64 failed = 0; // that did not
};

/** One thing that a person should know, and what to do about it. */
struct SNetworkFinding
{
    QString id;          // for programs: "other-subnet" ...
    bool isStop = false; // no images as long as it is so
    QString text;        // translated
};

/** "a.b.c.d/n" with the prefix length of the mask; the address alone when there is none. */
HOSTKIT_EXPORT QString addressWithPrefix(const QString& address, const QString& mask);

/** Whether the address is in the adapter's network; true when either is not known. */
HOSTKIT_EXPORT bool isInSubnet(const QString& address, const QString& adapterAddress, const QString& adapterMask);

/** What stops images, most likely first, then what may cost some; empty when there is nothing to say. */
HOSTKIT_EXPORT QVector<SNetworkFinding> diagnoseNetwork(const SNetworkFacts& facts);

} // namespace HostKit
