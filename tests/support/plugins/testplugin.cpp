// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "testplugin.h"

#include "servicecore/iservice.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVariant>

#include <stdexcept>

namespace
{

void note(const char* call)
{
    QStringList calls = qApp->property("testPluginCalls").toStringList();
    calls.append(QStringLiteral(TEST_PLUGIN_NAME ".") + QLatin1String(call));
    qApp->setProperty("testPluginCalls", calls);
}

} // namespace

CTestPlugin::CTestPlugin(QObject* parent) : IPlugin(parent) {}

CTestPlugin::~CTestPlugin()
{
    note("destroyed");
}

bool CTestPlugin::initialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    note("initialize");
#ifdef TEST_PLUGIN_REGISTERS_FIRST
    registerService(*initializer);
#endif
#ifdef TEST_PLUGIN_INITIALIZE_THROWS
    throw std::runtime_error("the test plugin throws");
#endif
#ifdef TEST_PLUGIN_INITIALIZE_FALSE
    return false;
#endif
    registerService(*initializer);
    return true;
}

void CTestPlugin::registerService(Core::Plugin::IPluginInitializer& initializer)
{
    m_service = QSharedPointer<Core::Service::IService>::create();
    m_service->setObjectName(QStringLiteral(TEST_PLUGIN_NAME));
    initializer.registerService(m_service);
}

bool CTestPlugin::postInitialize()
{
    note("postInitialize");
#ifdef TEST_PLUGIN_POSTINITIALIZE_FALSE
    return false;
#else
    return true;
#endif
}

void CTestPlugin::aboutToUninitialize()
{
    note("aboutToUninitialize");
#ifdef TEST_PLUGIN_STOP_THROWS
    throw std::runtime_error("the test plugin throws while stopping");
#endif
}

bool CTestPlugin::unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    note("unInitialize");
#ifdef TEST_PLUGIN_UNINITIALIZE_THROWS
    throw std::runtime_error("the test plugin throws before it has unregistered");
#endif
    initializer->unregisterService(m_service);
    return true;
}

void CTestPlugin::setLanguage(const QString& language)
{
    note(qUtf8Printable(QStringLiteral("setLanguage ") + language));
}
