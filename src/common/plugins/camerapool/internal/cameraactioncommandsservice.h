// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icameraactioncommandsservice.h"
#include "camerapool/internal/camerapool.h"
#include "parametercollection/iparametercollection.h"

#include <QPointer>

#include <functional>

namespace Velmo
{
class IGigETransportLayer;
struct GigEActionCommandResult;
} // namespace Velmo

namespace Plugin::CameraPool::Internal
{

/** Sends through a GigE transport layer of its own, made for each command. */
class CAMERAPOOL_TEST_EXPORT CCameraActionCommandsService : public ICameraActionCommandsService
{
    Q_OBJECT
public:
    CCameraActionCommandsService(QPointer<CCameraPool> pool, QObject* parent);
    ~CCameraActionCommandsService() override;

    bool isSupported(QSharedPointer<ICameraInfo> info) override;
    bool isScheduledSupported(QSharedPointer<ICameraInfo> info) override;
    bool issue(unsigned int deviceKey, unsigned int groupKey, unsigned int groupMask,
               QVector<SGigEActionCommandResult>& results, const QString& broadcastAddress, unsigned int timeoutMs,
               unsigned int* numResults) override;
    bool schedule(unsigned int deviceKey, unsigned int groupKey, unsigned int groupMask, unsigned long long actionTime,
                  QVector<SGigEActionCommandResult>& results, const QString& broadcastAddress, unsigned int timeoutMs,
                  unsigned int* numResults) override;

    /** Null when the camera or the pool is gone. */
    QSharedPointer<ParameterCollection::IParameterCollection> getParameterColllection(QSharedPointer<ICameraInfo> info);

private:
    using Command = std::function<bool(Velmo::IGigETransportLayer&, Velmo::GigEActionCommandResult*)>;

    bool send(const Command& command, QVector<SGigEActionCommandResult>& results, unsigned int* numResults);

    QPointer<CCameraPool> m_pool;
};

} // namespace Plugin::CameraPool::Internal
