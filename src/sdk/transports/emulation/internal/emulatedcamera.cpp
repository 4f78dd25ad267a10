// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/emulatedcamera.h"

#include "genapi/exceptions.h"
#include "transports/emulation/internal/records.h"

#include <unistd.h>

namespace Velmo::Emulation::Internal
{

using Simulator::CCameraModel;

CEmulatedCamera::CEmulatedCamera(std::shared_ptr<CCameraModel> model) : m_model(std::move(model)) {}

std::shared_ptr<CEmulatedCamera> CEmulatedCamera::Create(const Simulator::SCameraConfig& config,
                                                         std::shared_ptr<Simulator::SFlash> flash, EventHandler handler,
                                                         const std::string& fullNameMark)
{
    std::shared_ptr<CEmulatedCamera> camera(
        new CEmulatedCamera(std::make_shared<CCameraModel>(config, std::move(flash))));
    camera->m_handler = std::move(handler);
    camera->m_fullNameMark = fullNameMark;
    camera->m_model->SetEventHandler(
        [weak = std::weak_ptr<CEmulatedCamera>(camera)](CCameraModel::EEvent event)
        {
            if (const auto alive = weak.lock())
            {
                alive->OnEvent(event);
            }
        });
    return camera;
}

CDeviceInfo CEmulatedCamera::GetInfo() const
{
    CDeviceInfo info = MakeDeviceInfo(m_model->GetConfig(), m_model->GetUserDefinedName());
    info.SetFullName(info.GetFullName().str() + m_fullNameMark);
    const bool isHeld = !m_model->GetFaults().refuseOpenOwner.empty();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (isHeld || m_controller != nullptr)
    {
        info.SetPropertyValue(Key::AccessStatus, "InUse");
    }
    return info;
}

void CEmulatedCamera::CheckOpen(bool wantsControl) const
{
    const std::string& serial = m_model->GetConfig().serialNumber;
    if (m_model->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The emulated camera '" + serial + "' was removed.");
    }
    if (!wantsControl)
    {
        return;
    }
    std::string owner = m_model->GetFaults().refuseOpenOwner;
    if (owner.empty() && m_controller != nullptr)
    {
        owner = "this process (" + std::to_string(::getpid()) + ")";
    }
    if (!owner.empty())
    {
        GENICAM_THROW(AccessException, "The emulated camera '" + serial + "' is controlled by " + owner + ".");
    }
}

void CEmulatedCamera::AddUser(const void* user, bool wantsControl, std::function<void()> onRemoved)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    CheckOpen(wantsControl);
    if (wantsControl)
    {
        m_controller = user;
    }
    m_users[user] = std::move(onRemoved);
    if (m_pump == nullptr)
    {
        m_pump = Simulator::CFramePump::GetShared();
        m_pump->Attach(m_model);
    }
}

bool CEmulatedCamera::IsControlled() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_controller != nullptr;
}

void CEmulatedCamera::RemoveUser(const void* user)
{
    std::shared_ptr<Simulator::CFramePump> pump;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_users.erase(user);
        if (m_controller == user)
        {
            m_controller = nullptr;
        }
        if (m_users.empty() && m_pump != nullptr)
        {
            m_pump->Detach(m_model);
            pump = std::move(m_pump);
        }
    }
}

void CEmulatedCamera::OnEvent(CCameraModel::EEvent event)
{
    if (event == CCameraModel::EEvent::Removed)
    {
        // Under the lock, so that a user who left is not called; users only note the loss and pass it on.
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (const auto& [user, onRemoved] : m_users)
        {
            onRemoved();
        }
    }
    if (m_handler)
    {
        m_handler(event);
    }
}

} // namespace Velmo::Emulation::Internal
