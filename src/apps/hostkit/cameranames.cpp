// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/cameranames.h"

#include "hostkit/internal/texts.h"

namespace HostKit
{

QStringList namesOf(const Plugin::CameraPool::ICameraInfo& camera)
{
    return {camera.getUserDefinedName(), camera.getSerialNumber(),
            QStringLiteral("%1-%2-%3").arg(camera.getVendorName(), camera.getModelName(), camera.getSerialNumber()),
            camera.getFullName()};
}

CameraInfoPtr findByName(const QVector<CameraInfoPtr>& cameras, const QString& name, QString& error)
{
    QVector<CameraInfoPtr> found;
    for (const CameraInfoPtr& camera : cameras)
    {
        if (!name.isEmpty() && namesOf(*camera).contains(name))
        {
            found.append(camera);
        }
    }
    if (found.size() == 1)
    {
        return found.first();
    }
    if (found.isEmpty())
    {
        error = CTexts::tr("There is no camera called \"%1\".").arg(name);
        return {};
    }
    QStringList fullNames;
    for (const CameraInfoPtr& camera : found)
    {
        fullNames.append(camera->getFullName());
    }
    error = CTexts::tr("Several cameras are called \"%1\": %2.").arg(name, fullNames.join(QStringLiteral(", ")));
    return {};
}

} // namespace HostKit
