// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camerainfo.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <gtest/gtest.h>

#include <QPointer>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

Velmo::CDeviceInfo genTlCamera()
{
    return ::Test::deviceInfo("gentl/1", "KorvelGTC/Korvel/CXP");
}

TEST(CameraInfo, readsEveryFieldOfTheSdkRecord)
{
    auto velmoInfo = ::Test::deviceInfo("camera/fields");
    velmoInfo.SetUserDefinedName("Left");
    const auto record = CCameraInfo::fromDeviceInfo(velmoInfo);
    EXPECT_EQ(record->getTransportLayerName(), QStringLiteral("KorvelGigE/Factory"));
    EXPECT_EQ(record->getCameraVersion(), QStringLiteral("1.5"));
    EXPECT_EQ(record->getFullName(), QStringLiteral("camera/fields"));
    EXPECT_EQ(record->getModelName(), QStringLiteral("Model"));
    EXPECT_EQ(record->getSerialNumber(), QStringLiteral("4711"));
    EXPECT_EQ(record->getUserDefinedName(), QStringLiteral("Left"));
    EXPECT_EQ(record->getVendorName(), QStringLiteral("Vendor"));
    EXPECT_EQ(record->getTLType(), QStringLiteral("GEV"));
    EXPECT_EQ(record->errorString(), QString());
    EXPECT_TRUE(record->getVelmoDeviceInfo() == velmoInfo);
}

TEST(CameraInfo, isOfTypeZero)
{
    EXPECT_EQ(::Test::cameraRecord("camera/type")->getType(), 0);
}

TEST(CameraInfo, readsTextsAsUtf8)
{
    auto velmoInfo = ::Test::deviceInfo("camera/utf8");
    velmoInfo.SetUserDefinedName("\xC3\x84"
                                 "rger");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getUserDefinedName(), QString::fromUtf8("\xC3\x84"
                                                                                              "rger"));
}

TEST(CameraInfo, invalidUtf8IsReplaced)
{
    auto velmoInfo = ::Test::deviceInfo("camera/invalid");
    velmoInfo.SetUserDefinedName("a\xFFz");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getUserDefinedName(), QStringLiteral("a\uFFFDz"));
}

TEST(CameraInfo, emptySdkRecordGivesEmptyTexts)
{
    const auto record = CCameraInfo::fromDeviceInfo(Velmo::CDeviceInfo());
    EXPECT_TRUE(record->getFullName().isEmpty());
    EXPECT_TRUE(record->getFriendlyName().isEmpty());
    EXPECT_TRUE(record->getUserDefinedName().isEmpty());
}

TEST(CameraInfo, hasOneIdentifierOfClassVendorModelAndSerialNumber)
{
    const auto ids = ::Test::cameraRecord("camera/id")->ids();
    ASSERT_EQ(ids.size(), 1);
    EXPECT_EQ(ids.first(), Core::CId("KorvelGigEVendorModel4711"));
}

TEST(CameraInfo, identifierTakesTheDeviceClassAsLatin1AndTheRestAsUtf8)
{
    auto velmoInfo = ::Test::deviceInfo("camera/latin1", "K\xE4mera");
    velmoInfo.SetVendorName("V\xC3\xA4ndor");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->id(), Core::CId("K\xC3\xA4meraV\xC3\xA4ndorModel4711"));
}

TEST(CameraInfo, updateReadsEveryTextAnew)
{
    const auto record = ::Test::cameraRecord("camera/anew");
    Velmo::CDeviceInfo other;
    other.SetDeviceClass("KorvelGigE");
    other.SetDeviceFactory("factory");
    other.SetDeviceVersion("version");
    other.SetFriendlyName("friendly");
    other.SetFullName("full");
    other.SetModelName("model");
    other.SetSerialNumber("serial");
    other.SetUserDefinedName("user");
    other.SetVendorName("vendor");
    other.SetTLType("U3V");
    record->updateFromDeviceInfo(other);
    const QStringList texts{record->getTransportLayerName(), record->getCameraVersion(), record->getFriendlyName(),
                            record->getFullName(),           record->getModelName(),     record->getSerialNumber(),
                            record->getUserDefinedName(),    record->getVendorName(),    record->getTLType()};
    EXPECT_EQ(texts,
              (QStringList{"factory", "version", "friendly", "full", "model", "serial", "user", "vendor", "U3V"}));
}

TEST(CameraInfo, updateKeepsIdentifierAndError)
{
    const auto record = ::Test::cameraRecord("camera/update");
    record->setErrorString(QStringLiteral("broken"));
    auto renamed = ::Test::deviceInfo("camera/update");
    renamed.SetSerialNumber("4712");
    renamed.SetUserDefinedName("Right");
    record->updateFromDeviceInfo(renamed);
    EXPECT_EQ(record->getSerialNumber(), QStringLiteral("4712"));
    EXPECT_EQ(record->getUserDefinedName(), QStringLiteral("Right"));
    EXPECT_TRUE(record->getVelmoDeviceInfo() == renamed);
    EXPECT_EQ(record->id(), Core::CId("KorvelGigEVendorModel4711"));
    EXPECT_EQ(record->errorString(), QStringLiteral("broken"));
}

TEST(CameraInfo, sdkRecordHandedOutOutlivesAnUpdate)
{
    const auto record = ::Test::cameraRecord("camera/reference");
    const auto& before = record->getVelmoDeviceInfo();
    auto renamed = ::Test::deviceInfo("camera/reference");
    renamed.SetUserDefinedName("Other");
    record->updateFromDeviceInfo(renamed);
    EXPECT_TRUE(before == ::Test::deviceInfo("camera/reference"));
}

TEST(CameraInfo, clearErrorEmptiesTheError)
{
    const auto record = ::Test::cameraRecord("camera/clear");
    record->setErrorString(QStringLiteral("broken"));
    record->clearError();
    EXPECT_EQ(record->errorString(), QString());
}

TEST(CameraInfo, cameraOfAnOwnProducerShowsTheSdksFriendlyName)
{
    auto velmoInfo = ::Test::deviceInfo("camera/friendly");
    velmoInfo.SetUserDefinedName("Left");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getFriendlyName(), QStringLiteral("Friendly camera/friendly"));
}

TEST(CameraInfo, genTlCameraShowsUserDefinedNameAndSerialNumber)
{
    auto velmoInfo = genTlCamera();
    velmoInfo.SetUserDefinedName("Left");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getFriendlyName(), QStringLiteral("Left (4711)"));
}

TEST(CameraInfo, genTlCameraShowsItsUserDefinedNameUntrimmed)
{
    auto velmoInfo = genTlCamera();
    velmoInfo.SetUserDefinedName(" Left ");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getFriendlyName(), QStringLiteral(" Left  (4711)"));
}

TEST(CameraInfo, genTlCameraWithABlankNameShowsVendorModelAndSerialNumber)
{
    auto velmoInfo = genTlCamera();
    velmoInfo.SetUserDefinedName("   ");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getFriendlyName(), QStringLiteral("Vendor Model (4711)"));
}

TEST(CameraInfo, genTlCameraWithoutANameShowsVendorModelAndSerialNumber)
{
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(genTlCamera())->getFriendlyName(), QStringLiteral("Vendor Model (4711)"));
}

TEST(CameraInfo, placeholdersInNamesAreNotFilledIn)
{
    auto velmoInfo = genTlCamera();
    velmoInfo.SetUserDefinedName("%2 %1");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getFriendlyName(), QStringLiteral("%2 %1 (4711)"));
}

TEST(CameraInfo, genTlConsumerIsFoundAnywhereInTheDeviceClass)
{
    const auto velmoInfo = ::Test::deviceInfo("gentl/inside", "My/KorvelGTC");
    EXPECT_EQ(CCameraInfo::fromDeviceInfo(velmoInfo)->getFriendlyName(), QStringLiteral("Vendor Model (4711)"));
}

TEST(CameraInfo, guardedPointersToARecordWork)
{
    auto record = ::Test::cameraRecord("camera/guarded");
    const QPointer<QObject> guard(record.data());
    const QWeakPointer<CCameraInfo> weak = record;
    EXPECT_EQ(guard.data(), record.data());
    record.reset();
    EXPECT_TRUE(guard.isNull());
    EXPECT_TRUE(weak.isNull());
}

TEST(CameraInfo, variantOfARecordConvertsToTheObject)
{
    const CameraInfoPtr record = ::Test::cameraRecord("camera/variant");
    EXPECT_EQ(QVariant::fromValue(record).value<QObject*>(), record.data());
}

TEST(CameraInfo, stringsConvertThereAndBack)
{
    const QString text = QString::fromUtf8("\xE3\x82\xAB\xE3\x83\xA1\xE3\x83\xA9");
    EXPECT_EQ(CCameraInfo::qString(CCameraInfo::velmoString(text)), text);
    EXPECT_EQ(CCameraInfo::qString(GenICam::gcstring(nullptr)), QString());
}

/** A camera record that is not one of ours. */
class CForeignCamera : public ICameraInfo
{
public:
    QString getFriendlyName() const override { return {}; }
    QString getFullName() const override { return {}; }
    QString getVendorName() const override { return {}; }
    QString getTLType() const override { return {}; }
    int getType() const override { return RecordType_Camera; }
    QString errorString() const override { return QStringLiteral("its own"); }
    void clearError() override { m_isTouched = true; }
    QString getTransportLayerName() const override { return {}; }
    QString getCameraVersion() const override { return {}; }
    QString getModelName() const override { return {}; }
    QString getSerialNumber() const override { return {}; }
    QString getUserDefinedName() const override { return {}; }
    const Velmo::CDeviceInfo& getVelmoDeviceInfo() const override { return m_deviceInfo; }

    bool m_isTouched = false;

private:
    Velmo::CDeviceInfo m_deviceInfo;
};

TEST(SetErrorStringHelper, setsTheErrorOfACameraRecord)
{
    const auto record = ::Test::cameraRecord("camera/helper");
    QSharedPointer<ICameraInfo> info = record;
    setErrorStringHelper(info, "reason");
    EXPECT_EQ(record->errorString(), QStringLiteral("reason"));
}

TEST(SetErrorStringHelper, namesOfCamerasInTheTextStayReadable)
{
    const auto record = ::Test::cameraRecord("camera/helperutf8");
    setErrorStringHelper(record, "\xE3\x82\xAB is in use");
    EXPECT_EQ(record->errorString(), QStringLiteral("\u30AB is in use"));
}

TEST(SetErrorStringHelper, nullTextClearsTheError)
{
    const auto record = ::Test::cameraRecord("camera/helpernull");
    QSharedPointer<ICameraInfo> info = record;
    setErrorStringHelper(info, "reason");
    setErrorStringHelper(info, nullptr);
    EXPECT_TRUE(record->errorString().isEmpty());
}

TEST(SetErrorStringHelper, foreignRecordIsLeftAlone)
{
    const QSharedPointer<CForeignCamera> foreign(new CForeignCamera);
    setErrorStringHelper(foreign, "reason");
    EXPECT_FALSE(foreign->m_isTouched);
    EXPECT_EQ(foreign->errorString(), QStringLiteral("its own"));
}

TEST(SetErrorStringHelper, nullRecordIsLeftAlone)
{
    QSharedPointer<ICameraInfo> info;
    setErrorStringHelper(info, "reason");
    EXPECT_TRUE(info.isNull());
}

} // namespace
