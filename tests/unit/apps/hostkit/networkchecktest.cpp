// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/networkcheck.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace
{

using HostKit::addressWithPrefix;
using HostKit::diagnoseNetwork;
using HostKit::isInSubnet;
using HostKit::SNetworkFacts;

/** A camera that works. */
SNetworkFacts good()
{
    SNetworkFacts facts;
    facts.address = QStringLiteral("192.168.1.5");
    facts.subnetMask = QStringLiteral("255.255.255.0");
    facts.adapter = QStringLiteral("eth0");
    facts.adapterAddress = QStringLiteral("192.168.1.1");
    facts.adapterMask = QStringLiteral("255.255.255.0");
    facts.accessStatus = QStringLiteral("ReadWrite");
    facts.isOpen = true;
    facts.mtu = 9000;
    facts.packetBytes = 9000;
    facts.pathBytes = 9000;
    facts.isTested = true;
    facts.bufferBytes = 4000000;
    facts.bufferWanted = 4000000;
    facts.hasGrabbed = true;
    facts.images = 50;
    return facts;
}

SNetworkFacts closed(const char* accessStatus)
{
    SNetworkFacts facts = good();
    facts.isOpen = false;
    facts.hasGrabbed = false;
    facts.accessStatus = QLatin1String(accessStatus);
    facts.openError = QStringLiteral("the reason.");
    return facts;
}

/** "id" of what warns, "id!" of what stops images. */
QStringList found(const SNetworkFacts& facts)
{
    QStringList ids;
    const auto findings = diagnoseNetwork(facts);
    for (const auto& finding : findings)
    {
        ids.append(finding.id + (finding.isStop ? QStringLiteral("!") : QString()));
        EXPECT_FALSE(finding.text.isEmpty());
        EXPECT_FALSE(finding.text.contains(QLatin1String("%1"))) << finding.text.toStdString();
    }
    return ids;
}

QString firstText(const SNetworkFacts& facts)
{
    return diagnoseNetwork(facts).value(0).text;
}

TEST(NetworkCheck, nothingIsSaidOfACameraThatWorks)
{
    EXPECT_EQ(found(good()), QStringList());
}

TEST(NetworkCheck, cameraInAnotherSubnet)
{
    SNetworkFacts facts = closed("Unreachable");
    facts.address = QStringLiteral("10.0.0.5");
    EXPECT_EQ(found(facts), QStringList{"other-subnet!"});
    EXPECT_TRUE(firstText(facts).contains("10.0.0.5/24")) << firstText(facts).toStdString();
    EXPECT_TRUE(firstText(facts).contains("192.168.1.1/24"));
}

TEST(NetworkCheck, cameraThatAnotherApplicationControls)
{
    EXPECT_EQ(found(closed("InUse")), QStringList{"in-use!"});
    EXPECT_TRUE(firstText(closed("InUse")).contains("the reason."));
}

TEST(NetworkCheck, cameraThatAnswersNoCommands)
{
    EXPECT_EQ(found(closed("Unreachable")), QStringList{"not-answering!"});
}

TEST(NetworkCheck, cameraThatCannotBeOpenedForAnotherReason)
{
    EXPECT_EQ(found(closed("ReadWrite")), QStringList{"not-opened!"});
}

TEST(NetworkCheck, announcedCameraBehindARouterIsNotToldToBeInTheWrongSubnet)
{
    SNetworkFacts facts = closed("ReadWrite");
    facts.address = QStringLiteral("10.0.0.5");
    EXPECT_EQ(found(facts), QStringList{"not-opened!"});
}

TEST(NetworkCheck, packetsThatAreSentAndDoNotArrive)
{
    SNetworkFacts facts = good();
    facts.images = 0;
    facts.pathBytes = 0;
    EXPECT_EQ(found(facts), QStringList{"nothing-arrives!"});
    EXPECT_TRUE(firstText(facts).contains("firewall"));
}

TEST(NetworkCheck, aCameraThatWaitsForATriggerIsNotBehindAFirewallForSure)
{
    SNetworkFacts facts = good();
    facts.images = 0;
    facts.pathBytes = 0;
    facts.isTriggered = true;
    EXPECT_EQ(found(facts), QStringList{"no-images!"});
    EXPECT_TRUE(firstText(facts).contains("TriggerMode"));
}

TEST(NetworkCheck, missingTestPacketsAreNoMatterWhenImagesArrive)
{
    SNetworkFacts facts = good();
    facts.pathBytes = 0;
    EXPECT_EQ(found(facts), QStringList());
}

TEST(NetworkCheck, packetsThatAreTooLargeForTheirWay)
{
    SNetworkFacts facts = good();
    facts.images = 0;
    facts.pathBytes = 1500;
    facts.isUsersSize = true;
    EXPECT_EQ(found(facts), QStringList{"packets-too-large!"});
    EXPECT_TRUE(firstText(facts).contains("9000") && firstText(facts).contains("1500"));
}

TEST(NetworkCheck, cameraThatSendsNothing)
{
    SNetworkFacts facts = good();
    facts.images = 0;
    EXPECT_EQ(found(facts), QStringList{"no-images!"});
    EXPECT_TRUE(firstText(facts).contains("trigger"));
    facts.failed = 7;
    EXPECT_EQ(found(facts), QStringList{"no-images!"});
    EXPECT_TRUE(firstText(facts).contains("7 images"));
}

TEST(NetworkCheck, grabThatDoesNotStartAndCameraThatIsLost)
{
    SNetworkFacts facts = good();
    facts.images = 0;
    facts.grabError = QStringLiteral("the reason.");
    EXPECT_EQ(found(facts), QStringList{"not-started!"});
    facts.isConnectionLost = true;
    EXPECT_EQ(found(facts), QStringList{"lost!"});
    facts.images = 4;
    facts.failed = 2;
    EXPECT_EQ(found(facts), QStringList{"lost!"}) << "in the midst of the grab";
}

TEST(NetworkCheck, cappedSocketBufferIsToldWithTheRemedy)
{
    SNetworkFacts facts = good();
    facts.bufferBytes = 212992;
    EXPECT_EQ(found(facts), QStringList{"socket-buffer"});
    EXPECT_TRUE(firstText(facts).contains("capped at 212992"));
    EXPECT_TRUE(firstText(facts).contains("net.core.rmem_max=4000000"));
}

TEST(NetworkCheck, wayWithoutJumboFramesBehindAnAdapterWithThem)
{
    SNetworkFacts facts = good();
    facts.pathBytes = 1500;
    facts.packetBytes = 1500;
    EXPECT_EQ(found(facts), QStringList{"small-path"});
    facts.mtu = 1500;
    EXPECT_EQ(found(facts), QStringList());
}

TEST(NetworkCheck, incompleteImagesAreCounted)
{
    SNetworkFacts facts = good();
    facts.failed = 3;
    EXPECT_EQ(found(facts), QStringList{"incomplete"});
    EXPECT_TRUE(firstText(facts).startsWith("3 of 53 images"));
}

TEST(NetworkCheck, anEndBeforeTheGrabAccusesNobody)
{
    SNetworkFacts facts = good();
    facts.hasGrabbed = false;
    facts.images = 0;
    EXPECT_EQ(found(facts), QStringList());
}

TEST(NetworkCheck, addressesAndSubnets)
{
    EXPECT_EQ(addressWithPrefix("10.0.0.1", "255.255.252.0"), QStringLiteral("10.0.0.1/22"));
    EXPECT_EQ(addressWithPrefix("10.0.0.1", ""), QStringLiteral("10.0.0.1"));
    EXPECT_TRUE(isInSubnet("10.0.1.9", "10.0.0.1", "255.255.252.0"));
    EXPECT_FALSE(isInSubnet("10.0.4.9", "10.0.0.1", "255.255.252.0"));
    EXPECT_TRUE(isInSubnet("", "10.0.0.1", "255.255.252.0"));
    EXPECT_TRUE(isInSubnet("10.0.0.999", "10.0.0.1", "255.255.255.0")) << "no address";
}

} // namespace
