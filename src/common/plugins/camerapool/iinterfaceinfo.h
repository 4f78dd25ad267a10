// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "transport/infos.h"

namespace Plugin::CameraPool
{

/** One interface of a transport layer: a network adapter, a frame-grabber port. */
class CAMERAPOOL_EXPORT IInterfaceInfo : public IBaseInfo
{
    Q_OBJECT
public:
    explicit IInterfaceInfo(QObject* parent = nullptr);
    ~IInterfaceInfo() override;

    /** What tells one interface from another. */
    virtual QString getInterfaceId() const = 0;
    /** Valid as long as this record. */
    virtual Velmo::CInterfaceInfo& getVelmoInterfaceInfo() = 0;
};

using InterfaceInfoPtr = QSharedPointer<IInterfaceInfo>;

} // namespace Plugin::CameraPool
