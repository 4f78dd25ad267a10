// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// Arguments that another thread emitted and that no slot receives: the thread sanitizer must see that they were handed
// over (tests/support/tsanqt.cpp), and nobody may lose one.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMetaType>
#include <QObject>

#include <atomic>
#include <memory>
#include <thread>

namespace
{

std::atomic<int> alive{0};

/** An argument that counts its copies. */
class CArgument
{
public:
    CArgument() { ++alive; }
    CArgument(const CArgument& other) : m_value(other.m_value) { ++alive; }
    ~CArgument()
    {
        m_value = 0;
        --alive;
    }
    CArgument& operator=(const CArgument&) = delete;

private:
    int m_value = 1;
};

class CSender : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void emitted(CArgument argument);
};

/** Emits from a thread of its own until it is told to stop, so that no join orders the emissions. */
class CEmittingThread
{
public:
    CEmittingThread()
    {
        qRegisterMetaType<CArgument>("CArgument");
        m_thread = std::thread([this] { run(); });
    }
    ~CEmittingThread() { stop(); }
    CEmittingThread(const CEmittingThread&) = delete;
    CEmittingThread& operator=(const CEmittingThread&) = delete;

    CSender& sender() { return m_sender; }
    /** Returns after ten more emissions: the last nine of them began after the call. */
    void waitForEmissions() const
    {
        const int last = m_emissions.load(std::memory_order_relaxed) + 10; // relaxed: tells the sanitizer nothing
        while (m_emissions.load(std::memory_order_relaxed) < last)
        {
            std::this_thread::yield();
        }
    }
    void stop()
    {
        m_stop = true;
        if (m_thread.joinable())
        {
            m_thread.join();
        }
    }

private:
    void run()
    {
        while (!m_stop)
        {
            emit m_sender.emitted(CArgument());
            m_emissions.fetch_add(1, std::memory_order_relaxed);
            std::this_thread::yield();
        }
    }

    CSender m_sender;
    std::atomic<int> m_emissions{0};
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

} // namespace

TEST(QueuedEvents, areTakenBackWhileAnotherThreadEmits)
{
    {
        CEmittingThread thread;
        QObject receiver;
        QObject::connect(
            &thread.sender(), &CSender::emitted, &receiver, [](const CArgument&) {}, Qt::QueuedConnection);
        for (int round = 0; round < 20; ++round)
        {
            thread.waitForEmissions();
            QCoreApplication::removePostedEvents(&receiver);
        }
        thread.waitForEmissions();
        thread.stop();
        EXPECT_GE(alive, 9) << "what was emitted last is queued still";
    }
    EXPECT_EQ(alive, 0);
}

TEST(QueuedEvents, endWithTheirReceiverWhileAnotherThreadEmits)
{
    {
        CEmittingThread thread;
        for (int round = 0; round < 20; ++round)
        {
            QObject receiver;
            QObject::connect(
                &thread.sender(), &CSender::emitted, &receiver, [](const CArgument&) {}, Qt::QueuedConnection);
            thread.waitForEmissions();
        }
    }
    EXPECT_EQ(alive, 0);
}

#include "queuedeventstest.moc"
