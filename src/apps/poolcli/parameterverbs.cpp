// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/featuretree.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "genapi/inodes.h"
#include "parametercollection/parameters.h"

namespace PoolCli
{
namespace
{

QString text(const GenICam::GenericException& e)
{
    return QString::fromUtf8(e.GetDescription());
}

void printTree(const QVector<SFeature>& features)
{
    for (const SFeature& feature : features)
    {
        const QString indent(feature.depth * 2, QLatin1Char(' '));
        if (feature.kind == QLatin1String("Category"))
        {
            printLine(indent + feature.name);
            continue;
        }
        QString line = QStringLiteral("%1%2 = %3").arg(indent, feature.name, printable(feature.value));
        if (!feature.unit.isEmpty())
        {
            line += QLatin1Char(' ') + feature.unit;
        }
        line += QStringLiteral("  [%1, %2").arg(feature.kind, feature.access);
        if (!feature.range.isEmpty())
        {
            line += QStringLiteral(", ") + feature.range;
        }
        printLine(line + QLatin1Char(']'));
    }
}

} // namespace

int runFeatures(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    const auto collection = session.parameters(camera.info());
    const QVector<SFeature> features = readFeatures(*collection, options.filter, options.visibility);
    if (options.json)
    {
        QJsonArray array;
        for (const SFeature& feature : features)
        {
            array.append(toJson(feature));
        }
        printJson(array);
        return ExitDone;
    }
    printTree(features);
    return ExitDone;
}

int runGet(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    const auto collection = session.parameters(camera.info());
    QJsonObject values;
    for (const QString& name : options.arguments)
    {
        const ParameterCollection::CParameter parameter(collection, name);
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

int runSet(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    const auto collection = session.parameters(camera.info());
    QJsonObject values;
    for (const QString& setting : options.arguments)
    {
        applySetting(collection, setting);
        const QString name = setting.section(QLatin1Char('='), 0, 0);
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
