// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "appcore/iinfo.h"

namespace Plugin::AppCore
{

IInfo::IInfo(QObject* parent) : QObject(parent) {}

IInfo::~IInfo() = default;

} // namespace Plugin::AppCore
