// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/exceptions.h"

#include <exception>
#include <string>

namespace Velmo::Internal
{

/** The text of the exception that is being handled; call it in a catch block only. */
inline std::string CurrentExceptionText()
{
    try
    {
        throw;
    }
    catch (const GenICam::GenericException& exception)
    {
        return exception.GetDescription();
    }
    catch (const std::exception& exception)
    {
        return exception.what();
    }
    catch (...)
    {
        return "unknown exception";
    }
}

} // namespace Velmo::Internal
