// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/session.h"

#include <QStringList>
#include <QVector>

#include <utility>

namespace PoolCli
{

/** Switches events of an open camera on, and back to what they were. Main thread. */
class CEventSettings
{
public:
    using Collection = QSharedPointer<ParameterCollection::IParameterCollection>;

    /** Throws CRefusal when the camera reports no events, and when they cannot be received. */
    explicit CEventSettings(Collection collection);
    /** Restores, without a word about what fails. */
    ~CEventSettings();
    CEventSettings(const CEventSettings&) = delete;
    CEventSettings& operator=(const CEventSettings&) = delete;

    /** The names by which EventSelector knows the camera's events. */
    QStringList names() const;
    /** Throws CRefusal for a name that the camera does not have. */
    void check(const QStringList& names) const;
    /** Those events on, the others as they are. Throws CRefusal when the camera refuses. */
    void enable(const QStringList& names);
    /** Throws CRefusal, with the first failure, after trying everything. */
    void restore();

private:
    QString read(const QString& name) const;
    void write(const QString& name, const QString& value);

    Collection m_collection;
    QVector<std::pair<QString, QString>> m_changed; // event and former notification
    QString m_selector;                             // former value; "" while nothing was changed
};

} // namespace PoolCli
