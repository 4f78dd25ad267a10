// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QThread>

namespace Plugin::CameraPool::Internal
{

/** Records are made on the enumeration thread and outlive it; they belong to the application's thread, if there is
 *  an application. Called on the thread that made the record. */
inline void moveToMainThread(QObject& record)
{
    if (QCoreApplication::instance() != nullptr)
    {
        record.moveToThread(QCoreApplication::instance()->thread());
    }
}

} // namespace Plugin::CameraPool::Internal
