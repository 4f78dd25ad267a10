// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/devicefirmwareupdate.h"
#include "unit/common/plugins/camerapool/firmware/firmwarefixture.h"

#include <QMetaEnum>
#include <QThread>

#include <thread>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

using EDirection = EFirmwareUpdateDirection;
using JobPtr = QSharedPointer<IDeviceFirmwareUpdate>;

const QString unknown = QStringLiteral("<unknown>");

class FirmwareJob : public ::Test::FirmwareFixture
{
protected:
    /** A job for the camera with that version of its own. */
    JobPtr job(const std::string& deviceVersion, const std::string& updateVersion, const std::string& steps = oneWrite,
               const std::string& pattern = {})
    {
        ::Test::SScriptedCamera camera;
        camera.deviceVersion = deviceVersion;
        m_transport->AddCamera(camera);
        const auto updates = read({{updateVersion, "TestModel", "An update", "main", pattern}}, steps);
        JobPtr result = m_service->update(m_info, updates.value(0));
        EXPECT_FALSE(result.isNull()) << m_info->errorString().toStdString();
        return result;
    }
    EDirection direction(const std::string& deviceVersion, const std::string& updateVersion)
    {
        return job(deviceVersion, updateVersion)->getFirmwareUpdateDirection();
    }
    /** Writes down every signal with its arguments, on the thread that emits it. */
    void record(const JobPtr& job)
    {
        const auto* const pJob = job.data();
        const auto add = [this](const QString& text)
        {
            m_told.append(text);
        };
        QObject::connect(pJob, &IDeviceFirmwareUpdate::firmwareUpdateBegin, pJob,
                         [=](const UpdateInfoPtr& info, unsigned int ms)
                         { add(QStringLiteral("begin %1 %2").arg(info->getVersion()).arg(ms)); });
        QObject::connect(pJob, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepBegin, pJob,
                         [=](EFirmwareUpdateStep step, unsigned int ms, const QString& text)
                         { add(QStringLiteral("step %1 %2 '%3'").arg(int(step)).arg(ms).arg(text)); });
        QObject::connect(pJob, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepProgressChanged, pJob,
                         [=](EFirmwareUpdateStep step, double percent)
                         { add(QStringLiteral("percent %1 %2").arg(int(step)).arg(percent)); });
        QObject::connect(pJob, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepDone, pJob,
                         [=](EFirmwareUpdateStep step, unsigned int ms)
                         { add(QStringLiteral("end %1 %2").arg(int(step)).arg(ms)); });
        QObject::connect(pJob, &IDeviceFirmwareUpdate::firmwareUpdateDone, pJob, [=] { add(QStringLiteral("done")); });
        QObject::connect(pJob, &IDeviceFirmwareUpdate::firmwareUpdateError, pJob,
                         [=](const QString& text) { add(QStringLiteral("error ") + text); });
    }

    QStringList m_told;
};

/** The camera as one that takes no updates. */
class CPlainCamera : public ICamera
{
public:
    explicit CPlainCamera(QSharedPointer<ICamera> camera) : m_camera(std::move(camera)) {}
    QSharedPointer<Plugin::AppCore::IInfo> getInfo() const override { return m_camera->getInfo(); }
    bool isConnected() const override { return m_camera->isConnected(); }
    bool isOpen() const override { return m_camera->isOpen(); }
    QSharedPointer<ParameterCollection::IParameterCollection> getParameterCollection() const override
    {
        return m_camera->getParameterCollection();
    }
    bool isGrabbing() const override { return m_camera->isGrabbing(); }
    bool isMonitorModeActive() const override { return m_camera->isMonitorModeActive(); }
    bool open(bool monitorMode) override { return m_camera->open(monitorMode); }
    void close() override { m_camera->close(); }
    void startGrabbing() override { m_camera->startGrabbing(); }
    void stopGrabbing() override { m_camera->stopGrabbing(); }
    void singleShot(unsigned int timeout) override { m_camera->singleShot(timeout); }

private:
    const QSharedPointer<ICamera> m_camera;
};

/** The observer's functions, which only the module calls. */
class CObservedJob : public CDeviceFirmwareUpdate
{
public:
    using CDeviceFirmwareUpdate::CDeviceFirmwareUpdate;
    using CDeviceFirmwareUpdate::OnFirmwareUpdateBegin;
    using CDeviceFirmwareUpdate::OnFirmwareUpdateEnd;
    using CDeviceFirmwareUpdate::OnFirmwareUpdateError;
    using CDeviceFirmwareUpdate::OnFirmwareUpdateProgressStepBegin;
    using CDeviceFirmwareUpdate::OnFirmwareUpdateProgressStepEnd;
    using CDeviceFirmwareUpdate::OnFirmwareUpdateProgressStepPartialProgress;
};

TEST(FirmwareEnumerations, haveTheModulesNumbersAndNames)
{
    const auto steps = QMetaEnum::fromType<EFirmwareUpdateStep>();
    const QStringList names{"CheckPreconditions", "AcquireUpdateData", "FeatureWrite", "FeatureExecute",
                            "FeatureAssert",      "FileUpload",        "DeviceReset",  "Invalid"};
    ASSERT_EQ(steps.keyCount(), names.size());
    for (int i = 0; i < names.size(); ++i)
    {
        EXPECT_EQ(QString::fromLatin1(steps.valueToKey(i)), names.at(i));
    }
    EXPECT_EQ(static_cast<int>(GenApi::EFirmwareUpdateStepType::FileUpload),
              static_cast<int>(EFirmwareUpdateStep::FileUpload));
    const auto directions = QMetaEnum::fromType<EDirection>();
    ASSERT_EQ(directions.keyCount(), 4);
    EXPECT_STREQ(directions.valueToKey(0), "Upgrade");
    EXPECT_STREQ(directions.valueToKey(1), "Downgrade");
    EXPECT_STREQ(directions.valueToKey(2), "Sidegrade");
    EXPECT_STREQ(directions.valueToKey(3), "Unknown");
    EXPECT_STREQ(directions.scope(), "Plugin::CameraPool");
}

TEST_F(FirmwareJob, directionComparesFourNumbers)
{
    EXPECT_EQ(direction("1.0.0", "2.0"), EDirection::Upgrade);
    EXPECT_EQ(direction("3.1.0", "3.1"), EDirection::Sidegrade);
    EXPECT_EQ(direction("3.10", "3.9.9"), EDirection::Downgrade);
    EXPECT_EQ(direction("3.9.9.1", "3.9.9.2"), EDirection::Upgrade);
    EXPECT_EQ(direction("2.0", "10.0"), EDirection::Upgrade);
}

TEST_F(FirmwareJob, versionsThatCannotBeComparedAreTheSameOrUnknown)
{
    EXPECT_EQ(direction("seven", "seven"), EDirection::Sidegrade);
    EXPECT_EQ(direction("7", "8"), EDirection::Unknown);
    EXPECT_EQ(direction("1.0", "8"), EDirection::Unknown);
    EXPECT_EQ(direction("seven", "1.0"), EDirection::Unknown);
    EXPECT_EQ(job("seven", "8")->getDeviceVersion(), QStringLiteral("seven"));
}

TEST_F(FirmwareJob, deviceVersionIsThePartThatThePackageNames)
{
    const auto update = job("Fw 1.5.0 build 7", "1.6", oneWrite, "Fw ([0-9.]+) build [0-9]+");
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("1.5.0"));
    EXPECT_EQ(update->getFirmwareUpdateDirection(), EDirection::Upgrade);
}

TEST_F(FirmwareJob, patternThatDoesNotFitLeavesBothUnknown)
{
    const auto update = job("1.5.0", "1.6", oneWrite, "Fw ([0-9.]+)");
    EXPECT_EQ(update->getDeviceVersion(), unknown);
    EXPECT_EQ(update->getFirmwareUpdateDirection(), EDirection::Unknown);
}

TEST_F(FirmwareJob, closedCameraNoCameraAndNoUpdateAreUnknown)
{
    const CDeviceFirmwareUpdate closed(m_pool.get(), camera(), update("2.0"), nullptr);
    EXPECT_EQ(closed.getDeviceVersion(), unknown);
    EXPECT_EQ(closed.getFirmwareUpdateDirection(), EDirection::Unknown);
    CDeviceFirmwareUpdate without(m_pool.get(), {}, update("2.0"), nullptr);
    EXPECT_EQ(without.getDeviceVersion(), unknown);
    EXPECT_TRUE(without.getInfoOfDeviceToUpdate().isNull());
    EXPECT_FALSE(without.apply());
    ASSERT_TRUE(m_pool->openDevice(BaseInfoPtr(m_info), false));
    CDeviceFirmwareUpdate noUpdate(m_pool.get(), camera(), {}, nullptr);
    EXPECT_EQ(noUpdate.getDeviceVersion(), unknown);
    EXPECT_TRUE(noUpdate.getFirmwareUpdateInfoToApply().isNull());
    EXPECT_FALSE(noUpdate.apply());
}

TEST_F(FirmwareJob, updateOfAnotherKindIsUnknownAndNotApplied)
{
    ASSERT_TRUE(m_pool->openDevice(BaseInfoPtr(m_info), false));
    const UpdateInfoPtr other(new ::Test::COtherUpdate);
    CDeviceFirmwareUpdate job(m_pool.get(), camera(), other, nullptr);
    EXPECT_EQ(job.getFirmwareUpdateInfoToApply(), other);
    EXPECT_EQ(job.getDeviceVersion(), unknown);
    EXPECT_EQ(job.getFirmwareUpdateDirection(), EDirection::Unknown);
    EXPECT_FALSE(job.apply());
    EXPECT_EQ(job.getDeviceVersion(), unknown);
    EXPECT_TRUE(camera()->isOpen());
}

TEST_F(FirmwareJob, passesOnWhatTheModuleTells)
{
    const auto job = QSharedPointer<CObservedJob>(new CObservedJob(nullptr, {}, update("2.0"), nullptr));
    record(job);
    using Type = GenApi::EFirmwareUpdateStepType;
    job->OnFirmwareUpdateBegin(GenApi::CFirmwareUpdateInfo(), 90);
    job->OnFirmwareUpdateProgressStepBegin(Type::FileUpload, 80, "schön");
    job->OnFirmwareUpdateProgressStepPartialProgress(Type::FileUpload, 12.5);
    job->OnFirmwareUpdateProgressStepEnd(Type::FileUpload, 81);
    job->OnFirmwareUpdateEnd();
    job->OnFirmwareUpdateError(GenICam::RuntimeException("größer", "file", 1));
    EXPECT_EQ(m_told, (QStringList{"begin 2.0 90", QString::fromUtf8("step 5 80 'schön'"), "percent 5 12.5", "end 5 81",
                                   "done", QString::fromUtf8("error größer")}));
    QString text = QStringLiteral("not null");
    QObject::connect(job.data(), &IDeviceFirmwareUpdate::firmwareUpdateProgressStepBegin, job.data(),
                     [&](EFirmwareUpdateStep, unsigned int, const QString& description) { text = description; });
    job->OnFirmwareUpdateProgressStepBegin(Type::DeviceReset, 1, nullptr);
    EXPECT_TRUE(text.isNull());
}

TEST_F(FirmwareJob, signalsCrossThreadsQueued)
{
    const auto job = QSharedPointer<CObservedJob>(new CObservedJob(nullptr, {}, update("2.0"), nullptr));
    EXPECT_NE(QMetaType::type("QSharedPointer<IFirmwareUpdateInfo>"), QMetaType::UnknownType);
    EXPECT_TRUE(QMetaType::hasRegisteredConverterFunction(qMetaTypeId<QSharedPointer<IFirmwareUpdateInfo>>(),
                                                          static_cast<int>(QMetaType::QObjectStar)));
    UpdateInfoPtr told;
    EFirmwareUpdateStep step = EFirmwareUpdateStep::Invalid;
    QObject context;
    QObject::connect(job.data(), &IDeviceFirmwareUpdate::firmwareUpdateBegin, &context,
                     [&](const UpdateInfoPtr& info, unsigned int) { told = info; });
    QObject::connect(job.data(), &IDeviceFirmwareUpdate::firmwareUpdateProgressStepDone, &context,
                     [&](EFirmwareUpdateStep done, unsigned int) { step = done; });
    std::thread thread(
        [&]
        {
            job->OnFirmwareUpdateBegin(GenApi::CFirmwareUpdateInfo(), 90);
            job->OnFirmwareUpdateProgressStepEnd(GenApi::EFirmwareUpdateStepType::DeviceReset, 1);
        });
    thread.join();
    EXPECT_TRUE(told.isNull());
    EXPECT_TRUE(::Test::waitUntil([&] { return step == EFirmwareUpdateStep::DeviceReset; }));
    EXPECT_EQ(told, job->getFirmwareUpdateInfoToApply());
}

TEST_F(FirmwareJob, applyTellsEachStepAndReadsTheVersionAnew)
{
    const auto update = job("1.0.0", "2.0",
                            "<FeatureWrite feature=\"DeviceUserID\" value=\"new\" estimatedTimeMs=\"70\">"
                            "<Description><Text>Naming</Text></Description></FeatureWrite>");
    record(update);
    EXPECT_TRUE(update->apply()) << m_info->errorString().toStdString();
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "DeviceUserID"), "new");
    EXPECT_EQ(m_told,
              (QStringList{"begin 2.0 1170", "step 0 1000 ''", "percent 0 100", "end 0 1000", "step 1 100 ''",
                           "percent 1 100", "end 1 100", "step 2 70 'Naming'", "percent 2 100", "end 2 70", "done"}));
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("1.0.0"));
    EXPECT_TRUE(update->apply()) << "again";
}

TEST_F(FirmwareJob, cameraThatTakesNoUpdatesGetsNoneAndItsVersionIsReadAnew)
{
    ASSERT_TRUE(m_pool->openDevice(BaseInfoPtr(m_info), false));
    const auto plain = QSharedPointer<CPlainCamera>::create(camera());
    const auto job = QSharedPointer<CDeviceFirmwareUpdate>::create(m_pool.get(), plain, update("2.0"), nullptr);
    const QString version = job->getDeviceVersion();
    EXPECT_NE(version, unknown);
    record(job);
    m_pool->closeDevice(BaseInfoPtr(m_info));
    EXPECT_FALSE(job->apply());
    EXPECT_EQ(job->getDeviceVersion(), unknown);
    EXPECT_EQ(job->getFirmwareUpdateDirection(), EDirection::Unknown);
    ASSERT_TRUE(m_pool->openDevice(BaseInfoPtr(m_info), false));
    EXPECT_FALSE(job->apply());
    EXPECT_EQ(job->getDeviceVersion(), version);
    EXPECT_EQ(m_told, QStringList());
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "TriggerMode"), "");
}

TEST_F(FirmwareJob, versionAfterAResetIsTheNewFirmwares)
{
    const auto update = job("1.0.0", "2.0", reset);
    EXPECT_EQ(update->getFirmwareUpdateDirection(), EDirection::Upgrade);
    m_atSleep = [this](int)
    {
        m_transport->RemoveCamera(s_serial);
        ::Test::SScriptedCamera camera;
        camera.deviceVersion = "2.0.0";
        m_transport->AddCamera(camera);
    };
    EXPECT_TRUE(update->apply()) << m_info->errorString().toStdString();
    EXPECT_EQ(m_sleeps, std::vector<unsigned int>{2000});
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("2.0.0"));
    EXPECT_EQ(update->getFirmwareUpdateDirection(), EDirection::Sidegrade);
}

TEST_F(FirmwareJob, failureIsFalseAndToldWithItsReason)
{
    const auto update = job("1.0.0", "2.0", "<FeatureWrite feature=\"DeviceModelName\" value=\"x\"/>");
    record(update);
    EXPECT_FALSE(update->apply());
    ASSERT_FALSE(m_told.isEmpty());
    EXPECT_EQ(m_told.last(), QStringLiteral("error ") + m_info->errorString());
    EXPECT_TRUE(
        m_log.contains(QStringLiteral("Failure while updating the firmware. Reason: ") + m_info->errorString()));
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("1.0.0"));
}

TEST_F(FirmwareJob, cameraInUseIsAFailureWithoutASignal)
{
    const auto update = job("1.0.0", "2.0");
    record(update);
    ParameterCollection::CObjectState state = concreteCamera()->instanceState(); // copies share it
    state.addUse();
    EXPECT_FALSE(update->apply());
    state.removeUse();
    EXPECT_TRUE(m_told.isEmpty());
    EXPECT_EQ(m_info->errorString(), QStringLiteral("Action cannot be performed. The stream grabber is still in use."));
    EXPECT_TRUE(update->apply());
}

TEST_F(FirmwareJob, whateverAReceiverThrowsIsSwallowedAndTheCameraKept)
{
    const auto update = job("1.0.0", "2.0");
    QObject::connect(update.data(), &IDeviceFirmwareUpdate::firmwareUpdateDone, update.data(), [] { throw 7; });
    EXPECT_FALSE(update->apply());
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("1.0.0"));
    EXPECT_TRUE(camera()->isOpen());
}

TEST_F(FirmwareJob, interruptedThreadEndsBeforeTheNextStep)
{
    const auto update = job("1.0.0", "2.0",
                            "<FeatureWrite feature=\"TriggerMode\" value=\"On\"/>"
                            "<FeatureWrite feature=\"ExposureTime\" value=\"77\"/>");
    record(update);
    QObject::connect(
        update.data(), &IDeviceFirmwareUpdate::firmwareUpdateProgressStepBegin, update.data(),
        [](EFirmwareUpdateStep step, unsigned int, const QString&)
        {
            if (step == EFirmwareUpdateStep::FeatureWrite)
            {
                QThread::currentThread()->requestInterruption();
            }
        },
        Qt::DirectConnection);
    bool isDone = true;
    std::thread thread([&] { isDone = update->apply(); }); // the sanitizer knows its start and its end
    thread.join();
    EXPECT_FALSE(isDone);
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "TriggerMode"), "1") << "the step that had begun";
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "ExposureTime"), "");
    EXPECT_TRUE(m_info->errorString().startsWith(QStringLiteral("The firmware update was interrupted")));
    EXPECT_TRUE(camera()->isOpen());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(m_told.last(), QStringLiteral("error ") + m_info->errorString());
    EXPECT_FALSE(m_told.contains(QStringLiteral("done")));
}

TEST_F(FirmwareJob, endGivesTheCameraBackAndClosesIt)
{
    auto update = job("1.0.0", "2.0");
    m_order.clear();
    update.clear();
    EXPECT_EQ(order(), QStringLiteral("cameraAttached deviceClosing deviceClosed"));
    EXPECT_TRUE(m_pool->openDevice(BaseInfoPtr(m_info), false));
}

TEST_F(FirmwareJob, endGivesACameraBackThatIsClosedAlready)
{
    auto update = job("1.0.0", "2.0");
    camera()->close();
    m_order.clear();
    update.clear();
    EXPECT_EQ(order(), QStringLiteral("cameraAttached"));
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
}

TEST_F(FirmwareJob, outlivesThePool)
{
    auto update = job("1.0.0", "2.0");
    m_pool.reset();
    EXPECT_EQ(update->getInfoOfDeviceToUpdate(), m_info);
    update.clear();
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

} // namespace
