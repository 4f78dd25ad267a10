// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/igraphservice.h"

namespace Plugin::DataProcessingCore::Internal
{

/** Holds the graph of the application. */
class CGraphService : public IGraphService
{
    Q_OBJECT
public:
    explicit CGraphService(QObject* parent = nullptr);
    ~CGraphService() override;
    QSharedPointer<CDataProcessingGraph> graph() const override { return m_graph; }

private:
    QSharedPointer<CDataProcessingGraph> m_graph;
};

} // namespace Plugin::DataProcessingCore::Internal
