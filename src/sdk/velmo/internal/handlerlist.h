// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/eventhandlers.h"
#include "velmo/internal/exceptiontext.h"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace Velmo::Internal
{

/** Counts a handler's registrations. */
class CHandlerRegistration
{
public:
    static void Add(CEventHandlerBase& handler) { ++handler.m_registrations; }
    static void Remove(CEventHandlerBase& handler) { --handler.m_registrations; }
};

/**
 * What the handler lists of one camera share: a lock, and who waits for whom.
 *
 * Threads: any; all but the constructor with the mutex held.
 */
class CHandlerSync
{
public:
    using Threads = std::vector<std::thread::id>;

    /** Waits until only such threads are left among the runners as cannot end before this one goes on: itself, and
     *  those that wait, directly or not, for this one. */
    void AwaitIdle(std::unique_lock<std::mutex>& lock, const Threads& runners)
    {
        const std::thread::id self = std::this_thread::get_id();
        const auto isIdle = [&]
        {
            return std::all_of(runners.begin(), runners.end(),
                               [&](std::thread::id runner)
                               { return runner == self || WaitsFor(runner, self, m_waiting.size()); });
        };
        if (isIdle())
        {
            return;
        }
        m_waiting[self] = &runners;
        changed.wait(lock, isIdle);
        m_waiting.erase(self);
    }

    std::mutex mutex; // guards the lists and the members below; never held while a handler is called
    std::condition_variable changed;

private:
    /** Directly, or through at most that many others. Who closes a circle does not wait for it. */
    bool WaitsFor(std::thread::id waiter, std::thread::id awaited, std::size_t others) const
    {
        const auto found = m_waiting.find(waiter);
        return found != m_waiting.end() &&
               std::any_of(found->second->begin(), found->second->end(),
                           [&](std::thread::id runner) {
                               return runner == awaited ||
                                      (runner != waiter && others > 0 && WaitsFor(runner, awaited, others - 1));
                           });
    }

    std::map<std::thread::id, const Threads*> m_waiting; // for the end of which calls
};

/**
 * The handlers of one kind, called in registration order with no lock held.
 *
 * A handler that was removed is called no more once Remove has returned, except where Remove was called from within
 * that handler itself, or where that handler waits for the removal of the one that called Remove. Handlers to be
 * deleted are deleted when nobody calls them any more.
 *
 * Threads: any.
 */
template <class Handler> class CHandlerList
{
public:
    explicit CHandlerList(std::shared_ptr<CHandlerSync> sync) : m_sync(std::move(sync)) {}

    void Append(Handler& handler, ECleanup cleanup)
    {
        auto entry = std::make_shared<SEntry>(handler, cleanup);
        CHandlerRegistration::Add(handler);
        const std::lock_guard<std::mutex> lock(m_sync->mutex);
        auto next = std::make_shared<Entries>(*m_entries);
        next->push_back(std::move(entry));
        m_entries = std::move(next);
    }

    /** Takes away the first registration of that handler, or with null any; false when there is none. The handler
     *  itself is told by onRemoved. It is not deleted when it is the one to keep. */
    template <class OnRemoved> bool Remove(const Handler* pHandler, const Handler* pKeep, OnRemoved onRemoved)
    {
        EntryPtr removed;
        {
            std::unique_lock<std::mutex> lock(m_sync->mutex);
            const auto found = std::find_if(m_entries->begin(), m_entries->end(),
                                            [pHandler](const EntryPtr& entry)
                                            { return pHandler == nullptr || entry->pHandler == pHandler; });
            if (found == m_entries->end())
            {
                return false;
            }
            removed = *found;
            auto next = std::make_shared<Entries>(m_entries->begin(), found);
            next->insert(next->end(), found + 1, m_entries->end());
            m_entries = std::move(next);
            removed->active = false;
            removed->cleanup = removed->pHandler == pKeep ? Cleanup_None : removed->cleanup;
            m_sync->AwaitIdle(lock, removed->runners);
        }
        CHandlerRegistration::Remove(*removed->pHandler);
        onRemoved(*removed->pHandler);
        return true;
    }

    /** Calls every handler; what one throws goes to onError(text) and stops that call only. */
    template <class Function, class OnError> void Call(Function function, OnError onError)
    {
        const auto entries = Snapshot();
        for (const EntryPtr& entry : *entries)
        {
            try
            {
                CallOne(*entry, function);
            }
            catch (...)
            {
                onError(CurrentExceptionText());
            }
        }
    }

    /** Calls every handler; what one throws ends this and goes to the caller. */
    template <class Function> void CallOrThrow(Function function)
    {
        const auto entries = Snapshot();
        for (const EntryPtr& entry : *entries)
        {
            CallOne(*entry, function);
        }
    }

private:
    struct SEntry
    {
        SEntry(Handler& handler, ECleanup howToEnd) : pHandler(&handler), cleanup(howToEnd)
        {
            runners.reserve(UsualRunners);
        }
        ~SEntry()
        {
            if (cleanup == Cleanup_Delete)
            {
                delete pHandler;
            }
        }
        SEntry(const SEntry&) = delete;
        SEntry& operator=(const SEntry&) = delete;

        Handler* const pHandler;
        ECleanup cleanup;
        bool active = true;
        CHandlerSync::Threads runners; // of the calls under way
    };
    using EntryPtr = std::shared_ptr<SEntry>;
    using Entries = std::vector<EntryPtr>;

    std::shared_ptr<const Entries> Snapshot() const
    {
        const std::lock_guard<std::mutex> lock(m_sync->mutex);
        return m_entries;
    }

    template <class Function> void CallOne(SEntry& entry, Function& function)
    {
        {
            const std::lock_guard<std::mutex> lock(m_sync->mutex);
            if (!entry.active)
            {
                return;
            }
            entry.runners.push_back(std::this_thread::get_id());
        }
        struct SLeave
        {
            ~SLeave()
            {
                const std::lock_guard<std::mutex> lock(list.m_sync->mutex);
                entry.runners.erase(std::find(entry.runners.begin(), entry.runners.end(), std::this_thread::get_id()));
                list.m_sync->changed.notify_all();
            }
            CHandlerList& list;
            SEntry& entry;
        } leave{*this, entry};
        function(*entry.pHandler);
    }

    static constexpr std::size_t UsualRunners = 8; // more than that allocate

    const std::shared_ptr<CHandlerSync> m_sync;
    std::shared_ptr<const Entries> m_entries = std::make_shared<const Entries>();
};

} // namespace Velmo::Internal
