// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/sfncversion.h"

#include "parametercollection/parameternames.h"

namespace ParameterCollection
{

QVersionNumber readSfncVersion(const QSharedPointer<const IParameterCollection>& collection)
{
    namespace Device = ParameterName::CameraDevice;
    const std::int64_t major = Device::DeviceSFNCVersionMajor.of(collection).valueOr(0);
    if (major <= 0)
    {
        return SfncVersion::Undefined;
    }
    const std::int64_t minor = Device::DeviceSFNCVersionMinor.of(collection).valueOr(0);
    const std::int64_t subMinor = Device::DeviceSFNCVersionSubMinor.of(collection).valueOr(0);
    return QVersionNumber(static_cast<int>(major), static_cast<int>(minor), static_cast<int>(subMinor));
}

} // namespace ParameterCollection
