// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/iinfo.h"
#include "dataprocessingcore/anodedatamodel.h"
#include "servicecore/iservice.h"

#include <QStringList>

#include <functional>

namespace Plugin::DataProcessingCore
{

/** Makes a node; the record, which may be null, is what the node stands for, such as a camera. */
using NodeCreator = std::function<ANodeDataModelPtr(const QSharedPointer<Plugin::AppCore::IInfo>& info)>;

/** Service: the kinds of nodes that the plugins offer, by name. Main thread. */
class DATAPROCESSINGCORE_EXPORT INodeRegistry : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit INodeRegistry(QObject* parent = nullptr);
    ~INodeRegistry() override;

    /** False when the name is empty or taken or the creator is empty. */
    virtual bool registerNode(const QString& name, const NodeCreator& creator) = 0;
    /** False when there is no such name. */
    virtual bool unregisterNode(const QString& name) = 0;
    /** In alphabetical order. */
    virtual QStringList nodeNames() const = 0;
    /** Throws Core::Exception::ArgumentException for an unknown name; exceptions of the creator pass through. Null only
     *  if the creator gave null. */
    virtual ANodeDataModelPtr createNode(const QString& name,
                                         const QSharedPointer<Plugin::AppCore::IInfo>& info = {}) const = 0;
};

} // namespace Plugin::DataProcessingCore
