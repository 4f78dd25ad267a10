// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "parametercollection/objectstate.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace ParameterCollection
{

/**
 * The parameters of a device: node maps under paths ("@CameraDevice"), each announced once and attached while the
 * device is open.
 *
 * A parameter name is "<path>/<feature>", or the bare feature, which the announced paths are searched for in the
 * order of announcement. Threads: functions from any thread; signals come on the thread of the change.
 */
class PARAMETERCOLLECTION_EXPORT IParameterCollection : public QObject
{
    Q_OBJECT
public:
    explicit IParameterCollection(QObject* parent = nullptr);
    ~IParameterCollection() override;

    /** In the order of announcement. */
    virtual QStringList paths() const = 0;
    /** Null while none is attached under that path. */
    virtual GenApi::INodeMap* nodeMap(const QString& path) const = 0;
    /** The node of a full or bare name, or null. Valid while its node map is attached: hold the lock of the object
     *  state while using it. */
    virtual GenApi::INode* node(const QString& name) const = 0;
    virtual CObjectState objectState() const = 0;

signals:
    /** The node map can be used already. Both signals are emitted with the lock of the object state held. */
    void nodeMapAttached(const QString& path);
    /** Emitted before the node map goes away; receivers in the emitting thread let go of its nodes here. */
    void nodeMapDetaching(const QString& path);
};

} // namespace ParameterCollection
