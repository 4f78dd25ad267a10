// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/camerarack.h"

#include "genapi/exceptions.h"
#include "simulator/datareader.h"
#include "transport/log.h"

#include <algorithm>

namespace Velmo::Emulation::Internal
{

using Simulator::CCameraModel;
using Simulator::SCameraConfig;

namespace
{

/** Tells a twin from its camera where serial numbers do not. */
constexpr const char* TwinMark = "#2";

} // namespace

CCameraRack::CCameraRack(Simulator::SRackData data, std::string file)
    : m_file(std::move(file)), m_data(std::move(data)), m_isFileFollowed(!m_file.empty())
{
    Simulator::CheckData(m_data);
}

CCameraRack::~CCameraRack() = default;

std::shared_ptr<CEmulatedCamera> CCameraRack::Make(const SCameraConfig& config, const std::string& slotSerial,
                                                   bool isTwin)
{
    std::shared_ptr<Simulator::SFlash>& flash = m_flashes[isTwin ? slotSerial + TwinMark : slotSerial];
    if (flash == nullptr)
    {
        flash = std::make_shared<Simulator::SFlash>();
    }
    const auto handler = [weak = weak_from_this(), slotSerial, isTwin](CCameraModel::EEvent event)
    {
        if (const auto alive = weak.lock())
        {
            alive->OnEvent(slotSerial, isTwin, event);
        }
    };
    try
    {
        return CEmulatedCamera::Create(config, flash, handler, isTwin ? TwinMark : "");
    }
    catch (const GenICam::GenericException& error)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "Emulated camera '" + config.serialNumber + "': " + error.GetDescription());
    }
}

CCameraRack::SSlot CCameraRack::MakeSlot(const SCameraConfig& config)
{
    SSlot slot;
    slot.config = config;
    slot.camera = Make(config, config.serialNumber, false);
    return slot;
}

void CCameraRack::Apply(const Simulator::SRackData& data)
{
    Simulator::CheckData(data);
    Removed removed;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::vector<SSlot> slots;
        for (const SCameraConfig& config : data.cameras)
        {
            const auto kept =
                std::find_if(m_slots.begin(), m_slots.end(), [&](const SSlot& slot) { return slot.config == config; });
            slots.push_back(kept == m_slots.end() ? MakeSlot(config) : *kept);
        }
        for (const SSlot& slot : m_slots)
        {
            const bool isKept = std::any_of(slots.begin(), slots.end(),
                                            [&](const SSlot& other) { return other.camera == slot.camera; });
            for (const auto& camera : {slot.camera, slot.twin})
            {
                if (camera != nullptr && !isKept)
                {
                    removed.push_back(camera);
                }
            }
        }
        m_slots = std::move(slots);
        m_data = data;
    }
    for (const auto& camera : removed)
    {
        camera->GetModel()->Remove();
    }
}

void CCameraRack::Report(const std::string& error)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_dataError == error)
        {
            return;
        }
        m_dataError = error;
    }
    if (!error.empty())
    {
        Log(ELogLevel::Error, "velmo.emulation", error);
    }
}

void CCameraRack::ReadChangedFile()
{
    try
    {
        std::string text = Simulator::ReadFile(m_file);
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (m_wasRead && text == m_fileText)
            {
                return;
            }
            m_fileText = text;
            m_wasRead = true;
        }
        Apply(Simulator::ReadData(text));
        Report("");
    }
    catch (const GenICam::GenericException& error)
    {
        Report("The emulated cameras of '" + m_file + "' cannot be used: " + error.GetDescription());
    }
}

void CCameraRack::FinishBoots()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (SSlot& slot : m_slots)
    {
        if (slot.isBooting && Clock::now() >= slot.bootsUntil)
        {
            slot.isBooting = false;
            slot.camera = Make(slot.afterReset.config, slot.config.serialNumber, false);
            if (slot.afterReset.what == Simulator::EAfterReset::Twice && slot.twin == nullptr)
            {
                slot.twin = Make(slot.afterReset.config, slot.config.serialNumber, true);
            }
        }
    }
}

void CCameraRack::Refresh()
{
    const std::lock_guard<std::mutex> applyLock(m_applyMutex);
    if (m_isFileFollowed)
    {
        ReadChangedFile();
    }
    else if (!m_wasRead)
    {
        m_wasRead = true;
        try
        {
            Apply(m_data);
        }
        catch (const GenICam::GenericException& error)
        {
            Report(std::string("The emulated cameras cannot be used: ") + error.GetDescription());
        }
    }
    FinishBoots();
}

std::vector<Simulator::SInterfaceData> CCameraRack::GetInterfaces() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_data.interfaces;
}

std::vector<std::shared_ptr<CEmulatedCamera>> CCameraRack::GetCameras() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<std::shared_ptr<CEmulatedCamera>> cameras;
    for (const SSlot& slot : m_slots)
    {
        for (const auto& camera : {slot.camera, slot.twin})
        {
            if (camera != nullptr)
            {
                cameras.push_back(camera);
            }
        }
    }
    return cameras;
}

std::shared_ptr<CEmulatedCamera> CCameraRack::FindByFullName(const std::string& fullName) const
{
    const auto cameras = GetCameras();
    const auto found =
        std::find_if(cameras.begin(), cameras.end(),
                     [&](const auto& camera) { return camera->GetInfo().GetFullName().str() == fullName; });
    return found == cameras.end() ? nullptr : *found;
}

void CCameraRack::SetCameras(const std::vector<SCameraConfig>& cameras)
{
    const std::lock_guard<std::mutex> applyLock(m_applyMutex);
    Simulator::SRackData data;
    data.interfaces = GetInterfaces();
    data.cameras = cameras;
    Apply(data);
    m_isFileFollowed = false;
    m_wasRead = true;
}

void CCameraRack::Plug(const SCameraConfig& camera)
{
    Refresh();
    const std::lock_guard<std::mutex> applyLock(m_applyMutex);
    Simulator::SRackData data;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        // A camera that died can be plugged again.
        m_slots.erase(std::remove_if(m_slots.begin(), m_slots.end(),
                                     [&](const SSlot& slot) {
                                         return slot.config.serialNumber == camera.serialNumber &&
                                                slot.camera == nullptr && !slot.isBooting;
                                     }),
                      m_slots.end());
        data.interfaces = m_data.interfaces;
        for (const SSlot& slot : m_slots)
        {
            data.cameras.push_back(slot.config);
        }
    }
    data.cameras.push_back(camera);
    Apply(data);
    m_isFileFollowed = false;
}

bool CCameraRack::Unplug(const std::string& serialNumber)
{
    Refresh();
    const std::lock_guard<std::mutex> applyLock(m_applyMutex);
    Simulator::SRackData data;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        data = m_data;
    }
    const auto found = std::find_if(data.cameras.begin(), data.cameras.end(),
                                    [&](const SCameraConfig& config) { return config.serialNumber == serialNumber; });
    if (found == data.cameras.end())
    {
        return false;
    }
    data.cameras.erase(found);
    Apply(data);
    m_isFileFollowed = false;
    return true;
}

std::shared_ptr<CCameraModel> CCameraRack::FindCamera(const std::string& serialNumber)
{
    Refresh();
    for (const auto& camera : GetCameras())
    {
        if (camera->GetModel()->GetConfig().serialNumber == serialNumber)
        {
            return camera->GetModel();
        }
    }
    return nullptr;
}

std::string CCameraRack::GetDataError() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_dataError;
}

std::shared_ptr<CEmulatedCamera> CCameraRack::TakeAway(SSlot& slot, bool isTwin, CCameraModel::EEvent event)
{
    if (isTwin)
    {
        return std::move(slot.twin); // whatever became of it: it was a fault
    }
    if (slot.camera == nullptr)
    {
        return nullptr;
    }
    const CCameraModel& model = *slot.camera->GetModel();
    if (event == CCameraModel::EEvent::Reset)
    {
        slot.afterReset = model.GetAfterReset();
        slot.isBooting = slot.afterReset.what != Simulator::EAfterReset::Never;
        slot.bootsUntil = Clock::now() + std::chrono::milliseconds(slot.afterReset.bootTimeMs);
        return std::move(slot.camera);
    }
    return model.IsRemoved() ? std::move(slot.camera) : nullptr; // died; the next plug brings it back
}

void CCameraRack::OnEvent(const std::string& slotSerial, bool isTwin, CCameraModel::EEvent event)
{
    std::shared_ptr<CEmulatedCamera> camera;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto slot = std::find_if(m_slots.begin(), m_slots.end(),
                                       [&](const SSlot& s) { return s.config.serialNumber == slotSerial; });
        if (slot != m_slots.end())
        {
            camera = TakeAway(*slot, isTwin, event);
        }
    }
    if (camera != nullptr)
    {
        camera->GetModel()->Remove();
    }
}

} // namespace Velmo::Emulation::Internal
