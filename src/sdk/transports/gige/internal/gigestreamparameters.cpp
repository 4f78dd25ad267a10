// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigestream.h"
#include "transports/gige/internal/streamparameters.h"

namespace Velmo::GigE::Internal
{

namespace
{

void AddSwitch(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip, bool& member)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
    parameter.value = member ? 1 : 0;
    parameter.setter = [&member](std::int64_t value)
    {
        member = value != 0;
    };
    parameters.AddBoolean(std::move(parameter));
}

} // namespace

void AddTime(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip, std::int64_t& member)
{
    constexpr std::int64_t leastUs = 1000;
    constexpr std::int64_t mostUs = 10000000;
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
    parameter.unit = "us";
    parameter.min = leastUs;
    parameter.max = mostUs;
    parameter.value = member;
    parameter.setter = [&member](std::int64_t value)
    {
        member = value;
    };
    parameters.AddInteger(std::move(parameter));
}

void CGigEStream::BuildParameters()
{
    auto pParameters = std::make_unique<Transport::CSoftwareNodeMap>("GigEStreamGrabber");
    Transport::SSoftwareParameter payload;
    payload.name = "PayloadSize";
    payload.toolTip = "Bytes a buffer must hold.";
    payload.unit = "B";
    payload.getter = [this]
    {
        return static_cast<std::int64_t>(GetPayloadBytes());
    };
    pParameters->AddInteger(std::move(payload));
    AddTime(*pParameters, "PacketTimeout", "Time after which a missing packet is asked for again.", m_packetTimeoutUs);
    AddTime(*pParameters, "FrameRetention", "Time after the last packet until an incomplete image is given up.",
            m_frameRetentionUs);
    AddSwitch(*pParameters, "EnableResend", "Ask the camera for missing packets; used from the next start on.",
              m_isResending);
    AddSwitch(*pParameters, "AutoPacketSize",
              "Choose the largest packet size that gets through, unless the camera's was changed.",
              m_isChoosingPacketSize);
    constexpr bool isCustom = true; // GenTL SFNC has the first two only; the others are named after them
    AddStatistic(*pParameters, "StreamDeliveredFrameCount", "Images received completely.", &SStatistics::delivered,
                 !isCustom);
    AddStatistic(*pParameters, "StreamLostFrameCount",
                 "Images of which nothing was received, by the gaps in the camera's numbers.", &SStatistics::lost,
                 !isCustom);
    AddStatistic(*pParameters, "StreamIncompleteFrameCount", "Images received incompletely.", &SStatistics::incomplete,
                 isCustom);
    AddStatistic(*pParameters, "StreamPacketResendRequestCount", "Packets that the camera was asked for again.",
                 &SStatistics::askedFor, isCustom);
    AddStatistic(*pParameters, "StreamPacketResendCount", "Packets that came after they were asked for again.",
                 &SStatistics::resent, isCustom);
    AddStatistic(*pParameters, "StreamPacketMissingCount", "Packets that never came.", &SStatistics::missing, isCustom);
    pParameters->Build();
    m_pParameters = std::move(pParameters);
}

void CGigEStream::AddStatistic(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
                               std::uint64_t SStatistics::*pMember, bool isCustom)
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
}

CGigEStream::SStatistics CGigEStream::ReadStatistics()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_pStream != nullptr)
    {
        const auto count = [this](const char* name)
        {
            return arv_stream_get_info_uint64_by_name(m_pStream, name);
        };
        m_statistics.delivered = count("n_completed_buffers");
        m_statistics.incomplete = count("n_failures");
        m_statistics.askedFor = count("n_resend_requests");
        m_statistics.resent = count("n_resent_packets");
        m_statistics.missing = count("n_missing_packets");
    }
    return m_statistics;
}

} // namespace Velmo::GigE::Internal
