// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/noderegistry.h"

#include "utils/exceptions.h"

namespace Plugin::DataProcessingCore
{

INodeRegistry::INodeRegistry(QObject* parent) : IService(parent) {}

INodeRegistry::~INodeRegistry() = default;

CNodeRegistry::CNodeRegistry(QObject* parent) : INodeRegistry(parent) {}

CNodeRegistry::~CNodeRegistry() = default;

bool CNodeRegistry::registerNode(const QString& name, const NodeCreator& creator)
{
    if (name.isEmpty() || !creator || m_creators.contains(name))
    {
        return false;
    }
    m_creators.insert(name, creator);
    return true;
}

bool CNodeRegistry::unregisterNode(const QString& name)
{
    return m_creators.remove(name) > 0;
}

QStringList CNodeRegistry::nodeNames() const
{
    return m_creators.keys();
}

ANodeDataModelPtr CNodeRegistry::createNode(const QString& name,
                                            const QSharedPointer<Plugin::AppCore::IInfo>& info) const
{
    const NodeCreator creator = m_creators.value(name);
    if (!creator)
    {
        throw Core::Exception::ArgumentException(tr("There is no kind of node with the name \"%1\".").arg(name));
    }
    return creator(info);
}

} // namespace Plugin::DataProcessingCore
