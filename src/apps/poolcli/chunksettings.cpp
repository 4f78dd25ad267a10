// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/chunksettings.h"

#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "genapi/inodes.h"
#include "parametercollection/parameterpath.h"
#include "parametercollection/parameters.h"

namespace PoolCli
{
namespace
{

using ParameterCollection::CParameter;

// Names of the GenICam standard feature naming conventions.
const QString Mode = QStringLiteral("@CameraDevice/ChunkModeActive");
const QString Selector = QStringLiteral("@CameraDevice/ChunkSelector");
const QString Enable = QStringLiteral("@CameraDevice/ChunkEnable");

} // namespace

CChunkSettings::CChunkSettings(Collection collection) : m_collection(std::move(collection))
{
    if (!CParameter(m_collection, Mode).isValid())
    {
        throw CRefusal(CTexts::tr("The camera has no chunk data."));
    }
}

CChunkSettings::~CChunkSettings()
{
    try
    {
        restore();
    }
    catch (const std::exception&)
    {
        // A camera that was lost keeps nothing to restore; restore() itself tells of the rest.
    }
}

QStringList CChunkSettings::names() const
{
    const ParameterCollection::CScopedObjectStateLock lock(m_collection->objectState());
    const GenApi::CEnumerationPtr selector(m_collection->node(Selector));
    QStringList result;
    if (!selector)
    {
        return result;
    }
    GenApi::EnumEntryList entries;
    selector->GetEntries(entries);
    for (GenApi::IEnumEntry* pEntry : entries)
    {
        if (GenApi::IsAvailable(pEntry))
        {
            result.append(QString::fromUtf8(pEntry->GetSymbolic().c_str()));
        }
    }
    return result;
}

QString CChunkSettings::read(const QString& name) const
{
    try
    {
        return CParameter(m_collection, name).toString();
    }
    catch (const GenICam::GenericException& e)
    {
        throw CRefusal(CTexts::tr("%1 cannot be read: %2").arg(name, QString::fromUtf8(e.GetDescription())));
    }
}

void CChunkSettings::write(const QString& name, const QString& value)
{
    applySetting(m_collection, name + QLatin1Char('=') + value);
}

void CChunkSettings::enable(const QStringList& wanted)
{
    const QStringList all = names();
    for (const QString& name : wanted)
    {
        if (!all.contains(name))
        {
            throw CRefusal(
                CTexts::tr("The camera has no chunk %1; it has: %2.").arg(name, all.join(QStringLiteral(", "))));
        }
    }
    m_mode = read(Mode);
    m_selector = all.isEmpty() ? QString() : read(Selector);
    write(Mode, QStringLiteral("true"));
    for (const QString& name : all)
    {
        switchChunk(name, wanted.isEmpty() || wanted.contains(name));
    }
}

void CChunkSettings::switchChunk(const QString& chunk, bool isWanted)
{
    write(Selector, chunk);
    const ParameterCollection::CBooleanParameter enable(m_collection, Enable);
    const bool isOn = enable.valueOr(isWanted);
    if (isOn == isWanted || !enable.isWritable())
    {
        return;
    }
    try
    {
        write(Enable, isWanted ? QStringLiteral("true") : QStringLiteral("false"));
        m_changedChunks.append({chunk, isOn});
    }
    catch (const CRefusal&)
    {
        // Cameras do not let the image's own chunk go, and not all of them lock its switch.
        if (isWanted)
        {
            throw;
        }
    }
}

void CChunkSettings::restore()
{
    if (m_mode.isEmpty())
    {
        return;
    }
    QVector<QString> settings;
    // While chunk mode is on: some cameras lock the selection when it is off.
    for (const auto& [chunk, wasOn] : std::exchange(m_changedChunks, {}))
    {
        settings.append(Selector + QLatin1Char('=') + chunk);
        settings.append(Enable + (wasOn ? QStringLiteral("=true") : QStringLiteral("=false")));
    }
    if (!m_selector.isEmpty())
    {
        settings.append(Selector + QLatin1Char('=') + m_selector);
    }
    settings.append(Mode + QLatin1Char('=') + std::exchange(m_mode, {}));
    QString failure;
    for (const QString& setting : settings)
    {
        try
        {
            applySetting(m_collection, setting);
        }
        catch (const CRefusal& refusal)
        {
            failure = failure.isEmpty() ? QString::fromUtf8(refusal.what()) : failure;
        }
    }
    if (!failure.isEmpty())
    {
        throw CRefusal(CTexts::tr("The chunk settings could not be restored: %1").arg(failure));
    }
}

QStringList CChunkSettings::valueFeatures() const
{
    const ParameterCollection::CScopedObjectStateLock lock(m_collection->objectState());
    GenApi::INodeMap* pNodeMap = m_collection->nodeMap(ParameterCollection::ParameterPath::CameraDevice);
    const GenApi::CCategoryPtr category(pNodeMap == nullptr ? nullptr : pNodeMap->GetNode("ChunkDataControl"));
    QStringList result;
    if (!category)
    {
        return result;
    }
    GenApi::FeatureList features;
    category->GetFeatures(features);
    for (GenApi::INode* pNode : features)
    {
        const QString path = ParameterCollection::ParameterPath::CameraDevice + QLatin1Char('/') +
                             QString::fromUtf8(pNode->GetName().c_str());
        // Without an image a chunk's value is not available; what can be read now is a setting.
        if (GenApi::CValuePtr(pNode) && !GenApi::CCommandPtr(pNode) && path != Mode && path != Selector &&
            path != Enable && !GenApi::IsWritable(pNode))
        {
            result.append(QString::fromUtf8(pNode->GetName().c_str()));
        }
    }
    return result;
}

} // namespace PoolCli
