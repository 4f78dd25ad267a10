// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/verbs.h"

namespace PoolCli
{

// The commands of the verb network; see verbs.h.
int runNetworkPlan(CSession& session, const SOptions& options);
int runNetworkCheck(CSession& session, const SOptions& options);

bool isGigE(const Plugin::CameraPool::IBaseInfo& info);

/** What an adapter tells; 0 and "" for what it does not know. */
struct SAdapterFacts
{
    QString id;
    QString name;
    QString address;
    QString mask;
    QString mac;
    qint64 mtu = 0;           // bytes
    qint64 linkMegabits = 0;  // per second
    qint64 receiveBuffer = 0; // bytes that a socket may have at most
    QJsonArray devices;       // as readDevices()
};

/** Opens the interface for a moment; throws CRefusal when that fails. */
SAdapterFacts readAdapter(CSession& session, const HostKit::InterfaceInfoPtr& info);

/** A camera's parameters for the moment. Those that are not there, or cannot be read, are the fallback. */
qint64 readInteger(const QSharedPointer<ParameterCollection::IParameterCollection>& collection, const QString& name,
                   qint64 fallback = 0);

/** Has the way to the camera tried by test packets. Why that did not work; "" when it did. */
QString probePacketSize(const QSharedPointer<ParameterCollection::IParameterCollection>& collection);

} // namespace PoolCli
