// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

namespace Velmo::Internal
{

class CTransportRegistry;

/** Registers every transport the SDK is built with, in alphabetical order. */
void RegisterBuiltInTransports(CTransportRegistry& registry);

} // namespace Velmo::Internal
