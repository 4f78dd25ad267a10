// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "velmo/transportlayer.h"

#include <memory>

namespace Velmo::Internal
{

/** The side of a handle that the factory sees. */
class ITransportLayerHandle
{
public:
    virtual ~ITransportLayerHandle() = default;
    /** Takes the transport away; later calls of the handle throw RuntimeException. */
    virtual std::shared_ptr<Transport::ITransport> Detach() = 0;
};

/** A handle on the transport: an IGigETransportLayer for a transport with the GigE extension. */
std::unique_ptr<ITransportLayer> MakeTransportLayerHandle(std::shared_ptr<Transport::ITransport> transport,
                                                          ITransportLayerHandle*& pDetachable);

} // namespace Velmo::Internal
