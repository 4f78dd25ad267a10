// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameradata.h"
#include "transports/emulation/emulationtransport.h"
#include "transports/emulation/internal/emulatedcamera.h"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Velmo::Emulation::Internal
{

/** The cameras that are plugged now, and the data they come from. Threads: any. */
class EMULATION_TEST_EXPORT CCameraRack : public IEmulationControl, public std::enable_shared_from_this<CCameraRack>
{
public:
    /** file: read at each Refresh, cameras follow it; "" for the data alone. */
    CCameraRack(Simulator::SRackData data, std::string file);
    ~CCameraRack() override;

    /** Follows the file and the resets that ended. Never throws; bad data are logged once and leave all as it was. */
    void Refresh();
    std::vector<Simulator::SInterfaceData> GetInterfaces() const;
    /** Those that answer now, in the data's order. */
    std::vector<std::shared_ptr<CEmulatedCamera>> GetCameras() const;
    /** Null when there is none. */
    std::shared_ptr<CEmulatedCamera> FindByFullName(const std::string& fullName) const;

    void SetCameras(const std::vector<Simulator::SCameraConfig>& cameras) override;
    void Plug(const Simulator::SCameraConfig& camera) override;
    bool Unplug(const std::string& serialNumber) override;
    std::shared_ptr<Simulator::CCameraModel> FindCamera(const std::string& serialNumber) override;
    std::string GetDataError() const override;

private:
    using Clock = std::chrono::steady_clock;
    struct SSlot
    {
        Simulator::SCameraConfig config;
        std::shared_ptr<CEmulatedCamera> camera; // null: died, or boots
        std::shared_ptr<CEmulatedCamera> twin;   // of the same serial number; only where a fault made it
        bool isBooting = false;
        Clock::time_point bootsUntil;
        Simulator::SAfterReset afterReset; // what boots
    };
    using Removed = std::vector<std::shared_ptr<CEmulatedCamera>>;

    void Apply(const Simulator::SRackData& data);
    void ReadChangedFile();
    void Report(const std::string& error);
    void FinishBoots();
    /** slotSerial: the data's serial number, from which a fault may have changed the config's. */
    std::shared_ptr<CEmulatedCamera> Make(const Simulator::SCameraConfig& config, const std::string& slotSerial,
                                          bool isTwin);
    SSlot MakeSlot(const Simulator::SCameraConfig& config);
    /** What is to be removed for the event; null for nothing. */
    static std::shared_ptr<CEmulatedCamera> TakeAway(SSlot& slot, bool isTwin, Simulator::CCameraModel::EEvent event);
    void OnEvent(const std::string& slotSerial, bool isTwin, Simulator::CCameraModel::EEvent event);

    const std::string m_file;
    std::mutex m_applyMutex;    // one change of the data at a time; taken before m_mutex
    mutable std::mutex m_mutex; // guards all below; not held while cameras are removed
    Simulator::SRackData m_data;
    std::vector<SSlot> m_slots;
    std::map<std::string, std::shared_ptr<Simulator::SFlash>> m_flashes; // by serial number
    std::string m_fileText;
    std::string m_dataError;
    bool m_wasRead = false;
    bool m_isFileFollowed = false;
};

} // namespace Velmo::Emulation::Internal
