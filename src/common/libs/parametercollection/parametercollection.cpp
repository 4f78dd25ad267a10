// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/parametercollection.h"

#include "utils/exceptions.h"

#include <QScopeGuard>
#include <QVector>

#include <algorithm>

namespace ParameterCollection
{

IParameterCollection::IParameterCollection(QObject* parent) : QObject(parent) {}

IParameterCollection::~IParameterCollection() = default;

struct CParameterCollection::SPrivate
{
    struct SEntry
    {
        QString path;
        GenApi::INodeMap* pNodeMap = nullptr;
        bool isDetaching = false;
    };

    explicit SPrivate(const CObjectState& s) : state(s) {}
    int indexOf(const QString& path) const
    {
        const auto found =
            std::find_if(entries.begin(), entries.end(), [&](const SEntry& entry) { return entry.path == path; });
        return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
    }

    CObjectState state;
    QVector<SEntry> entries; // guarded by the object state's lock
};

CParameterCollection::CParameterCollection(const CObjectState& state, QObject* parent)
    : IParameterCollection(parent), m_p(std::make_unique<SPrivate>(state))
{
}

CParameterCollection::~CParameterCollection() = default;

void CParameterCollection::announceNodeMap(const QString& path)
{
    const CScopedObjectStateLock lock(m_p->state);
    if (m_p->indexOf(path) < 0)
    {
        m_p->entries.append({path, nullptr, false});
    }
}

// The signals are emitted under the lock: no other thread sees the node map between a receiver's letting go of its
// nodes and the node map's going away. Entries are never removed, so an index outlives what receivers announce
// meanwhile.
void CParameterCollection::attachNodeMap(const QString& path, GenApi::INodeMap* pNodeMap)
{
    const CScopedObjectStateLock lock(m_p->state);
    const int index = m_p->indexOf(path);
    if (index < 0)
    {
        throw Core::Exception::ArgumentException(tr("No node map has been announced under %1.").arg(path));
    }
    if (m_p->entries.at(index).pNodeMap == pNodeMap)
    {
        return;
    }
    if (m_p->entries.at(index).isDetaching)
    {
        if (pNodeMap != nullptr)
        {
            throw Core::Exception::InvalidOperationException(tr("The node map under %1 is being detached.").arg(path));
        }
        return;
    }
    if (m_p->entries.at(index).pNodeMap != nullptr)
    {
        m_p->entries[index].isDetaching = true;
        // Also when a receiver throws: the node map goes away after this call.
        const auto detach = qScopeGuard(
            [this, index]
            {
                m_p->entries[index].isDetaching = false;
                m_p->entries[index].pNodeMap = nullptr;
            });
        emit nodeMapDetaching(path);
    }
    m_p->entries[index].pNodeMap = pNodeMap;
    if (pNodeMap != nullptr)
    {
        emit nodeMapAttached(path);
    }
}

void CParameterCollection::detachNodeMap(const QString& path)
{
    attachNodeMap(path, nullptr);
}

void CParameterCollection::detachAllNodeMaps()
{
    const CScopedObjectStateLock lock(m_p->state);
    const QStringList all = paths();
    for (const QString& path : all)
    {
        attachNodeMap(path, nullptr);
    }
}

QStringList CParameterCollection::paths() const
{
    const CScopedObjectStateLock lock(m_p->state);
    QStringList result;
    for (const auto& entry : m_p->entries)
    {
        result.append(entry.path);
    }
    return result;
}

GenApi::INodeMap* CParameterCollection::nodeMap(const QString& path) const
{
    const CScopedObjectStateLock lock(m_p->state);
    const int index = m_p->indexOf(path);
    return index < 0 ? nullptr : m_p->entries.at(index).pNodeMap;
}

GenApi::INode* CParameterCollection::node(const QString& name) const
{
    const CScopedObjectStateLock lock(m_p->state);
    const QString path = name.section(QLatin1Char('/'), 0, -2);
    const QByteArray feature = name.section(QLatin1Char('/'), -1).toUtf8();
    for (const auto& entry : m_p->entries)
    {
        if (entry.pNodeMap != nullptr && (path.isEmpty() || entry.path == path))
        {
            if (GenApi::INode* pNode = entry.pNodeMap->GetNode(feature.constData()))
            {
                return pNode;
            }
        }
    }
    return nullptr;
}

CObjectState CParameterCollection::objectState() const
{
    return m_p->state;
}

} // namespace ParameterCollection
