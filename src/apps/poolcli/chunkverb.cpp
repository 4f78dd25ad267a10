// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/chunksettings.h"
#include "poolcli/grabsession.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "genapi/inodes.h"
#include "parametercollection/parameterpath.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <mutex>

namespace PoolCli
{
namespace
{

/**
 * Reads the chunk values of each image as it comes by.
 *
 * The camera's chunk features show the latest image that was grabbed. That is a later one than the one at hand when
 * this program was held up; the camera's own frame number, when it is among the chunks, tells.
 */
class CChunkPrinter
{
public:
    CChunkPrinter(CChunkSettings::Collection collection, QStringList features, bool json)
        : m_collection(std::move(collection)), m_features(std::move(features)), m_json(json)
    {
    }

    void show(const Velmo::CGrabResultPtr& result)
    {
        const auto blockId = static_cast<qint64>(result->GetBlockID());
        const QJsonObject values = readOf(blockId);
        const bool isOvertaken = isOfALaterImage(blockId, values);
        m_withValues += isOvertaken || values.isEmpty() ? 0 : 1;
        if (m_json)
        {
            QJsonObject object{{"block_id", blockId},
                               {"timestamp", QString::number(result->GetTimeStamp())},
                               {"overtaken", isOvertaken}};
            object.insert(QStringLiteral("chunks"), isOvertaken ? QJsonObject() : values);
            printJsonLine(object);
            return;
        }
        QStringList parts;
        for (const QString& name : m_features)
        {
            if (!isOvertaken && values.contains(name))
            {
                parts.append(QStringLiteral("%1=%2").arg(name, printable(values.value(name).toString())));
            }
        }
        QString text = parts.join(QStringLiteral("  "));
        if (parts.isEmpty())
        {
            text = isOvertaken ? CTexts::tr("a later image came before its values were read")
                               : CTexts::tr("no chunk data");
        }
        printLine(QStringLiteral("%1: %2").arg(blockId).arg(text));
    }

    /** Images whose values were shown. */
    int withValues() const { return m_withValues; }

private:
    /** The image's signal may be here before the grab loop has come from emitting it to showing the image's chunks. */
    QJsonObject readOf(qint64 blockId) const
    {
        constexpr qint64 s_patienceMs = 200; // the grab loop needs microseconds, unless its thread has to wait
        const QDeadlineTimer deadline(s_patienceMs);
        QJsonObject values = read();
        while (isOfNoImageOrAnEarlierOne(blockId, values) && !deadline.hasExpired())
        {
            QThread::yieldCurrentThread();
            values = read();
        }
        return values;
    }

    bool isOfNoImageOrAnEarlierOne(qint64 blockId, const QJsonObject& values) const
    {
        bool isNumber = false;
        const qint64 frameId = frameIdOf(values, isNumber);
        return values.isEmpty() || (isNumber && m_hasDistance && blockId - frameId > m_distance);
    }

    static qint64 frameIdOf(const QJsonObject& values, bool& isNumber)
    {
        return values.value(QStringLiteral("ChunkFrameID")).toString().toLongLong(&isNumber);
    }

    QJsonObject read() const
    {
        QJsonObject values;
        const ParameterCollection::CScopedObjectStateLock lock(m_collection->objectState());
        GenApi::INodeMap* pNodeMap = m_collection->nodeMap(ParameterCollection::ParameterPath::CameraDevice);
        if (pNodeMap == nullptr)
        {
            return values;
        }
        // All values are of one image: the next one's can only be attached when this is unlocked.
        const std::lock_guard<std::recursive_mutex> nodeLock(pNodeMap->GetLock());
        for (const QString& name : m_features)
        {
            GenApi::INode* pNode = pNodeMap->GetNode(name.toUtf8().constData());
            const GenApi::CValuePtr value(pNode);
            try
            {
                if (value && GenApi::IsReadable(pNode))
                {
                    values.insert(name, QString::fromUtf8(value->ToString().c_str()));
                }
            }
            catch (const GenICam::GenericException& e)
            {
                values.insert(name, QStringLiteral("<%1>").arg(QString::fromUtf8(e.GetDescription())));
            }
        }
        return values;
    }

    /** Frame numbers of camera and stream may start apart, but they run together: where they are closer than ever
     *  before, the values are those of a later image. */
    bool isOfALaterImage(qint64 blockId, const QJsonObject& values)
    {
        bool isNumber = false;
        const qint64 frameId = frameIdOf(values, isNumber);
        if (!isNumber)
        {
            return false;
        }
        const qint64 distance = blockId - frameId;
        const bool isLater = m_hasDistance && distance < m_distance;
        m_distance = m_hasDistance ? std::max(m_distance, distance) : distance;
        m_hasDistance = true;
        return isLater;
    }

    CChunkSettings::Collection m_collection;
    QStringList m_features;
    bool m_json;
    bool m_hasDistance = false;
    qint64 m_distance = 0; // of the image's number to the chunk's, the largest seen
    int m_withValues = 0;
};

} // namespace

int runChunks(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    const auto collection = session.parameters(camera.info());
    SOptions grabOptions = options;
    if (grabOptions.durationMs == 0 && grabOptions.images == 0)
    {
        constexpr int defaultImages = 10;
        grabOptions.images = defaultImages;
    }
    CChunkSettings settings(collection);
    settings.enable(options.chunks);
    CChunkPrinter printer(collection, settings.valueFeatures(), options.json);
    CGrabSession grab(session, {camera.info()}, grabOptions);
    grab.setImageObserver([&printer](const Velmo::CGrabResultPtr& result) { printer.show(result); });
    grab.run();
    grab.printFailures();
    const int exitCode = grab.exitCode();
    if (exitCode == ExitDone)
    {
        settings.restore();
        if (printer.withValues() == 0 && grab.counts().first().images > 0)
        {
            throw CRefusal(CTexts::tr("%1 sent images without chunk data.").arg(camera.info()->getFriendlyName()));
        }
    }
    return exitCode;
}

} // namespace PoolCli
