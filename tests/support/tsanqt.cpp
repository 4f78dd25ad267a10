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

// Waits for the emissions under way, which post their events before they say "release": within limits, since a thread
// may emit for as long as a directly connected slot takes. Emissions that begin later are not held back: those of a
// grab thread with real-time priority would not let go of the processor meanwhile.
void acquireEmissions()
{
    constexpr int limit = 10000;
    for (int turn = 0; turn < limit && emitting.load() > emittingHere; ++turn)
    {
        sched_yield();
    }
    __tsan_acquire(&eventQueues);
}

/** Sees the data that Qt's headers keep for derived classes. */
class CObjectData : public QObject
{
public:
    static bool hasPostedEvents(const QObject& object) { return (object.*&CObjectData::d_ptr)->postedEvents != 0; }
};

} // namespace

namespace Test
{

CAnnotatedApplication::CAnnotatedApplication(int& argc, char** argv) : QCoreApplication(argc, argv) {}

bool CAnnotatedApplication::notify(QObject* pReceiver, QEvent* pEvent)
{
    acquireEmissions();
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

// void QCoreApplication::removePostedEvents(QObject*, int)
extern "C" TSANQT_EXPORT void _ZN16QCoreApplication18removePostedEventsEP7QObjecti(QObject* pReceiver, int eventType)
{
    static auto* pReal = original<void(QObject*, int)>("_ZN16QCoreApplication18removePostedEventsEP7QObjecti");
    acquireEmissions();
    pReal(pReceiver, eventType);
}

// QObject::~QObject(), which takes back what is still queued for the object, as the base of another class.
extern "C" TSANQT_EXPORT void _ZN7QObjectD2Ev(QObject* pObject)
{
    static auto* pReal = original<void(QObject*)>("_ZN7QObjectD2Ev");
    if (CObjectData::hasPostedEvents(*pObject))
    {
        acquireEmissions();
    }
    pReal(pObject);
}

// QObject::~QObject() of an object that is nothing else.
extern "C" TSANQT_EXPORT void _ZN7QObjectD1Ev(QObject* pObject)
{
    _ZN7QObjectD2Ev(pObject);
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

// bool QThread::wait(unsigned long): all that the thread released by emissions of ours happens before the end of the
// wait. Qt's own emission of finished() is not seen here: what the thread does after its last emission or unlocking
// needs a lock or an atomic of ours.
extern "C" TSANQT_EXPORT bool _ZN7QThread4waitEm(QThread* pThread, unsigned long timeoutMs)
{
    static auto* pReal = original<bool(QThread*, unsigned long)>("_ZN7QThread4waitEm");
    const bool ended = pReal(pThread, timeoutMs);
    __tsan_acquire(&eventQueues);
    return ended;
}
