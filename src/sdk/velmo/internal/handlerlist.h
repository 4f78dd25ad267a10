// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/eventhandlers.h"
#include "velmo/internal/exceptiontext.h"
#include "velmo/internal/waitgraph.h"

#include <algorithm>
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
 * The handlers of one kind, called in registration order with no lock held.
 *
 * A handler that was removed is called no more once Remove has returned, except where Remove was called from within
 * that handler itself, or where that handler's call waits, directly or not, for the caller of Remove. Handlers to be
 * deleted are deleted when nobody calls them any more.
 *
 * Threads: any.
 */
template <class Handler> class CHandlerList
{
public:
    explicit CHandlerList(std::shared_ptr<CWaitGraph> waits) : m_waits(std::move(waits)) {}

    void Append(Handler& handler, ECleanup cleanup)
    {
        auto entry = std::make_shared<SEntry>(handler, cleanup);
        CHandlerRegistration::Add(handler);
        const std::lock_guard<std::mutex> lock(m_waits->mutex);
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
            std::unique_lock<std::mutex> lock(m_waits->mutex);
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
            m_waits->AwaitIdle(lock, removed->runners);
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
        CWaitGraph::Threads runners; // of the calls under way
    };
    using EntryPtr = std::shared_ptr<SEntry>;
    using Entries = std::vector<EntryPtr>;

    std::shared_ptr<const Entries> Snapshot() const
    {
        const std::lock_guard<std::mutex> lock(m_waits->mutex);
        return m_entries;
    }

    template <class Function> void CallOne(SEntry& entry, Function& function)
    {
        {
            const std::lock_guard<std::mutex> lock(m_waits->mutex);
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
                const std::lock_guard<std::mutex> lock(list.m_waits->mutex);
                entry.runners.erase(std::find(entry.runners.begin(), entry.runners.end(), std::this_thread::get_id()));
                list.m_waits->NotifyIdle();
            }
            CHandlerList& list;
            SEntry& entry;
        } leave{*this, entry};
        function(*entry.pHandler);
    }

    static constexpr std::size_t UsualRunners = 8; // more than that allocate

    const std::shared_ptr<CWaitGraph> m_waits;
    std::shared_ptr<const Entries> m_entries = std::make_shared<const Entries>();
};

} // namespace Velmo::Internal
