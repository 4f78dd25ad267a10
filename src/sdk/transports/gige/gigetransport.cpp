// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/gigetransport.h"

#include "transports/gige/internal/adapters.h"
#include "transports/gige/internal/transport.h"

#include <utility>

namespace Velmo::GigE
{

std::shared_ptr<Transport::ITransport> CreateTransport()
{
    return std::make_shared<Internal::CGigETransport>();
}

void SetAdapters(std::vector<std::string> adapters)
{
    Internal::SetWantedAdapters(std::move(adapters));
}

} // namespace Velmo::GigE
