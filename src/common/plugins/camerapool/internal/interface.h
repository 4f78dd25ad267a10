// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/iinterface.h"
#include "parametercollection/parametercollection.h"
#include "velmo/transportlayer.h"

namespace Plugin::CameraPool::Internal
{

/**
 * One interface: its SDK object while it is open, and its parameters.
 *
 * Main thread; the lock of the object state keeps parameter access apart from opening and closing.
 * Failures are logged and kept as the record's error string.
 */
class CAMERAPOOL_TEST_EXPORT CInterface : public IInterface
{
    Q_OBJECT
public:
    CInterface(QSharedPointer<IInterfaceInfo> info, QObject* parent);
    ~CInterface() override;

    QSharedPointer<Plugin::AppCore::IInfo> getInfo() const override;
    bool isConnected() const override;
    bool isOpen() const override;
    QSharedPointer<ParameterCollection::IParameterCollection> getParameterCollection() const override;

public slots:
    bool open(bool monitorMode) override;
    void close() override;

private:
    void createParameterCollection();
    void lazyCreateInterface();
    void cleanup();
    void destroyInterface();
    void reportError(const char* message, const char* reason);

    QSharedPointer<IInterfaceInfo> m_ptrInfo;
    QSharedPointer<ParameterCollection::CParameterCollection> m_ptrParameterCollection;
    ParameterCollection::CObjectState m_objectState; // taken before the lock of any node map
    Velmo::ITransportLayer* m_pTransportLayer = nullptr;
    Velmo::IInterface* m_pInterface = nullptr;
};

} // namespace Plugin::CameraPool::Internal
