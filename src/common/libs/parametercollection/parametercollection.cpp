// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/parametercollection.h"

#include "utils/exceptions.h"

#include <QVector>

namespace ParameterCollection
{

IParameterCollection::IParameterCollection(QObject* parent) : QObject(parent) {}

IParameterCollection::~IParameterCollection() = default;

struct CParameterCollection::SPrivate
{
    struct SEntry
    {
        QString path;
        GenApi::INodeMap* pNodeMap;
    };

    explicit SPrivate(const CObjectState& s) : state(s) {}
    const SEntry* find(const QString& path) const
    {
        for (const SEntry& entry : entries)
        {
            if (entry.path == path)
            {
                return &entry;
            }
        }
        return nullptr;
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
    if (m_p->find(path) == nullptr)
    {
        m_p->entries.append({path, nullptr});
    }
}

void CParameterCollection::attachNodeMap(const QString& path, GenApi::INodeMap* pNodeMap)
{
    const CScopedObjectStateLock lock(m_p->state);
    auto* pEntry = const_cast<SPrivate::SEntry*>(m_p->find(path));
    if (pEntry == nullptr)
    {
        throw Core::Exception::ArgumentException(tr("No node map has been announced under %1.").arg(path));
    }
    if (pEntry->pNodeMap != nullptr)
    {
        emit nodeMapDetaching(path);
    }
    pEntry->pNodeMap = pNodeMap;
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
    const auto* pEntry = m_p->find(path);
    return pEntry == nullptr ? nullptr : pEntry->pNodeMap;
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
