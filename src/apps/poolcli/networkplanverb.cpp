// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/networkverbs.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"

#include "genapi/exceptions.h"
#include "hostkit/networkplan.h"
#include "parametercollection/parameters.h"

#include <cmath>
#include <memory>
#include <stdexcept>
#include <vector>

namespace PoolCli
{
namespace
{

using ParameterCollection::CFloatParameter;
using ParameterCollection::CIntegerParameter;

constexpr double bitsPerMegabit = 1e6;

/** A camera of the plan, open while it lives. */
struct SPlanEntry
{
    std::unique_ptr<COpenCamera> open;
    HostKit::SPlanCamera needs;
};

/** The cameras of one adapter. */
struct SPlanLink
{
    SAdapterFacts adapter;
    std::vector<SPlanEntry> entries;
};

double frameRateOf(const QSharedPointer<ParameterCollection::IParameterCollection>& collection)
{
    const double resulting = CFloatParameter(collection, QStringLiteral("AcquisitionResultingFrameRate")).valueOr(0.0);
    return resulting > 0.0 ? resulting
                           : CFloatParameter(collection, QStringLiteral("AcquisitionFrameRate")).valueOr(0.0);
}

HostKit::SPlanCamera readNeeds(CSession& session, const HostKit::CameraInfoPtr& camera, const SOptions& options)
{
    const auto collection = session.parameters(camera);
    const QString name = camera->getFriendlyName();
    if (const QString reason = probePacketSize(collection); !reason.isEmpty())
    {
        printError(CTexts::tr("%1: the way to the camera could not be tried: %2").arg(printable(name), reason));
    }
    HostKit::SPlanCamera needs;
    needs.payloadBytes = readInteger(collection, QStringLiteral("@StreamGrabber0/PayloadSize"));
    needs.packetBytes = readInteger(collection, QStringLiteral("GevSCPSPacketSize"), needs.packetBytes);
    needs.linkBitsPerSecond =
        bitsPerMegabit *
        static_cast<double>(readInteger(collection, QStringLiteral("@DeviceTransportLayer/LinkSpeed")));
    const qint64 ticks = readInteger(collection, QStringLiteral("@DeviceTransportLayer/TimestampTickFrequency"));
    needs.ticksPerSecond = ticks > 0 ? ticks : needs.ticksPerSecond;
    needs.framesPerSecond = options.network.frameRate > 0.0 ? options.network.frameRate : frameRateOf(collection);
    if (needs.framesPerSecond <= 0.0)
    {
        throw CRefusal(CTexts::tr("%1 does not tell its frame rate; give it with --rate.").arg(printable(name)));
    }
    const CIntegerParameter delay(collection, QStringLiteral("GevSCPD"));
    if (delay.isWritable())
    {
        needs.mostDelayTicks = delay.maximum();
    }
    return needs;
}

SPlanLink& linkOf(CSession& session, std::vector<SPlanLink>& links, const HostKit::CameraInfoPtr& camera)
{
    const auto info = session.interfaceOf(camera);
    for (SPlanLink& link : links)
    {
        if (link.adapter.id == info->getInterfaceId())
        {
            return link;
        }
    }
    links.push_back({readAdapter(session, info), {}});
    return links.back();
}

/** Cameras that were named must open; of all others, those that refuse are reported and left out. */
std::vector<SPlanLink> collect(CSession& session, const SOptions& options, bool& isAll)
{
    std::vector<SPlanLink> links;
    const auto cameras = session.camerasCalled(options.cameras, options.discoveryTimeoutMs);
    for (const auto& camera : cameras)
    {
        if (!isGigE(*camera))
        {
            if (!options.cameras.isEmpty())
            {
                throw CRefusal(CTexts::tr("%1 is no GigE Vision camera.").arg(camera->getFriendlyName()));
            }
            continue;
        }
        try
        {
            SPlanEntry entry;
            entry.open = std::make_unique<COpenCamera>(session, camera);
            entry.needs = readNeeds(session, camera, options);
            linkOf(session, links, camera).entries.push_back(std::move(entry));
        }
        catch (const CRefusal& refusal)
        {
            if (!options.cameras.isEmpty())
            {
                throw;
            }
            printError(QString::fromUtf8(refusal.what()));
            isAll = false;
        }
    }
    return links;
}

QString megabits(double bitsPerSecond)
{
    return QString::number(bitsPerSecond / bitsPerMegabit, 'f', 1);
}

/** Rounded down, so that what is suggested fits. */
double suggestedRate(const HostKit::SPlannedCamera& planned)
{
    constexpr double tenths = 10.0;
    const double rounded = std::floor(planned.mostFramesPerSecond * tenths) / tenths;
    return rounded > 0.0 ? rounded : planned.mostFramesPerSecond;
}

void apply(CSession& session, const SPlanLink& link, const HostKit::SNetworkPlan& plan)
{
    for (std::size_t i = 0; i < link.entries.size(); ++i)
    {
        const auto& camera = link.entries[i].open->info();
        try
        {
            CIntegerParameter(session.parameters(camera), QStringLiteral("GevSCPD"))
                .setValue(plan.cameras[i].delayTicks);
        }
        catch (const GenICam::GenericException& e)
        {
            throw CRefusal(CTexts::tr("%1: the pause between packets cannot be set: %2")
                               .arg(camera->getFriendlyName(), QString::fromUtf8(e.GetDescription())));
        }
    }
}

void printPlan(const SPlanLink& link, const HostKit::SNetworkPlan& plan, const SOptions& options, double linkBits)
{
    QVector<QVector<QString>> rows{{CTexts::tr("CAMERA"), QStringLiteral("FPS"), CTexts::tr("PACKET"),
                                    QStringLiteral("MBIT/S"), CTexts::tr("LINK %"), CTexts::tr("PAUSE"),
                                    CTexts::tr("TICKS")}};
    constexpr double percent = 100.0;
    constexpr double microseconds = 1e6;
    for (std::size_t i = 0; i < link.entries.size(); ++i)
    {
        const SPlanEntry& entry = link.entries[i];
        const HostKit::SPlannedCamera& planned = plan.cameras[i];
        rows.append({printable(entry.open->info()->getFriendlyName()),
                     QString::number(entry.needs.framesPerSecond, 'f', 1), QString::number(entry.needs.packetBytes),
                     megabits(planned.bitsPerSecond), QString::number(percent * planned.shareOfLink, 'f', 1),
                     QStringLiteral("%1 us").arg(planned.delaySeconds * microseconds, 0, 'f', 1),
                     QString::number(planned.delayTicks)});
    }
    printTable(rows);
    printLine(CTexts::tr("%1: %2 of %3 Mbit/s (%4 %), of which %5 % are kept free")
                  .arg(printable(link.adapter.id), megabits(plan.neededBitsPerSecond), megabits(linkBits))
                  .arg(percent * plan.neededBitsPerSecond / linkBits, 0, 'f', 1)
                  .arg(options.network.reservePercent, 0, 'f', 0));
    if (plan.isFitting)
    {
        printLine(options.network.isToApply ? CTexts::tr("Everything fits; the pauses are set.")
                                            : CTexts::tr("Everything fits; --apply sets the pauses."));
    }
}

/** On stderr, also with --json. */
void printShortage(const SPlanLink& link, const HostKit::SNetworkPlan& plan)
{
    if (plan.neededBitsPerSecond > plan.usableBitsPerSecond)
    {
        printError(CTexts::tr("The cameras on %1 need %2 Mbit/s, but only %3 can be used: images will be lost. Lower "
                              "the frame rates, make the images smaller, or use another adapter for some cameras.")
                       .arg(printable(link.adapter.id), megabits(plan.neededBitsPerSecond),
                            megabits(plan.usableBitsPerSecond)));
    }
    for (std::size_t i = 0; i < link.entries.size(); ++i)
    {
        if (!plan.cameras[i].isFitting)
        {
            printError(CTexts::tr("%1: lower the frame rate from %2 to %3")
                           .arg(printable(link.entries[i].open->info()->getFriendlyName()))
                           .arg(link.entries[i].needs.framesPerSecond, 0, 'f', 1)
                           .arg(suggestedRate(plan.cameras[i])));
        }
    }
}

QJsonObject describe(const SPlanLink& link, const HostKit::SNetworkPlan& plan, const SOptions& options, double linkBits)
{
    QJsonArray cameras;
    for (std::size_t i = 0; i < link.entries.size(); ++i)
    {
        const SPlanEntry& entry = link.entries[i];
        const HostKit::SPlannedCamera& planned = plan.cameras[i];
        cameras.append(
            QJsonObject{{"camera", entry.open->info()->getFriendlyName()},
                        {"full_name", entry.open->info()->getFullName()},
                        {"payload_bytes", static_cast<qint64>(entry.needs.payloadBytes)},
                        {"fps", entry.needs.framesPerSecond},
                        {"packet_bytes", static_cast<qint64>(entry.needs.packetBytes)},
                        {"bits_per_second", planned.bitsPerSecond},
                        {"share_of_link", planned.shareOfLink},
                        {"delay_ticks", static_cast<qint64>(planned.delayTicks)},
                        {"delay_us", planned.delaySeconds * 1e6},
                        {"fits", planned.isFitting},
                        {"most_fps", planned.isFitting ? entry.needs.framesPerSecond : suggestedRate(planned)}});
    }
    return {{"adapter", link.adapter.id},
            {"link_bits_per_second", linkBits},
            {"usable_bits_per_second", plan.usableBitsPerSecond},
            {"needed_bits_per_second", plan.neededBitsPerSecond},
            {"fits", plan.isFitting},
            {"applied", options.network.isToApply && plan.isFitting},
            {"cameras", cameras}};
}

HostKit::SNetworkPlan makePlan(const SPlanLink& link, double linkBits, const SOptions& options)
{
    constexpr double percent = 100.0;
    std::vector<HostKit::SPlanCamera> needs;
    for (const SPlanEntry& entry : link.entries)
    {
        needs.push_back(entry.needs);
    }
    try
    {
        return HostKit::planNetwork(linkBits, options.network.reservePercent / percent, needs);
    }
    catch (const std::invalid_argument& e)
    {
        throw CRefusal(CTexts::tr("There is no plan for %1: %2").arg(link.adapter.id, QString::fromUtf8(e.what())));
    }
}

double linkSpeedOf(const SPlanLink& link, const SOptions& options)
{
    const double megabitsPerSecond = options.network.linkMegabits > 0.0
                                         ? options.network.linkMegabits
                                         : static_cast<double>(link.adapter.linkMegabits);
    if (megabitsPerSecond <= 0.0)
    {
        throw CRefusal(CTexts::tr("The link speed of %1 is not known; give it with --link-speed.")
                           .arg(printable(link.adapter.id)));
    }
    return megabitsPerSecond * bitsPerMegabit;
}

} // namespace

int runNetworkPlan(CSession& session, const SOptions& options)
{
    bool isAll = true;
    const std::vector<SPlanLink> links = collect(session, options, isAll);
    if (links.empty())
    {
        throw CRefusal(CTexts::tr("There is no GigE Vision camera to plan for."));
    }
    QJsonArray array;
    bool isFitting = true;
    for (const SPlanLink& link : links)
    {
        const double linkBits = linkSpeedOf(link, options);
        const HostKit::SNetworkPlan plan = makePlan(link, linkBits, options);
        // A plan that does not work is not set: with its pauses, cameras would no longer reach their rates.
        if (options.network.isToApply && plan.isFitting)
        {
            apply(session, link, plan);
        }
        array.append(describe(link, plan, options, linkBits));
        if (!options.json)
        {
            printPlan(link, plan, options, linkBits);
        }
        printShortage(link, plan);
        isFitting = isFitting && plan.isFitting;
    }
    if (options.json)
    {
        printJson(array);
    }
    return isFitting && isAll ? ExitDone : ExitRefused;
}

} // namespace PoolCli
