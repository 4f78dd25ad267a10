// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/commandnode.h"

#include "genapi/internal/nodeaccess.h"
#include "genapi/internal/textparse.h"

namespace GenApi
{
namespace Internal
{

void CCommandNode::Execute(bool verify)
{
    WriteAccess(*this, verify, [&] { WriteNumber(Resolve(Map(), Description().number->commandValue), verify); });
}

void CCommandNode::WriteNumber(const SFormulaValue& value, bool verify)
{
    CNumberNode::WriteNumber(value, verify);
    m_isExecuting = true;
}

bool CCommandNode::IsDone(bool verify)
{
    return Map().Run(
        [&]
        {
            const EAccessMode mode = AvailableMode();
            if (!IsAvailable(mode))
            {
                ThrowAccess("available", mode);
            }
            const bool isDone = UpdateDone();
            if (verify)
            {
                CheckError();
            }
            return isDone;
        });
}

bool CCommandNode::UpdateDone()
{
    if (!m_isExecuting)
    {
        return true;
    }
    // What cannot be read back, or has no register behind it, is done once it was written.
    if (Source().Target() != nullptr && IsReadable(AvailableMode()))
    {
        const std::int64_t value = ToInteger(Resolve(Map(), Description().number->commandValue), *this);
        if (ReadNumber(true).integer == value)
        {
            return false;
        }
    }
    m_isExecuting = false;
    Map().Invalidate(Index());
    return true;
}

void CCommandNode::Poll()
{
    if (m_isExecuting && IsAvailable(AvailableMode()))
    {
        UpdateDone();
    }
}

GenICam::gcstring CCommandNode::ToString(bool verify, bool)
{
    return IsDone(verify) ? "0" : "1";
}

void CCommandNode::FromString(const GenICam::gcstring& text, bool verify)
{
    const std::string_view trimmed = Trim(text.str());
    if (trimmed == "1" || trimmed == "true" || trimmed == "Execute")
    {
        Execute(verify);
    }
    else if (trimmed != "0" && trimmed != "false")
    {
        GENICAM_THROW(InvalidArgumentException,
                      "Node '" + Description().name + "': '" + text.str() + "' executes nothing");
    }
}

} // namespace Internal
} // namespace GenApi
