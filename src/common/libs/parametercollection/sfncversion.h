// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "parametercollection/iparametercollection.h"

#include <QSharedPointer>
#include <QVersionNumber>

namespace ParameterCollection
{

/** Versions of the GenICam Standard Features Naming Convention that features are told apart by. */
namespace SfncVersion
{
inline const QVersionNumber Undefined(0, 0, 0);
inline const QVersionNumber V1_2_1(1, 2, 1);
inline const QVersionNumber V1_3_0(1, 3, 0);
inline const QVersionNumber V1_4_0(1, 4, 0);
inline const QVersionNumber V1_5_0(1, 5, 0);
inline const QVersionNumber V1_5_1(1, 5, 1);
inline const QVersionNumber V2_0_0(2, 0, 0);
inline const QVersionNumber V2_1_0(2, 1, 0);
inline const QVersionNumber V2_2_0(2, 2, 0);
inline const QVersionNumber V2_5_0(2, 5, 0);
} // namespace SfncVersion

/** The version that the device itself names; Undefined when it names none or cannot be read. Always three numbers.
 *  Never throws. Any thread. */
PARAMETERCOLLECTION_EXPORT QVersionNumber readSfncVersion(const QSharedPointer<const IParameterCollection>& collection);

} // namespace ParameterCollection
