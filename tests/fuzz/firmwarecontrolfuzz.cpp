// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "genapi/internal/firmwarecontrolreader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/** Whatever the bytes are: a control file of which everything fits together, or a GenICam exception. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try
    {
        const std::string xml(reinterpret_cast<const char*>(data), size);
        const auto control = GenApi::Internal::ReadFirmwareControl("control.xml", xml, {});
        for (const auto& update : control.updates)
        {
            if (control.procedures.count(update.procedure) == 0 || update.infos.count("Version") == 0 ||
                update.conditions.empty())
            {
                std::abort();
            }
        }
    }
    catch (const GenICam::GenericException&)
    {
    }
    return 0;
}
