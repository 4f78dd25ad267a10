// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/childprocess.h"

#include <memory>
#include <string>

namespace Test
{

class CPeerNamespace;

/** Where an independent camera is, and how bad its network. */
struct SFakeCameraPlace
{
    std::string address = "127.0.0.1";
    const CPeerNamespace* pNamespace = nullptr; // the test's own
    int lostPerThousand = 0;                    // stream packets that it leaves out, also when it sends them again
};

/**
 * An independent GigE Vision camera, as a process. A test program that uses it runs in a network namespace of its own
 * from its start on. The constructor returns when it listens, and throws std::runtime_error when it does not come up.
 */
class CFakeCamera
{
public:
    explicit CFakeCamera(std::string serialNumber = "GV77", SFakeCameraPlace place = {});
    void Kill() { m_pProcess->Kill(); }
    void Pause() { m_pProcess->Pause(); }
    void Continue() { m_pProcess->Continue(); }
    void Restart();

private:
    void Start();
    void StartHere();

    std::string m_serialNumber;
    SFakeCameraPlace m_place;
    std::unique_ptr<CChildProcess> m_pProcess;
};

} // namespace Test
