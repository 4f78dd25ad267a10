// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/anodedatamodel.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QVector>

namespace Plugin::DataProcessingCore
{

/** From an output port of one node to an input port of another. */
struct DATAPROCESSINGCORE_EXPORT SNodeConnection
{
    ANodeDataModelPtr source;
    int outPort = 0;
    ANodeDataModelPtr consumer;
    int inPort = 0;
};

/**
 * Nodes and their connections; carries data from outputs to inputs.
 *
 * When a node emits dataUpdated, the data of that port is handed to every connected input in the order in which they
 * were connected, at once, on the graph's thread; dataInvalidated hands them null. A new connection receives the data
 * that is there already; a cut one receives null. The graph holds a reference to each of its nodes.
 *
 * Consumers may change the graph while they receive: those cut off meanwhile get nothing more of that round.
 * Threads: the main thread.
 */
class DATAPROCESSINGCORE_EXPORT CDataProcessingGraph : public QObject
{
    Q_OBJECT
public:
    explicit CDataProcessingGraph(QObject* parent = nullptr);
    ~CDataProcessingGraph() override;

    /** Throws Core::Exception::ArgumentException for null, for a node that is in the graph already, and for a unique
     *  node with a unique name when one of the same name and unique name is in it. */
    void addNode(const ANodeDataModelPtr& node);
    /** Cuts its connections first. False when it is not in the graph. */
    bool removeNode(const ANodeDataModelPtr& node);
    /** In the order of addition. */
    QVector<ANodeDataModelPtr> nodes() const;

    /**
     * Throws Core::Exception::ArgumentException when a node is not in the graph or the types of the ports differ,
     * ArgumentOutOfRangeException when there is no such port, InvalidOperationException when the input is taken, when
     * the output allows one connection only and has it, and when the connection would close a circle.
     */
    void connectPorts(const ANodeDataModelPtr& source, int outPort, const ANodeDataModelPtr& consumer, int inPort);
    /** False when there is no such connection. */
    bool disconnectPorts(const ANodeDataModelPtr& source, int outPort, const ANodeDataModelPtr& consumer, int inPort);
    /** In the order in which they were made. */
    QVector<SNodeConnection> connections() const;

signals:
    void nodeAdded(const Plugin::DataProcessingCore::ANodeDataModelPtr& node);
    void nodeRemoved(const Plugin::DataProcessingCore::ANodeDataModelPtr& node);
    /** A consumer threw. Emitted, and logged, once until that consumer's port takes data again without throwing. */
    void consumerFailed(const Plugin::DataProcessingCore::ANodeDataModelPtr& consumer, int inPort,
                        const QString& reason);

private:
    struct SLink
    {
        SNodeConnection connection;
        quint64 serial;
    };

    void checkPort(const ANodeDataModelPtr& node, ENodePortType type, int index) const;
    void checkFree(const SNodeConnection& wanted) const;
    bool reaches(const ANodeDataModel* from, const ANodeDataModel* to) const;
    void distribute(ANodeDataModel* source, int outPort, bool valid);
    void deliver(const SLink& link, const CNodeDataPtr& data);
    void reportFailure(const SLink& link, const QString& reason);
    void cut(quint64 serial);

    QVector<ANodeDataModelPtr> m_nodes;
    QMap<quint64, SNodeConnection> m_links;                 // by serial, that is in the order in which they were made
    QHash<ANodeDataModel*, QVector<SLink>> m_linksOfSource; // the same links by source, in the same order
    QSet<quint64> m_failed;                                 // serials of links whose consumer threw last time
    quint64 m_lastSerial = 0;
};

} // namespace Plugin::DataProcessingCore

Q_DECLARE_METATYPE(Plugin::DataProcessingCore::ANodeDataModelPtr)
