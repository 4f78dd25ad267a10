// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigestream.h"

namespace Velmo::GigE::Internal
{

namespace
{

/** A time in microseconds; member lives as long as the node map. */
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
    AddStatistic(*pParameters, "Statistic_Total_Buffer_Count", "Images received completely.", &SStatistics::completed);
    AddStatistic(*pParameters, "Statistic_Failed_Buffer_Count", "Images received incompletely.", &SStatistics::failed);
    AddStatistic(*pParameters, "Statistic_Buffer_Underrun_Count", "Times no buffer was queued.",
                 &SStatistics::underruns);
    AddStatistic(*pParameters, "Statistic_Resend_Packet_Count", "Packets that came after they were asked for again.",
                 &SStatistics::resent);
    AddStatistic(*pParameters, "Statistic_Missing_Packet_Count", "Packets that never came.", &SStatistics::missing);
    pParameters->Build();
    m_pParameters = std::move(pParameters);
}

void CGigEStream::AddStatistic(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
                               std::uint64_t SStatistics::*pMember)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
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
        guint64 completed = 0;
        guint64 failed = 0;
        guint64 underruns = 0;
        guint64 resent = 0;
        guint64 missing = 0;
        arv_stream_get_statistics(m_pStream, &completed, &failed, &underruns);
        arv_gv_stream_get_statistics(ARV_GV_STREAM(m_pStream), &resent, &missing);
        m_statistics = {completed, failed, underruns, resent, missing};
    }
    return m_statistics;
}

} // namespace Velmo::GigE::Internal
