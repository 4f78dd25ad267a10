// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameramodel.h"
#include "simulator/internal/actions.h"
#include "simulator/internal/compression.h"
#include "simulator/internal/events.h"
#include "simulator/internal/faultregisters.h"
#include "simulator/internal/fileaccess.h"
#include "simulator/internal/framecomposer.h"
#include "simulator/internal/frameschedule.h"
#include "simulator/internal/hash.h"
#include "simulator/internal/settings.h"
#include "simulator/internal/testimage.h"
#include "simulator/registers.h"

#include "genapi/exceptions.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace Simulator
{

/** What a camera model consists of. */
struct CCameraModel::SPrivate
{
    /** What is left to do once the lock is released. */
    struct SFollowUp
    {
        bool wake = false;
        bool remove = false;
        bool reset = false;
        bool report = false; // events that are due at once
    };

    SPrivate(const SCameraConfig& config_, std::shared_ptr<SFlash> flash_, const IClock& clock_)
        : config(config_), flash(flash_ == nullptr ? std::make_shared<SFlash>() : std::move(flash_)), clock(clock_),
          hash(Internal::HashOf(config_.serialNumber)), settings(config, flash),
          cameraClock(clock_.NowNs(), config_.clockOffsetNs, config_.clockDriftPpm), faults(config_.faults)
    {
        actions.Synchronise(Integer(Register::PtpEnable) != 0, clock.NowNs()); // as the data say
    }

    bool IsLocked() const { return isTransportLocked || isLockedByWrite || schedule.IsRunning(); }
    SFaults FaultsNow() const
    {
        SFaults now = faults;
        Internal::GetFaults(settings.GetMemory(), now);
        return now;
    }
    [[noreturn]] void ThrowPowerLoss() const
    {
        GENICAM_THROW(RuntimeException, "The camera '" + config.serialNumber + "' lost its power.");
    }
    std::uint64_t Integer(std::int64_t address) const { return settings.GetMemory().GetInteger(address); }
    void Count(std::int64_t address, std::uint64_t& counter) { settings.GetMemory().SetInteger(address, ++counter, 8); }

    void CheckAccess(const std::string& error) const;
    void RefreshRegisters();
    void WriteRegister(const Internal::SFeature& feature, std::int64_t address, const std::uint8_t* data,
                       std::int64_t length, SFollowUp& followUp);
    void Execute(std::int64_t address, SFollowUp& followUp);
    void FollowUp(const SFollowUp& followUp, CCameraModel& model);
    void StartAcquisition();
    bool IsTriggered() const { return Integer(Register::TriggerMode) != 0; }
    void PrepareImage();
    bool PrepareFrame(std::int64_t frameNs, SFrame& frame);
    void Send(EEvent event);
    void Report();
    std::int64_t GetDeadline() const
    {
        return std::min({schedule.GetDeadline(), actions.GetDeadline(), events.GetDeadline()});
    }

    const SCameraConfig config;
    const std::shared_ptr<SFlash> flash;
    const IClock& clock;
    const std::uint32_t hash;

    std::mutex produceMutex; // one Produce at a time, guards the compressor; taken first
    std::mutex sinkMutex;    // guards sinks and is held while they are called; taken second
    std::vector<IFrameSink*> sinks;
    std::mutex messageMutex; // one Report at a time, so that messages keep their order; taken before the mutex below
    Internal::CImageCompressor compressor;

    mutable std::mutex mutex; // guards all below; taken last, never held while calling out
    Internal::CSettings settings;
    Internal::CFileAccess files{settings, flash, config};
    CCameraClock cameraClock;
    SFaults faults; // texts; numbers live in registers
    Internal::CFrameSchedule schedule;
    Internal::CActionReceiver actions{settings, schedule, cameraClock};
    Internal::CEventSource events{settings, cameraClock};
    Internal::CFrameComposer composer;                 // what it made is read under produceMutex
    std::shared_ptr<const Internal::CTestImage> image; // null: settings changed
    std::uint64_t generated = 0;
    std::uint64_t lost = 0;
    bool isTransportLocked = false;
    bool isLockedByWrite = false;
    bool isRemoved = false;
    bool hasLostPower = false;
    std::function<void()> wakeHandler;
    std::function<void(EEvent)> eventHandler;
    std::function<void(const Velmo::Gvcp::SEvent&)> messageHandler;
};

} // namespace Simulator
