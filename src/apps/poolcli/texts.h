// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>

namespace PoolCli
{

/** The translations of this program's texts. */
class CTexts
{
    Q_DECLARE_TR_FUNCTIONS(PoolCli)
};

} // namespace PoolCli
