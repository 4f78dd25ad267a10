// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "utils/utils_export.h"

#include <QByteArray>
#include <QMetaType>
#include <QString>

namespace Core
{

/** An identifier: a UTF-8 text compared as a whole. A null character pointer makes an invalid one. */
class UTILS_EXPORT CId
{
public:
    CId() = default;
    CId(const char* text);
    explicit CId(const QString& text);
    bool isValid() const { return !m_text.isEmpty(); }
    QString toString() const { return QString::fromUtf8(m_text); }
    const QByteArray& name() const { return m_text; }
    friend bool operator==(const CId& l, const CId& r) { return l.m_text == r.m_text; }
    friend bool operator!=(const CId& l, const CId& r) { return !(l == r); }
    friend bool operator<(const CId& l, const CId& r) { return l.m_text < r.m_text; }
    friend uint qHash(const CId& id, uint seed = 0) { return ::qHash(id.m_text, seed); }

private:
    QByteArray m_text;
};

} // namespace Core

Q_DECLARE_METATYPE(Core::CId)
