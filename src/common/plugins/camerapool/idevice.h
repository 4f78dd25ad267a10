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

/** A device that can be opened: a camera or an interface. Made and owned by its pool. Main thread. */
class CAMERAPOOL_EXPORT IDevice : public QObject
{
    Q_OBJECT
public:
    explicit IDevice(QObject* parent = nullptr);
    ~IDevice() override;

    /** The record the device was made for. */
    virtual QSharedPointer<Plugin::AppCore::IInfo> getInfo() const = 0;
    virtual bool isConnected() const = 0;
    virtual bool isOpen() const = 0;
    virtual QSharedPointer<ParameterCollection::IParameterCollection> getParameterCollection() const = 0;

public slots:
    /** False when it could not be opened: the reason is the record's error string. */
    virtual bool open(bool monitorMode) = 0;
    /** Nothing when it is not open. */
    virtual void close() = 0;

signals:
    void deviceOpened();
    void deviceClosed();
};

} // namespace Plugin::CameraPool
