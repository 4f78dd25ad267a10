// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/nodedata.h"

namespace Plugin::DataProcessingCore
{

CNodeData::CNodeData() = default;

CNodeData::~CNodeData() = default;

bool CNodeData::sameType(const CNodeData& other) const
{
    return type().id == other.type().id;
}

} // namespace Plugin::DataProcessingCore
