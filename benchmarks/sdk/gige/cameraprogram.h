// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace Benchmarks
{

/** Simulated cameras in a process of their own, at 127.0.0.1 and the addresses behind it; they end with the object. */
class CCameraProgram
{
public:
    /** 512x512 Mono8. Returns when all answer. Throws std::runtime_error when they do not. */
    CCameraProgram(int cameras, int imagesPerSecond);
    ~CCameraProgram();
    CCameraProgram(const CCameraProgram&) = delete;
    CCameraProgram& operator=(const CCameraProgram&) = delete;

private:
    QTemporaryDir m_folder;
    QProcess m_program;
};

} // namespace Benchmarks
