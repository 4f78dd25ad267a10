// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/eventhandlers.h"

#include <cassert>

namespace Velmo
{

CEventHandlerBase::~CEventHandlerBase()
{
    assert((DebugGetEventHandlerRegistrationCount() == 0) &&
           "Error: The event handler must not be destroyed while it is registered.");
}

CImageEventHandler::~CImageEventHandler() = default;
void CImageEventHandler::OnImagesSkipped(CInstantCamera&, std::size_t) {}
void CImageEventHandler::OnImageGrabbed(CInstantCamera&, const CGrabResultPtr&) {}
void CImageEventHandler::OnImageEventHandlerRegistered(CInstantCamera&) {}
void CImageEventHandler::OnImageEventHandlerDeregistered(CInstantCamera&) {}

CConfigurationEventHandler::~CConfigurationEventHandler() = default;
void CConfigurationEventHandler::OnAttach(CInstantCamera&) {}
void CConfigurationEventHandler::OnAttached(CInstantCamera&) {}
void CConfigurationEventHandler::OnDetach(CInstantCamera&) {}
void CConfigurationEventHandler::OnDetached(CInstantCamera&) {}
void CConfigurationEventHandler::OnDestroy(CInstantCamera&) {}
void CConfigurationEventHandler::OnDestroyed(CInstantCamera&) {}
void CConfigurationEventHandler::OnOpen(CInstantCamera&) {}
void CConfigurationEventHandler::OnOpened(CInstantCamera&) {}
void CConfigurationEventHandler::OnClose(CInstantCamera&) {}
void CConfigurationEventHandler::OnClosed(CInstantCamera&) {}
void CConfigurationEventHandler::OnGrabStart(CInstantCamera&) {}
void CConfigurationEventHandler::OnGrabStarted(CInstantCamera&) {}
void CConfigurationEventHandler::OnGrabStop(CInstantCamera&) {}
void CConfigurationEventHandler::OnGrabStopped(CInstantCamera&) {}
void CConfigurationEventHandler::OnGrabError(CInstantCamera&, const char*) {}
void CConfigurationEventHandler::OnCameraDeviceRemoved(CInstantCamera&) {}
void CConfigurationEventHandler::OnConfigurationRegistered(CInstantCamera&) {}
void CConfigurationEventHandler::OnConfigurationDeregistered(CInstantCamera&) {}

} // namespace Velmo
