// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/iserializable.h"
#include "dataprocessingcore/nodedata.h"
#include "utils/id.h"

#include <QJsonObject>
#include <QObject>

namespace Plugin::DataProcessingCore
{

/** The side of a node that a port is on. */
enum class ENodePortType
{
    None = 0,
    In = 1,
    Out = 2
};

/** How many connections a port may have. */
enum class ENodeConnectionPolicy
{
    One = 0,
    Many = 1
};

/** Whether a node can work with its settings and inputs. */
enum class ENodeValidationState
{
    Valid = 0,
    Warning = 1,
    Error = 2
};

/** What uniqueName() is for a node that has none. */
inline const QString NoUniqueName = QStringLiteral("DataProcessingCore.NoUniqueName");

/**
 * A node of the data-processing graph: takes data at its input ports and gives data at its output ports.
 *
 * Ports are numbered from 0 on each side. Threads: the main thread; dataUpdated may be emitted elsewhere and then
 * reaches the graph queued.
 */
class DATAPROCESSINGCORE_EXPORT ANodeDataModel : public QObject, public Plugin::AppCore::ISerializable
{
    Q_OBJECT
public:
    explicit ANodeDataModel(QObject* parent = nullptr);
    ~ANodeDataModel() override;

    virtual QString caption() const = 0;
    virtual void setCaption(const QString& caption) = 0;
    virtual bool captionVisible() const = 0;
    virtual QString portCaption(ENodePortType type, int index) const = 0;
    virtual bool portCaptionVisible(ENodePortType type, int index) const = 0;
    /** The name under which the registry creates such nodes. */
    virtual QString name() const = 0;
    QJsonObject save() const override = 0; // again, for its place in the virtual table
    void restore(const QJsonObject& object) override = 0;
    virtual int nPorts(ENodePortType type) const = 0;
    virtual SNodeDataType dataType(ENodePortType type, int index) const = 0;
    /** Null takes the data away. May throw: the graph reports it and goes on with the other consumers. */
    virtual void setInData(CNodeDataPtr data, int index) = 0;
    /** Null before there is any. */
    virtual CNodeDataPtr outData(int index) = 0;
    /** The node stands for something that exists once, such as a camera. */
    virtual bool isUnique() const = 0;
    /** What the unique node stands for; NoUniqueName when nothing was set. */
    virtual QString uniqueName() const = 0;
    virtual void setUniqueName(const QString& uniqueName) = 0;
    virtual ENodeConnectionPolicy portOutConnectionPolicy(int index) const = 0;
    virtual ENodeValidationState validationState() const = 0;
    virtual QString validationMessage() const = 0;

signals:
    /** There is new data at the output port. */
    void dataUpdated(int index);
    /** The data at the output port holds no longer. */
    void dataInvalidated(int index);
};

using ANodeDataModelPtr = QSharedPointer<ANodeDataModel>;

} // namespace Plugin::DataProcessingCore
