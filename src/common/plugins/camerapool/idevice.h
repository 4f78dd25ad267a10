// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/iinfo.h"
#include "camerapool/camerapool_export.h"
#include "parametercollection/iparametercollection.h"

#include <QObject>
#include <QSharedPointer>

namespace Plugin::CameraPool
{

/** A device of any kind that can be opened. Threads: main. */
class CAMERAPOOL_EXPORT IDevice : public QObject
{
    Q_OBJECT
public:
    explicit IDevice(QObject* parent = nullptr);
    ~IDevice() override;

    virtual QSharedPointer<Plugin::AppCore::IInfo> getInfo() const = 0;
    /** Open, and not removed since. */
    virtual bool isConnected() const = 0;
    virtual bool isOpen() const = 0;
    virtual QSharedPointer<ParameterCollection::IParameterCollection> getParameterCollection() const = 0;

public slots:
    /** True when the device is open on return; on failure the record's error string says why. */
    virtual bool open(bool monitorMode) = 0;
    virtual void close() = 0;

signals:
    void deviceOpened();
    void deviceClosed();
};

} // namespace Plugin::CameraPool
