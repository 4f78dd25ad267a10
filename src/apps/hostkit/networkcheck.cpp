// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/networkcheck.h"

#include "hostkit/internal/texts.h"

#include <QStringList>

namespace HostKit
{
namespace
{

bool toNumber(const QString& address, quint32& number)
{
    const QStringList parts = address.split(QLatin1Char('.'));
    constexpr int octets = 4;
    bool isValid = parts.size() == octets;
    number = 0;
    for (const QString& part : parts)
    {
        bool isNumber = false;
        const uint octet = part.toUInt(&isNumber);
        isValid = isValid && isNumber && octet <= 0xFF;
        number = number << 8 | (octet & 0xFF);
    }
    return isValid;
}

void stop(QVector<SNetworkFinding>& findings, const char* id, const QString& text)
{
    findings.append({QLatin1String(id), true, text});
}

void warn(QVector<SNetworkFinding>& findings, const char* id, const QString& text)
{
    findings.append({QLatin1String(id), false, text});
}

/** Why the camera could not be opened. */
void diagnoseOpening(const SNetworkFacts& facts, QVector<SNetworkFinding>& findings)
{
    if (!isInSubnet(facts.address, facts.adapterAddress, facts.adapterMask) &&
        facts.accessStatus == QLatin1String("Unreachable"))
    {
        stop(
            findings, "other-subnet",
            CTexts::tr("The camera's address %1 is in another subnet than the network adapter %2 (%3). Give the camera "
                       "an address of the adapter's subnet, or the adapter one of the camera's.")
                .arg(addressWithPrefix(facts.address, facts.subnetMask), facts.adapter,
                     addressWithPrefix(facts.adapterAddress, facts.adapterMask)));
        return;
    }
    if (facts.accessStatus == QLatin1String("InUse"))
    {
        stop(findings, "in-use",
             CTexts::tr("Another application controls the camera: %1 End it there, or watch the camera with 'poolcli "
                        "monitor'.")
                 .arg(facts.openError));
        return;
    }
    if (facts.accessStatus == QLatin1String("Unreachable"))
    {
        stop(findings, "not-answering",
             CTexts::tr("The camera is seen but answers no commands. Another device may have the same address %1, or a "
                        "firewall stops UDP port 3956.")
                 .arg(facts.address));
        return;
    }
    stop(findings, "not-opened", CTexts::tr("The camera could not be opened: %1").arg(facts.openError));
}

/** Why not one image arrived though the camera could be controlled. */
void diagnoseSilence(const SNetworkFacts& facts, QVector<SNetworkFinding>& findings)
{
    if (!facts.grabError.isEmpty())
    {
        stop(findings, "not-started", CTexts::tr("The camera does not start grabbing: %1").arg(facts.grabError));
        return;
    }
    if (facts.isTested && facts.pathBytes == 0 && facts.isTriggered)
    {
        stop(findings, "no-images",
             CTexts::tr(
                 "No test packet arrives, and the camera waits for a trigger. Send one, or switch TriggerMode off, "
                 "to see whether images arrive."));
        return;
    }
    if (facts.isTested && facts.pathBytes == 0)
    {
        stop(
            findings, "nothing-arrives",
            CTexts::tr("Commands are answered, so packets are sent, but none arrives, neither test packets nor images. "
                       "Does a firewall stop them? Let UDP packets from %1 through on the adapter %2.")
                .arg(facts.address, facts.adapter));
        return;
    }
    if (facts.pathBytes > 0 && facts.packetBytes > facts.pathBytes)
    {
        stop(findings, "packets-too-large",
             CTexts::tr("The packets of %1 bytes are too large for the way to this computer, which carries %2. Set "
                        "GevSCPSPacketSize to %2, leave it alone, or set up jumbo frames on every switch and adapter.")
                 .arg(facts.packetBytes)
                 .arg(facts.pathBytes));
        return;
    }
    stop(findings, "no-images",
         facts.failed > 0
             ? CTexts::tr("Packets arrive, but none of %1 images was complete.").arg(facts.failed)
             : CTexts::tr("Test packets arrive, but the camera sends no image: does it wait for a trigger?"));
}

void warnOfLimits(const SNetworkFacts& facts, QVector<SNetworkFinding>& findings)
{
    if (facts.bufferWanted > facts.bufferBytes && facts.bufferBytes > 0)
    {
        warn(findings, "socket-buffer",
             CTexts::tr("The socket buffer is capped at %1 bytes, and images of this size need %2: images may be lost. "
                        "Raise the limit with: sysctl -w net.core.rmem_max=%2")
                 .arg(facts.bufferBytes)
                 .arg(facts.bufferWanted));
    }
    constexpr qint64 usualMtu = 1500;
    if (!facts.isUsersSize && facts.pathBytes > 0 && facts.mtu > usualMtu && facts.pathBytes <= usualMtu)
    {
        warn(findings, "small-path",
             CTexts::tr(
                 "Only packets of up to %1 bytes arrive, though the adapter takes %2: a switch on the way, or the "
                 "camera, does not do jumbo frames. Images cost more processor time.")
                 .arg(facts.pathBytes)
                 .arg(facts.mtu));
    }
    if (facts.images > 0 && facts.failed > 0)
    {
        warn(findings, "incomplete",
             CTexts::tr("%1 of %2 images were incomplete: packets are lost. With several cameras on the adapter, let "
                        "'poolcli network plan --apply' set pauses between packets.")
                 .arg(facts.failed)
                 .arg(facts.failed + facts.images));
    }
}

} // namespace

QString addressWithPrefix(const QString& address, const QString& mask)
{
    quint32 number = 0;
    if (!toNumber(mask, number) || number == 0)
    {
        return address;
    }
    int prefix = 0;
    for (; (number & 0x80000000U) != 0; number <<= 1)
    {
        ++prefix;
    }
    return QStringLiteral("%1/%2").arg(address).arg(prefix);
}

bool isInSubnet(const QString& address, const QString& adapterAddress, const QString& adapterMask)
{
    quint32 device = 0;
    quint32 adapter = 0;
    quint32 mask = 0;
    return !toNumber(address, device) || !toNumber(adapterAddress, adapter) || !toNumber(adapterMask, mask) ||
           (device & mask) == (adapter & mask);
}

QVector<SNetworkFinding> diagnoseNetwork(const SNetworkFacts& facts)
{
    QVector<SNetworkFinding> findings;
    if (!facts.isOpen)
    {
        diagnoseOpening(facts, findings);
        return findings;
    }
    if (facts.isConnectionLost)
    {
        // Images that the loss cut off say nothing of the way.
        stop(findings, "lost", CTexts::tr("The connection to the camera was lost: check cable, power and switch."));
        return findings;
    }
    if (facts.hasGrabbed && facts.images == 0)
    {
        diagnoseSilence(facts, findings);
    }
    warnOfLimits(facts, findings);
    return findings;
}

} // namespace HostKit
