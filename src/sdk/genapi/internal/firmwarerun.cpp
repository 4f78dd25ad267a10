// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwarerun.h"

#include "genapi/internal/firmwareestimate.h"
#include "genapi/internal/firmwarefeatures.h"
#include "genapi/internal/firmwarepackage.h"
#include "genapi/internal/firmwareupload.h"

#include <algorithm>
#include <exception>
#include <new>

namespace GenApi
{
namespace Internal
{
namespace
{

/** One application of an update. */
class CFirmwareRun
{
public:
    CFirmwareRun(const CFirmwareUpdateInfo& info, IFirmwareUpdatableDevice& device,
                 IFirmwareUpdateProgressObserver* observer, IFirmwareClock& clock, const SFirmwareLimits& limits)
        : m_info(info), m_update(info.GetUpdate().get()), m_device(device), m_observer(observer), m_clock(clock),
          m_limits(limits)
    {
    }

    void Run()
    {
        if (m_update == nullptr)
        {
            GENICAM_THROW(InvalidArgumentException,
                          "There is no firmware update to apply: the update info is not valid");
        }
        if (m_observer != nullptr)
        {
            m_observer->OnFirmwareUpdateBegin(m_info, EstimateTotal(*m_update));
        }
        RunStep(EFirmwareUpdateStepType::CheckPreconditions, CheckTimeMs, nullptr,
                [this](const FirmwareProgress&) { CheckPreconditions(); });
        RunStep(EFirmwareUpdateStepType::AcquireUpdateData, EstimateReading(*m_update), nullptr,
                [this](const FirmwareProgress&) { Acquire(); });
        for (const SFirmwareStep& step : m_update->procedure->steps)
        {
            m_isActivated = m_isActivated || step.isActivating;
            RunStep(step.type, m_estimate.Step(step, *m_update),
                    step.description.empty() ? nullptr : TextOf(step.description, "").c_str(),
                    [&](const FirmwareProgress& progress) { Apply(step, progress); });
        }
    }

private:
    template <class Action>
    void RunStep(EFirmwareUpdateStepType type, std::uint32_t estimatedMs, const char* description, Action action)
    {
        if (m_observer != nullptr)
        {
            m_observer->OnFirmwareUpdateProgressStepBegin(type, estimatedMs, description);
        }
        const auto report = [&](double percent)
        {
            if (m_observer == nullptr)
            {
                return;
            }
            m_isObserverCalled = true;
            m_observer->OnFirmwareUpdateProgressStepPartialProgress(type, percent);
            m_isObserverCalled = false;
        };
        double reported = 0;
        action(
            [&](double percent)
            {
                reported = percent;
                report(percent);
            });
        if (reported < 100)
        {
            report(100);
        }
        if (m_observer != nullptr)
        {
            m_observer->OnFirmwareUpdateProgressStepEnd(type, estimatedMs);
        }
    }

    void CheckPreconditions()
    {
        m_device.PrepareForFirmwareUpdate();
        INodeMap& nodeMap = m_device.GetNodeMapOfDeviceToUpdate();
        if (!MatchesConditions(m_update->entry, nodeMap))
        {
            GENICAM_THROW(LogicalErrorException, "The update '" + m_update->entry.id + "' is not for the camera '" +
                                                     m_device.GetDisplayName().str() + "'");
        }
        for (const SFirmwareStep& step : m_update->procedure->steps)
        {
            if (!step.isAfterReset)
            {
                CheckStepFeatures(step, nodeMap);
            }
        }
        for (const SFirmwareStep& precondition : m_update->procedure->preconditions)
        {
            Assert(precondition, nodeMap, m_clock, [](double) {});
        }
    }

    /** The file may have changed since it was offered to the user. */
    void Acquire()
    {
        SFirmwarePackage package =
            ReadFirmwarePackage(m_update->fileName, LoadFirmwareFile(m_update->fileName, m_limits), m_limits);
        if (package.sha256 != m_update->packageSha256)
        {
            GENICAM_THROW(LogicalErrorException, "The firmware package '" + m_update->fileName +
                                                     "' has changed since it was read; read it again");
        }
        m_payload = std::move(package.payload);
    }

    void Apply(const SFirmwareStep& step, const FirmwareProgress& progress)
    {
        if (step.type == EFirmwareUpdateStepType::DeviceReset)
        {
            m_device.DeviceResetWhileUpdatingFirmware(step.expectedTimeMs, step.waitTimeMs);
            return;
        }
        INodeMap& nodeMap = m_device.GetNodeMapOfDeviceToUpdate();
        CheckStepFeatures(step, nodeMap);
        switch (step.type)
        {
        case EFirmwareUpdateStepType::FeatureWrite:
            WriteFeature(step, nodeMap);
            break;
        case EFirmwareUpdateStepType::FeatureExecute:
            ExecuteFeature(step, nodeMap, m_clock, progress);
            break;
        case EFirmwareUpdateStepType::FeatureAssert:
            Assert(step, nodeMap, m_clock, progress);
            break;
        case EFirmwareUpdateStepType::FileUpload:
            Upload(step, nodeMap, progress);
            break;
        default:
            GENICAM_THROW(LogicalErrorException, "A procedure holds a step that cannot be applied");
        }
    }

    void Upload(const SFirmwareStep& step, INodeMap& nodeMap, const FirmwareProgress& progress)
    {
        try
        {
            m_estimate.Measured(UploadFirmwareFile(step, m_payload.at(step.file), nodeMap, m_clock, progress));
        }
        catch (const GenICam::TimeoutException& e)
        {
            ThrowUploadFailure<GenICam::TimeoutException>(e);
        }
        catch (const GenICam::AccessException& e)
        {
            ThrowUploadFailure<GenICam::AccessException>(e);
        }
        catch (const GenICam::LogicalErrorException& e)
        {
            ThrowUploadFailure<GenICam::LogicalErrorException>(e);
        }
        catch (const GenICam::GenericException& e)
        {
            ThrowUploadFailure<GenICam::RuntimeException>(e);
        }
    }

    /** Inside a handler. What the user needs to know after a failed upload is whether the camera still works. */
    template <class Exception> [[noreturn]] void ThrowUploadFailure(const GenICam::GenericException& e) const
    {
        if (m_isObserverCalled)
        {
            throw;
        }
        std::string reason = e.GetDescription();
        // Some texts of transports end as sentences do.
        while (!reason.empty() && (reason.back() == '.' || reason.back() == ' ' || reason.back() == '\n'))
        {
            reason.pop_back();
        }
        throw Exception("The upload failed: " + reason + ". " + Consequence(), e.GetSourceFileName(),
                        e.GetSourceLine());
    }

    const char* Consequence() const
    {
        const std::vector<SFirmwareStep>& steps = m_update->procedure->steps;
        const bool tells =
            std::any_of(steps.begin(), steps.end(), [](const SFirmwareStep& step) { return step.isActivating; });
        if (tells && !m_isActivated)
        {
            return "The camera keeps the firmware that it has; apply the update again";
        }
        return "The camera may be without working firmware; leave it switched on and apply the update again";
    }

    const CFirmwareUpdateInfo m_info; // a copy: the caller's may go while an observer runs
    const SFirmwareUpdate* const m_update;
    IFirmwareUpdatableDevice& m_device;
    IFirmwareUpdateProgressObserver* const m_observer;
    IFirmwareClock& m_clock;
    const SFirmwareLimits& m_limits;
    CFirmwareEstimate m_estimate;
    std::map<std::string, std::string> m_payload;
    bool m_isActivated = false;
    bool m_isObserverCalled = false; // what is thrown now comes from the observer
};

void ReportError(IFirmwareUpdateProgressObserver* observer, const GenICam::GenericException& error)
{
    if (observer == nullptr)
    {
        return;
    }
    try
    {
        observer->OnFirmwareUpdateError(error);
    }
    catch (...) // NOLINT(bugprone-empty-catch)
    {
        // The failure of the update is what the caller is to hear of.
    }
}

void CleanupQuietly(IFirmwareUpdatableDevice& device)
{
    try
    {
        device.CleanupAfterFirmwareUpdate();
    }
    catch (...) // NOLINT(bugprone-empty-catch)
    {
        // As above.
    }
}

void Fail(IFirmwareUpdateProgressObserver* observer, IFirmwareUpdatableDevice& device,
          const GenICam::GenericException& error)
{
    ReportError(observer, error);
    CleanupQuietly(device);
}

} // namespace

void RunFirmwareUpdate(const CFirmwareUpdateInfo& updateInfo, IFirmwareUpdatableDevice& device,
                       IFirmwareUpdateProgressObserver* observer, IFirmwareClock& clock, const SFirmwareLimits& limits)
{
    try
    {
        CFirmwareRun(updateInfo, device, observer, clock, limits).Run();
    }
    catch (const GenICam::GenericException& e)
    {
        Fail(observer, device, e);
        throw;
    }
    catch (const std::bad_alloc&)
    {
        Fail(observer, device,
             GenICam::BadAllocException("There is not enough memory for the firmware update", __FILE__, __LINE__));
        throw;
    }
    catch (const std::exception& e)
    {
        Fail(observer, device, GenICam::RuntimeException(e.what(), __FILE__, __LINE__));
        throw;
    }
    catch (...)
    {
        Fail(observer, device,
             GenICam::RuntimeException("The firmware update was ended for an unknown reason", __FILE__, __LINE__));
        throw;
    }
    try
    {
        if (observer != nullptr)
        {
            observer->OnFirmwareUpdateEnd();
        }
    }
    catch (...)
    {
        CleanupQuietly(device);
        throw;
    }
    device.CleanupAfterFirmwareUpdate();
}

} // namespace Internal
} // namespace GenApi
