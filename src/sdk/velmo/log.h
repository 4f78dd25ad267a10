// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

// The log is declared below the transports, which write to it too.
#include "transport/log.h"
