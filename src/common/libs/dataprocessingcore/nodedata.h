// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/dataprocessingcore_export.h"

#include <QMetaType>
#include <QSharedPointer>
#include <QString>

namespace Plugin::DataProcessingCore
{

/** The kind of data that a port takes or gives; two kinds are the same when their ids are equal. */
struct DATAPROCESSINGCORE_EXPORT SNodeDataType
{
    QString id;
    QString name; /**< short text for a person */
};

/** One piece of data on its way through the graph; immutable once it was handed out. */
class DATAPROCESSINGCORE_EXPORT CNodeData
{
public:
    CNodeData();
    virtual ~CNodeData();
    virtual SNodeDataType type() const = 0;
    virtual bool sameType(const CNodeData& other) const;
};

using CNodeDataPtr = QSharedPointer<CNodeData>;

} // namespace Plugin::DataProcessingCore

Q_DECLARE_METATYPE(Plugin::DataProcessingCore::CNodeDataPtr)
