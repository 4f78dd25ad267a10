// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/interface.h"

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/interfaceinfo.h"
#include "parametercollection/parameterpath.h"
#include "utils/exceptions.h"
#include "velmo/tlfactory.h"

#include <QDebug>

#include <utility>

namespace Plugin::CameraPool::Internal
{

using ParameterCollection::CScopedObjectStateLock;

namespace
{

constexpr const char* OpenFailed = "Interface could not be opened. Reason: ";
constexpr const char* CleanupFailed =
    "Could not detach from interface node maps. Unexpected exceptions e.g. from callbacks. Reason: ";

} // namespace

CInterface::CInterface(QSharedPointer<IInterfaceInfo> info, QObject* parent)
    : IInterface(parent), m_ptrInfo(std::move(info))
{
    createParameterCollection();
}

CInterface::~CInterface()
{
    close();
    m_objectState.setState(ParameterCollection::ObjectState_Disposed);
}

void CInterface::createParameterCollection()
{
    m_ptrParameterCollection.reset(new ParameterCollection::CParameterCollection(m_objectState));
    m_ptrParameterCollection->announceNodeMap(ParameterCollection::ParameterPath::Interface);
}

QSharedPointer<Plugin::AppCore::IInfo> CInterface::getInfo() const
{
    return m_ptrInfo;
}

bool CInterface::isConnected() const
{
    return isOpen();
}

bool CInterface::isOpen() const
{
    return m_pInterface != nullptr && m_pInterface->IsOpen();
}

QSharedPointer<ParameterCollection::IParameterCollection> CInterface::getParameterCollection() const
{
    return m_ptrParameterCollection;
}

void CInterface::lazyCreateInterface()
{
    if (m_pInterface != nullptr)
    {
        return;
    }
    auto& factory = Velmo::CTlFactory::GetInstance();
    const auto& info = m_ptrInfo->getVelmoInterfaceInfo();
    m_pTransportLayer = factory.CreateTl(info.GetDeviceClass());
    if (m_pTransportLayer == nullptr)
    {
        throw Core::Exception::RuntimeException(
            tr("The transport layer \"%1\" could not be created.").arg(CCameraInfo::qString(info.GetDeviceClass())));
    }
    try
    {
        m_pInterface = m_pTransportLayer->CreateInterface(info);
        if (m_pInterface == nullptr)
        {
            throw Core::Exception::RuntimeException(
                tr("There is no interface \"%1\".").arg(m_ptrInfo->getInterfaceId()));
        }
    }
    catch (...)
    {
        factory.ReleaseTl(std::exchange(m_pTransportLayer, nullptr));
        throw;
    }
}

bool CInterface::open(bool)
{
    const CScopedObjectStateLock lock(m_objectState);
    if (isOpen())
    {
        return true;
    }
    try
    {
        lazyCreateInterface();
        m_pInterface->Open();
        m_ptrParameterCollection->attachNodeMap(ParameterCollection::ParameterPath::Interface,
                                                m_pInterface->GetNodeMap());
        m_objectState.setState(ParameterCollection::ObjectState_Open);
        emit deviceOpened();
        return true;
    }
    catch (const std::exception& e)
    {
        reportError(OpenFailed, e.what());
    }
    catch (...)
    {
        reportError(OpenFailed, "");
    }
    if (m_objectState.state() == ParameterCollection::ObjectState_Open)
    {
        close(); // it was open and some receiver has been told so
        return false;
    }
    cleanup();
    m_objectState.setState(ParameterCollection::ObjectState_Closed);
    return false;
}

void CInterface::close()
{
    const CScopedObjectStateLock lock(m_objectState);
    if (!isOpen())
    {
        return;
    }
    try
    {
        m_ptrParameterCollection->attachNodeMap(ParameterCollection::ParameterPath::Interface, nullptr);
        m_objectState.setState(ParameterCollection::ObjectState_Closed);
        m_pInterface->Close();
    }
    catch (...)
    {
        // The interface object is destroyed all the same: the next open makes a new one.
        m_objectState.setState(ParameterCollection::ObjectState_Closed);
    }
    cleanup();
    try
    {
        emit deviceClosed();
    }
    catch (...)
    {
        qDebug("A receiver of deviceClosed failed.");
    }
}

void CInterface::cleanup()
{
    const CScopedObjectStateLock lock(m_objectState);
    try
    {
        m_ptrParameterCollection->detachAllNodeMaps();
    }
    catch (const std::exception& e)
    {
        reportError(CleanupFailed, e.what());
    }
    catch (...)
    {
        reportError(CleanupFailed, "");
    }
    try
    {
        destroyInterface();
    }
    catch (const std::exception& e)
    {
        reportError(CleanupFailed, e.what());
    }
    catch (...)
    {
        reportError(CleanupFailed, "");
    }
}

void CInterface::destroyInterface()
{
    auto* const pInterface = std::exchange(m_pInterface, nullptr);
    auto* const pTransportLayer = std::exchange(m_pTransportLayer, nullptr);
    if (pTransportLayer == nullptr)
    {
        return;
    }
    auto& factory = Velmo::CTlFactory::GetInstance();
    try
    {
        if (pInterface != nullptr)
        {
            pTransportLayer->DestroyInterface(pInterface);
        }
    }
    catch (...)
    {
        factory.ReleaseTl(pTransportLayer);
        throw;
    }
    factory.ReleaseTl(pTransportLayer);
}

void CInterface::reportError(const char* message, const char* reason)
{
    qDebug("%s%s", message, reason);
    if (auto* pInfo = dynamic_cast<CInterfaceInfo*>(m_ptrInfo.data()))
    {
        pInfo->setErrorString(QString::fromUtf8(reason));
    }
}

} // namespace Plugin::CameraPool::Internal
