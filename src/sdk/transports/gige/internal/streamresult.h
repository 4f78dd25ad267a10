// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/stream.h"
#include "transports/gige/internal/engine.h"

namespace Velmo::GigE::Internal
{

/** What the engine says of a buffer that it filled, or could not fill. */
Transport::SStreamResult MakeStreamResult(ArvBuffer* pBuffer, std::size_t announcedBytes);
/** The result of a buffer that was never filled. */
Transport::SStreamResult MakeCanceledResult(void* pContext);
/** What is wrong with an image, for people. */
const char* FailureText(ArvBufferStatus status);
/** Bytes the image must have by its own geometry. */
std::size_t ImageBytes(const Transport::SStreamResult& result);

} // namespace Velmo::GigE::Internal
