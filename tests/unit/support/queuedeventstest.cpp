// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// Arguments that another thread emitted and that no slot receives: the thread sanitizer must see that they were handed
// over (tests/support/tsanqt.cpp), and nobody may lose one.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMetaType>
#include <QObject>

#include <atomic>
#include <future>
#include <thread>

namespace
{

std::atomic<int> alive{0}; // arguments; relaxed, as all atomics here: they tell the sanitizer nothing

/** An argument that counts its copies. */
class CArgument
{
public:
    CArgument() { alive.fetch_add(1, std::memory_order_relaxed); }
    CArgument(const CArgument& other) : m_value(other.m_value) { alive.fetch_add(1, std::memory_order_relaxed); }
    ~CArgument()
    {
        m_value = 0;
        alive.fetch_sub(1, std::memory_order_relaxed);
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

constexpr int emissions = 10;

/** Emits from a thread of its own, which stays: no join says that the emissions are over. */
class CEmitter
{
public:
    CEmitter() { qRegisterMetaType<CArgument>("CArgument"); }
    ~CEmitter()
    {
        m_mayEnd.set_value();
        m_thread.join();
    }
    CEmitter(const CEmitter&) = delete;
    CEmitter& operator=(const CEmitter&) = delete;

    /** Returns when all is queued, and lets the sanitizer know nothing of it. */
    void emitTo(const QObject& receiver)
    {
        QObject::connect(
            &m_sender, &CSender::emitted, &receiver, [](const CArgument&) {}, Qt::QueuedConnection);
        m_thread = std::thread([this] { run(); });
        while (!m_isDone.load(std::memory_order_relaxed))
        {
            std::this_thread::yield();
        }
    }

private:
    void run()
    {
        for (int i = 0; i < emissions; ++i)
        {
            emit m_sender.emitted(CArgument());
        }
        m_isDone.store(true, std::memory_order_relaxed);
        m_mayEnd.get_future().wait();
    }

    CSender m_sender;
    std::atomic<bool> m_isDone{false};
    std::promise<void> m_mayEnd;
    std::thread m_thread;
};

template <class Receiver> void expectToEndWith()
{
    CEmitter emitter;
    {
        Receiver receiver;
        emitter.emitTo(receiver);
        EXPECT_EQ(alive.load(std::memory_order_relaxed), emissions);
    }
    EXPECT_EQ(alive.load(std::memory_order_relaxed), 0);
}

} // namespace

TEST(QueuedEvents, areTakenBackWhileTheirThreadGoesOn)
{
    QObject receiver;
    CEmitter emitter;
    emitter.emitTo(receiver);
    EXPECT_EQ(alive.load(std::memory_order_relaxed), emissions);
    QCoreApplication::removePostedEvents(&receiver);
    EXPECT_EQ(alive.load(std::memory_order_relaxed), 0);
}

TEST(QueuedEvents, endWithTheirReceiverWhileTheirThreadGoesOn)
{
    expectToEndWith<QObject>();
}

TEST(QueuedEvents, ofAnotherClassEndWithTheirReceiverToo)
{
    expectToEndWith<CSender>();
}

#include "queuedeventstest.moc"
