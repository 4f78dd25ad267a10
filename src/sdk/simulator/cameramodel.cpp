// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/cameramodel.h"

#include "genapi/exceptions.h"
#include "simulator/internal/description.h"
#include "simulator/internal/modelstate.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <vector>

namespace Simulator
{

using Internal::CFrameSchedule;
using Internal::CTestImage;
using Internal::SFeature;

IFrameSink::~IFrameSink() = default;

namespace
{

constexpr std::int64_t MaxPhaseNs = 200'000'000; // slow cameras still send their first frame soon
constexpr std::uint64_t ModeSingleFrame = 0;
constexpr std::uint64_t ModeMultiFrame = 1;

} // namespace

void CCameraModel::SPrivate::CheckAccess(const std::string& error) const
{
    if (isRemoved)
    {
        GENICAM_THROW(RuntimeException, "The camera '" + config.serialNumber + "' was removed.");
    }
    if (hasLostPower)
    {
        ThrowPowerLoss();
    }
    if (!error.empty())
    {
        GENICAM_THROW(RuntimeException, error);
    }
}

void CCameraModel::SPrivate::RefreshRegisters()
{
    settings.GetMemory().SetInteger(Register::TLParamsLocked, IsLocked() ? 1 : 0);
    settings.GetMemory().SetInteger(Register::AcquisitionStatus, schedule.IsRunning() ? 1 : 0);
    files.Refresh();
}

void CCameraModel::SPrivate::WriteRegister(const SFeature& feature, std::int64_t address, const std::uint8_t* data,
                                           std::int64_t length, SFollowUp& followUp)
{
    settings.Write(feature, address, data, length, IsLocked());
    if (feature.kind == Internal::EKind::Command)
    {
        const bool isAsked = Integer(feature.address) != 0;
        settings.GetMemory().SetInteger(feature.address, 0);
        if (isAsked)
        {
            Execute(feature.address, followUp);
        }
    }
    if (feature.address == Register::TLParamsLocked)
    {
        isLockedByWrite = Integer(Register::TLParamsLocked) != 0;
    }
    if (feature.address == Register::PtpEnable)
    {
        actions.Synchronise(Integer(Register::PtpEnable) != 0, clock.NowNs());
    }
    if (feature.isInUserSet || feature.address == Register::UserSetLoad)
    {
        image.reset();
        schedule.Change(clock.NowNs(), settings.GetPeriodNs(), IsTriggered());
        followUp.wake = true;
    }
}

void CCameraModel::SPrivate::Execute(std::int64_t address, SFollowUp& followUp)
{
    switch (address)
    {
    case Register::AcquisitionStart:
        StartAcquisition();
        followUp.wake = true;
        break;
    case Register::AcquisitionStop:
        schedule.Stop();
        followUp.wake = true;
        break;
    case Register::TriggerSoftware:
        if (Integer(Register::TriggerSource) == 0)
        {
            schedule.Trigger(clock.NowNs());
            followUp.wake = true;
        }
        break;
    case Register::TimestampLatch:
        settings.GetMemory().SetInteger(Register::TimestampLatchValue, cameraClock.GetTicks(clock.NowNs()), 8);
        break;
    case Register::TimestampReset:
        cameraClock.Reset(clock.NowNs());
        break;
    case Register::PtpDataSetLatch:
        actions.LatchSynchronisation(clock.NowNs());
        break;
    case Register::UserSetLoad:
        settings.LoadUserSet(static_cast<std::uint32_t>(Integer(Register::UserSetSelector)));
        break;
    case Register::UserSetSave:
        settings.SaveUserSet();
        break;
    case Register::FileOperationExecute:
        hasLostPower = files.Execute();
        followUp.reset = hasLostPower;
        break;
    case Register::FirmwareActivate:
        files.Activate();
        break;
    case Register::DeviceReset:
        followUp.reset = true;
        break;
    case Register::TestEventGenerate:
        events.OnTest(clock.NowNs());
        followUp.report = true;
        break;
    case Register::FaultRemove:
        followUp.remove = true;
        break;
    default:
        break;
    }
}

void CCameraModel::SPrivate::StartAcquisition()
{
    if (schedule.IsRunning())
    {
        return;
    }
    const std::uint64_t mode = Integer(Register::AcquisitionMode);
    const std::uint64_t frames = mode == ModeSingleFrame  ? 1
                                 : mode == ModeMultiFrame ? Integer(Register::AcquisitionFrameCount)
                                                          : CFrameSchedule::Unlimited;
    const std::int64_t periodNs = settings.GetPeriodNs();
    generated = 0;
    lost = 0;
    settings.GetMemory().SetInteger(Register::FramesGenerated, 0, 8);
    settings.GetMemory().SetInteger(Register::FramesLost, 0, 8);
    // The phase spreads cameras that start together; the golden ratio's fraction keeps neighbours apart.
    const std::int64_t span = std::min(periodNs, MaxPhaseNs);
    const std::int64_t phaseNs =
        static_cast<std::int64_t>(static_cast<double>(hash * 2654435769U) / 4294967296.0 * static_cast<double>(span));
    PrepareImage();
    schedule.Start(clock.NowNs(), periodNs, phaseNs, frames, IsTriggered());
}

void CCameraModel::SPrivate::PrepareImage()
{
    if (image != nullptr)
    {
        return;
    }
    image = CTestImage::Get(Internal::MakeImageKey(settings, config.sensorWidth));
}

bool CCameraModel::SPrivate::PrepareFrame(std::int64_t frameNs, SFrame& frame)
{
    if (Integer(Register::FaultStall) != 0)
    {
        return false;
    }
    if (settings.AdjustExposure())
    {
        image.reset();
        schedule.Change(clock.NowNs(), settings.GetPeriodNs(), IsTriggered());
    }
    Count(Register::FramesGenerated, generated);
    events.OnExposure(frameNs, generated);
    const std::uint64_t drops = Integer(Register::FaultDropFrames);
    if (drops > 0)
    {
        settings.GetMemory().SetInteger(Register::FaultDropFrames, drops - 1);
        Count(Register::FramesLost, lost);
        return false;
    }
    PrepareImage();
    const std::uint64_t nth = Integer(Register::FaultFailEveryNth);
    frame.blockId = generated;
    frame.timestamp = cameraClock.GetTicks(frameNs);
    frame.pfnc = settings.GetFormat().pfnc;
    frame.width = settings.GetWidth();
    frame.height = settings.GetHeight();
    frame.offsetX = static_cast<std::uint32_t>(Integer(Register::OffsetX));
    frame.offsetY = static_cast<std::uint32_t>(Integer(Register::OffsetY));
    frame.isFailed = nth != 0 && generated % nth == 0;
    composer.Compose(settings, {image->GetFrame(generated - 1, hash & 0xFEU), image->GetFrameBytes()}, frame);
    return true;
}

void CCameraModel::SPrivate::Send(EEvent event)
{
    std::function<void(EEvent)> handler;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        handler = eventHandler;
    }
    if (handler)
    {
        handler(event);
    }
}

void CCameraModel::SPrivate::Report()
{
    const std::lock_guard<std::mutex> messageLock(messageMutex);
    std::vector<Velmo::Gvcp::SEvent> due;
    std::function<void(const Velmo::Gvcp::SEvent&)> handler;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        due = events.Take(clock.NowNs());
        if (!due.empty())
        {
            handler = messageHandler;
        }
    }
    for (const Velmo::Gvcp::SEvent& event : due)
    {
        if (handler)
        {
            handler(event);
        }
    }
}

void CCameraModel::SPrivate::FollowUp(const SFollowUp& followUp, CCameraModel& model)
{
    if (followUp.wake)
    {
        std::function<void()> handler;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            handler = wakeHandler;
        }
        if (handler)
        {
            handler();
        }
    }
    if (followUp.report)
    {
        Report();
    }
    if (followUp.reset)
    {
        Send(EEvent::Reset);
    }
    if (followUp.remove)
    {
        model.Remove();
    }
}

CCameraModel::CCameraModel(const SCameraConfig& config, std::shared_ptr<SFlash> flash, const IClock& clock)
    : m_p(std::make_unique<SPrivate>(config, std::move(flash), clock))
{
}

CCameraModel::~CCameraModel() = default;

const SCameraConfig& CCameraModel::GetConfig() const
{
    return m_p->config;
}

const std::shared_ptr<SFlash>& CCameraModel::GetFlash() const
{
    return m_p->flash;
}

std::string CCameraModel::GetDescription() const
{
    return Internal::MakeDescription(m_p->config, m_p->settings.GetFeatures());
}

void CCameraModel::Read(void* buffer, std::int64_t address, std::int64_t length)
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    m_p->CheckAccess(m_p->faults.readError);
    Internal::CRegisterMemory::Check(address, length);
    m_p->RefreshRegisters();
    m_p->settings.GetMemory().Get(buffer, address, length);
}

void CCameraModel::Write(const void* buffer, std::int64_t address, std::int64_t length)
{
    SPrivate::SFollowUp followUp;
    bool losesPower = false;
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        m_p->CheckAccess(m_p->faults.writeError);
        Internal::CRegisterMemory::Check(address, length);
        const auto* data = static_cast<const std::uint8_t*>(buffer);
        m_p->hasLostPower = m_p->files.CountWrite();
        followUp.reset = m_p->hasLostPower;
        while (length > 0 && !m_p->hasLostPower)
        {
            const SFeature* feature = m_p->settings.FindFeatureAt(address);
            if (feature == nullptr ||
                ((address - feature->address) % feature->bytes != 0 && feature->kind != Internal::EKind::Bytes))
            {
                GENICAM_THROW(AccessException,
                              "The camera has no register to write at address " + std::to_string(address) + ".");
            }
            const std::int64_t bytes = std::min(length, feature->bytes - (address - feature->address) % feature->bytes);
            m_p->WriteRegister(*feature, address, data, bytes, followUp);
            data += bytes;
            address += bytes;
            length -= bytes;
        }
        losesPower = m_p->hasLostPower;
    }
    m_p->FollowUp(followUp, *this);
    if (losesPower)
    {
        m_p->ThrowPowerLoss();
    }
}

std::string CCameraModel::GetFeature(const std::string& name) const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    const SFeature* feature = m_p->settings.FindFeature(name);
    if (feature == nullptr)
    {
        GENICAM_THROW(InvalidArgumentException, "There is no feature '" + name + "'.");
    }
    m_p->RefreshRegisters();
    return m_p->settings.Decode(*feature);
}

void CCameraModel::SetFeature(const std::string& name, const std::string& value)
{
    SPrivate::SFollowUp followUp;
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        const SFeature* feature = m_p->settings.FindFeature(name);
        if (feature == nullptr)
        {
            GENICAM_THROW(InvalidArgumentException, "There is no feature '" + name + "'.");
        }
        const std::vector<std::uint8_t> data = m_p->settings.Encode(*feature, value);
        m_p->WriteRegister(*feature, m_p->settings.AddressOf(*feature), data.data(), feature->bytes, followUp);
    }
    m_p->FollowUp(followUp, *this);
}

std::optional<Velmo::Gvcp::EStatus> CCameraModel::Action(const Velmo::Gvcp::SAction& action)
{
    std::optional<Velmo::Gvcp::EStatus> status;
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        if (!m_p->isRemoved)
        {
            status = m_p->actions.Handle(action, m_p->clock.NowNs());
        }
    }
    SPrivate::SFollowUp followUp;
    followUp.wake = status.has_value();
    m_p->FollowUp(followUp, *this);
    return status;
}

SFaults CCameraModel::GetFaults() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    return m_p->FaultsNow();
}

void CCameraModel::SetFaults(const SFaults& faults)
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    m_p->faults = faults;
    Internal::SetFaults(m_p->settings.GetMemory(), faults);
}

SAfterReset CCameraModel::GetAfterReset() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    const SFaults faults = m_p->FaultsNow();
    const std::uint32_t bootTimeMs = m_p->config.bootTimeMs;
    return {faults.afterReset,
            m_p->files.IsActivationPending() ? m_p->config.firmwareBootTimeMs.value_or(bootTimeMs) : bootTimeMs,
            Internal::MakeConfigAfterReset(m_p->config, faults)};
}

bool CCameraModel::HasLostPower() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    return m_p->hasLostPower;
}

void CCameraModel::AbandonFiles()
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    if (!m_p->isRemoved && !m_p->hasLostPower) // the flash is the next model's then
    {
        m_p->files.Abandon();
    }
}

std::size_t CCameraModel::GetPayloadBytes() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    return static_cast<std::size_t>(m_p->settings.GetPayloadBytes());
}

std::string CCameraModel::GetUserDefinedName() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    return m_p->settings.GetMemory().GetText(Register::DeviceUserID);
}

bool CCameraModel::IsAcquiring() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    return m_p->schedule.IsRunning();
}

std::uint64_t CCameraModel::GetFramesSkipped() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    return m_p->schedule.GetSkipped();
}

void CCameraModel::SetTransportLocked(bool isLocked)
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    m_p->isTransportLocked = isLocked;
}

void CCameraModel::AddSink(IFrameSink* pSink)
{
    const std::lock_guard<std::mutex> lock(m_p->sinkMutex);
    m_p->sinks.push_back(pSink);
}

void CCameraModel::RemoveSink(IFrameSink* pSink)
{
    const std::lock_guard<std::mutex> lock(m_p->sinkMutex);
    m_p->sinks.erase(std::remove(m_p->sinks.begin(), m_p->sinks.end(), pSink), m_p->sinks.end());
}

std::int64_t CCameraModel::Produce()
{
    const std::lock_guard<std::mutex> produceLock(m_p->produceMutex);
    SFrame frame;
    std::shared_ptr<const CTestImage> image; // keeps frame.data alive
    std::optional<Velmo::Codec::SDescriptor> compression;
    bool hasFrame = false;
    bool isReporting = false;
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        const std::int64_t nowNs = m_p->clock.NowNs();
        std::int64_t frameNs = 0;
        m_p->actions.Run(nowNs);
        hasFrame = !m_p->isRemoved && m_p->schedule.Take(nowNs, frameNs) && m_p->PrepareFrame(frameNs, frame);
        isReporting = m_p->events.GetDeadline() <= nowNs;
        if (hasFrame)
        {
            image = m_p->image;
            compression = Internal::GetCompression(m_p->settings);
        }
        else if (!isReporting)
        {
            return m_p->GetDeadline();
        }
    }
    if (isReporting)
    {
        m_p->Report();
    }
    if (!hasFrame)
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        return m_p->GetDeadline();
    }
    // Not under the lock: the camera's registers answer meanwhile.
    if (compression)
    {
        m_p->composer.ReplaceImage(m_p->compressor.Compress(*compression, frame.data), frame);
    }
    else
    {
        m_p->compressor.Reset();
    }
    if (frame.isFailed)
    {
        frame.bytes /= 2;
        frame.tailBytes = 0;
    }
    bool isTaken = false;
    {
        const std::lock_guard<std::mutex> lock(m_p->sinkMutex);
        for (IFrameSink* sink : m_p->sinks)
        {
            isTaken = sink->OnFrame(frame) || isTaken;
        }
    }
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    if (!isTaken)
    {
        m_p->Count(Register::FramesLost, m_p->lost);
    }
    return m_p->GetDeadline();
}

void CCameraModel::SetWakeHandler(std::function<void()> handler)
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    m_p->wakeHandler = std::move(handler);
}

void CCameraModel::SetMessageHandler(std::function<void(const Velmo::Gvcp::SEvent&)> handler)
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    m_p->messageHandler = std::move(handler);
}

void CCameraModel::SetEventHandler(std::function<void(EEvent)> handler)
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    m_p->eventHandler = std::move(handler);
}

void CCameraModel::Remove()
{
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        if (m_p->isRemoved)
        {
            return;
        }
        m_p->isRemoved = true;
        m_p->schedule.Stop();
        m_p->actions.Clear();
        m_p->events.Clear();
    }
    m_p->Send(EEvent::Removed);
}

bool CCameraModel::IsRemoved() const
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    return m_p->isRemoved;
}

} // namespace Simulator
