// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/session.h"

#include <QStringList>
#include <QVector>

#include <utility>

namespace PoolCli
{

/** Switches chunk data of an open camera on, and back to what it was. Main thread, while the camera does not grab. */
class CChunkSettings
{
public:
    using Collection = QSharedPointer<ParameterCollection::IParameterCollection>;

    /** Throws CRefusal when the camera has no chunk data. */
    explicit CChunkSettings(Collection collection);
    /** Restores, without a word about what fails. */
    ~CChunkSettings();
    CChunkSettings(const CChunkSettings&) = delete;
    CChunkSettings& operator=(const CChunkSettings&) = delete;

    /** The names by which ChunkSelector knows the camera's chunks. */
    QStringList names() const;
    /** Chunk mode on, with those chunks enabled and all others off; all that the camera has when names is empty. A
     *  chunk that cannot be switched off stays on. Throws CRefusal for a name that the camera does not have, and when
     *  it refuses to switch one on. */
    void enable(const QStringList& names);
    /** Throws CRefusal, with the first failure, after trying everything. */
    void restore();
    /** The features that show a chunk's value, in the camera's order. */
    QStringList valueFeatures() const;

private:
    void remember(const QString& name);
    void write(const QString& name, const QString& value);
    QString read(const QString& name) const;
    void switchChunk(const QString& chunk, bool isWanted);

    Collection m_collection;
    QVector<std::pair<QString, bool>> m_changedChunks; // name and former state
    QString m_mode;                                    // former values; "" while nothing was changed
    QString m_selector;
};

} // namespace PoolCli
