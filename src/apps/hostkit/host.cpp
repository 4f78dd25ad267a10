// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/host.h"

#include "hostkit/internal/texts.h"

#include "camerapool/icameraactioncommandsservice.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/idevicefirmwareupdateservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/iimagedecompressorservice.h"
#include "dataprocessingcore/igraphservice.h"
#include "dataprocessingcore/inoderegistry.h"
#include "plugincore/pluginmanager.h"
#include "servicecore/serviceregistry.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QTranslator>

#include <utility>

namespace HostKit
{

namespace
{

constexpr const char* AdaptersVariable = "CAMERAPOOL_GIGE_ADAPTERS"; // of the GigE transport, which hosts do not link

} // namespace

struct CHost::SPrivate
{
    QString folder;
    Core::Service::CServiceRegistry registry;
    Core::Plugin::CPluginManager manager{registry};
    QStringList errors;
    bool isAdaptersVariableOwn = false;
    QTranslator translator; // of the texts of hosts and of the framework
    QSharedPointer<Plugin::CameraPool::ICameraActionCommandsService> actions;
    QSharedPointer<Plugin::CameraPool::ICameraControlService> control;
    QSharedPointer<Plugin::CameraPool::ICameraEnumerationService> enumeration;
    QSharedPointer<Plugin::CameraPool::ICameraStatusService> status;
    QSharedPointer<Plugin::CameraPool::ICameraStreamControlService> stream;
    QSharedPointer<Plugin::CameraPool::IDeviceFirmwareUpdateService> firmware;
    QSharedPointer<Plugin::CameraPool::IDeviceParameterService> parameters;
    QSharedPointer<Plugin::CameraPool::IImageDecompressorService> decompressors;
    QSharedPointer<Plugin::DataProcessingCore::IGraphService> graph;
    QSharedPointer<Plugin::DataProcessingCore::INodeRegistry> nodes;

    template <class T> void find(QSharedPointer<T>& service, const char* name)
    {
        service = registry.find<T>();
        if (service.isNull())
        {
            errors.append(CTexts::tr("No plugin offers the service %1.").arg(QLatin1String(name)));
        }
    }

    /** While no thread of a plugin reads the environment. */
    void takeAdaptersFromSettings()
    {
        // A list with commas comes as one.
        const QStringList adapters = QSettings().value(QStringLiteral("GigE/Adapters")).toStringList();
        const QByteArray text = adapters.join(QLatin1Char(',')).toUtf8();
        if (!text.isEmpty() && !qEnvironmentVariableIsSet(AdaptersVariable))
        {
            isAdaptersVariableOwn = qputenv(AdaptersVariable, text);
        }
    }
    void leaveAdapters()
    {
        if (std::exchange(isAdaptersVariableOwn, false))
        {
            qunsetenv(AdaptersVariable);
        }
    }
};

CHost::CHost(QString pluginFolder) : m_p(std::make_unique<SPrivate>())
{
    m_p->folder = std::move(pluginFolder);
}

CHost::~CHost()
{
    stop();
}

bool CHost::start(const QString& language)
{
    installTexts(language, m_p->translator);
    m_p->takeAdaptersFromSettings();
    m_p->manager.addFolder(m_p->folder);
    m_p->manager.setLanguage(language);
    const bool started = m_p->manager.start();
    m_p->errors = m_p->manager.errors();
    if (!started)
    {
        return false;
    }
    m_p->find(m_p->actions, "ICameraActionCommandsService");
    m_p->find(m_p->control, "ICameraControlService");
    m_p->find(m_p->enumeration, "ICameraEnumerationService");
    m_p->find(m_p->status, "ICameraStatusService");
    m_p->find(m_p->stream, "ICameraStreamControlService");
    m_p->find(m_p->firmware, "IDeviceFirmwareUpdateService");
    m_p->find(m_p->parameters, "IDeviceParameterService");
    m_p->find(m_p->decompressors, "IImageDecompressorService");
    m_p->find(m_p->graph, "IGraphService");
    m_p->find(m_p->nodes, "INodeRegistry");
    return m_p->actions && m_p->control && m_p->enumeration && m_p->status && m_p->stream && m_p->firmware &&
           m_p->parameters && m_p->decompressors && m_p->graph && m_p->nodes;
}

bool CHost::installTexts(const QString& language, QTranslator& translator)
{
    return translator.load(QStringLiteral(":/translation/Host_%1.qm").arg(language)) &&
           QCoreApplication::installTranslator(&translator);
}

void CHost::stop()
{
    m_p->nodes.clear();
    m_p->graph.clear();
    m_p->decompressors.clear();
    m_p->parameters.clear();
    m_p->firmware.clear();
    m_p->stream.clear();
    m_p->status.clear();
    m_p->enumeration.clear();
    m_p->control.clear();
    m_p->actions.clear();
    m_p->manager.stop();
    m_p->leaveAdapters();
}

QStringList CHost::errors() const
{
    return m_p->errors;
}

QString CHost::defaultPluginFolder()
{
    const QString given = qEnvironmentVariable("CAMERAPOOL_PLUGIN_PATH");
    if (!given.isEmpty())
    {
        return given;
    }
    const QDir program(QCoreApplication::applicationDirPath());
    const QString beside = program.absoluteFilePath(QStringLiteral("../plugins"));
    const QString installed = program.absoluteFilePath(QStringLiteral("../lib/camerapool/plugins"));
    return QDir(beside).exists() ? QDir::cleanPath(beside) : QDir::cleanPath(installed);
}

Core::Service::CServiceRegistry& CHost::registry()
{
    return m_p->registry;
}

Plugin::CameraPool::ICameraActionCommandsService& CHost::actions() const
{
    return *m_p->actions;
}

Plugin::CameraPool::ICameraControlService& CHost::control() const
{
    return *m_p->control;
}

Plugin::CameraPool::ICameraEnumerationService& CHost::enumeration() const
{
    return *m_p->enumeration;
}

Plugin::CameraPool::ICameraStatusService& CHost::status() const
{
    return *m_p->status;
}

Plugin::CameraPool::ICameraStreamControlService& CHost::stream() const
{
    return *m_p->stream;
}

Plugin::CameraPool::IDeviceFirmwareUpdateService& CHost::firmware() const
{
    return *m_p->firmware;
}

Plugin::CameraPool::IDeviceParameterService& CHost::parameters() const
{
    return *m_p->parameters;
}

Plugin::CameraPool::IImageDecompressorService& CHost::decompressors() const
{
    return *m_p->decompressors;
}

Plugin::DataProcessingCore::IGraphService& CHost::graph() const
{
    return *m_p->graph;
}

Plugin::DataProcessingCore::INodeRegistry& CHost::nodes() const
{
    return *m_p->nodes;
}

} // namespace HostKit
