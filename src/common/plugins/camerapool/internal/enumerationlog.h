// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLoggingCategory>

namespace Plugin::CameraPool::Internal
{

/** "Camera Enumeration Thread". Threads: any. */
const QLoggingCategory& enumerationLog();

} // namespace Plugin::CameraPool::Internal
