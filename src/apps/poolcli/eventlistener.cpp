// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/eventlistener.h"

#include "genapi/inodes.h"
#include "parametercollection/iparametercollection.h"
#include "parametercollection/parameterpath.h"

#include <QCoreApplication>
#include <QHash>

#include <deque>
#include <mutex>

namespace PoolCli
{
namespace
{

using Features = QVector<GenApi::INode*>;

const QString Prefix = QStringLiteral("Event"); // GenICam standard feature naming conventions

QString nameOf(const GenApi::INode& node)
{
    return QString::fromUtf8(node.GetName().c_str());
}

/** The event whose feature it is: the one with the longest name that the feature's begins with; "" when of none. */
QString eventOf(const QString& feature, const QStringList& events)
{
    QString found;
    for (const QString& event : events)
    {
        if (event.size() > found.size() && feature.startsWith(Prefix + event))
        {
            found = event;
        }
    }
    return found;
}

/** Features that show values, by their event. */
QHash<QString, Features> featuresOf(const GenApi::INodeMap& nodes, const QStringList& events)
{
    QHash<QString, Features> result;
    GenApi::NodeList all;
    nodes.GetNodes(all);
    for (GenApi::INode* pNode : all)
    {
        const QString event = pNode->IsFeature() ? eventOf(nameOf(*pNode), events) : QString();
        if (!event.isEmpty() && GenApi::CValuePtr(pNode) && !GenApi::CCommandPtr(pNode) && !GenApi::CCategoryPtr(pNode))
        {
            result[event].append(pNode);
        }
    }
    return result;
}

/** Any thread. */
QString valueOf(GenApi::INode* pNode)
{
    try
    {
        return QString::fromUtf8(GenApi::CValuePtr(pNode)->ToString().c_str());
    }
    catch (const GenICam::GenericException& e)
    {
        return QStringLiteral("<%1>").arg(QString::fromUtf8(e.GetDescription()));
    }
}

/** On the event thread. */
SSeenEvent read(const QString& event, const Features& features)
{
    SSeenEvent seen;
    seen.name = event;
    for (GenApi::INode* pNode : features)
    {
        if (!GenApi::IsReadable(pNode))
        {
            continue;
        }
        const QString name = nameOf(*pNode);
        const QString value = valueOf(pNode);
        if (name == Prefix + event)
        {
            bool isNumber = false;
            const qint64 id = value.toLongLong(&isNumber, 0);
            seen.id = isNumber ? id : seen.id;
        }
        else if (name == Prefix + event + QLatin1String("Timestamp"))
        {
            seen.timestamp = value;
        }
        else
        {
            seen.values.append({name, value});
        }
    }
    return seen;
}

} // namespace

/** What the event thread puts in and the main thread takes. */
struct CEventListener::SQueue
{
    void put(SSeenEvent event)
    {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            if (isShownAgain(event))
            {
                return;
            }
            latest[event.name] = event;
            events.push_back(std::move(event));
        }
        // An event loop that waits for a condition looks again when it has handled something.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] {}, Qt::QueuedConnection);
    }

    /** Callbacks also come when all features are to be read anew, as at the begin of a grab. */
    bool isShownAgain(const SSeenEvent& event) const
    {
        const auto found = latest.constFind(event.name);
        return found != latest.constEnd() && !event.timestamp.isEmpty() && found->timestamp == event.timestamp &&
               found->values == event.values;
    }

    std::mutex mutex; // guards the members below
    std::deque<SSeenEvent> events;
    QHash<QString, SSeenEvent> latest; // by event
};

CEventListener::CEventListener(ParameterCollection::IParameterCollection& collection, const QStringList& all,
                               const QStringList& wanted)
    : m_collection(collection), m_queue(std::make_shared<SQueue>())
{
    const ParameterCollection::CScopedObjectStateLock lock(m_collection.objectState());
    GenApi::INodeMap* pNodes = m_collection.nodeMap(ParameterCollection::ParameterPath::CameraDevice);
    if (pNodes == nullptr)
    {
        return;
    }
    const auto features = featuresOf(*pNodes, all);
    for (const QString& event : wanted)
    {
        listen(*pNodes, event, features.value(event));
    }
}

CEventListener::~CEventListener()
{
    const ParameterCollection::CScopedObjectStateLock lock(m_collection.objectState());
    GenApi::INodeMap* pNodes = m_collection.nodeMap(ParameterCollection::ParameterPath::CameraDevice);
    for (const auto& [name, handle] : m_callbacks)
    {
        GenApi::INode* pNode = pNodes == nullptr ? nullptr : pNodes->GetNode(name.toUtf8().constData());
        if (pNode != nullptr)
        {
            pNode->DeregisterCallback(handle);
        }
    }
}

void CEventListener::listen(GenApi::INodeMap& nodes, const QString& event, const Features& features)
{
    if (features.isEmpty())
    {
        return;
    }
    GenApi::INode* pIdentifier = nodes.GetNode((Prefix + event).toUtf8().constData());
    GenApi::INode* pNode = pIdentifier != nullptr ? pIdentifier : features.first();
    const auto handle = pNode->RegisterCallback(
        [pQueue = m_queue, event, features](GenApi::INode* pChanged)
        {
            if (GenApi::IsReadable(pChanged))
            {
                pQueue->put(read(event, features));
            }
        });
    m_callbacks.append({nameOf(*pNode), handle});
    m_heard.append(event);
}

QStringList CEventListener::heard() const
{
    return m_heard;
}

bool CEventListener::take(SSeenEvent& event)
{
    const std::lock_guard<std::mutex> lock(m_queue->mutex);
    if (m_queue->events.empty())
    {
        return false;
    }
    event = std::move(m_queue->events.front());
    m_queue->events.pop_front();
    return true;
}

} // namespace PoolCli
