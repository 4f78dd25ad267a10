// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/engine.h"

#include "genapi/exceptions.h"

namespace Velmo::GigE::Internal
{

void CEngineError::Throw(const std::string& whatFailed) const
{
    const std::string text = whatFailed + ": " + Text() + ".";
    if (m_pError == nullptr || m_pError->domain != ARV_DEVICE_ERROR)
    {
        GENICAM_THROW(RuntimeException, text);
    }
    switch (m_pError->code)
    {
    case ARV_DEVICE_ERROR_TIMEOUT:
        GENICAM_THROW(TimeoutException, text);
    case ARV_DEVICE_ERROR_NOT_CONTROLLER:
    case ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT:
    case ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED:
    case ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY:
        GENICAM_THROW(AccessException, text);
    default:
        GENICAM_THROW(RuntimeException, text);
    }
}

} // namespace Velmo::GigE::Internal
