// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/sdk/genapi/nodemapfixture.h"

#include <atomic>
#include <thread>
#include <vector>

namespace GenApi
{
namespace
{

class NodeMapThreads : public CNodeMapTest
{
};

TEST_F(NodeMapThreads, gettersAndSettersOfManyThreadsSeeWholeValues)
{
    Load("<Integer Name=\"A\"><pValue>R</pValue></Integer>"
         "<IntSwissKnife Name=\"K\"><pVariable Name=\"X\">A</pVariable><Formula>X * 3</Formula></IntSwissKnife>" +
         IntReg("R", 0));
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
    {
        threads.emplace_back(
            [&, t]
            {
                for (int i = 0; i < 300; ++i)
                {
                    if (t % 2 == 0)
                    {
                        Integer("A").SetValue(i % 2 == 0 ? 0x01010101 : 0x02020202);
                    }
                    const std::int64_t value = Integer("K").GetValue();
                    failures += value == 0 || value == 0x03030303 || value == 0x06060606 ? 0 : 1;
                }
            });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(failures, 0);
}

TEST_F(NodeMapThreads, theLockHoldsSeveralAccessesTogether)
{
    Load("<Integer Name=\"A\"><Value>0</Value></Integer><Integer Name=\"B\"><Value>0</Value></Integer>");
    std::thread writer(
        [this]
        {
            for (int i = 1; i <= 300; ++i)
            {
                const std::lock_guard<std::recursive_mutex> lock(m_map->GetLock());
                Integer("A").SetValue(i);
                Integer("B").SetValue(i);
            }
        });
    int differences = 0;
    for (int i = 0; i < 300; ++i)
    {
        const std::lock_guard<std::recursive_mutex> lock(m_map->GetLock());
        differences += Integer("A").GetValue() == Integer("B").GetValue() ? 0 : 1;
    }
    writer.join();
    EXPECT_EQ(differences, 0);
}

TEST_F(NodeMapThreads, aDeregisteredCallbackDoesNotRunAnyMore)
{
    Load("<Integer Name=\"A\"><Value>0</Value></Integer>");
    std::atomic<bool> isStopped{false};
    std::thread writer(
        [&]
        {
            for (int i = 0; !isStopped; ++i)
            {
                Integer("A").SetValue(i);
            }
        });
    for (int i = 0; i < 200; ++i)
    {
        auto counter = std::make_unique<int>(0);
        int* const raw = counter.get();
        const CallbackHandle handle = Get<INode>("A").RegisterCallback([raw](INode*) { ++*raw; });
        Get<INode>("A").DeregisterCallback(handle);
        counter.reset(); // a callback still running would write to freed memory
    }
    isStopped = true;
    writer.join();
}

} // namespace
} // namespace GenApi
