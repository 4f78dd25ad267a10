// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/lastreference.h"

#include <condition_variable>
#include <memory>
#include <mutex>

namespace Velmo::GigE::Internal
{

namespace
{

struct SOthers
{
    std::mutex mutex;
    std::condition_variable changed;
    bool areGone = false;
};

using Others = std::shared_ptr<SOthers>;

/** On the thread that gives up the last reference but ours. */
void OnOthersChanged(gpointer pUser, GObject*, gboolean isLast)
{
    const Others pOthers = *static_cast<Others*>(pUser); // the waiting thread may end its own at once
    {
        const std::lock_guard<std::mutex> lock(pOthers->mutex);
        pOthers->areGone = isLast != FALSE;
    }
    pOthers->changed.notify_all();
}

} // namespace

bool EndAlone(ObjectPtr<GObject> pObject, std::chrono::milliseconds patience)
{
    auto ppOthers = std::make_unique<Others>(std::make_shared<SOthers>());
    const Others pOthers = *ppOthers;
    GObject* const pLast = pObject.get();
    g_object_add_toggle_ref(pLast, &OnOthersChanged, ppOthers.get());
    pObject.reset();
    {
        std::unique_lock<std::mutex> lock(pOthers->mutex);
        if (!pOthers->changed.wait_for(lock, patience, [&pOthers] { return pOthers->areGone; }))
        {
            static_cast<void>(ppOthers.release()); // whoever holds the object will call yet
            return false;
        }
    }
    g_object_remove_toggle_ref(pLast, &OnOthersChanged, ppOthers.get());
    return true;
}

} // namespace Velmo::GigE::Internal
