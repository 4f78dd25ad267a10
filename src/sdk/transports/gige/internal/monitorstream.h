// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/camerastream.h"
#include "transports/gige/internal/gvspreceiver.h"

#include <atomic>

namespace Velmo::GigE::Internal
{

struct SMonitorCamera;

/**
 * The image stream of a camera that another application controls, as that application had it sent to a multicast group.
 *
 * The group and the port are read from the camera. When nothing arrives, it looks every second whether the stream goes
 * elsewhere now. Start throws RuntimeException when the camera does not stream to a multicast group.
 */
class CMonitorStream : public ACameraStream
{
public:
    CMonitorStream();
    ~CMonitorStream() override;

    /** The device was opened. */
    void Attach(SMonitorCamera& camera);

private:
    SMonitorCamera& Monitored() const;
    GenApi::INodeMap& Features() override;
    void AddSettings(Transport::CSoftwareNodeMap& parameters) override;
    std::unique_ptr<IReception> MakeReception(Deliver deliver) override;
    CGvspReceiver::SConfig ReadConfig();

    std::atomic<std::int64_t> m_frameRetentionUs{200000};
};

} // namespace Velmo::GigE::Internal
