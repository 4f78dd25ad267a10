// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/inoderegistry.h"

#include <QMap>

namespace Plugin::DataProcessingCore
{

/** The node registry of an application. */
class DATAPROCESSINGCORE_EXPORT CNodeRegistry : public INodeRegistry
{
    Q_OBJECT
public:
    explicit CNodeRegistry(QObject* parent = nullptr);
    ~CNodeRegistry() override;

    bool registerNode(const QString& name, const NodeCreator& creator) override;
    bool unregisterNode(const QString& name) override;
    QStringList nodeNames() const override;
    ANodeDataModelPtr createNode(const QString& name,
                                 const QSharedPointer<Plugin::AppCore::IInfo>& info = {}) const override;

private:
    QMap<QString, NodeCreator> m_creators;
};

} // namespace Plugin::DataProcessingCore
