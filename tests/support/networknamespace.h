// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

namespace Test
{

/**
 * Moves the calling thread, and every thread and process it starts from then on, into a network namespace of its own
 * that has nothing but a loopback adapter. To be called before any other thread exists.
 * Throws std::runtime_error, which says what is missing, when the system does not allow that.
 */
void EnterOwnNetworkNamespace();

} // namespace Test
