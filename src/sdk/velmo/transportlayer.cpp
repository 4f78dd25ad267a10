// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/transportlayer.h"

namespace Velmo
{

// Defined here so that each interface's run-time information exists once in the process.
IInterface::~IInterface() = default;
ITransportLayer::~ITransportLayer() = default;
IGigETransportLayer::~IGigETransportLayer() = default;

} // namespace Velmo
