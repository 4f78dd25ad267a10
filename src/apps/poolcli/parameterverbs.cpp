// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/featuretree.h"
#include "poolcli/modules.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "genapi/inodes.h"
#include "parametercollection/parameterpath.h"
#include "parametercollection/parameters.h"

#include <QHash>

namespace PoolCli
{
namespace
{

QString text(const GenICam::GenericException& e)
{
    return QString::fromUtf8(e.GetDescription());
}

} // namespace

CModules::CModules(CSession& session, const HostKit::CameraInfoPtr& camera) : m_session(session), m_camera(camera) {}

CModules::Collection CModules::interface()
{
    if (m_interface == nullptr)
    {
        m_interface = std::make_unique<COpenInterface>(m_session, m_session.interfaceOf(m_camera));
    }
    return m_session.parameters(m_interface->info());
}

CModules::Collection CModules::collectionOf(const QString& name)
{
    const QString ofInterface = ParameterCollection::ParameterPath::Interface + QLatin1Char('/');
    return name.startsWith(ofInterface) ? interface() : m_session.parameters(m_camera);
}

int runFeatures(CSession& session, const SOptions& options)
{
    namespace Path = ParameterCollection::ParameterPath;
    static const QHash<QString, QString> paths{
        {QStringLiteral("camera"), Path::CameraDevice},   {QStringLiteral("instant"), Path::CameraInstance},
        {QStringLiteral("stream"), Path::StreamGrabber0}, {QStringLiteral("tl"), Path::DeviceTransportLayer},
        {QStringLiteral("event"), Path::EventGrabber},    {QStringLiteral("interface"), Path::Interface}};
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    CModules modules(session, camera.info());
    const bool isAll = options.module == QLatin1String("all");
    const QString path = paths.value(options.module);
    QVector<SFeature> features;
    if (path != Path::Interface)
    {
        features = readFeatures(*session.parameters(camera.info()), options.filter, options.visibility, path);
    }
    if (isAll || path == Path::Interface)
    {
        features += readFeatures(*modules.interface(), options.filter, options.visibility);
    }
    if (options.json)
    {
        printJson(toJson(features));
        return ExitDone;
    }
    printTree(features);
    return ExitDone;
}

int runGet(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    CModules modules(session, camera.info());
    QJsonObject values;
    for (const QString& name : options.arguments)
    {
        const ParameterCollection::CParameter parameter(modules.collectionOf(name), name);
        if (!parameter.isValid())
        {
            throw CRefusal(CTexts::tr("%1 has no feature %2.").arg(camera.info()->getFriendlyName(), name));
        }
        try
        {
            values.insert(name, parameter.toString());
        }
        catch (const GenICam::GenericException& e)
        {
            throw CRefusal(CTexts::tr("%1 cannot be read: %2").arg(name, text(e)));
        }
        if (!options.json)
        {
            printLine(QStringLiteral("%1 = %2").arg(name, printable(values.value(name).toString())));
        }
    }
    if (options.json)
    {
        printJson(values);
    }
    return ExitDone;
}

void applySetting(const QSharedPointer<ParameterCollection::IParameterCollection>& collection, const QString& setting)
{
    const int equals = setting.indexOf(QLatin1Char('='));
    const QString name = setting.left(equals);
    ParameterCollection::CParameter parameter(collection, name);
    if (!parameter.isValid())
    {
        throw CRefusal(CTexts::tr("There is no feature %1.").arg(name));
    }
    try
    {
        if (equals < 0)
        {
            ParameterCollection::CCommandParameter command(collection, name);
            if (!command.isValid())
            {
                throw CRefusal(CTexts::tr("%1 is no command; give a value as %1=VALUE.").arg(name));
            }
            command.execute();
            return;
        }
        parameter.fromString(setting.mid(equals + 1));
    }
    catch (const GenICam::GenericException& e)
    {
        throw CRefusal(CTexts::tr("%1 was refused: %2").arg(setting, text(e)));
    }
}

void applySettings(CSession& session, const HostKit::CameraInfoPtr& camera, const SOptions& options)
{
    QStringList settings = options.settings;
    for (const auto& [name, setting] : options.cameraSettings)
    {
        if (HostKit::namesOf(*camera).contains(name))
        {
            settings.append(setting);
        }
    }
    for (const QString& setting : settings)
    {
        try
        {
            applySetting(session.parameters(camera), setting);
        }
        catch (const CRefusal& refusal)
        {
            // Of several cameras one may take what another one refuses.
            throw CRefusal(QStringLiteral("%1: %2").arg(camera->getFriendlyName(), QString::fromUtf8(refusal.what())));
        }
    }
}

void checkCameraSettings(const QVector<HostKit::CameraInfoPtr>& cameras, const SOptions& options)
{
    for (const auto& [name, setting] : options.cameraSettings)
    {
        QString error;
        if (HostKit::findByName(cameras, name, error).isNull())
        {
            throw CRefusal(error);
        }
    }
}

int runSet(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    CModules modules(session, camera.info());
    QJsonObject values;
    for (const QString& setting : options.arguments)
    {
        const QString name = setting.section(QLatin1Char('='), 0, 0);
        const auto collection = modules.collectionOf(name);
        applySetting(collection, setting);
        const ParameterCollection::CParameter parameter(collection, name);
        if (setting.contains(QLatin1Char('=')) && parameter.isReadable())
        {
            values.insert(name, parameter.toString());
        }
        else
        {
            values.insert(name, QJsonValue());
        }
        if (!options.json)
        {
            const QJsonValue value = values.value(name);
            printLine(value.isString() ? QStringLiteral("%1 = %2").arg(name, printable(value.toString()))
                                       : CTexts::tr("%1 done").arg(name));
        }
    }
    if (options.json)
    {
        printJson(values);
    }
    return ExitDone;
}

} // namespace PoolCli
