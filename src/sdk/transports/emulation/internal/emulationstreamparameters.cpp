// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/emulationstream.h"

namespace Velmo::Emulation::Internal
{

std::unique_ptr<Transport::CSoftwareNodeMap> CEmulationStream::MakeParameters()
{
    auto parameters = std::make_unique<Transport::CSoftwareNodeMap>("EmulationStream");
    Transport::SSoftwareParameter payload;
    payload.name = "PayloadSize";
    payload.toolTip = "Bytes of an image.";
    payload.unit = "B";
    payload.getter = [this]
    {
        return static_cast<std::int64_t>(m_camera->GetPayloadBytes());
    };
    parameters->AddInteger(std::move(payload));
    Transport::SSoftwareParameter transmission;
    transmission.name = "TransmissionType";
    transmission.toolTip = "Who configures the stream.";
    transmission.isCustom = true;
    transmission.isWritable = true;
    transmission.entries = {{"Unicast", 0}, {"UseCameraConfig", 1}};
    transmission.value = m_isMonitor ? 1 : 0;
    parameters->AddEnumeration(std::move(transmission));
    parameters->BeginCategory("Statistics", "What the stream did since it was opened.");
    const auto add = [&](const char* name, const char* toolTip, std::uint64_t CEmulationStream::*pMember)
    {
        Transport::SSoftwareParameter parameter;
        parameter.name = name;
        parameter.toolTip = toolTip;
        parameter.isCustom = true;
        parameter.getter = [this, pMember]
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            return static_cast<std::int64_t>(this->*pMember);
        };
        parameters->AddInteger(std::move(parameter));
    };
    add("StatisticTotalBufferCount", "Buffers delivered since the stream was opened.", &CEmulationStream::m_total);
    add("StatisticFailedBufferCount", "Of these, how many failed.", &CEmulationStream::m_failed);
    add("StatisticBufferUnderrunCount", "Images lost because no buffer was queued.", &CEmulationStream::m_underruns);
    parameters->Build();
    return parameters;
}

} // namespace Velmo::Emulation::Internal
