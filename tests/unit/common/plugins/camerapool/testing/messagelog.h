// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QMutex>
#include <QMutexLocker>
#include <QStringList>
#include <QTest>
#include <QtGlobal>

#include <algorithm>

namespace Test
{

/** Keeps what is logged while it lives. Threads: any may log; the rest from one at a time. */
class CMessageLog
{
public:
    CMessageLog()
    {
        s_pCurrent = this;
        m_previous = qInstallMessageHandler(&CMessageLog::handle);
    }
    ~CMessageLog()
    {
        qInstallMessageHandler(m_previous);
        const QMutexLocker lock(&m_mutex); // after the last line of any thread
        s_pCurrent = nullptr;
    }
    CMessageLog(const CMessageLog&) = delete;
    CMessageLog& operator=(const CMessageLog&) = delete;

    QStringList lines() const
    {
        const QMutexLocker lock(&m_mutex);
        QStringList copy = m_lines;
        copy.detach(); // shares nothing with what other threads append to
        return copy;
    }
    /** Those at warning level. */
    QStringList warnings() const
    {
        const QMutexLocker lock(&m_mutex);
        QStringList copy = m_warnings;
        copy.detach();
        return copy;
    }
    int count(const QString& line) const { return lines().count(line); }
    bool contains(const QString& line) const { return count(line) > 0; }
    /** True when some line begins like that. */
    bool containsStart(const QString& start) const
    {
        const QStringList all = lines();
        return std::any_of(all.cbegin(), all.cend(), [&](const QString& line) { return line.startsWith(start); });
    }
    void clear()
    {
        const QMutexLocker lock(&m_mutex);
        m_lines.clear();
        m_warnings.clear();
    }

private:
    static void handle(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
    {
        const QMutexLocker lock(&s_pCurrent->m_mutex);
        s_pCurrent->m_lines.append(text);
        if (type == QtWarningMsg)
        {
            s_pCurrent->m_warnings.append(text);
        }
    }

    static inline CMessageLog* s_pCurrent = nullptr;
    mutable QMutex m_mutex; // guards the two lists
    QStringList m_lines;
    QStringList m_warnings;
    QtMessageHandler m_previous = nullptr;
};

/** Serves the event loop until the condition holds; false when it does not within the time. */
template <class Condition> bool waitUntil(Condition condition, int timeoutMs = 30000)
{
    return QTest::qWaitFor(condition, timeoutMs);
}

} // namespace Test
