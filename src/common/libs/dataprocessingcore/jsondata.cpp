// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/jsondata.h"

namespace Plugin::DataProcessing
{

CJsonData::CJsonData() = default;

CJsonData::CJsonData(const QJsonObject& object) : m_object(object) {}

CJsonData::~CJsonData() = default;

Plugin::DataProcessingCore::SNodeDataType CJsonData::dataType()
{
    return {QStringLiteral("JsonObject"), QStringLiteral("JSON")};
}

Plugin::DataProcessingCore::SNodeDataType CJsonData::type() const
{
    return dataType();
}

} // namespace Plugin::DataProcessing
