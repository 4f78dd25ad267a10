// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "poolcli/session.h"

#include <QStringList>
#include <QVector>

#include <memory>
#include <utility>

namespace PoolCli
{

/** An event of a camera, as its features told. */
struct SSeenEvent
{
    QString name;
    qint64 id = -1;                              // -1: not told
    QString timestamp;                           // ticks of the camera's clock; "": not told
    QVector<std::pair<QString, QString>> values; // feature and value, in the camera's order
};

/**
 * Notes the events of an open camera by callbacks of its features, and wakes the main thread for each.
 *
 * Main thread. The callbacks run on the camera's event thread, and on threads that let all features be read anew; they
 * use nothing but nodes, for whoever closes the camera holds the lock of its object state while waiting for them.
 */
class CEventListener
{
public:
    /** Of those events, by their names in EventSelector; those without features are left out. all: every event that the
     *  camera has. */
    CEventListener(ParameterCollection::IParameterCollection& collection, const QStringList& all,
                   const QStringList& wanted);
    /** Nothing is noted any more. */
    ~CEventListener();
    CEventListener(const CEventListener&) = delete;
    CEventListener& operator=(const CEventListener&) = delete;

    /** Events that are listened to. */
    QStringList heard() const;
    /** The next one, in the camera's order; false when there is none yet. */
    bool take(SSeenEvent& event);

private:
    struct SQueue;
    void listen(GenApi::INodeMap& nodes, const QString& event, const QVector<GenApi::INode*>& features);

    ParameterCollection::IParameterCollection& m_collection;
    const std::shared_ptr<SQueue> m_queue; // shared with callbacks
    QStringList m_heard;
    QVector<std::pair<QString, GenApi::CallbackHandle>> m_callbacks; // by their node's name
};

} // namespace PoolCli
