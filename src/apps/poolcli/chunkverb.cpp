// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/chunksettings.h"
#include "poolcli/grabsession.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "genapi/inodes.h"
#include "parametercollection/parameterpath.h"

#include <QCoreApplication>
#include <QSet>
#include <QThread>

#include <functional>
#include <utility>

namespace PoolCli
{
namespace
{

/**
 * Tells the chunk values of each image when the grab has made them readable, once an image: read on the grab thread,
 * which attaches no other image's meanwhile, told on the main thread behind the image itself.
 */
class CChunkWatch
{
public:
    using Observer = std::function<void(const QJsonObject&)>;

    CChunkWatch(CChunkSettings::Collection collection, const QStringList& features, Observer observer)
        : m_collection(std::move(collection)), m_observer(std::move(observer))
    {
        const ParameterCollection::CScopedObjectStateLock lock(m_collection->objectState());
        m_pNodeMap = nodeMap();
        for (const QString& name : m_pNodeMap == nullptr ? QStringList() : features)
        {
            if (GenApi::INode* pNode = m_pNodeMap->GetNode(name.toUtf8().constData()))
            {
                m_nodes.append(pNode);
            }
        }
        for (GenApi::INode* pNode : std::as_const(m_nodes))
        {
            m_handles.append(pNode->RegisterCallback([this](GenApi::INode* pChanged) { onChange(pChanged); }));
        }
    }
    ~CChunkWatch()
    {
        const ParameterCollection::CScopedObjectStateLock lock(m_collection->objectState());
        if (nodeMap() != m_pNodeMap)
        {
            return; // the camera was lost, and its nodes with it
        }
        for (int i = 0; i < m_nodes.size(); ++i)
        {
            m_nodes.at(i)->DeregisterCallback(m_handles.at(i));
        }
    }
    CChunkWatch(const CChunkWatch&) = delete;
    CChunkWatch& operator=(const CChunkWatch&) = delete;

    /** Tells what was read so far. */
    void flush() { QCoreApplication::sendPostedEvents(&m_receiver); }

private:
    GenApi::INodeMap* nodeMap() const
    {
        return m_collection->nodeMap(ParameterCollection::ParameterPath::CameraDevice);
    }

    /** Each feature changes once an image, also when it loses its value. */
    void onChange(GenApi::INode* pChanged)
    {
        if (QThread::currentThread() == m_receiver.thread())
        {
            return; // a setting was changed, no image has come
        }
        if (m_changed.contains(pChanged))
        {
            m_changed.clear();
        }
        const bool isFirst = m_changed.isEmpty();
        m_changed.insert(pChanged);
        if (isFirst)
        {
            QMetaObject::invokeMethod(
                &m_receiver, [this, values = read()] { m_observer(values); }, Qt::QueuedConnection);
        }
    }

    QJsonObject read() const
    {
        QJsonObject values;
        for (GenApi::INode* pNode : m_nodes)
        {
            const QString name = QString::fromUtf8(pNode->GetName().c_str());
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

    CChunkSettings::Collection m_collection;
    Observer m_observer;
    GenApi::INodeMap* m_pNodeMap = nullptr;
    QVector<GenApi::INode*> m_nodes;
    QVector<GenApi::CallbackHandle> m_handles; // of m_nodes
    QSet<GenApi::INode*> m_changed;            // for one image; only on the grab thread
    QObject m_receiver;
};

/** Shows each image with its chunk values, which come after it or, when it has none, not at all. */
class CChunkPrinter
{
public:
    CChunkPrinter(QStringList features, bool json) : m_features(std::move(features)), m_json(json) {}

    void take(const Velmo::CGrabResultPtr& result)
    {
        finish();
        m_waiting = result;
    }
    void takeValues(const QJsonObject& values)
    {
        if (m_waiting.IsValid())
        {
            show(values);
        }
    }
    /** What still waits has no values. */
    void finish() { takeValues({}); }

    /** Images whose values were shown. */
    int withValues() const { return m_withValues; }

private:
    void show(const QJsonObject& values)
    {
        const auto blockId = static_cast<qint64>(m_waiting->GetBlockID());
        const QString timestamp = QString::number(m_waiting->GetTimeStamp());
        m_waiting.Release();
        m_withValues += values.isEmpty() ? 0 : 1;
        if (m_json)
        {
            printJsonLine({{"block_id", blockId}, {"timestamp", timestamp}, {"chunks", values}});
            return;
        }
        QStringList parts;
        for (const QString& name : m_features)
        {
            if (values.contains(name))
            {
                parts.append(QStringLiteral("%1=%2").arg(name, printable(values.value(name).toString())));
            }
        }
        const QString text = parts.isEmpty() ? CTexts::tr("no chunk data") : parts.join(QStringLiteral("  "));
        printLine(QStringLiteral("%1: %2").arg(blockId).arg(text));
    }

    QStringList m_features;
    bool m_json;
    Velmo::CGrabResultPtr m_waiting;
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
    const QStringList features = settings.valueFeatures();
    CChunkPrinter printer(features, options.json);
    CChunkWatch watch(collection, features, [&printer](const QJsonObject& values) { printer.takeValues(values); });
    CGrabSession grab(session, {camera.info()}, grabOptions);
    grab.setImageObserver([&printer](const Velmo::CGrabResultPtr& result) { printer.take(result); });
    grab.run();
    watch.flush(); // the grab has stopped: its thread has read all that there is
    printer.finish();
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
