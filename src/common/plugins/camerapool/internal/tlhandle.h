// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/tlfactory.h"

#include <memory>

namespace Plugin::CameraPool::Internal
{

struct SReleaseTl
{
    void operator()(Velmo::ITransportLayer* pTl) const { Velmo::CTlFactory::GetInstance().ReleaseTl(pTl); }
};

/** A transport layer made by CTlFactory::CreateTl, which is released with it. */
using TlHandle = std::unique_ptr<Velmo::ITransportLayer, SReleaseTl>;

} // namespace Plugin::CameraPool::Internal
