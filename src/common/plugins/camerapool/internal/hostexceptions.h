// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "genapi/exceptions.h"

#include <utility>

namespace Plugin::CameraPool::Internal
{

/** Throws the host's exception of the kind that matches the SDK's, with its description. */
[[noreturn]] CAMERAPOOL_TEST_EXPORT void throwAsHostException(const GenICam::GenericException& e);

/** The same for failures about files too: FormatException, FileIOException and FileNotFoundException keep their kind,
 *  and what is of no kind that the host has is a Core::Exception::BaseException. */
[[noreturn]] CAMERAPOOL_TEST_EXPORT void throwFileFailureAsHostException(const GenICam::GenericException& e);

/** What the work returns; exceptions of the SDK leave as those of the host, all others as they are. */
template <class Work> auto withHostExceptions(Work&& work)
{
    try
    {
        return std::forward<Work>(work)();
    }
    catch (const GenICam::GenericException& e)
    {
        throwAsHostException(e);
    }
}

} // namespace Plugin::CameraPool::Internal
