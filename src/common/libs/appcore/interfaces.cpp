// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "appcore/icontext.h"
#include "appcore/iserializable.h"

namespace Plugin::AppCore
{

ISerializable::~ISerializable() = default;

IContext::IContext(QObject* parent) : IService(parent) {}

IContext::~IContext() = default;

} // namespace Plugin::AppCore
