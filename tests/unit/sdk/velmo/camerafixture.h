// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/scriptedtransport.h"
#include "velmo/instantcamera.h"
#include "velmo/tlfactory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace Test
{

/** Notes every event by name, and runs what a test wants at one. */
class CRecorder : public Velmo::CConfigurationEventHandler, public Velmo::CImageEventHandler
{
public:
    using Action = std::function<void(Velmo::CInstantCamera&)>;

    void At(const std::string& event, Action action)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_actions.emplace_back(event, std::move(action));
    }
    std::vector<std::string> Events() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_events;
    }
    std::size_t Count(const std::string& event) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return CountLocked(event);
    }
    bool WaitFor(const std::string& event, std::size_t count = 1)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(30), [&] { return CountLocked(event) >= count; });
    }
    std::string LastError() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_lastError;
    }
    std::vector<Velmo::CGrabResultPtr> kept; // filled on the grab loop thread when keepResults is set
    bool keepResults = false;
    std::vector<std::int64_t> imageNumbers;

    void OnImagesSkipped(Velmo::CInstantCamera& c, std::size_t) override { Note("ImagesSkipped", c); }
    void OnImageGrabbed(Velmo::CInstantCamera& c, const Velmo::CGrabResultPtr& result) override
    {
        imageNumbers.push_back(result->GetImageNumber());
        if (keepResults)
        {
            kept.push_back(result);
        }
        Note(result->GrabSucceeded() ? "ImageGrabbed" : "ImageFailed", c);
    }
    void OnAttach(Velmo::CInstantCamera& c) override { Note("Attach", c); }
    void OnAttached(Velmo::CInstantCamera& c) override { Note("Attached", c); }
    void OnDetach(Velmo::CInstantCamera& c) override { Note("Detach", c); }
    void OnDetached(Velmo::CInstantCamera& c) override { Note("Detached", c); }
    void OnDestroy(Velmo::CInstantCamera& c) override { Note("Destroy", c); }
    void OnDestroyed(Velmo::CInstantCamera& c) override { Note("Destroyed", c); }
    void OnOpen(Velmo::CInstantCamera& c) override { Note("Open", c); }
    void OnOpened(Velmo::CInstantCamera& c) override { Note("Opened", c); }
    void OnClose(Velmo::CInstantCamera& c) override { Note("Close", c); }
    void OnClosed(Velmo::CInstantCamera& c) override { Note("Closed", c); }
    void OnGrabStart(Velmo::CInstantCamera& c) override { Note("GrabStart", c); }
    void OnGrabStarted(Velmo::CInstantCamera& c) override { Note("GrabStarted", c); }
    void OnGrabStop(Velmo::CInstantCamera& c) override { Note("GrabStop", c); }
    void OnGrabStopped(Velmo::CInstantCamera& c) override { Note("GrabStopped", c); }
    void OnCameraDeviceRemoved(Velmo::CInstantCamera& c) override { Note("Removed", c); }
    void OnGrabError(Velmo::CInstantCamera& c, const char* text) override
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_lastError = text;
        }
        Note("GrabError", c);
    }

private:
    std::size_t CountLocked(const std::string& event) const
    {
        std::size_t count = 0;
        for (const std::string& known : m_events)
        {
            count += known == event ? 1 : 0;
        }
        return count;
    }
    void Note(const std::string& event, Velmo::CInstantCamera& camera)
    {
        std::vector<Action> actions;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_events.push_back(event);
            for (const auto& [name, action] : m_actions)
            {
                if (name == event)
                {
                    actions.push_back(action);
                }
            }
            m_changed.notify_all();
        }
        for (const Action& action : actions)
        {
            action(camera);
        }
    }

    mutable std::mutex m_mutex; // guards the members below
    std::condition_variable m_changed;
    std::vector<std::string> m_events;
    std::vector<std::pair<std::string, Action>> m_actions;
    std::string m_lastError;
};

/** An instant camera on the scripted camera "1001", with a recorder as its only handler. */
class CCameraTest : public ::testing::Test
{
protected:
    CCameraTest() : transport(std::make_shared<CScriptedTransport>()), sdk({transport}) { transport->AddCamera({}); }
    ~CCameraTest() override { camera.reset(); }

    void Attach(const SScriptedCamera& config = {})
    {
        transport->AddCamera(config);
        camera = std::make_unique<Velmo::CInstantCamera>(
            Velmo::CTlFactory::GetInstance().CreateDevice(transport->GetDeviceInfo(config.serialNumber)));
        camera->RegisterConfiguration(&recorder, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
        camera->RegisterImageEventHandler(&recorder, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
    }
    void Open(const SScriptedCamera& config = {})
    {
        Attach(config);
        camera->Open();
    }
    void StartLoop(Velmo::EGrabStrategy strategy = Velmo::GrabStrategy_OneByOne)
    {
        camera->StartGrabbing(strategy, Velmo::GrabLoop_ProvidedByInstantCamera);
    }

    const std::string serial = "1001";
    std::shared_ptr<CScriptedTransport> transport;
    CScriptedSdk sdk;
    CRecorder recorder;
    std::unique_ptr<Velmo::CInstantCamera> camera;
};

} // namespace Test
