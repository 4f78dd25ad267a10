// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/interfacenames.h"

#include "hostkit/internal/texts.h"

#include <algorithm>

namespace HostKit
{

InterfaceInfoPtr findInterface(const QVector<InterfaceInfoPtr>& interfaces, const QString& name, QString& error)
{
    QVector<InterfaceInfoPtr> found;
    std::copy_if(interfaces.begin(), interfaces.end(), std::back_inserter(found),
                 [&name](const InterfaceInfoPtr& info)
                 {
                     return !name.isEmpty() && (info->getInterfaceId() == name || info->getFriendlyName() == name ||
                                                info->getFullName() == name);
                 });
    if (found.size() == 1)
    {
        return found.first();
    }
    if (found.isEmpty())
    {
        error = CTexts::tr("There is no interface called \"%1\".").arg(name);
        return {};
    }
    QStringList fullNames;
    for (const InterfaceInfoPtr& info : found)
    {
        fullNames.append(info->getFullName());
    }
    error = CTexts::tr("Several interfaces are called \"%1\": %2.").arg(name, fullNames.join(QStringLiteral(", ")));
    return {};
}

InterfaceInfoPtr interfaceOf(const QVector<InterfaceInfoPtr>& interfaces, const Plugin::CameraPool::ICameraInfo& camera)
{
    const Velmo::CDeviceInfo& device = camera.getVelmoDeviceInfo();
    const auto found = std::find_if(interfaces.begin(), interfaces.end(),
                                    [&device](const InterfaceInfoPtr& info)
                                    {
                                        const Velmo::CInterfaceInfo& candidate = info->getVelmoInterfaceInfo();
                                        return candidate.GetInterfaceID() == device.GetInterfaceID() &&
                                               candidate.GetDeviceClass() == device.GetDeviceClass();
                                    });
    return found == interfaces.end() ? InterfaceInfoPtr() : *found;
}

} // namespace HostKit
