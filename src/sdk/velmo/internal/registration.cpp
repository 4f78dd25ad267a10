// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/registration.h"

#include "transports/emulation/emulationtransport.h"
#include "transports/gige/gigetransport.h"
#include "velmo/internal/transportregistry.h"

namespace Velmo::Internal
{

void RegisterBuiltInTransports(CTransportRegistry& registry)
{
    registry.RegisterBuiltIn("emulation", [] { return Emulation::CreateTransport(); });
    registry.RegisterBuiltIn("gige", [] { return GigE::CreateTransport(); });
}

} // namespace Velmo::Internal
