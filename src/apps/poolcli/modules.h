// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/session.h"

#include <memory>

namespace PoolCli
{

/** The parameters of an open camera and of the interface that it is on; that is opened when it is first asked for. */
class CModules
{
public:
    using Collection = QSharedPointer<ParameterCollection::IParameterCollection>;

    CModules(CSession& session, const HostKit::CameraInfoPtr& camera);
    /** Throws CRefusal when the interface cannot be opened. */
    Collection interface();
    /** Where a feature of that name is: "@Interface/..." in the interface's, everything else in the camera's. */
    Collection collectionOf(const QString& name);

private:
    CSession& m_session;
    HostKit::CameraInfoPtr m_camera;
    std::unique_ptr<COpenInterface> m_interface;
};

} // namespace PoolCli
