// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/camerastream.h"

#include <utility>

namespace Velmo::GigE::Internal
{

void ACameraStream::AddPayloadSize(Transport::CSoftwareNodeMap& parameters)
{
    Transport::SSoftwareParameter payload;
    payload.name = "PayloadSize";
    payload.toolTip = "Bytes a buffer must hold.";
    payload.unit = "B";
    payload.getter = [this]
    {
        return static_cast<std::int64_t>(GetPayloadBytes());
    };
    parameters.AddInteger(std::move(payload));
}

void ACameraStream::AddStatistics(Transport::CSoftwareNodeMap& parameters)
{
    const auto add = [this, &parameters](const char* name, const char* toolTip,
                                         std::uint64_t SStreamStatistics::*pMember, bool isCustom)
    {
        Transport::SSoftwareParameter parameter;
        parameter.name = name;
        parameter.toolTip = toolTip;
        parameter.isCustom = isCustom;
        parameter.getter = [this, pMember]
        {
            return static_cast<std::int64_t>(ReadStatistics().*pMember);
        };
        parameters.AddInteger(std::move(parameter));
    };
    constexpr bool isCustom = true; // GenTL SFNC has the first two only; the others are named after them
    add("StreamDeliveredFrameCount", "Images received completely.", &SStreamStatistics::delivered, !isCustom);
    add("StreamLostFrameCount",
        "Images of which nothing was received, by the gaps in the camera's numbers, or for which there was no buffer.",
        &SStreamStatistics::lost, !isCustom);
    add("StreamIncompleteFrameCount", "Images received incompletely.", &SStreamStatistics::incomplete, isCustom);
    add("StreamPacketResendRequestCount", "Packets that this application asked the camera for again.",
        &SStreamStatistics::askedFor, isCustom);
    add("StreamPacketResendCount", "Packets that came after an application asked for them again.",
        &SStreamStatistics::resent, isCustom);
    add("StreamPacketMissingCount", "Packets that never came.", &SStreamStatistics::missing, isCustom);
}

} // namespace Velmo::GigE::Internal
