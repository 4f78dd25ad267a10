// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "simulator/cameramodel.h"
#include "simulator/datareader.h"

#include <cstddef>
#include <cstdint>

/** Whatever the bytes are: cameras that can be made, or a GenICam exception. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try
    {
        const auto rack = Simulator::ReadData(std::string_view(reinterpret_cast<const char*>(data), size));
        if (!rack.cameras.empty())
        {
            const Simulator::CCameraModel camera(rack.cameras.front());
        }
    }
    catch (const GenICam::GenericException&)
    {
    }
    return 0;
}
