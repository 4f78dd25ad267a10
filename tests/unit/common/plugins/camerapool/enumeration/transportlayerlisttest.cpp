// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/transportlayerlist.h"
#include "camerapool/internal/cameraenumerationthread.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/interfaceinfo.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>
#include <QSettings>

#include <memory>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::CScriptedTransport;
using ::Test::EFault;
using ::Test::EStep;

using TransportPtr = std::shared_ptr<CScriptedTransport>;

TransportPtr transport(const std::string& deviceClass, bool gige = false)
{
    ::Test::SScriptedTransportConfig config;
    config.deviceClass = deviceClass;
    config.friendlyName = "Scripted " + deviceClass;
    config.gige = gige;
    return std::make_shared<CScriptedTransport>(config);
}

::Test::SScriptedCamera camera(const std::string& serialNumber)
{
    ::Test::SScriptedCamera result;
    result.serialNumber = serialNumber;
    return result;
}

class TransportLayerList : public ::testing::Test
{
protected:
    TransportLayerList() { QLoggingCategory::setFilterRules(QStringLiteral("Camera Enumeration Thread.debug=true")); }
    ~TransportLayerList() override
    {
        CTransportLayerList::releaseTeskProducer();
        QSettings().clear();
    }
    void set(const QString& key, const QVariant& value)
    {
        QSettings().setValue(QStringLiteral("Enumeration/") + key, value);
    }
    CTransportLayerList& refresh()
    {
        CTransportLayerList::refreshTransportLayerList(m_list, false, false, true);
        return m_list;
    }

    CTransportLayerList m_list;
    const QString m_disableAll = QStringLiteral("DisableEnumerateAllDevices");
    const QString m_releaseTesk = QStringLiteral("ReleaseTeskCXPProducer");
};

TEST_F(TransportLayerList, withoutProducersIsEmptyAndLogsNothing)
{
    const ::Test::CScriptedSdk sdk({});
    const ::Test::CMessageLog log;
    EXPECT_TRUE(refresh().isEmpty());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(TransportLayerList, withoutProducersTheFallbackIsLogged)
{
    const ::Test::CScriptedSdk sdk({});
    set(m_disableAll, true);
    const ::Test::CMessageLog log;
    refresh();
    EXPECT_EQ(log.lines(),
              QStringList(QStringLiteral("EnumerateAllDevices is disabled. Falling back to EnumerateDevices")));
}

TEST_F(TransportLayerList, listsTransportLayersInterfacesAndCameras)
{
    const auto tl = transport("ListAll");
    tl->AddInterface("ListAll/if0");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    ASSERT_EQ(refresh().size(), 1);
    EXPECT_EQ(m_list.at(0)->getClass(), QStringLiteral("ListAll"));
    ASSERT_EQ(m_list.at(0)->getInterfaceInfoList().size(), 1);
    ASSERT_EQ(m_list.at(0)->getCameraInfoList().size(), 1);
    EXPECT_EQ(m_list.at(0)->getCameraInfoList().at(0)->getSerialNumber(), QStringLiteral("1"));
    EXPECT_TRUE(m_list.at(0)->haveContainedCamerasChanged());
}

TEST_F(TransportLayerList, recordsAreReusedAndAnEqualPassIsUnchanged)
{
    const auto tl = transport("Reuse");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    const auto record = refresh().at(0);
    const auto cameraRecord = record->getCameraInfoList().at(0);
    EXPECT_EQ(refresh().at(0), record);
    EXPECT_EQ(record->getCameraInfoList().at(0), cameraRecord);
    EXPECT_FALSE(record->haveContainedCamerasChanged());
}

TEST_F(TransportLayerList, transportLayersAreReleased)
{
    const auto tl = transport("Released");
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::CreateTl), 1U);
    EXPECT_EQ(sdk.GetHeldTransportLayers("Released"), 0U);
}

TEST_F(TransportLayerList, producersOfEqualFullNamesAreOneRecord)
{
    ::Test::SScriptedTransportConfig config;
    config.fullName = "EqualNames";
    config.deviceClass = "EqualA";
    const auto first = std::make_shared<CScriptedTransport>(config);
    config.deviceClass = "EqualB";
    const auto second = std::make_shared<CScriptedTransport>(config);
    const ::Test::CScriptedSdk sdk({first, second});
    ASSERT_EQ(refresh().size(), 2);
    EXPECT_EQ(m_list.at(0), m_list.at(1));
}

TEST_F(TransportLayerList, vanishedCameraCountsMinusOneAndChanges)
{
    const auto tl = transport("Vanish");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    tl->RemoveCamera("1");
    const ::Test::CMessageLog log;
    EXPECT_TRUE(refresh().at(0)->haveContainedCamerasChanged());
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("Enumerated 'Scripted Vanish' and found -1 new devices.")));
}

TEST_F(TransportLayerList, foundCamerasAreLogged)
{
    const auto tl = transport("Found");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    const ::Test::CMessageLog log;
    refresh();
    EXPECT_EQ(log.lines(), QStringList({QStringLiteral("Enumerated 'Scripted Found' and found 1 new devices."),
                                        QStringLiteral("    Found 'TestModel (1)'")}));
}

TEST_F(TransportLayerList, replacedCameraCountsZeroAndChanges)
{
    const auto tl = transport("Replace");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    tl->RemoveCamera("1");
    tl->AddCamera(camera("2"));
    const ::Test::CMessageLog log;
    EXPECT_TRUE(refresh().at(0)->haveContainedCamerasChanged());
    EXPECT_EQ(log.lines().at(0), QStringLiteral("Enumerated 'Scripted Replace' and found 0 new devices."));
}

TEST_F(TransportLayerList, renamedCameraKeepsItsRecordAndChanges)
{
    const auto tl = transport("Rename");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    const auto record = refresh().at(0)->getCameraInfoList().at(0);
    tl->SetUserDefinedName("1", "Left");
    EXPECT_TRUE(refresh().at(0)->haveContainedCamerasChanged());
    EXPECT_EQ(m_list.at(0)->getCameraInfoList().at(0), record);
    EXPECT_EQ(record->getUserDefinedName(), QStringLiteral("Left"));
}

TEST_F(TransportLayerList, interfaceOfTwoProducersIsOneRecordListedUnderBoth)
{
    const auto first = transport("SharesA");
    const auto second = transport("SharesB");
    first->AddInterface("Shares/if0");
    second->AddInterface("Shares/if0");
    const ::Test::CScriptedSdk sdk({first, second});
    ASSERT_EQ(refresh().size(), 2);
    ASSERT_EQ(m_list.at(0)->getInterfaceInfoList().size(), 1);
    EXPECT_EQ(m_list.at(0)->getInterfaceInfoList(), m_list.at(1)->getInterfaceInfoList());
}

TEST_F(TransportLayerList, defaultInterfaceBesideAnotherIsListedToo)
{
    const auto tl = transport("DefaultToo");
    tl->AddInterface("DefaultInterface");
    tl->AddInterface("DefaultToo/if0");
    const ::Test::CScriptedSdk sdk({tl});
    EXPECT_EQ(refresh().at(0)->getInterfaceInfoList().size(), 2);
}

TEST_F(TransportLayerList, nameOfTheDefaultInterfaceIsCaseSensitive)
{
    const auto tl = transport("DefaultCase");
    tl->AddInterface("defaultinterface");
    const ::Test::CScriptedSdk sdk({tl});
    EXPECT_EQ(refresh().at(0)->getInterfaceInfoList().size(), 1);
}

TEST_F(TransportLayerList, producerOfOnlyTheDefaultInterfaceHasNoInterfaces)
{
    const ::Test::CScriptedSdk sdk({transport("OnlyDefault")});
    EXPECT_TRUE(refresh().at(0)->getInterfaceInfoList().isEmpty());
}

TEST_F(TransportLayerList, producerLeftWithTheDefaultInterfaceKeepsItsInterfaces)
{
    const auto tl = transport("KeepInterfaces");
    tl->AddInterface("KeepInterfaces/if0");
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    tl->RemoveInterface("KeepInterfaces/if0");
    EXPECT_EQ(refresh().at(0)->getInterfaceInfoList().size(), 1);
}

TEST_F(TransportLayerList, producerThatCannotBeCreatedIsListedAsItWas)
{
    const auto tl = transport("NoCreate");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    tl->SetFault(EStep::CreateTl, EFault::Runtime);
    const ::Test::CMessageLog log;
    ASSERT_EQ(refresh().size(), 1);
    EXPECT_EQ(m_list.at(0)->getCameraInfoList().size(), 1);
    EXPECT_FALSE(m_list.at(0)->haveContainedCamerasChanged());
    EXPECT_EQ(log.lines(), QStringList()) << "without a message";
}

TEST_F(TransportLayerList, failingProducerCostsOnlyItself)
{
    const auto bad = transport("Bad");
    const auto good = transport("Good");
    bad->SetFault(EStep::EnumerateDevices, EFault::Standard, "no driver");
    good->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({bad, good});
    const ::Test::CMessageLog log;
    ASSERT_EQ(refresh().size(), 2);
    EXPECT_EQ(m_list.at(1)->getCameraInfoList().size(), 1);
    EXPECT_TRUE(log.contains(QStringLiteral("CTransportLayerList::refreshTransportLayerList failed: no driver")));
    EXPECT_TRUE(log.contains(QStringLiteral("Enumerated 'Scripted Bad' and found 0 new devices.")));
    EXPECT_EQ(sdk.GetHeldTransportLayers("Bad"), 0U);
}

TEST_F(TransportLayerList, producerThatFailsAtItsInterfacesIsNotAskedForItsCameras)
{
    const auto tl = transport("BadInterfaces");
    tl->AddCamera(camera("1"));
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    tl->AddCamera(camera("2"));
    tl->SetFault(EStep::EnumerateInterfaces, EFault::Standard, "no driver");
    const ::Test::CMessageLog log;
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::EnumerateDevices), 1U);
    EXPECT_FALSE(m_list.at(0)->haveContainedCamerasChanged());
    EXPECT_EQ(log.lines(),
              QStringList({QStringLiteral("CTransportLayerList::refreshTransportLayerList failed: no driver"),
                           QStringLiteral("Enumerated 'Scripted BadInterfaces' and found 0 new devices."),
                           QStringLiteral("    Found 'TestModel (1)'")}));
    EXPECT_EQ(sdk.GetHeldTransportLayers("BadInterfaces"), 0U);
}

TEST_F(TransportLayerList, unknownExceptionIsLogged)
{
    const auto bad = transport("Unknown");
    bad->SetFault(EStep::EnumerateInterfaces, EFault::Unknown);
    const ::Test::CScriptedSdk sdk({bad});
    const ::Test::CMessageLog log;
    refresh();
    EXPECT_TRUE(
        log.contains(QStringLiteral("CTransportLayerList::refreshTransportLayerList: Unknown exception occured")));
}

TEST_F(TransportLayerList, gigEProducerIsAskedForAllDevices)
{
    const auto tl = transport("KorvelGigE", true);
    auto hidden = camera("all1");
    hidden.onlyInAll = true;
    tl->AddCamera(hidden);
    const ::Test::CScriptedSdk sdk({tl});
    EXPECT_EQ(refresh().at(0)->getCameraInfoList().size(), 1);
    EXPECT_EQ(tl->GetCount(EStep::EnumerateAllDevices), 1U);
}

TEST_F(TransportLayerList, disabledAllDevicesAsksGigEForUsableOnes)
{
    const auto tl = transport("KorvelGigE", true);
    const ::Test::CScriptedSdk sdk({tl});
    set(m_disableAll, true);
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::EnumerateAllDevices), 0U);
    EXPECT_EQ(tl->GetCount(EStep::EnumerateDevices), 1U);
}

TEST_F(TransportLayerList, nonsenseSettingsCountAsNotThere)
{
    const auto tl = transport("KorvelGigE", true);
    const ::Test::CScriptedSdk sdk({tl});
    set(m_disableAll, QStringLiteral("banana"));
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::EnumerateAllDevices), 1U);
}

TEST_F(TransportLayerList, nonsenseSettingsAreToldOnceUntilTheyChange)
{
    const ::Test::CScriptedSdk sdk({});
    const auto line = [](const QString& key, const QString& found, const QString& used)
    {
        return QStringLiteral("The setting Enumeration/%1 has the unusable value \"%2\"; %3 is used.")
            .arg(key, found, used);
    };
    const ::Test::CMessageLog log;
    const auto told = [&log, this](const QVariant& disableAll)
    {
        const int before = log.warnings().size();
        set(m_disableAll, disableAll);
        refresh();
        refresh();
        return log.warnings().mid(before);
    };
    EXPECT_EQ(told(true), QStringList());
    EXPECT_EQ(told(QStringLiteral("banana")), QStringList(line(m_disableAll, "banana", "false")));
    EXPECT_EQ(told(QStringLiteral("yes, please")), QStringList(line(m_disableAll, "yes, please", "false")));
    EXPECT_EQ(told(false), QStringList());
    EXPECT_EQ(told(QStringLiteral("banana")), QStringList(line(m_disableAll, "banana", "false"))) << "again";
    set(m_releaseTesk, QStringLiteral("maybe"));
    EXPECT_EQ(told(QStringLiteral("banana")), QStringList(line(m_releaseTesk, "maybe", "true"))) << "the other one";
}

TEST_F(TransportLayerList, settingsWrittenAsTextCount)
{
    const auto tl = transport("KorvelGigE", true);
    const ::Test::CScriptedSdk sdk({tl});
    set(m_disableAll, QStringLiteral("true"));
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::EnumerateAllDevices), 0U);
}

TEST_F(TransportLayerList, coaXPressProducerIsKeptOpen)
{
    const auto tl = transport("KorvelGTC/Korvel/CXP");
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::CreateTl), 1U);
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP"), 1U);
    CTransportLayerList::releaseTeskProducer();
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP"), 0U);
}

TEST_F(TransportLayerList, coaXPressProducerThatFailedIsCreatedInTheNextPass)
{
    const auto tl = transport("KorvelGTC/Korvel/CXP");
    const ::Test::CScriptedSdk sdk({tl});
    tl->SetFault(EStep::CreateTl, EFault::Runtime, "no board", "", 1);
    refresh();
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP"), 0U);
    refresh();
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP"), 1U);
}

TEST_F(TransportLayerList, coaXPressProducerStaysOpenWhenTheSettingChanges)
{
    const auto tl = transport("KorvelGTC/Korvel/CXP");
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    set(m_releaseTesk, false);
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::CreateTl), 2U);
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP"), 1U);
}

TEST_F(TransportLayerList, nonsenseLeavesTheCoaXPressProducerKeptOpen)
{
    const auto tl = transport("KorvelGTC/Korvel/CXP");
    const ::Test::CScriptedSdk sdk({tl});
    set(m_releaseTesk, QStringLiteral("-7 bananas"));
    refresh();
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP"), 1U);
}

TEST_F(TransportLayerList, coaXPressProducerIsReleasedInEveryPassWhenSo)
{
    const auto tl = transport("KorvelGTC/Korvel/CXP");
    const ::Test::CScriptedSdk sdk({tl});
    set(m_releaseTesk, false);
    refresh();
    refresh();
    EXPECT_EQ(tl->GetCount(EStep::CreateTl), 2U);
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP"), 0U);
}

TEST_F(TransportLayerList, onlyTheCoaXPressProducerOfThatVeryClassIsKeptOpen)
{
    const ::Test::CScriptedSdk sdk({transport("KorvelGTC/Korvel/CXP2"), transport("KorvelGTC/Korvel/GEV")});
    refresh();
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/CXP2"), 0U);
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGTC/Korvel/GEV"), 0U);
}

TEST_F(TransportLayerList, gigEOnlyLeavesOutTheOthers)
{
    const ::Test::CScriptedSdk sdk({transport("KorvelGigE", true), transport("NotGigE"), transport("KorvelGigE2"),
                                    transport("KorvelGTC/Korvel/GEV")});
    CTransportLayerList::refreshTransportLayerList(m_list, true, false, false);
    ASSERT_EQ(m_list.size(), 2);
    EXPECT_EQ(m_list.at(0)->getClass(), QStringLiteral("KorvelGigE"));
    EXPECT_EQ(m_list.at(1)->getClass(), QStringLiteral("KorvelGTC/Korvel/GEV"));
}

TEST_F(TransportLayerList, transportLayersOnlyAsksNoProducer)
{
    const auto tl = transport("OnlyLayers");
    const ::Test::CScriptedSdk sdk({tl});
    CTransportLayerList::refreshTransportLayerList(m_list, false, true, true);
    EXPECT_EQ(m_list.size(), 1);
    EXPECT_EQ(tl->GetCount(EStep::CreateTl), 0U);
}

TEST_F(TransportLayerList, transportLayersOnlyKeepsTheListsAndClearsTheFlag)
{
    const auto tl = transport("KeepsLists");
    tl->AddInterface("KeepsLists/if0");
    const ::Test::CScriptedSdk sdk({tl});
    refresh();
    tl->AddCamera(camera("1"));
    ASSERT_TRUE(refresh().at(0)->haveContainedCamerasChanged());
    tl->RemoveCamera("1");
    const ::Test::CMessageLog log;
    CTransportLayerList::refreshTransportLayerList(m_list, false, true, true);
    ASSERT_EQ(m_list.size(), 1);
    EXPECT_FALSE(m_list.at(0)->haveContainedCamerasChanged());
    EXPECT_EQ(m_list.at(0)->getCameraInfoList().size(), 1);
    EXPECT_EQ(m_list.at(0)->getInterfaceInfoList().size(), 1);
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(TransportLayerList, resultsAreLoggedOnlyWhenAsked)
{
    const ::Test::CScriptedSdk sdk({transport("Silent")});
    const ::Test::CMessageLog log;
    CTransportLayerList::refreshTransportLayerList(m_list, false, false, false);
    EXPECT_EQ(m_list.size(), 1);
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(TransportLayerList, withoutTheSdkNothingIsThrownAndTheListStays)
{
    {
        const ::Test::CScriptedSdk sdk({transport("Stays")});
        refresh();
    }
    EXPECT_NO_THROW(refresh());
    EXPECT_EQ(m_list.size(), 1);
}

} // namespace
