// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameramodel.h"
#include "simulator/framepump.h"
#include "transport/infos.h"
#include "transports/emulation/emulation_testexport.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace Velmo::Emulation::Internal
{

/** A plugged camera: its model, and who in the process uses it. Threads: any. */
class EMULATION_TEST_EXPORT CEmulatedCamera : public std::enable_shared_from_this<CEmulatedCamera>
{
public:
    /** Called on the thread that caused it, with no lock held. */
    using EventHandler = std::function<void(Simulator::CCameraModel::EEvent)>;

    /** fullNameMark: tells its full name from another one's of the same serial number. */
    static std::shared_ptr<CEmulatedCamera> Create(const Simulator::SCameraConfig& config,
                                                   std::shared_ptr<Simulator::SFlash> flash, EventHandler handler,
                                                   const std::string& fullNameMark = "");

    const std::shared_ptr<Simulator::CCameraModel>& GetModel() const { return m_model; }
    CDeviceInfo GetInfo() const;

    /** user is any address that tells users apart. A second user with control is an AccessException that names the
     *  first; a removed camera a RuntimeException. onRemoved is called at most once, until RemoveUser returned. */
    void AddUser(const void* user, bool wantsControl, std::function<void()> onRemoved);
    void RemoveUser(const void* user);
    /** Whether a user has control now. */
    bool IsControlled() const;

private:
    explicit CEmulatedCamera(std::shared_ptr<Simulator::CCameraModel> model);
    void OnEvent(Simulator::CCameraModel::EEvent event);
    void CheckOpen(bool wantsControl) const;

    const std::shared_ptr<Simulator::CCameraModel> m_model;
    EventHandler m_handler;
    std::string m_fullNameMark;
    mutable std::mutex m_mutex;                           // guards all below
    std::map<const void*, std::function<void()>> m_users; // with what to call on removal
    const void* m_controller = nullptr;
    std::shared_ptr<Simulator::CFramePump> m_pump; // while there are users
};

} // namespace Velmo::Emulation::Internal
