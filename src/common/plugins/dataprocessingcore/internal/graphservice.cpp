// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/internal/graphservice.h"

namespace Plugin::DataProcessingCore::Internal
{

CGraphService::CGraphService(QObject* parent)
    : IGraphService(parent), m_graph(QSharedPointer<CDataProcessingGraph>::create())
{
}

CGraphService::~CGraphService() = default;

} // namespace Plugin::DataProcessingCore::Internal
