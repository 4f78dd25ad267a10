// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/firmware/firmwarefixture.h"
#include "unit/common/plugins/camerapool/testing/records.h"
#include "utils/exceptions.h"

#include <typeinfo>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EFault;
using ::Test::EStep;

const QString exclusiveFailed = QStringLiteral("Failed to acquire exclusive camera access.");
const QString unexpected =
    QStringLiteral("Unexpected exception caught. Failed to get the list of matching firmware updates.");

class FirmwareService : public ::Test::FirmwareFixture
{
protected:
    bool match(const UpdateInfos& updates)
    {
        return m_service->getUpdatesMatchingTheDevice(m_info, updates, m_matching, m_sorted);
    }
    QStringList sorted(const std::vector<std::string>& versions)
    {
        UpdateInfos updates = read(updatesOf(versions));
        m_sorted = m_service->sortFirmwareUpdateInfos(updates);
        return versionsOf(updates);
    }

    UpdateInfos m_matching;
    bool m_sorted = true;
};

/** A service whose reader is the test's. */
class CReaderService : public CDeviceFirmwareUpdateService
{
public:
    using Reader = std::function<void(const char*, GenApi::IFirmwareUpdateInfoCollector&, const char*)>;
    explicit CReaderService(Reader reader) : CDeviceFirmwareUpdateService(nullptr, nullptr), m_reader(std::move(reader))
    {
    }

protected:
    void readFirmwareUpdateInfos(const char* fileName, GenApi::IFirmwareUpdateInfoCollector& collector,
                                 const char* filter) const override
    {
        m_reader(fileName, collector, filter);
    }

private:
    Reader m_reader;
};

template <class Sdk, class Host> void expectTranslated()
{
    CReaderService service([](const char*, GenApi::IFirmwareUpdateInfoCollector&, const char*)
                           { throw Sdk("wörd", "file", 1); });
    try
    {
        service.getUpdates(QStringLiteral("a"), QString());
        FAIL() << "nothing was thrown";
    }
    catch (const Core::Exception::BaseException& e)
    {
        EXPECT_STREQ(typeid(e).name(), typeid(Host).name());
        EXPECT_EQ(e.message(), QString::fromUtf8("wörd"));
    }
}

TEST(FirmwareReader, exceptionsBecomeTheHostsOfTheSameKind)
{
    using namespace Core::Exception;
    expectTranslated<GenICam::FormatException, FormatException>();
    expectTranslated<GenICam::FileIOException, FileIOException>();
    expectTranslated<GenICam::FileNotFoundException, FileNotFoundException>();
    expectTranslated<GenICam::InvalidArgumentException, ArgumentException>();
    expectTranslated<GenICam::OutOfRangeException, ArgumentOutOfRangeException>();
    expectTranslated<GenICam::AccessException, InvalidOperationException>();
    expectTranslated<GenICam::TimeoutException, TimeoutException>();
    expectTranslated<GenICam::LogicalErrorException, InvalidOperationException>();
    expectTranslated<GenICam::BadAllocException, BadAllocException>();
    expectTranslated<GenICam::RuntimeException, RuntimeException>();
    expectTranslated<GenICam::PropertyException, BaseException>();
    expectTranslated<GenICam::DynamicCastException, BaseException>();
}

TEST(FirmwareReader, otherExceptionsPassUnchanged)
{
    CReaderService service([](const char*, GenApi::IFirmwareUpdateInfoCollector&, const char*) { throw 7; });
    EXPECT_THROW(service.getUpdates(QStringLiteral("a"), QString()), int);
}

TEST(FirmwareReader, getsTheNameInUtf8AndAnEmptyFilterAsNull)
{
    std::string fileName;
    std::vector<std::string> filters;
    bool goesOn = false;
    CReaderService service(
        [&](const char* name, GenApi::IFirmwareUpdateInfoCollector& collector, const char* filter)
        {
            fileName = name;
            filters.emplace_back(filter == nullptr ? "null" : filter);
            goesOn = collector.OnUpdateRead(GenApi::CFirmwareUpdateInfo());
        });
    const auto updates = service.getUpdates(QString::fromUtf8("ä.guf"), QString());
    service.getUpdates(QStringLiteral("a"), QStringLiteral(""));
    service.getUpdates(QStringLiteral("a"), QString::fromUtf8("mäin.*"));
    EXPECT_EQ(filters, (std::vector<std::string>{"null", "null", "mäin.*"}));
    EXPECT_TRUE(goesOn);
    ASSERT_EQ(updates.size(), 1);
    EXPECT_TRUE(updates.first()->getVersion().isNull());
    EXPECT_TRUE(updates.first()->getReleaseNotes().isNull());
    EXPECT_EQ(updates.first()->parent(), nullptr);
    EXPECT_FALSE(updates.first().objectCast<CFirmwareUpdateInfo>()->getGenApiFirmwareUpdateInfo().IsValid());
}

TEST_F(FirmwareService, listsTheUpdatesOfAFileInItsOrder)
{
    const auto updates = read({{"1.0"}, {"10.0", "Other", "Größer"}, {"2.0"}});
    EXPECT_EQ(versionsOf(updates), (QStringList{"1.0", "10.0", "2.0"}));
    EXPECT_EQ(updates.at(1)->getDescription(), QString::fromUtf8("Größer"));
    EXPECT_TRUE(updates.at(1)->getReleaseNotes().isNull());
    EXPECT_EQ(updates.at(1)->getUpdateFilename(), m_folder.filePath(QString::fromUtf8("päckage.guf")));
    EXPECT_EQ(m_service->getUpdates(package({{"1.0"}, {"2.0"}}), QStringLiteral("update2")).size(), 1);
}

TEST_F(FirmwareService, badFilesAreTheHostsExceptions)
{
    EXPECT_THROW(m_service->getUpdates(m_folder.filePath(QStringLiteral("none.guf")), QString()),
                 Core::Exception::FileNotFoundException);
    QFile file(m_folder.filePath(QStringLiteral("text.guf")));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("no archive");
    file.close();
    EXPECT_THROW(m_service->getUpdates(file.fileName(), QString()), Core::Exception::FormatException);
    EXPECT_THROW(m_service->getUpdates(package({{"1.0"}}), QStringLiteral("(")), Core::Exception::ArgumentException);
}

TEST_F(FirmwareService, sortsByNumbersNewestFirst)
{
    EXPECT_EQ(sorted({"2.0.1", "10.0", "2.0.1.3"}), (QStringList{"10.0", "2.0.1.3", "2.0.1"}));
    EXPECT_TRUE(m_sorted);
    EXPECT_EQ(sorted({"1.", "1.9", "1.10", "1.2.3.4"}), (QStringList{"1.10", "1.9", "1.2.3.4", "1."}));
    EXPECT_TRUE(m_sorted);
}

TEST_F(FirmwareService, versionsThatCannotBeComparedComeLastInTheirOrder)
{
    EXPECT_EQ(sorted({"7", "1.0"}), (QStringList{"1.0", "7"}));
    EXPECT_FALSE(m_sorted);
    EXPECT_EQ(sorted({"1.2.3.4.5", "zeta", "0.1", "alpha", "3.0"}),
              (QStringList{"3.0", "0.1", "1.2.3.4.5", "zeta", "alpha"}));
    EXPECT_FALSE(m_sorted);
}

TEST_F(FirmwareService, emptyListIsNotSorted)
{
    UpdateInfos none;
    EXPECT_FALSE(m_service->sortFirmwareUpdateInfos(none));
    EXPECT_TRUE(none.isEmpty());
}

TEST_F(FirmwareService, noUpdatesMatchWithoutTheCamera)
{
    m_matching = read({{"1.0"}});
    m_order.clear();
    EXPECT_TRUE(match({}));
    EXPECT_TRUE(m_matching.isEmpty());
    EXPECT_FALSE(m_sorted);
    EXPECT_EQ(order(), QString());
    m_sorted = true;
    EXPECT_TRUE(m_service->getUpdatesMatchingTheDevice({}, read({{"1.0"}}), m_matching, m_sorted));
    EXPECT_FALSE(m_sorted);
    EXPECT_TRUE(m_matching.isEmpty());
}

TEST_F(FirmwareService, matchingUpdatesAreSortedAndTheCameraClosed)
{
    EXPECT_TRUE(match(read({{"1.0"}, {"3.0", "Other"}, {"2.0"}})));
    EXPECT_EQ(versionsOf(m_matching), (QStringList{"2.0", "1.0"}));
    EXPECT_TRUE(m_sorted);
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
    EXPECT_EQ(order(), QStringLiteral("deviceOpened cameraDetached deviceClosing cameraAttached deviceClosed"));
}

TEST_F(FirmwareService, nothingMatchingIsNoFailure)
{
    EXPECT_TRUE(match(read({{"3.0", "Other"}})));
    EXPECT_TRUE(m_matching.isEmpty());
    EXPECT_FALSE(m_sorted);
}

TEST_F(FirmwareService, listMayBeItsOwnResult)
{
    m_matching = read({{"1.0"}, {"2.0"}});
    EXPECT_TRUE(match(m_matching));
    EXPECT_EQ(versionsOf(m_matching), (QStringList{"2.0", "1.0"}));
}

TEST_F(FirmwareService, openCameraIsClosedForTheCheckAndNotReopened)
{
    ASSERT_TRUE(m_pool->openDevice(BaseInfoPtr(m_info), false));
    m_order.clear();
    EXPECT_TRUE(match(read({{"1.0"}})));
    EXPECT_EQ(m_matching.size(), 1);
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    EXPECT_EQ(order(), QStringLiteral("deviceClosing deviceClosed deviceOpened cameraDetached deviceClosing "
                                      "cameraAttached deviceClosed"));
}

TEST_F(FirmwareService, cameraThatCannotBeOpenedIsAFailureWithTheText)
{
    m_transport->SetFault(EStep::OpenControl, EFault::Access);
    m_matching = read({{"1.0"}});
    EXPECT_FALSE(match(read({{"1.0"}})));
    EXPECT_TRUE(m_matching.isEmpty());
    EXPECT_EQ(m_info->errorString(), exclusiveFailed);
    m_info->clearError();
    EXPECT_TRUE(m_service->update(m_info, update("1.0")).isNull());
    EXPECT_EQ(m_info->errorString(), exclusiveFailed);
}

TEST_F(FirmwareService, withoutThePoolThereIsNoExclusiveAccess)
{
    const auto updates = read({{"1.0"}});
    m_pool.reset();
    EXPECT_FALSE(match(updates));
    EXPECT_EQ(m_info->errorString(), exclusiveFailed);
    EXPECT_TRUE(m_service->update(m_info, updates.first()).isNull());
}

TEST_F(FirmwareService, updateThatCannotBeTestedMakesTheAnswerFalseAndKeepsTheOthers)
{
    const auto updates = read({{"1.0"}, {"2.0"}, {"3.0"}});
    int reads = 0;
    m_transport->SetHook(EStep::ReadRegister,
                         [&](const std::string&)
                         {
                             if (++reads == 2)
                             {
                                 GENICAM_THROW(TimeoutException, "no answer");
                             }
                         });
    EXPECT_FALSE(match(updates));
    EXPECT_EQ(versionsOf(m_matching), (QStringList{"3.0", "1.0"}));
    EXPECT_TRUE(m_sorted);
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
}

TEST_F(FirmwareService, unexpectedExceptionKeepsWhatMatchedAndClosesTheCamera)
{
    const auto updates = read({{"1.0"}, {"2.0"}});
    int reads = 0;
    m_transport->SetHook(EStep::ReadRegister,
                         [&](const std::string&)
                         {
                             if (++reads == 2)
                             {
                                 throw 7;
                             }
                         });
    EXPECT_FALSE(match(updates));
    EXPECT_EQ(versionsOf(m_matching), QStringList{"1.0"});
    EXPECT_TRUE(m_sorted);
    EXPECT_EQ(m_info->errorString(), unexpected);
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
}

TEST_F(FirmwareService, cameraInUseIsAnUnexpectedException)
{
    const auto updates = read({{"1.0"}});
    ParameterCollection::CObjectState state = concreteCamera()->instanceState(); // copies share it
    state.addUse();
    EXPECT_FALSE(match(updates));
    EXPECT_EQ(m_info->errorString(), unexpected);
    state.removeUse();
    EXPECT_TRUE(match(updates));
}

TEST_F(FirmwareService, unknownUpdatesAreSkipped)
{
    UpdateInfos updates = read({{"1.0"}, {"2.0"}});
    updates.insert(1, UpdateInfoPtr(new ::Test::COtherUpdate));
    updates.append(UpdateInfoPtr());
    EXPECT_TRUE(match(updates));
    EXPECT_EQ(versionsOf(m_matching), (QStringList{"2.0", "1.0"}));
    EXPECT_TRUE(m_service->sortFirmwareUpdateInfos(updates));
    EXPECT_EQ(versionsOf(updates), (QStringList{"2.0", "1.0"}));
}

TEST_F(FirmwareService, jobHoldsTheCameraExclusively)
{
    auto job = m_service->update(m_info, update("2.0"));
    ASSERT_FALSE(job.isNull());
    EXPECT_TRUE(m_pool->isCameraOpenExclusive(m_info));
    EXPECT_EQ(job->getInfoOfDeviceToUpdate(), m_info);
    EXPECT_EQ(order(), QStringLiteral("deviceOpened cameraDetached"));
    EXPECT_TRUE(m_service->update(m_info, update("2.0")).isNull()) << "open already";
    job.clear();
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    EXPECT_EQ(order(), QStringLiteral("deviceOpened cameraDetached cameraAttached deviceClosing deviceClosed"));
}

TEST_F(FirmwareService, updateSwallowsEveryExceptionAndUsesTheSameText)
{
    QObject::connect(m_pool.get(), &CCameraPool::cameraDetached, m_pool.get(), [] { throw 7; });
    EXPECT_TRUE(m_service->update(m_info, update("2.0")).isNull());
    EXPECT_EQ(m_info->errorString(), unexpected);
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
}

TEST_F(FirmwareService, whatIsNoCameraGetsNoJob)
{
    EXPECT_TRUE(m_service->update({}, update("2.0")).isNull());
    const auto interfaceInfo = ::Test::interfaceRecord("eth0");
    EXPECT_TRUE(m_service->update(interfaceInfo, update("2.0")).isNull());
    EXPECT_EQ(interfaceInfo->errorString(), QString());
    EXPECT_EQ(order(), QString());
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
}

} // namespace
