// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/grabsession.h"
#include "poolcli/networkverbs.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"

#include "hostkit/networkcheck.h"
#include "parametercollection/parameters.h"
#include "transport/infos.h"

#include <memory>

namespace PoolCli
{
namespace
{

using HostKit::SNetworkFacts;

QString property(const HostKit::CameraInfoPtr& camera, const char* key)
{
    return QString::fromUtf8(camera->getVelmoDeviceInfo().Get(key).c_str());
}

/** Told while it happens, but not among JSON. */
void progress(const SOptions& options, const QString& text)
{
    if (!options.json)
    {
        printLine(text);
    }
}

SNetworkFacts readRecord(CSession& session, const HostKit::CameraInfoPtr& camera)
{
    SNetworkFacts facts;
    facts.address = property(camera, Velmo::Key::IpAddress);
    facts.subnetMask = property(camera, Velmo::Key::SubnetMask);
    facts.accessStatus = property(camera, Velmo::Key::AccessStatus);
    const SAdapterFacts adapter = readAdapter(session, session.interfaceOf(camera));
    facts.adapter = adapter.id;
    facts.adapterAddress = adapter.address;
    facts.adapterMask = adapter.mask;
    facts.mtu = adapter.mtu;
    return facts;
}

std::unique_ptr<COpenCamera> tryOpen(CSession& session, const HostKit::CameraInfoPtr& camera, SNetworkFacts& facts)
{
    try
    {
        auto open = std::make_unique<COpenCamera>(session, camera);
        facts.isOpen = true;
        return open;
    }
    catch (const CRefusal& refusal)
    {
        const QString reason = camera->errorString();
        facts.openError = reason.isEmpty() ? QString::fromUtf8(refusal.what()) : reason;
    }
    return nullptr;
}

void tryPath(CSession& session, const HostKit::CameraInfoPtr& camera, const SOptions& options, SNetworkFacts& facts)
{
    const auto collection = session.parameters(camera);
    progress(options, CTexts::tr("Trying the way to the camera with test packets ..."));
    if (const QString reason = probePacketSize(collection); !reason.isEmpty())
    {
        printError(CTexts::tr("%1: the way to the camera could not be tried: %2")
                       .arg(printable(camera->getFriendlyName()), reason));
    }
    const QString origin =
        ParameterCollection::CEnumParameter(collection, QStringLiteral("@StreamGrabber0/PacketSizeOrigin")).valueOr({});
    facts.isTested = origin != QLatin1String("Camera");
    facts.isUsersSize = origin == QLatin1String("User");
    facts.pathBytes = readInteger(collection, QStringLiteral("@StreamGrabber0/PathPacketSize"));
    facts.packetBytes = readInteger(collection, QStringLiteral("@StreamGrabber0/NegotiatedPacketSize"));
    facts.isTriggered = ParameterCollection::CEnumParameter(collection, QStringLiteral("TriggerMode")).valueOr({}) ==
                        QLatin1String("On");
    if (facts.pathBytes > 0)
    {
        progress(options,
                 CTexts::tr("Packets of up to %1 bytes arrive; the camera sends %2 (the adapter's limit is %3).")
                     .arg(facts.pathBytes)
                     .arg(facts.packetBytes)
                     .arg(facts.mtu));
    }
    else if (facts.isTested)
    {
        progress(options, CTexts::tr("No test packet arrives."));
    }
}

void tryGrab(CSession& session, const HostKit::CameraInfoPtr& camera, const SOptions& options, SNetworkFacts& facts)
{
    SOptions grabOptions = options;
    constexpr int defaultMs = 2000;
    grabOptions.durationMs = options.durationMs > 0 ? options.durationMs : defaultMs;
    constexpr double millisecondsPerSecond = 1000.0;
    progress(options, CTexts::tr("Grabbing for %1 s ...").arg(grabOptions.durationMs / millisecondsPerSecond));
    CGrabSession grab(session, {camera}, grabOptions);
    grab.setImageObserver([](const Velmo::CGrabResultPtr&) {}); // no live lines
    grab.run();
    const SGrabCount& count = grab.counts().first();
    facts.images = count.images;
    facts.failed = count.failed;
    facts.isConnectionLost = count.lost;
    facts.grabError = count.isRefused ? count.refusal : QString();
    // Whoever ends it early has not seen that nothing comes.
    facts.hasGrabbed = count.images > 0 || !session.isToEnd();
    if (count.lost)
    {
        return; // and so are its parameters
    }
    const auto collection = session.parameters(camera);
    facts.bufferBytes = readInteger(collection, QStringLiteral("@StreamGrabber0/ReceiveBufferSize"));
    facts.bufferWanted = readInteger(collection, QStringLiteral("@StreamGrabber0/ReceiveBufferWanted"));
}

QJsonObject describe(const HostKit::CameraInfoPtr& camera, const SNetworkFacts& facts,
                     const QVector<HostKit::SNetworkFinding>& findings, bool isEndedEarly)
{
    QJsonArray array;
    for (const auto& finding : findings)
    {
        array.append(QJsonObject{{"id", finding.id}, {"stops_images", finding.isStop}, {"text", finding.text}});
    }
    return {{"camera", camera->getFriendlyName()},
            {"full_name", camera->getFullName()},
            {"address", facts.address},
            {"adapter", facts.adapter},
            {"mtu", facts.mtu},
            {"packet_bytes", facts.packetBytes},
            {"path_bytes", facts.pathBytes},
            {"receive_buffer", facts.bufferBytes},
            {"receive_buffer_wanted", facts.bufferWanted},
            {"images", facts.images},
            {"failed", facts.failed},
            {"ended_early", isEndedEarly},
            {"findings", array}};
}

} // namespace

int runNetworkCheck(CSession& session, const SOptions& options)
{
    const auto camera = session.camera(options.cameras.value(0), options.discoveryTimeoutMs);
    if (!isGigE(*camera))
    {
        throw CRefusal(CTexts::tr("%1 is no GigE Vision camera.").arg(camera->getFriendlyName()));
    }
    SNetworkFacts facts = readRecord(session, camera);
    progress(options, CTexts::tr("Opening %1 at %2 through %3 ...")
                          .arg(printable(camera->getFriendlyName()), facts.address, printable(facts.adapter)));
    {
        const auto open = tryOpen(session, camera, facts);
        if (open != nullptr)
        {
            applySettings(session, camera, options);
        }
        if (open != nullptr && !session.isToEnd())
        {
            tryPath(session, camera, options, facts);
        }
        if (open != nullptr && !session.isToEnd())
        {
            tryGrab(session, camera, options, facts);
        }
    }
    const auto findings = HostKit::diagnoseNetwork(facts);
    bool isStopped = false;
    for (const auto& finding : findings)
    {
        progress(options,
                 (finding.isStop ? CTexts::tr("No images: %1") : CTexts::tr("Note: %1")).arg(printable(finding.text)));
        isStopped = isStopped || finding.isStop;
    }
    if (options.json)
    {
        printJson(describe(camera, facts, findings, session.isToEnd()));
    }
    else if (session.isToEnd())
    {
        printLine(CTexts::tr("Ended early."));
    }
    else if (!isStopped)
    {
        printLine(CTexts::tr("%1 images arrived, %2 incompletely.").arg(facts.images + facts.failed).arg(facts.failed));
    }
    return isStopped ? ExitRefused : ExitDone;
}

} // namespace PoolCli
