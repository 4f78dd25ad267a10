// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "appcore/internal/context.h"

namespace Plugin::AppCore::Internal
{

CContext::CContext(QPointer<Core::Plugin::IPluginInitializer> initializer, QObject* parent)
    : IContext(parent), m_initializer(initializer)
{
}

CContext::~CContext() = default;

QVector<QSharedPointer<Core::Service::IService>> CContext::services() const
{
    return m_initializer.isNull() ? QVector<QSharedPointer<Core::Service::IService>>() : m_initializer->services();
}

} // namespace Plugin::AppCore::Internal
