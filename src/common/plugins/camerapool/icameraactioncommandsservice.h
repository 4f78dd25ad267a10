// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/gigeactioncommandresult.h"
#include "camerapool/icamerainfo.h"
#include "servicecore/iservice.h"

#include <QVector>

namespace Plugin::CameraPool
{

/**
 * Service: GigE Vision action commands, which trigger an action in many cameras at once. They go past opened cameras,
 * straight to the network.
 *
 * Threads: any, for issue() and schedule(); the main thread for the others. Nothing throws.
 */
class CAMERAPOOL_EXPORT ICameraActionCommandsService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit ICameraActionCommandsService(QObject* parent = nullptr);
    ~ICameraActionCommandsService() override;

    /** Whether the camera takes action commands; false also while it is not open. */
    virtual bool isSupported(QSharedPointer<ICameraInfo> info) = 0;
    /** Whether the camera takes scheduled ones too, which needs a clock that follows IEEE 1588. */
    virtual bool isScheduledSupported(QSharedPointer<ICameraInfo> info) = 0;

    /**
     * Triggers at once every camera that has this device key, an action signal of this group key, and a bit of its
     * group mask in common with this one.
     *
     * results: its size is the number of answers that there is room for; holds the answers afterwards, in the order of
     * their arrival, each camera once.
     * broadcastAddress: "255.255.255.255" for every adapter, the broadcast address of a network, or one camera's own.
     * timeoutMs: blocks until that long, or until *numResults cameras have answered. 0 asks for no answers.
     * numResults: how many answers are waited for, no more than there is room for; afterwards the number of answers.
     * Null asks for no answers.
     * Returns true when the command was sent and every awaited camera answered, be it with an error; false else, with
     * the reason in the log (debug). When sending failed, results and *numResults tell nothing.
     */
    virtual bool issue(unsigned int deviceKey, unsigned int groupKey, unsigned int groupMask,
                       QVector<SGigEActionCommandResult>& results, const QString& broadcastAddress,
                       unsigned int timeoutMs, unsigned int* numResults) = 0;
    /** As issue(), but the cameras act at actionTime, in the ticks of their timestamps. */
    virtual bool schedule(unsigned int deviceKey, unsigned int groupKey, unsigned int groupMask,
                          unsigned long long actionTime, QVector<SGigEActionCommandResult>& results,
                          const QString& broadcastAddress, unsigned int timeoutMs, unsigned int* numResults) = 0;
};

} // namespace Plugin::CameraPool
