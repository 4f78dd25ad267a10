// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// What an enumeration pass costs with many cameras: records, look-ups, and announcing to a pool.

#include "camerapool/camerainfolist.h"
#include "camerapool/internal/cameraenumerationservice.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/transportlayerlist.h"
#include "listtransport.h"
#include "support/figures.h"
#include "trivialpool.h"

#include <QCoreApplication>
#include <QHash>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <random>
#include <string>

namespace
{

using namespace Benchmarks;
using Plugin::CameraPool::CCameraInfoList;
using Plugin::CameraPool::CTransportLayerList;
using Plugin::CameraPool::Internal::CCameraEnumerationService;
using Plugin::CameraPool::Internal::CCameraInfo;
using Plugin::CameraPool::Internal::CCameraPool;

constexpr int Sizes[] = {10, 100, 1000, 10000};
constexpr int MostDevices = 10000;
constexpr int LeastRuns = 7;
constexpr int DevicesPerMeasurement = 40000;

int runsFor(int count)
{
    return std::max(LeastRuns, DevicesPerMeasurement / count);
}

/** Median microseconds per device; the two works take turns, so that both meet the same disturbances. */
std::pair<double, double> paired(int count, const std::function<void()>& measured, const std::function<void()>& bound)
{
    std::vector<double> first;
    std::vector<double> second;
    for (int i = 0; i < runsFor(count); ++i)
    {
        first.push_back(costMicroseconds(measured) / count);
        second.push_back(costMicroseconds(bound) / count);
    }
    return {median(first), median(second)};
}

std::string of(int count)
{
    return ", " + std::to_string(count) + " cameras";
}

void announce(CTrivialPool& pool, const CTransportLayerList& list)
{
    pool.beginAnnounce();
    for (const auto& tl : list)
    {
        pool.announceDevices(tl->getCameraInfoList().toBaseInfoVector());
    }
    pool.endAnnounce();
}

double reportPass(CFigures& figures, CListSdk& sdk, int count)
{
    const auto devices = makeDevices("pass" + std::to_string(count), count);
    sdk.transport().setDevices(devices);
    CTrivialPool pool;
    CTransportLayerList list;
    const auto pass = [&]
    {
        CTransportLayerList::refreshTransportLayerList(list, false, false, true);
        announce(pool, list);
    };
    const auto copy = [&]
    {
        // The copy is what is measured. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        auto copied = devices;
        keep(copied.size());
    };
    const double first = costMicroseconds(pass) / count;
    figures.add({"first pass and announce" + of(count), first, "us/camera", "", 0});
    const auto [whole, bare] = paired(count, pass, copy);
    figures.add({"unchanged pass and announce" + of(count), whole, "us/camera", "copying the SDK's list", bare});
    const auto [announced, unused] = paired(
        count, [&] { announce(pool, list); }, copy);
    static_cast<void>(unused);
    figures.add({"of which announcing" + of(count), announced, "us/camera", "", 0});
    sdk.transport().setDevices({});
    return whole;
}

/** The list made of records found by a bare hash of the names, in place of the records' own way of finding them. */
std::size_t findBare(Velmo::DeviceInfoList devices, const QHash<QString, int>& positions)
{
    std::size_t sum = 0;
    for (const auto& info : devices)
    {
        sum += static_cast<std::size_t>(positions.value(CCameraInfo::qString(info.GetFullName()), -1));
    }
    return sum;
}

void reportRecordLookUps(CFigures& figures, int count, bool sameOrder)
{
    const auto devices = makeDevices("find" + std::to_string(count), count);
    bool changed = false;
    const auto known = CCameraInfoList::fromDeviceInfoList(devices, changed);
    QHash<QString, int> positions;
    for (int i = 0; i < known.size(); ++i)
    {
        positions.insert(known.at(i)->getFullName(), i);
    }
    auto asked = devices;
    if (!sameOrder)
    {
        std::shuffle(asked.begin(), asked.end(), std::mt19937(1));
    }
    // Both take a list by value, so both pay for the copy and for letting it go; that is taken off again.
    std::vector<double> found;
    std::vector<double> bare;
    for (int i = 0; i < runsFor(count); ++i)
    {
        auto first = asked;
        auto second = asked;
        found.push_back(costMicroseconds(
                            [&] {
                                keep(static_cast<std::size_t>(
                                    CCameraInfoList::fromDeviceInfoList(std::move(first), changed).size()));
                            }) /
                        count);
        bare.push_back(costMicroseconds([&] { keep(findBare(std::move(second), positions)); }) / count);
    }
    CFigures::SRow row{"records of known cameras, " + std::string(sameOrder ? "same" : "another") + " order" +
                           of(count),
                       median(found), "us/camera", "bare hash of the names", median(bare)};
    if (count == MostDevices && sameOrder)
    {
        row.goal = CFigures::EGoal::AtMost;
        row.goalValue = 1.5;
    }
    figures.add(row);
}

/** The pool is asked with the records that it was told, or with others of the same names. */
void reportPoolLookUps(CFigures& figures, int count, bool ownRecords)
{
    const auto devices = makeDevices("pool" + std::to_string(count), count);
    bool changed = false;
    const auto infos = CCameraInfoList::fromDeviceInfoList(devices, changed).toBaseInfoVector();
    CTrivialPool pool;
    pool.announceDevices(infos);
    QHash<QString, QSharedPointer<Plugin::CameraPool::IDevice>> bareHash;
    for (const auto& info : infos)
    {
        bareHash.insert(info->getFullName(), pool.findDevice(info));
    }
    auto asked = infos;
    for (int i = 0; i < count && !ownRecords; ++i)
    {
        asked[i] = CCameraInfo::fromDeviceInfo(devices[static_cast<std::size_t>(i)]);
    }
    std::shuffle(asked.begin(), asked.end(), std::mt19937(1));
    const auto [found, bare] = paired(
        count,
        [&]
        {
            std::size_t sum = 0;
            for (const auto& info : qAsConst(asked))
            {
                sum += pool.findDevice(info) ? 1 : 0;
            }
            keep(sum);
        },
        [&]
        {
            std::size_t sum = 0;
            for (const auto& info : qAsConst(asked))
            {
                sum += bareHash.value(info->getFullName()) ? 1 : 0;
            }
            keep(sum);
        });
    CFigures::SRow row{"look-ups of devices in a pool" + std::string(ownRecords ? "" : " by other records") + of(count),
                       found, "us/camera", "bare hash of the names", bare};
    if (count == MostDevices && ownRecords)
    {
        row.goal = CFigures::EGoal::AtMost;
        row.goalValue = 1.5;
    }
    figures.add(row);
}

/** Cameras as the plugin makes them: what the main thread pays for one that comes or goes. */
void reportRealCameras(CFigures& figures, CListSdk& sdk, int count)
{
    sdk.transport().setDevices(makeDevices("real" + std::to_string(count), count));
    CTransportLayerList list;
    CTransportLayerList::refreshTransportLayerList(list, false, false, false);
    CCameraPool pool(nullptr);
    CCameraEnumerationService service(&pool, nullptr);
    const double created = costMicroseconds([&] { service.onEnumerationFinished(list); }) / count;
    figures.add({"making a camera" + of(count), created, "us/camera", "", 0});
    std::vector<double> unchanged;
    for (int i = 0; i < LeastRuns; ++i)
    {
        CTransportLayerList::refreshTransportLayerList(list, false, false, false);
        unchanged.push_back(costMicroseconds([&] { service.onEnumerationFinished(list); }));
    }
    figures.add({"stall of the main loop by an unchanged pass" + of(count), median(unchanged) / 1000, "ms", "", 0,
                 CFigures::EGoal::AtMost, 1.0, false});
    sdk.transport().setDevices({});
    CTransportLayerList::refreshTransportLayerList(list, false, false, false);
    const double removed = costMicroseconds(
        [&]
        {
            service.onEnumerationFinished(list);
            QCoreApplication::sendPostedEvents(&pool);
        });
    figures.add({"disposing of a camera" + of(count), removed / count, "us/camera", "", 0});
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(argc, argv);
    // Cameras keep settings; not among the user's.
    const QTemporaryDir settings;
    QCoreApplication::setOrganizationName(QStringLiteral("CameraPool"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    CListSdk sdk;
    CFigures figures("Enumeration with many cameras");
    double at100 = 0;
    double atMost = 0;
    for (const int count : Sizes)
    {
        const double whole = reportPass(figures, sdk, count);
        at100 = count == 100 ? whole : at100;
        atMost = whole;
    }
    figures.add({"a pass per camera, 10000 cameras", atMost, "us/camera", "the same with 100", at100,
                 CFigures::EGoal::AtMost, 3.0});
    for (const int count : Sizes)
    {
        reportRecordLookUps(figures, count, true);
        reportRecordLookUps(figures, count, false);
        reportPoolLookUps(figures, count, true);
        reportPoolLookUps(figures, count, false);
    }
    for (const int count : Sizes)
    {
        reportRealCameras(figures, sdk, count);
    }
    return 0;
}
