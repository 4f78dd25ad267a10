// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/monitorstream.h"
#include "transports/gige/internal/streamparameters.h"

namespace Velmo::GigE::Internal
{

void CMonitorStream::BuildParameters()
{
    auto pParameters = std::make_unique<Transport::CSoftwareNodeMap>("GigEMonitorStream");
    Transport::SSoftwareParameter payload;
    payload.name = "PayloadSize";
    payload.toolTip = "Bytes a buffer must hold.";
    payload.unit = "B";
    payload.getter = [this]
    {
        return static_cast<std::int64_t>(GetPayloadBytes());
    };
    pParameters->AddInteger(std::move(payload));
    Transport::SSoftwareParameter transmission;
    transmission.name = "TransmissionType";
    transmission.toolTip = "Who says where the camera streams to: the application that controls it.";
    transmission.isCustom = true;
    transmission.isWritable = true;
    transmission.entries = {{"UseCameraConfig", UseCameraConfig}};
    transmission.value = UseCameraConfig;
    pParameters->AddEnumeration(std::move(transmission));
    AddTime(*pParameters, "FrameRetention",
            "Time after the last packet until an incomplete image is given up; used from the next start on.",
            m_frameRetentionUs);
    constexpr bool isCustom = true; // GenTL SFNC has the first two only; the others are named after them
    AddStatistic(*pParameters, "StreamDeliveredFrameCount", "Images received completely.",
                 &SAssemblerCounters::delivered, !isCustom);
    AddStatistic(*pParameters, "StreamLostFrameCount",
                 "Images of which nothing was received, by the gaps in the camera's numbers, or for which there was no "
                 "buffer.",
                 &SAssemblerCounters::lost, !isCustom);
    AddStatistic(*pParameters, "StreamIncompleteFrameCount", "Images received incompletely.",
                 &SAssemblerCounters::incomplete, isCustom);
    Transport::SSoftwareParameter askedFor;
    askedFor.name = "StreamPacketResendRequestCount";
    askedFor.toolTip = "Packets that the camera was asked for again: a monitor asks for none.";
    askedFor.isCustom = isCustom;
    pParameters->AddInteger(std::move(askedFor));
    AddStatistic(*pParameters, "StreamPacketResendCount", "Packets that the controlling application had sent again.",
                 &SAssemblerCounters::resent, isCustom);
    AddStatistic(*pParameters, "StreamPacketMissingCount", "Packets that never came.", &SAssemblerCounters::missing,
                 isCustom);
    pParameters->Build();
    m_pParameters = std::move(pParameters);
}

void CMonitorStream::AddStatistic(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
                                  std::uint64_t SAssemblerCounters::*pMember, bool isCustom)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = isCustom;
    parameter.getter = [this, pMember]
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return static_cast<std::int64_t>(m_counters.*pMember);
    };
    parameters.AddInteger(std::move(parameter));
}

} // namespace Velmo::GigE::Internal
