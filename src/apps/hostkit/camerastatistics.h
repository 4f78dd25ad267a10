// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/cameranames.h"
#include "hostkit/hostkit_export.h"

#include <QJsonObject>

#include <memory>

namespace HostKit
{

class CHost;

/**
 * The statistics of one camera, as its source node gives them to the data-processing graph: puts the node and a
 * consumer of its statistics into the graph for the life of the object. Main thread; must go before the host stops.
 */
class HOSTKIT_EXPORT CCameraStatistics
{
public:
    /** Throws Core::Exception::BaseException when the graph refuses, as it does a second source of one camera. */
    CCameraStatistics(CHost& host, const CameraInfoPtr& camera);
    ~CCameraStatistics();
    CCameraStatistics(const CCameraStatistics&) = delete;
    CCameraStatistics& operator=(const CCameraStatistics&) = delete;

    /** The newest object, its keys as the source node names them; empty before the first. */
    QJsonObject latest() const;

private:
    struct SPrivate;
    std::unique_ptr<SPrivate> m_p;
};

} // namespace HostKit
