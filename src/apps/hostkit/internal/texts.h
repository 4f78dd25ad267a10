// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>

namespace HostKit
{

/** The translations of this library's texts. */
class CTexts
{
    Q_DECLARE_TR_FUNCTIONS(HostKit)
};

} // namespace HostKit
