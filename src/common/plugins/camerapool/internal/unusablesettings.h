// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVariant>

namespace Plugin::CameraPool::Internal
{

/** What somebody wrote into the settings; QSettings makes a list of a text with commas. */
QString settingText(const QVariant& value);

/**
 * Whether an entry has to be told of: true when it holds an unusable text that it did not hold when it was read last.
 * Entries are read again for each camera and in each discovery pass. Threads: any.
 */
bool isNewlyUnusable(const QString& key, bool isUsable, const QString& text);

} // namespace Plugin::CameraPool::Internal
