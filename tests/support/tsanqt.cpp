// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// What the thread sanitizer must be told of Qt, whose library is not built with it: which calls synchronise. The
// functions below stand in front of Qt's own for everything that calls them through the dynamic linker, our libraries
// and tests included, and say "release" and "acquire" around them. Built in the tsan preset only.

#include "support/tsanqt.h"

#include <QDeadlineTimer>
#include <QMutex>
#include <QThread>
#include <QWaitCondition>

#include <atomic>
#include <dlfcn.h>
#include <sched.h>

extern "C" void __tsan_acquire(void* pAddress);
extern "C" void __tsan_release(void* pAddress);

namespace
{

template <class Function> Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// One address stands for the event queues of all threads: every emission happens before every later delivery.
char eventQueues = 0;
std::atomic<int> emitting{0};
thread_local int emittingHere = 0;

} // namespace

namespace Test
{

CAnnotatedApplication::CAnnotatedApplication(int& argc, char** argv) : QCoreApplication(argc, argv) {}

bool CAnnotatedApplication::notify(QObject* pReceiver, QEvent* pEvent)
{
    // An emission posts its event before it says "release": those under way are waited for, within limits, since a
    // thread may emit for as long as a directly connected slot takes.
    constexpr int limit = 10000;
    for (int turn = 0; turn < limit && emitting.load() > emittingHere; ++turn)
    {
        sched_yield();
    }
    __tsan_acquire(&eventQueues);
    return QCoreApplication::notify(pReceiver, pEvent);
}

} // namespace Test

#define TSANQT_EXPORT __attribute__((visibility("default")))

// void QMetaObject::activate(QObject*, const QMetaObject*, int, void**)
extern "C" TSANQT_EXPORT void _ZN11QMetaObject8activateEP7QObjectPKS_iPPv(QObject* pSender, const QMetaObject* pMeta,
                                                                          int index, void** ppArguments)
{
    static auto* pReal =
        original<void(QObject*, const QMetaObject*, int, void**)>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    ++emitting;
    ++emittingHere;
    pReal(pSender, pMeta, index, ppArguments);
    __tsan_release(&eventQueues);
    --emittingHere;
    --emitting;
}

// void QMutex::lock()
extern "C" TSANQT_EXPORT void _ZN6QMutex4lockEv(QMutex* pMutex)
{
    static auto* pReal = original<void(QMutex*)>("_ZN6QMutex4lockEv");
    pReal(pMutex);
    __tsan_acquire(pMutex);
}

// void QMutex::unlock()
extern "C" TSANQT_EXPORT void _ZN6QMutex6unlockEv(QMutex* pMutex)
{
    static auto* pReal = original<void(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(pMutex);
    pReal(pMutex);
}

// bool QMutex::tryLock(int)
extern "C" TSANQT_EXPORT bool _ZN6QMutex7tryLockEi(QMutex* pMutex, int timeoutMs)
{
    static auto* pReal = original<bool(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = pReal(pMutex, timeoutMs);
    if (locked)
    {
        __tsan_acquire(pMutex);
    }
    return locked;
}

// bool QWaitCondition::wait(QMutex*, unsigned long)
extern "C" TSANQT_EXPORT bool _ZN14QWaitCondition4waitEP6QMutexm(QWaitCondition* pCondition, QMutex* pMutex,
                                                                 unsigned long timeoutMs)
{
    static auto* pReal = original<bool(QWaitCondition*, QMutex*, unsigned long)>("_ZN14QWaitCondition4waitEP6QMutexm");
    __tsan_release(pMutex);
    const bool woken = pReal(pCondition, pMutex, timeoutMs);
    __tsan_acquire(pMutex);
    return woken;
}

// bool QWaitCondition::wait(QMutex*, QDeadlineTimer)
extern "C" TSANQT_EXPORT bool _ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer(QWaitCondition* pCondition,
                                                                                QMutex* pMutex, QDeadlineTimer deadline)
{
    static auto* pReal =
        original<bool(QWaitCondition*, QMutex*, QDeadlineTimer)>("_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    __tsan_release(pMutex);
    const bool woken = pReal(pCondition, pMutex, deadline);
    __tsan_acquire(pMutex);
    return woken;
}

// bool QThread::wait(unsigned long): what the thread did happens before the end of the wait; its last emission, of
// finished(), said "release".
extern "C" TSANQT_EXPORT bool _ZN7QThread4waitEm(QThread* pThread, unsigned long timeoutMs)
{
    static auto* pReal = original<bool(QThread*, unsigned long)>("_ZN7QThread4waitEm");
    const bool ended = pReal(pThread, timeoutMs);
    __tsan_acquire(&eventQueues);
    return ended;
}
