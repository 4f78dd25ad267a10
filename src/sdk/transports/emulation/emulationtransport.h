// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameraconfig.h"
#include "transport/transport.h"
#include "transports/emulation/emulation_export.h"

#include <memory>
#include <string>
#include <vector>

namespace Simulator
{
class CCameraModel;
}

namespace Velmo::Emulation
{

constexpr const char* DeviceClass = "KorvelCamEmu";
constexpr const char* TLType = "CamEmu";
/** Environment variables: a JSON file with the cameras, or else their number. */
constexpr const char* FileVariable = "CAMERAPOOL_EMULATION_FILE";
constexpr const char* CountVariable = "CAMERAPOOL_EMULATION_CAMERAS";

/**
 * Plugs and unplugs emulated cameras while the process runs. Threads: any.
 *
 * Cameras come from the environment's data until SetCameras, Plug or Unplug is called; from then on from here.
 */
class EMULATION_EXPORT IEmulationControl
{
public:
    virtual ~IEmulationControl();
    /** Replaces all; one that stays with unchanged data stays open. Throws InvalidArgumentException on bad data. */
    virtual void SetCameras(const std::vector<Simulator::SCameraConfig>& cameras) = 0;
    /** Throws InvalidArgumentException when the serial number is in use or the data is bad. */
    virtual void Plug(const Simulator::SCameraConfig& camera) = 0;
    /** Open devices report their removal. False when there is no such camera. */
    virtual bool Unplug(const std::string& serialNumber) = 0;
    /** The camera behind the transport, for faults and triggers; null when there is none. */
    virtual std::shared_ptr<Simulator::CCameraModel> FindCamera(const std::string& serialNumber) = 0;
    /** What is wrong with the environment's data and where; "" when it is good. */
    virtual std::string GetDataError() const = 0;
};

/** A transport over the cameras that the environment describes (two without it). */
EMULATION_EXPORT std::shared_ptr<Transport::ITransport> CreateTransport();

/** A transport over these cameras; the environment is ignored. */
EMULATION_EXPORT std::shared_ptr<Transport::ITransport>
CreateTransport(const std::vector<Simulator::SCameraConfig>& cameras);

/** The control of a transport made here; null for any other. */
EMULATION_EXPORT std::shared_ptr<IEmulationControl> GetControl(const std::shared_ptr<Transport::ITransport>& transport);

/** The control of the transport made last, as long as it lives; null otherwise. For hosts that do not see the
 *  transport itself. */
EMULATION_EXPORT std::shared_ptr<IEmulationControl> GetCurrentControl();

} // namespace Velmo::Emulation
