// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "utils/utils_export.h"

#include <QByteArray>
#include <QString>

#include <exception>

namespace Core::Exception
{

/** Base of the host's exceptions; carries a translated text for a person. what() is that text as UTF-8. */
class UTILS_EXPORT BaseException : public std::exception
{
public:
    explicit BaseException(const QString& message);
    BaseException(const BaseException&) = default;
    BaseException& operator=(const BaseException&) = default;
    ~BaseException() override;
    QString message() const { return m_message; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_message;
    QByteArray m_what;
};

// NOLINTBEGIN(bugprone-macro-parentheses): names of classes do not go into parentheses
#define CORE_DECLARE_EXCEPTION(Name, Base)                                                                             \
    class UTILS_EXPORT Name : public Base                                                                              \
    {                                                                                                                  \
    public:                                                                                                            \
        explicit Name(const QString& message) : Base(message) {}                                                       \
        Name(const Name&) = default;                                                                                   \
        Name& operator=(const Name&) = default;                                                                        \
        ~Name() override;                                                                                              \
    }
// NOLINTEND(bugprone-macro-parentheses)

CORE_DECLARE_EXCEPTION(InvalidOperationException, BaseException);
CORE_DECLARE_EXCEPTION(ObjectDisposedException, InvalidOperationException);
CORE_DECLARE_EXCEPTION(ArgumentException, BaseException);
CORE_DECLARE_EXCEPTION(ArgumentOutOfRangeException, ArgumentException);
CORE_DECLARE_EXCEPTION(TimeoutException, BaseException);
CORE_DECLARE_EXCEPTION(AccessException, BaseException);
CORE_DECLARE_EXCEPTION(RuntimeException, BaseException);
CORE_DECLARE_EXCEPTION(FileNotFoundException, BaseException);
CORE_DECLARE_EXCEPTION(FileIOException, BaseException);
CORE_DECLARE_EXCEPTION(FormatException, BaseException);
CORE_DECLARE_EXCEPTION(BadAllocException, BaseException);

#undef CORE_DECLARE_EXCEPTION

} // namespace Core::Exception
