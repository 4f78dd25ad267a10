// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/statusservice.h"
#include "unit/common/plugins/camerapool/testing/baresignals.h"
#include "unit/common/plugins/camerapool/testing/grabbedimages.h"
#include "unit/common/plugins/camerapool/testing/poolfixture.h"

#include <atomic>
#include <cstdlib>
#include <thread>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define COUNT_BY_SANITIZER_HOOKS
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*malloc_hook)(const volatile void*, std::size_t),
                                                         void (*free_hook)(const volatile void*));
#endif

namespace
{

std::atomic<long> s_allocations{0};

} // namespace

#ifdef COUNT_BY_SANITIZER_HOOKS
namespace
{

void onMalloc(const volatile void* /*pMemory*/, std::size_t /*bytes*/)
{
    s_allocations.fetch_add(1, std::memory_order_relaxed);
}
void onFree(const volatile void* /*pMemory*/) {}
const int s_installed = __sanitizer_install_malloc_and_free_hooks(&onMalloc, &onFree);

} // namespace
#else
// glibc's own name. NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" void* __libc_malloc(std::size_t bytes);

/** Takes the place of the library's for this program; operator new comes here too. */
extern "C" __attribute__((visibility("default"))) void* malloc(std::size_t bytes)
{
    s_allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(bytes);
}
#endif

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

namespace
{

class CameraPoolRelayCost : public ::Test::PoolFixture
{
protected:
    /** Allocations of that many images: emitted by a thread of its own, delivered on this one. */
    template <class EmitImage, class Delivered>
    static long allocationsOf(int images, EmitImage emitImage, Delivered delivered)
    {
        const long before = s_allocations.load();
        std::thread grabThread(
            [&]
            {
                for (int i = 1; i <= images; ++i)
                {
                    emitImage(i);
                }
            });
        grabThread.join();
        EXPECT_TRUE(::Test::waitUntil([&] { return delivered() == images; }));
        return s_allocations.load() - before;
    }
    /** Per image, what a run costs whatever its length taken out. */
    template <class Run> static double perImage(Run run)
    {
        constexpr int few = 500;
        constexpr int many = 4500;
        run(few);
        const long atFirst = run(few);
        return static_cast<double>(run(many) - atFirst) / (many - few);
    }
};

TEST_F(CameraPoolRelayCost, countingSeesAllocations)
{
    const long before = s_allocations.load();
    const auto pNumber = std::make_unique<QByteArray>(100, 'x');
    EXPECT_GE(s_allocations.load() - before, 2);
}

TEST_F(CameraPoolRelayCost, callbackAllocatesNothingOfItsOwn)
{
    CCamera camera(m_info, nullptr); // nobody receives its signals
    const ::Test::CImageRing images;
    ::Test::CGrabCalls calls(camera);
    calls.grabStart();
    const auto allocationsFor = [&](int count)
    {
        return allocationsOf(
            count, [&](int i) { calls.imageGrabbed(images.image(i)); }, [count] { return count; });
    };
    allocationsFor(1); // what the first thread of a process costs
    const long ofOne = allocationsFor(1);
    EXPECT_EQ(0, allocationsFor(1001) - ofOne);
}

TEST_F(CameraPoolRelayCost, anImageCostsAtMostOneAllocationMoreThanItsBareSignals)
{
    const ::Test::CImageRing images;
    const double bare = perImage(
        [&images](int count)
        {
            ::Test::CBareSender sender;
            const ::Test::CBareReceiver receiver(sender);
            return allocationsOf(
                count,
                [&](int i)
                {
                    emit sender.statistic(i, 0, 30.0, 1000, CCompressionStatistic());
                    emit sender.image(images.image(i));
                    emit sender.timeout(i);
                },
                [&] { return receiver.timeouts; });
        });
    const auto camera = qSharedPointerObjectCast<CCamera>(m_pool->findDevice(m_info));
    const CStatusService status(m_pool.get(), nullptr, nullptr);
    ::Test::CGrabCalls calls(*camera);
    calls.grabStart();
    const double relayed = perImage(
        [&](int count)
        {
            int statistics = 0;
            int arrived = 0;
            QObject consumer;
            QObject::connect(&status, &ICameraStatusService::cameraStatisticUpdated, &consumer, [&] { ++statistics; });
            QObject::connect(&status, &ICameraStatusService::cameraImageGrabbed, &consumer, [&] { ++arrived; });
            const long allocations = allocationsOf(
                count, [&](int i) { calls.imageGrabbed(images.image(i)); }, [&] { return arrived; });
            EXPECT_EQ(statistics, count);
            return allocations;
        });
    RecordProperty("bare_allocations_per_image", std::to_string(bare));
    RecordProperty("relayed_allocations_per_image", std::to_string(relayed));
    EXPECT_GE(bare, 3.0);
    EXPECT_LE(relayed, bare + 1.0) << "bare: " << bare;
}

} // namespace
