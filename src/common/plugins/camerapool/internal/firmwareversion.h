// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"

#include <QString>

#include <array>
#include <cstdint>

namespace Plugin::CameraPool::Internal
{

/** A firmware version as four numbers, the major one first; those that the text lacks are 0. */
struct SFirmwareVersion
{
    std::array<std::int32_t, 4> components{};
    bool isShort = false; // the text ended before the fourth; no part of any comparison
};

/**
 * Whether versions of that form can be compared: one to three groups of up to nine digits, each with a point behind
 * it, and perhaps a last group. So "1." and "1.2.3.4" can, while "5" and "1.2.3.4.5" cannot.
 */
CAMERAPOOL_TEST_EXPORT bool isComparableFirmwareVersion(const QString& text);
/** Of a text that can be compared. */
CAMERAPOOL_TEST_EXPORT SFirmwareVersion parseFirmwareVersion(const QString& text);

} // namespace Plugin::CameraPool::Internal
