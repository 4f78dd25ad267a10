// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "parametercollection/iparametercollection.h"

#include <memory>

namespace ParameterCollection
{

/** The collection as its owner fills it. */
class PARAMETERCOLLECTION_EXPORT CParameterCollection : public IParameterCollection
{
    Q_OBJECT
public:
    explicit CParameterCollection(const CObjectState& state, QObject* parent = nullptr);
    ~CParameterCollection() override;

    /** Makes a path known. Announcing it again changes nothing. */
    void announceNodeMap(const QString& path);
    /** Null detaches; a node map that is attached already stays without signals, another one is detached first. Throws
     *  Core::Exception::ArgumentException when the path was not announced, InvalidOperationException when a receiver of
     *  nodeMapDetaching attaches under the path being detached. */
    void attachNodeMap(const QString& path, GenApi::INodeMap* pNodeMap);
    void detachNodeMap(const QString& path);
    void detachAllNodeMaps();

    QStringList paths() const override;
    GenApi::INodeMap* nodeMap(const QString& path) const override;
    GenApi::INode* node(const QString& name) const override;
    CObjectState objectState() const override;

private:
    struct SPrivate;
    std::unique_ptr<SPrivate> m_p;
};

} // namespace ParameterCollection
