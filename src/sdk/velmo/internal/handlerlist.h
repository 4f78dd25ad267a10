// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/eventhandlers.h"
#include "velmo/internal/exceptiontext.h"

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
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

/** The handler calls that run on this thread, innermost first. */
class CHandlerCall
{
public:
    explicit CHandlerCall(const void* pEntry) : m_pEntry(pEntry), m_pOuter(Top()) { Top() = this; }
    ~CHandlerCall() { Top() = m_pOuter; }
    CHandlerCall(const CHandlerCall&) = delete;
    CHandlerCall& operator=(const CHandlerCall&) = delete;

    static int CountOnThisThread(const void* pEntry)
    {
        int count = 0;
        for (const CHandlerCall* pCall = Top(); pCall != nullptr; pCall = pCall->m_pOuter)
        {
            count += pCall->m_pEntry == pEntry ? 1 : 0;
        }
        return count;
    }

private:
    static const CHandlerCall*& Top()
    {
        thread_local const CHandlerCall* pTop = nullptr;
        return pTop;
    }
    const void* const m_pEntry;
    const CHandlerCall* const m_pOuter;
};

/**
 * The handlers of one kind, called in registration order with no lock held.
 *
 * A handler that was removed is called no more once Remove has returned, except where Remove was called from within
 * that handler itself. Handlers to be deleted are deleted when nobody calls them any more.
 * Threads: any.
 */
template <class Handler> class CHandlerList
{
public:
    void Append(Handler& handler, ECleanup cleanup)
    {
        auto entry = std::make_shared<SEntry>(handler, cleanup);
        CHandlerRegistration::Add(handler);
        const std::lock_guard<std::mutex> lock(m_mutex);
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
            std::unique_lock<std::mutex> lock(m_mutex);
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
            m_idle.wait(lock, [&] { return removed->calls == CHandlerCall::CountOnThisThread(removed.get()); });
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
        SEntry(Handler& handler, ECleanup howToEnd) : pHandler(&handler), cleanup(howToEnd) {}
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
        int calls = 0;
    };
    using EntryPtr = std::shared_ptr<SEntry>;
    using Entries = std::vector<EntryPtr>;

    std::shared_ptr<const Entries> Snapshot() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_entries;
    }

    template <class Function> void CallOne(SEntry& entry, Function& function)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (!entry.active)
            {
                return;
            }
            ++entry.calls;
        }
        struct SLeave
        {
            ~SLeave()
            {
                const std::lock_guard<std::mutex> lock(list.m_mutex);
                --entry.calls;
                list.m_idle.notify_all();
            }
            CHandlerList& list;
            SEntry& entry;
        } leave{*this, entry};
        const CHandlerCall call(&entry);
        function(*entry.pHandler);
    }

    mutable std::mutex m_mutex; // guards the entries; never held while a handler is called
    std::condition_variable m_idle;
    std::shared_ptr<const Entries> m_entries = std::make_shared<const Entries>();
};

} // namespace Velmo::Internal
