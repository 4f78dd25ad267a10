// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// The way of an image from the SDK's callback, on the grab thread, to those who listen to the status service, on the
// main thread, against the same three queued signals bare. Prints one row per figure; medians of the runs.
// Usage: camerapool_relaybench [runs]

#include "barechain.h"
#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/camerapool.h"
#include "camerapool/internal/statusservice.h"
#include "imageway.h"
#include "support/figures.h"
#include "unit/common/plugins/camerapool/testing/baresignals.h"
#include "unit/common/plugins/camerapool/testing/grabbedimages.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

namespace
{

using Benchmarks::SWay;
using EGoal = Benchmarks::CFigures::EGoal;

QSharedPointer<CCameraInfo> cameraRecord(int index)
{
    Velmo::CDeviceInfo info;
    info.SetFullName("bench/" + std::to_string(index));
    return CCameraInfo::fromDeviceInfo(info);
}

/** Compares ways for an image with the bare signals, in turns, so that all meet the same disturbances. */
class CComparison
{
public:
    CComparison(Benchmarks::CFigures& figures, SWay bare, int runs)
        : m_figures(figures), m_bare(std::move(bare)), m_runs(runs)
    {
    }

    void throughput(const std::string& name, const SWay& way, bool hasGoals) const
    {
        std::vector<double> rates[2];
        std::vector<double> costs[2];
        std::vector<double> grabCosts[2];
        std::vector<double> allocations[2];
        for (int i = 0; i < 2 * m_runs; ++i)
        {
            const Benchmarks::SThroughput result = measureThroughput(i % 2 == 0 ? m_bare : way);
            rates[i % 2].push_back(result.imagesPerSecond);
            costs[i % 2].push_back(result.cpuMicrosecondsPerImage);
            grabCosts[i % 2].push_back(result.grabMicrosecondsPerImage);
            allocations[i % 2].push_back(result.allocationsPerImage);
        }
        add("throughput, " + name, "images/s", rates, hasGoals ? EGoal::AtLeast : EGoal::None, 0.95);
        add("processor time of an image, " + name, "us", costs);
        add("of which on the grab thread, " + name, "us", grabCosts);
        addDifference("processor time added to an image, " + name, "us", costs, hasGoals, 20);
        add("allocations of an image, " + name, "", allocations);
        addDifference("allocations added to an image, " + name, "", allocations, hasGoals, 1);
    }

    void latencies(const std::string& name, const SWay& way, bool hasGoals) const
    {
        for (const int imagesPerSecond : {1000, 5000})
        {
            latency(name, way, imagesPerSecond, hasGoals);
        }
    }

private:
    void latency(const std::string& name, const SWay& way, int imagesPerSecond, bool hasGoals) const
    {
        std::vector<double> p50[2];
        std::vector<double> p99[2];
        for (int run = 0; run < m_runs; ++run)
        {
            const auto results = Benchmarks::measureLatencies({m_bare, way}, imagesPerSecond);
            for (std::size_t i = 0; i < results.size(); ++i)
            {
                p50[i].push_back(results[i].p50Us);
                p99[i].push_back(results[i].p99Us);
            }
        }
        const std::string at = " at " + std::to_string(imagesPerSecond) + "/s, " + name;
        add("latency p50" + at, "us", p50, hasGoals ? EGoal::AtMost : EGoal::None, 1.2);
        add("latency p99" + at, "us", p99, hasGoals ? EGoal::AtMost : EGoal::None, 2.0);
    }

    /** The bare signals' values come first. */
    void add(const std::string& what, const std::string& unit, const std::vector<double> (&values)[2],
             EGoal goal = EGoal::None, double goalValue = 0) const
    {
        m_figures.add({what, Benchmarks::median(values[1]), unit, "bare signals", Benchmarks::median(values[0]), goal,
                       goalValue});
    }
    void addDifference(const std::string& what, const std::string& unit, const std::vector<double> (&values)[2],
                       bool hasGoal, double atMost) const
    {
        m_figures.add({what, Benchmarks::median(values[1]) - Benchmarks::median(values[0]), unit, "", 0,
                       hasGoal ? EGoal::AtMost : EGoal::None, atMost, false});
    }

    Benchmarks::CFigures& m_figures;
    SWay m_bare;
    int m_runs;
};

/** The three signals of an image from a bare object to slots that do next to nothing. */
class CBareWay
{
public:
    explicit CBareWay(const ::Test::CImageRing& images) : m_images(images)
    {
        using ::Test::CBareSender;
        QObject::connect(
            &m_sender, &CBareSender::statistic, &m_context, [this](int number) { m_number = number; },
            Qt::QueuedConnection);
        QObject::connect(
            &m_sender, &CBareSender::image, &m_context, [this] { m_arrived(); }, Qt::QueuedConnection);
        QObject::connect(
            &m_sender, &CBareSender::timeout, &m_context, [](int64_t) {}, Qt::QueuedConnection);
    }

    SWay way()
    {
        return {[this](int number)
                {
                    emit m_sender.statistic(number, 0, 30.0, 1000, CCompressionStatistic());
                    emit m_sender.image(m_images.image(number));
                    emit m_sender.timeout(number);
                },
                [this](std::function<void()> arrived)
                {
                    m_arrived = std::move(arrived);
                }};
    }

private:
    const ::Test::CImageRing& m_images;
    ::Test::CBareSender m_sender;
    QObject m_context;
    int m_number = 0;
    std::function<void()> m_arrived;
};

/** A hop of the pool's kind and one of the status service's, neither doing anything. */
class CHopsWay
{
public:
    explicit CHopsWay(const ::Test::CImageRing& images) : m_images(images), m_chain(m_start, m_service, cameraRecord(0))
    {
        using Benchmarks::CBareService;
        QObject::connect(&m_service, &CBareService::statistic, &m_service,
                         [this](const auto&, int number) { m_number = number; });
        QObject::connect(&m_service, &CBareService::image, &m_service, [this] { m_arrived(); });
    }

    SWay way()
    {
        return {[this](int number)
                {
                    emit m_start.statistic(number, 0, 30.0, 1000, CCompressionStatistic());
                    emit m_start.image(m_images.image(number));
                    emit m_start.timeout(number);
                },
                [this](std::function<void()> arrived)
                {
                    m_arrived = std::move(arrived);
                }};
    }

private:
    const ::Test::CImageRing& m_images;
    ::Test::CBareSender m_start;
    Benchmarks::CBareService m_service;
    Benchmarks::CBareChain m_chain;
    int m_number = 0;
    std::function<void()> m_arrived;
};

/** The pool with that many cameras and the status service; the first camera sends. */
class CRelay
{
public:
    CRelay(const ::Test::CImageRing& images, int cameras)
        : m_images(images), m_pool(nullptr), m_status(&m_pool, nullptr, nullptr)
    {
        for (int i = 0; i < cameras; ++i)
        {
            m_pool.announceDevice(cameraRecord(i));
        }
        m_camera = qSharedPointerObjectCast<CCamera>(m_pool.findDevice(cameraRecord(0)));
        m_pCalls = std::make_unique<::Test::CGrabCalls>(*m_camera);
        m_pCalls->grabStart();
        QObject::connect(&m_status, &ICameraStatusService::cameraStatisticUpdated, &m_status,
                         [this](const CameraInfoPtr&, int number) { m_number = number; });
        QObject::connect(&m_status, &ICameraStatusService::cameraImageGrabbed, &m_status, [this] { m_arrived(); });
    }
    ~CRelay() { QCoreApplication::removePostedEvents(m_camera.data()); }
    CRelay(const CRelay&) = delete;
    CRelay& operator=(const CRelay&) = delete;

    /** As the instant camera calls the camera: samples, compression, statistics, three signals. */
    SWay fromCallback()
    {
        return {[this](int number) { m_pCalls->imageGrabbed(m_images.image(number)); }, arrivals()};
    }
    /** The three signals alone. */
    SWay fromSignals()
    {
        return {[this](int number)
                {
                    emit m_camera->cameraStatisticChanged(number, 0, 30.0, 1000, CCompressionStatistic());
                    emit m_camera->cameraImageGrabbed(m_images.image(number));
                    emit m_camera->invokeTimeout(number);
                },
                arrivals()};
    }

private:
    std::function<void(std::function<void()>)> arrivals()
    {
        return [this](std::function<void()> arrived)
        {
            m_arrived = std::move(arrived);
        };
    }

    const ::Test::CImageRing& m_images;
    CCameraPool m_pool;
    CStatusService m_status;
    QSharedPointer<CCamera> m_camera;
    std::unique_ptr<::Test::CGrabCalls> m_pCalls;
    int m_number = 0;
    std::function<void()> m_arrived;
};

/** What the callback costs before anybody gets a signal. */
void reportCallback(Benchmarks::CFigures& figures, const ::Test::CImageRing& images, int runs)
{
    CCamera camera(cameraRecord(0), nullptr);
    ::Test::CGrabCalls calls(camera);
    calls.grabStart();
    std::vector<double> costs;
    for (int i = 0; i < runs; ++i)
    {
        costs.push_back(Benchmarks::measureSending([&](int number) { calls.imageGrabbed(images.image(number)); }));
    }
    figures.add({"the callback without receivers of its signals", Benchmarks::median(costs), "us", "", 0});
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(argc, argv);
    // Cameras keep settings; not among the user's.
    const QTemporaryDir settings;
    QCoreApplication::setOrganizationName(QStringLiteral("CameraPool"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;

    const ::Test::CImageRing images;
    CBareWay bare(images);
    Benchmarks::CFigures figures("From the SDK's callback to the status service's signals");
    const CComparison comparison(figures, bare.way(), runs);
    reportCallback(figures, images, runs);
    {
        CHopsWay hops(images);
        comparison.throughput("the same hops doing nothing", hops.way(), false);
        comparison.latencies("the same hops doing nothing", hops.way(), false);
    }
    for (const int cameras : {1, 50})
    {
        CRelay relay(images, cameras);
        const std::string name = "one of " + std::to_string(cameras);
        comparison.throughput(name + " from its signals on", relay.fromSignals(), false);
        comparison.throughput(name, relay.fromCallback(), true);
        comparison.latencies(name, relay.fromCallback(), true);
    }
    return 0;
}
