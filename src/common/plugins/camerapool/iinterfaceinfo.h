// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "transport/infos.h"

namespace Plugin::CameraPool
{

/** What is known of one interface: a network adapter, a frame-grabber port. */
class CAMERAPOOL_EXPORT IInterfaceInfo : public IBaseInfo
{
    Q_OBJECT
public:
    explicit IInterfaceInfo(QObject* parent = nullptr);
    ~IInterfaceInfo() override;
    virtual QString getInterfaceId() const = 0;
    /** The SDK's record, from which the interface object is made. */
    virtual Velmo::CInterfaceInfo& getVelmoInterfaceInfo() = 0;
};

} // namespace Plugin::CameraPool
