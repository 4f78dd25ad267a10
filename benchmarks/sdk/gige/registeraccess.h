// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

namespace Benchmarks
{

/** Medians of one access of four bytes, in microseconds. */
struct SAccessFigures
{
    double read = 0;
    double write = 0;
    double engineRead = 0; // without the SDK
    double engineWrite = 0;
};

/** Controls the camera at 127.0.0.1. Throws std::runtime_error when it cannot. */
SAccessFigures measureRegisterAccess();

} // namespace Benchmarks
