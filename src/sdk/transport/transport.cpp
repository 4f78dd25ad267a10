// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/transport.h"

#include "transport/chunkparser.h"

namespace Velmo
{

// Defined here so that each interface's run-time information exists once in the process.
IVelmoDevice::~IVelmoDevice() = default;

void IVelmoDevice::StartEvents() {}

IChunkParser::~IChunkParser() = default;

namespace Transport
{

IStream::~IStream() = default;
IInterface::~IInterface() = default;
IGigEExtension::~IGigEExtension() = default;
ITransport::~ITransport() = default;

} // namespace Transport
} // namespace Velmo
