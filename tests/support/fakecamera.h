// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/childprocess.h"

#include <memory>
#include <string>

namespace Test
{

/**
 * An independent GigE Vision camera at 127.0.0.1, as a process. A test program that uses it runs in a network namespace
 * of its own from its start on. The constructor
 * returns when it listens, and throws std::runtime_error when it does not come up.
 */
class CFakeCamera
{
public:
    explicit CFakeCamera(std::string serialNumber = "GV77");
    void Kill() { m_pProcess->Kill(); }
    void Pause() { m_pProcess->Pause(); }
    void Continue() { m_pProcess->Continue(); }
    void Restart();

private:
    void Start();

    std::string m_serialNumber;
    std::unique_ptr<CChildProcess> m_pProcess;
};

} // namespace Test
