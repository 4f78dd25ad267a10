// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/gcstring.h"
#include "genapi/genapi_export.h"

#include <exception>
#include <string>

namespace GenICam
{

/**
 * Base of every exception of GenApi and of the camera SDK.
 *
 * GetDescription() is the text for a person; what() adds the kind and the source place. Prefer the macros
 * GENICAM_THROW(Kind, text) below.
 */
class GENAPI_EXPORT GenericException : public std::exception
{
public:
    GenericException(const std::string& description, const char* sourceFileName, unsigned int sourceLine,
                     const char* kind = "GenericException");
    GenericException(const GenericException&) = default;
    GenericException& operator=(const GenericException&) = default;
    ~GenericException() override;

    const char* GetDescription() const noexcept { return m_description.c_str(); }
    const char* GetSourceFileName() const noexcept { return m_sourceFileName.c_str(); }
    unsigned int GetSourceLine() const noexcept { return m_sourceLine; }
    const char* GetKind() const noexcept { return m_kind; }
    /** "<description> : <kind> thrown (file '<file>', line <line>)" */
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    std::string m_description;
    std::string m_sourceFileName;
    unsigned int m_sourceLine;
    const char* m_kind;
    std::string m_what;
};

// NOLINTBEGIN(bugprone-macro-parentheses): names of classes do not go into parentheses
#define GENICAM_DECLARE_EXCEPTION(Name)                                                                                \
    class GENAPI_EXPORT Name : public GenericException                                                                 \
    {                                                                                                                  \
    public:                                                                                                            \
        Name(const std::string& description, const char* sourceFileName, unsigned int sourceLine)                      \
            : GenericException(description, sourceFileName, sourceLine, #Name)                                         \
        {                                                                                                              \
        }                                                                                                              \
        Name(const Name&) = default;                                                                                   \
        Name& operator=(const Name&) = default;                                                                        \
        ~Name() override;                                                                                              \
    }
// NOLINTEND(bugprone-macro-parentheses)

GENICAM_DECLARE_EXCEPTION(BadAllocException);
GENICAM_DECLARE_EXCEPTION(InvalidArgumentException);
GENICAM_DECLARE_EXCEPTION(OutOfRangeException);
GENICAM_DECLARE_EXCEPTION(PropertyException);
GENICAM_DECLARE_EXCEPTION(RuntimeException);
GENICAM_DECLARE_EXCEPTION(LogicalErrorException);
GENICAM_DECLARE_EXCEPTION(AccessException);
GENICAM_DECLARE_EXCEPTION(TimeoutException);
GENICAM_DECLARE_EXCEPTION(DynamicCastException);
GENICAM_DECLARE_EXCEPTION(FileIOException);
GENICAM_DECLARE_EXCEPTION(FileNotFoundException);
GENICAM_DECLARE_EXCEPTION(FormatException);

#undef GENICAM_DECLARE_EXCEPTION

} // namespace GenICam

/** Throws GenICam::Kind with the description and the place of the throw. */
#define GENICAM_THROW(Kind, description) throw ::GenICam::Kind((description), __FILE__, __LINE__)
