// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/appcore_export.h"
#include "utils/id.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

namespace Plugin::AppCore
{

/** Something that the application shows and selects, known by its identifiers. */
class APPCORE_EXPORT IInfo : public QObject
{
    Q_OBJECT
public:
    explicit IInfo(QObject* parent = nullptr);
    ~IInfo() override;

    virtual QList<Core::CId> ids() const { return m_ids; }
    /** The first identifier; an invalid one when there is none. */
    virtual Core::CId id() const { return m_ids.value(0); }
    virtual bool hasId(const Core::CId& id) const { return m_ids.contains(id); }
    virtual bool isValid() const { return !m_ids.isEmpty(); }

protected:
    void setIds(const QList<Core::CId>& ids) { m_ids = ids; }

private:
    QList<Core::CId> m_ids;
};

} // namespace Plugin::AppCore
