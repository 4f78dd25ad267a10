// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"

namespace GenICam
{

GenericException::GenericException(const std::string& description, const char* sourceFileName, unsigned int sourceLine,
                                   const char* kind)
    : m_description(description), m_sourceFileName(sourceFileName == nullptr ? "" : sourceFileName),
      m_sourceLine(sourceLine), m_kind(kind), m_what(m_description + " : " + m_kind + " thrown (file '" +
                                                     m_sourceFileName + "', line " + std::to_string(m_sourceLine) + ")")
{
}

// Destructors are defined here so that each type's run-time information exists once in the process.
GenericException::~GenericException() = default;
BadAllocException::~BadAllocException() = default;
InvalidArgumentException::~InvalidArgumentException() = default;
OutOfRangeException::~OutOfRangeException() = default;
PropertyException::~PropertyException() = default;
RuntimeException::~RuntimeException() = default;
LogicalErrorException::~LogicalErrorException() = default;
AccessException::~AccessException() = default;
TimeoutException::~TimeoutException() = default;
DynamicCastException::~DynamicCastException() = default;
FileIOException::~FileIOException() = default;
FileNotFoundException::~FileNotFoundException() = default;
FormatException::~FormatException() = default;

} // namespace GenICam
