// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/exceptions.h"

namespace Core::Exception
{

BaseException::BaseException(const QString& message) : m_message(message), m_what(message.toUtf8()) {}

// Destructors are defined here so that each type's run-time information exists once in the process.
BaseException::~BaseException() = default;
InvalidOperationException::~InvalidOperationException() = default;
ObjectDisposedException::~ObjectDisposedException() = default;
ArgumentException::~ArgumentException() = default;
ArgumentOutOfRangeException::~ArgumentOutOfRangeException() = default;
TimeoutException::~TimeoutException() = default;
AccessException::~AccessException() = default;
RuntimeException::~RuntimeException() = default;
FileNotFoundException::~FileNotFoundException() = default;
FileIOException::~FileIOException() = default;
FormatException::~FormatException() = default;
BadAllocException::~BadAllocException() = default;

} // namespace Core::Exception
