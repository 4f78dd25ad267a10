// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"
#include "transports/gige/internal/engine.h"

#include <chrono>

namespace Velmo::GigE::Internal
{

/**
 * Ends an engine's object on the calling thread, and on no other: waits for those who hold it still. The engine's own
 * thread holds it while it calls a handler; were that the last reference, the thread would wait for its own end.
 * False when somebody holds it longer than that: then the object stays for the life of the process.
 */
GIGE_TEST_EXPORT bool EndAlone(ObjectPtr<GObject> pObject, std::chrono::milliseconds patience);

} // namespace Velmo::GigE::Internal
