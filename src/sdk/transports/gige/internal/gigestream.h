// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/camerastream.h"
#include "transports/gige/internal/gvspreceiver.h"
#include "transports/gige/internal/streamparameters.h"

#include <atomic>

namespace Velmo::GigE::Internal
{

class CReaper;
struct SOpenCamera;

/** The image stream of a camera that is controlled here: unicast, or by multicast so that others can watch, too. */
class CGigEStream : public ACameraStream
{
public:
    explicit CGigEStream(CReaper& reaper);
    ~CGigEStream() override;

    /** The device was opened. */
    void Attach(SOpenCamera& camera);

private:
    SOpenCamera& Controlled() const;
    GenApi::INodeMap& Features() override;
    void AddSettings(Transport::CSoftwareNodeMap& parameters) override;
    void AddTransmission(Transport::CSoftwareNodeMap& parameters);
    std::unique_ptr<IReception> MakeReception(Deliver deliver) override;
    std::unique_ptr<IReception> MakeUnicast(Deliver deliver);
    std::unique_ptr<IReception> MakeMulticast(Deliver deliver);
    void AddPacketSize(Transport::CSoftwareNodeMap& parameters);
    void AddReceiveBuffer(Transport::CSoftwareNodeMap& parameters);
    void AskForGeometry();

    CReaper& m_reaper;
    // Settings for the next start
    std::atomic<bool> m_isResending{true};
    std::atomic<bool> m_isChoosingPacketSize{true};
    std::atomic<std::int64_t> m_packetTimeoutUs{20000};
    std::atomic<std::int64_t> m_frameRetentionUs{200000};
    std::atomic<std::int64_t> m_transmissionType{TransmissionType::Unicast};
    std::atomic<std::int64_t> m_groupIp{0}; // host byte order; 0: not chosen yet
    std::atomic<std::int64_t> m_groupPort{0};
};

} // namespace Velmo::GigE::Internal
