// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/dataprocessinggraph.h"

#include "dataprocessingcore/igraphservice.h"
#include "utils/exceptions.h"

#include <QLoggingCategory>

#include <algorithm>
#include <exception>

namespace Plugin::DataProcessingCore
{

namespace
{
Q_LOGGING_CATEGORY(logGraph, "Data Processing")
} // namespace

IGraphService::IGraphService(QObject* parent) : IService(parent) {}

IGraphService::~IGraphService() = default;

CDataProcessingGraph::CDataProcessingGraph(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<ANodeDataModelPtr>("Plugin::DataProcessingCore::ANodeDataModelPtr");
}

CDataProcessingGraph::~CDataProcessingGraph()
{
    for (const ANodeDataModelPtr& node : qAsConst(m_nodes))
    {
        node->disconnect(this);
    }
}

void CDataProcessingGraph::addNode(const ANodeDataModelPtr& node)
{
    if (node.isNull())
    {
        throw Core::Exception::ArgumentException(tr("A null node cannot be added to the graph."));
    }
    for (const ANodeDataModelPtr& other : qAsConst(m_nodes))
    {
        if (other == node)
        {
            throw Core::Exception::ArgumentException(
                tr("The node \"%1\" is in the graph already.").arg(node->caption()));
        }
        if (node->isUnique() && node->uniqueName() != NoUniqueName && other->name() == node->name() &&
            other->uniqueName() == node->uniqueName())
        {
            throw Core::Exception::ArgumentException(
                tr("The graph has a node \"%1\" for \"%2\" already.").arg(node->name(), node->uniqueName()));
        }
    }
    m_nodes.append(node);
    ANodeDataModel* pNode = node.data();
    connect(pNode, &ANodeDataModel::dataUpdated, this, [this, pNode](int index) { distribute(pNode, index, true); });
    connect(pNode, &ANodeDataModel::dataInvalidated, this,
            [this, pNode](int index) { distribute(pNode, index, false); });
    emit nodeAdded(node);
}

bool CDataProcessingGraph::removeNode(const ANodeDataModelPtr& node)
{
    if (!m_nodes.contains(node))
    {
        return false;
    }
    // The argument may be the graph's own reference, which goes below.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const ANodeDataModelPtr kept = node;
    const QMap<quint64, SNodeConnection> links = m_links;
    for (auto link = links.begin(); link != links.end(); ++link)
    {
        if (link->source == kept || link->consumer == kept)
        {
            cut(link.key());
        }
    }
    kept->disconnect(this);
    if (!m_nodes.removeOne(kept))
    {
        return false; // a consumer that lost its data removed the node itself
    }
    emit nodeRemoved(kept);
    return true;
}

QVector<ANodeDataModelPtr> CDataProcessingGraph::nodes() const
{
    return m_nodes;
}

void CDataProcessingGraph::checkPort(const ANodeDataModelPtr& node, ENodePortType type, int index) const
{
    if (node.isNull() || !m_nodes.contains(node))
    {
        throw Core::Exception::ArgumentException(tr("A node to be connected is not in the graph."));
    }
    if (index < 0 || index >= node->nPorts(type))
    {
        throw Core::Exception::ArgumentOutOfRangeException(
            type == ENodePortType::In ? tr("The node \"%1\" has no input port %2.").arg(node->caption()).arg(index)
                                      : tr("The node \"%1\" has no output port %2.").arg(node->caption()).arg(index));
    }
}

void CDataProcessingGraph::checkFree(const SNodeConnection& wanted) const
{
    for (const SNodeConnection& existing : m_links)
    {
        if (existing.consumer == wanted.consumer && existing.inPort == wanted.inPort)
        {
            throw Core::Exception::InvalidOperationException(
                tr("Input port %1 of the node \"%2\" is connected already.")
                    .arg(wanted.inPort)
                    .arg(wanted.consumer->caption()));
        }
        if (existing.source == wanted.source && existing.outPort == wanted.outPort &&
            wanted.source->portOutConnectionPolicy(wanted.outPort) == ENodeConnectionPolicy::One)
        {
            throw Core::Exception::InvalidOperationException(
                tr("Output port %1 of the node \"%2\" allows only one connection.")
                    .arg(wanted.outPort)
                    .arg(wanted.source->caption()));
        }
    }
}

bool CDataProcessingGraph::reaches(const ANodeDataModel* from, const ANodeDataModel* to) const
{
    QVector<const ANodeDataModel*> open{from};
    QSet<const ANodeDataModel*> seen;
    while (!open.isEmpty())
    {
        const ANodeDataModel* pNode = open.takeLast();
        if (pNode == to)
        {
            return true;
        }
        if (seen.contains(pNode))
        {
            continue;
        }
        seen.insert(pNode);
        for (const SLink& link : m_linksOfSource.value(const_cast<ANodeDataModel*>(pNode)))
        {
            open.append(link.connection.consumer.data());
        }
    }
    return false;
}

void CDataProcessingGraph::connectPorts(const ANodeDataModelPtr& source, int outPort, const ANodeDataModelPtr& consumer,
                                        int inPort)
{
    checkPort(source, ENodePortType::Out, outPort);
    checkPort(consumer, ENodePortType::In, inPort);
    const SNodeDataType given = source->dataType(ENodePortType::Out, outPort);
    const SNodeDataType wanted = consumer->dataType(ENodePortType::In, inPort);
    if (given.id != wanted.id)
    {
        throw Core::Exception::ArgumentException(
            tr("Output port %1 of the node \"%2\" gives \"%3\", but input port %4 of the node \"%5\" takes \"%6\".")
                .arg(outPort)
                .arg(source->caption(), given.id)
                .arg(inPort)
                .arg(consumer->caption(), wanted.id));
    }
    const SNodeConnection connection{source, outPort, consumer, inPort};
    checkFree(connection);
    if (reaches(consumer.data(), source.data()))
    {
        throw Core::Exception::InvalidOperationException(
            tr("Connecting the node \"%1\" to the node \"%2\" would close a circle.")
                .arg(source->caption(), consumer->caption()));
    }
    const SLink link{connection, ++m_lastSerial};
    m_links.insert(link.serial, connection);
    m_linksOfSource[source.data()].append(link);
    if (const CNodeDataPtr data = source->outData(outPort))
    {
        deliver(link, data);
    }
}

bool CDataProcessingGraph::disconnectPorts(const ANodeDataModelPtr& source, int outPort,
                                           const ANodeDataModelPtr& consumer, int inPort)
{
    for (auto link = m_links.cbegin(); link != m_links.cend(); ++link)
    {
        if (link->source == source && link->outPort == outPort && link->consumer == consumer && link->inPort == inPort)
        {
            cut(link.key());
            return true;
        }
    }
    return false;
}

QVector<SNodeConnection> CDataProcessingGraph::connections() const
{
    return m_links.values().toVector();
}

void CDataProcessingGraph::cut(quint64 serial)
{
    const auto found = m_links.find(serial);
    if (found == m_links.end())
    {
        return;
    }
    const SLink link{*found, serial};
    m_links.erase(found);
    ANodeDataModel* pSource = link.connection.source.data();
    QVector<SLink>& ofSource = m_linksOfSource[pSource];
    ofSource.erase(std::remove_if(ofSource.begin(), ofSource.end(),
                                  [serial](const SLink& other) { return other.serial == serial; }),
                   ofSource.end());
    if (ofSource.isEmpty())
    {
        m_linksOfSource.remove(pSource);
    }
    deliver(link, {});
    m_failed.remove(serial);
}

void CDataProcessingGraph::distribute(ANodeDataModel* source, int outPort, bool valid)
{
    const QVector<SLink> links = m_linksOfSource.value(source);
    if (links.isEmpty())
    {
        return;
    }
    const CNodeDataPtr data = valid ? source->outData(outPort) : CNodeDataPtr();
    for (const SLink& link : links)
    {
        if (link.connection.outPort == outPort && m_links.contains(link.serial))
        {
            deliver(link, data);
        }
    }
}

void CDataProcessingGraph::deliver(const SLink& link, const CNodeDataPtr& data)
{
    try
    {
        link.connection.consumer->setInData(data, link.connection.inPort);
        m_failed.remove(link.serial);
    }
    catch (const std::exception& e)
    {
        reportFailure(link, QString::fromUtf8(e.what()));
    }
    catch (...)
    {
        reportFailure(link, tr("Unknown error."));
    }
}

void CDataProcessingGraph::reportFailure(const SLink& link, const QString& reason)
{
    if (m_failed.contains(link.serial))
    {
        return;
    }
    m_failed.insert(link.serial);
    qCWarning(logGraph, "The node \"%s\" could not take data at input port %d. Reason: %s",
              qUtf8Printable(link.connection.consumer->caption()), link.connection.inPort, qUtf8Printable(reason));
    emit consumerFailed(link.connection.consumer, link.connection.inPort, reason);
}

} // namespace Plugin::DataProcessingCore
