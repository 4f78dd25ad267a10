// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigestream.h"

namespace Velmo::GigE::Internal
{

void CGigEStream::BuildParameters()
{
    m_pParameters = std::make_unique<CSoftwareNodeMap>("GigEStreamGrabber");
    const auto add = [this](const char* name, const char* toolTip, const char* unit, std::int64_t value,
                            CSoftwareNodeMap::Getter getter, std::int64_t min, std::int64_t max,
                            CSoftwareNodeMap::Setter setter)
    {
        m_pParameters->Add({name, toolTip, unit, "", min, max, value, std::move(getter), std::move(setter)});
    };
    constexpr std::int64_t mostUs = 10000000;
    add(
        "PayloadSize", "Bytes a buffer must hold.", "B", 0,
        [this] { return static_cast<std::int64_t>(GetPayloadBytes()); }, 0, INT64_MAX, nullptr);
    add("PacketTimeout", "Time after which a missing packet is asked for again.", "us", m_packetTimeoutUs, nullptr,
        1000, mostUs, [this](std::int64_t value) { m_packetTimeoutUs = value; });
    add("FrameRetention", "Time after the last packet until an incomplete image is given up.", "us", m_frameRetentionUs,
        nullptr, 1000, mostUs, [this](std::int64_t value) { m_frameRetentionUs = value; });
    m_pParameters->AddBoolean("EnableResend", "Ask the camera for missing packets; used from the next start on.",
                              m_isResending, [this](std::int64_t value) { m_isResending = value != 0; });
    m_pParameters->AddBoolean(
        "AutoPacketSize", "Choose the largest packet size that gets through, unless the camera's was changed.",
        m_isChoosingPacketSize, [this](std::int64_t value) { m_isChoosingPacketSize = value != 0; });
    AddStatistic("Statistic_Total_Buffer_Count", "Images received completely.", &SStatistics::completed);
    AddStatistic("Statistic_Failed_Buffer_Count", "Images received incompletely.", &SStatistics::failed);
    AddStatistic("Statistic_Buffer_Underrun_Count", "Times no buffer was queued.", &SStatistics::underruns);
    AddStatistic("Statistic_Resend_Packet_Count", "Packets that came after they were asked for again.",
                 &SStatistics::resent);
    AddStatistic("Statistic_Missing_Packet_Count", "Packets that never came.", &SStatistics::missing);
    try
    {
        m_pParameters->Build();
    }
    catch (...)
    {
        m_pParameters.reset(); // half-built parameters would pass for an open stream
        throw;
    }
}

void CGigEStream::AddStatistic(const char* name, const char* toolTip, std::uint64_t SStatistics::*pMember)
{
    CSoftwareNodeMap::SInteger parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.getter = [this, pMember]
    {
        return static_cast<std::int64_t>(ReadStatistics().*pMember);
    };
    m_pParameters->Add(std::move(parameter));
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
