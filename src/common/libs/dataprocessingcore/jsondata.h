// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/nodedata.h"

#include <QJsonObject>

namespace Plugin::DataProcessing
{

/** A JSON object as node data. */
class DATAPROCESSINGCORE_EXPORT CJsonData : public Plugin::DataProcessingCore::CNodeData
{
public:
    CJsonData();
    explicit CJsonData(const QJsonObject& object);
    ~CJsonData() override;

    /** ("JsonObject", "JSON") */
    static Plugin::DataProcessingCore::SNodeDataType dataType();
    Plugin::DataProcessingCore::SNodeDataType type() const override;
    const QJsonObject& object() const { return m_object; }

private:
    QJsonObject m_object;
};

} // namespace Plugin::DataProcessing
