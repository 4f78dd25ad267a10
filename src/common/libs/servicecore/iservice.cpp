// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "servicecore/iservice.h"

namespace Core::Service
{

IService::IService(QObject* parent) : QObject(parent) {}

IService::~IService() = default;

} // namespace Core::Service
