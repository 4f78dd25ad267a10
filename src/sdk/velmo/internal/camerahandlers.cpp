// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/cameracore.h"
#include "velmo/internal/cameraoperation.h"
#include "velmo/log.h"

namespace Velmo::Internal
{

namespace
{

void LogHandlerFailure(const std::string& text)
{
    Log(ELogLevel::Warning, "velmo.camera", "An event handler's registration callback failed: " + text);
}

template <class Handler, class Told>
bool RemoveHandler(CHandlerList<Handler>& list, COperationGate& gate, const Handler* pHandler, const Handler* pKeep,
                   Told told)
{
    const COperationGate::CExemption exemption(gate, CallbackKind_Loop | CallbackKind_Removal);
    return list.Remove(pHandler, pKeep,
                       [&](Handler& handler)
                       {
                           try
                           {
                               told(handler);
                           }
                           catch (...)
                           {
                               LogHandlerFailure(CurrentExceptionText());
                           }
                       });
}

template <class Handler, class Removed, class Added>
void RegisterHandler(CHandlerList<Handler>& list, COperationGate& gate, Handler* pHandler, ERegistrationMode mode,
                     ECleanup cleanup, Removed removed, Added added)
{
    if (mode == RegistrationMode_ReplaceAll)
    {
        while (RemoveHandler(list, gate, static_cast<const Handler*>(nullptr), pHandler, removed))
        {
        }
    }
    if (pHandler == nullptr)
    {
        return;
    }
    list.Append(*pHandler, cleanup);
    try
    {
        added(*pHandler);
    }
    catch (...)
    {
        LogHandlerFailure(CurrentExceptionText());
    }
}

} // namespace

void CCameraCore::RegisterConfiguration(CConfigurationEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup)
{
    RegisterHandler(
        m_configurationHandlers, *m_gate, pHandler, mode, cleanup,
        [this](CConfigurationEventHandler& handler) { handler.OnConfigurationDeregistered(m_camera); },
        [this](CConfigurationEventHandler& handler) { handler.OnConfigurationRegistered(m_camera); });
}

bool CCameraCore::DeregisterConfiguration(CConfigurationEventHandler* pHandler)
{
    return pHandler != nullptr && RemoveHandler(m_configurationHandlers, *m_gate, pHandler,
                                                static_cast<const CConfigurationEventHandler*>(nullptr),
                                                [this](CConfigurationEventHandler& handler)
                                                { handler.OnConfigurationDeregistered(m_camera); });
}

void CCameraCore::RegisterImageHandler(CImageEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup)
{
    RegisterHandler(
        m_imageHandlers, *m_gate, pHandler, mode, cleanup,
        [this](CImageEventHandler& handler) { handler.OnImageEventHandlerDeregistered(m_camera); },
        [this](CImageEventHandler& handler) { handler.OnImageEventHandlerRegistered(m_camera); });
}

bool CCameraCore::DeregisterImageHandler(CImageEventHandler* pHandler)
{
    return pHandler != nullptr &&
           RemoveHandler(m_imageHandlers, *m_gate, pHandler, static_cast<const CImageEventHandler*>(nullptr),
                         [this](CImageEventHandler& handler) { handler.OnImageEventHandlerDeregistered(m_camera); });
}

} // namespace Velmo::Internal
