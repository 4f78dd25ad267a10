// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/dataprocessinggraph.h"
#include "servicecore/iservice.h"

namespace Plugin::DataProcessingCore
{

/** Service: the data-processing graph of the application. Main thread. */
class DATAPROCESSINGCORE_EXPORT IGraphService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit IGraphService(QObject* parent = nullptr);
    ~IGraphService() override;
    /** Never null; the same on every call. */
    virtual QSharedPointer<CDataProcessingGraph> graph() const = 0;
};

} // namespace Plugin::DataProcessingCore
