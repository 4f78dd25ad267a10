// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/lastreference.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <optional>
#include <thread>

namespace
{

using namespace std::chrono_literals;
using Velmo::GigE::Internal::EndAlone;
using Velmo::GigE::Internal::ObjectPtr;

/** An object of the engine's library that tells which thread ended it. */
class EngineObject : public ::testing::Test
{
protected:
    EngineObject() { g_object_weak_ref(m_pObject.get(), &OnEnd, &m_endedBy); }

    static void OnEnd(gpointer pUser, GObject*)
    {
        *static_cast<std::optional<std::thread::id>*>(pUser) = std::this_thread::get_id();
    }

    std::optional<std::thread::id> m_endedBy;
    ObjectPtr<GObject> m_pObject{static_cast<GObject*>(g_object_new(G_TYPE_OBJECT, nullptr))};
};

TEST_F(EngineObject, heldByNobodyElseEndsAtOnce)
{
    EXPECT_TRUE(EndAlone(std::move(m_pObject), 0ms));
    EXPECT_EQ(m_endedBy, std::this_thread::get_id());
}

TEST_F(EngineObject, heldByAnotherThreadEndsOnTheWaitingOne)
{
    ObjectPtr<GObject> pHeld(static_cast<GObject*>(g_object_ref(m_pObject.get())));
    std::promise<void> ending;
    std::thread holder(
        [&]
        {
            ending.get_future().wait();
            pHeld.reset();
        });
    ending.set_value();
    EXPECT_TRUE(EndAlone(std::move(m_pObject), 60s));
    EXPECT_EQ(m_endedBy, std::this_thread::get_id());
    holder.join();
}

TEST_F(EngineObject, heldForLongIsNeverEndedByItsHolder)
{
    static GObject* pStays = nullptr; // reachable: nobody lost it
    pStays = static_cast<GObject*>(g_object_ref(m_pObject.get()));
    ObjectPtr<GObject> pHeld(pStays);
    EXPECT_FALSE(EndAlone(std::move(m_pObject), 1ms));
    std::thread holder([&] { pHeld.reset(); });
    holder.join();
    EXPECT_FALSE(m_endedBy.has_value());
    g_object_weak_unref(pStays, &OnEnd, &m_endedBy);
}

} // namespace
