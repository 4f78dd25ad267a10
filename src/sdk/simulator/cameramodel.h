// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "simulator/cameraconfig.h"
#include "simulator/clock.h"
#include "simulator/flash.h"
#include "simulator/framesink.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Simulator
{

/** What a reset leads to. */
struct SAfterReset
{
    EAfterReset what = EAfterReset::Same;
    std::uint32_t bootTimeMs = 0; // until then it is away
    SCameraConfig config;         // of the next model, which gets this one's flash
};

/**
 * One camera: registers, description, acquisition, faults.
 *
 * It has no thread: whoever owns it calls Produce when a frame is due (CFramePump does so for many cameras).
 * States: idle -> acquiring (AcquisitionStart) -> idle; removed from any state, for good.
 * Errors: GenICam exceptions; AccessException (no such register, read-only, locked), OutOfRangeException,
 * InvalidArgumentException, RuntimeException (removed, or a fault asked for).
 * Threads: any function from any thread; handlers are called with no lock held.
 */
class SIMULATOR_EXPORT CCameraModel
{
public:
    enum class EEvent
    {
        Removed, // unplugged or died
        Reset    // goes away, also for lack of power; GetAfterReset tells what comes back and when
    };

    /** Throws InvalidArgumentException or OutOfRangeException on configured features that do not fit. */
    explicit CCameraModel(const SCameraConfig& config, std::shared_ptr<SFlash> flash = nullptr,
                          const IClock& clock = SteadyClock());
    ~CCameraModel();
    CCameraModel(const CCameraModel&) = delete;
    CCameraModel& operator=(const CCameraModel&) = delete;

    const SCameraConfig& GetConfig() const;
    const std::shared_ptr<SFlash>& GetFlash() const;
    /** The GenICam description, XML; made anew at each call. */
    std::string GetDescription() const;

    /** Registers are big-endian; a range may cover several whole registers. */
    void Read(void* buffer, std::int64_t address, std::int64_t length);
    void Write(const void* buffer, std::int64_t address, std::int64_t length);

    /** A feature as text, past all faults; throws InvalidArgumentException when there is no such feature. */
    std::string GetFeature(const std::string& name) const;
    void SetFeature(const std::string& name, const std::string& value);

    /** The faults as they are now: counted-down drops, settings made through features. */
    SFaults GetFaults() const;
    void SetFaults(const SFaults& faults);

    /** As it is now; to be asked after EEvent::Reset. */
    SAfterReset GetAfterReset() const;
    /** Whether a fault took its power: the write that did it is not to be answered. */
    bool HasLostPower() const;
    /** The application that had control is gone: its files are closed, a firmware upload becomes Invalid. */
    void AbandonFiles();

    std::size_t GetPayloadBytes() const;
    std::string GetUserDefinedName() const;
    bool IsAcquiring() const;
    std::uint64_t GetFramesSkipped() const;

    /**
     * An action command, as it comes from the network; whether the camera is under control is the transport's affair.
     * Returns the status to answer with, or nothing where the camera stays silent: another device key, or no action
     * signal of that group key and mask, or removed. A scheduled one needs a clock that follows the shared one
     * (PtpEnable; NoReferenceTime until it does), room in the queue (Overflow), and a time ahead: one that has passed
     * is done at once (ActionLate).
     */
    std::optional<Velmo::Gvcp::EStatus> Action(const Velmo::Gvcp::SAction& action);

    /** Locks the settings that shape the stream, as a stream does while it runs. */
    void SetTransportLocked(bool isLocked);

    /** Sinks get every frame; after RemoveSink returned the sink is not called any more. */
    void AddSink(IFrameSink* pSink);
    void RemoveSink(IFrameSink* pSink);

    /** Delivers the frame that is due, if one is; returns when to call again (INT64_MAX: when woken). */
    std::int64_t Produce();
    /** Called when the time that Produce returned is no longer right. */
    void SetWakeHandler(std::function<void()> handler);
    /** What the camera reports by its events (EventNotification); a message that nobody takes is gone. Called on the
     *  thread that calls Produce, or that executed TestEventGenerate, one message at a time; the handler must not call
     *  Produce. A call that is under way may outlast this one. */
    void SetMessageHandler(std::function<void(const Velmo::Gvcp::SEvent&)> handler);
    /** Called on the thread that caused the event. */
    void SetEventHandler(std::function<void(EEvent)> handler);

    /** Unplugs the camera: every access fails from now on. The event is sent once. */
    void Remove();
    bool IsRemoved() const;

private:
    struct SPrivate;
    const std::unique_ptr<SPrivate> m_p;
};

} // namespace Simulator
