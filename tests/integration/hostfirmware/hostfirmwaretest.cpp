// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/idevicefirmwareupdateservice.h"
#include "genapi/firmwarepackagewriter.h"
#include "integration/plugin/hostfixture.h"
#include "simulator/firmware.h"
#include "support/cameraprogram.h"

#include <QMutex>

#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <ostream>
#include <thread>

namespace
{

using namespace Plugin::CameraPool;
using JobPtr = QSharedPointer<IDeviceFirmwareUpdate>;
using UpdateInfos = QVector<QSharedPointer<IFirmwareUpdateInfo>>;

enum class ETransport
{
    Emulation,
    GigE // a program of its own, over loopback
};

/** For GoogleTest. */
std::ostream& operator<<(std::ostream& stream, ETransport transport)
{
    return stream << (transport == ETransport::GigE ? "GigE" : "Emulation");
}

/** The host with the checked-in example package, and a second client that only listens to the status service. */
class HostFirmware : public ::Test::HostFixture, public ::testing::WithParamInterface<ETransport>
{
protected:
    void SetUp() override
    {
        if (isGigE())
        {
            startProgram(camerasAsData());
        }
        HostFixture::SetUp();
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_TRUE(QFile::copy(QStringLiteral(EXAMPLE "/control.xml"), path("control.xml")));
        for (const char* const version : {"1.5.0", "2.0.0"})
        {
            const auto image = Simulator::MakeFirmware(version, "EmuMono1280", 2000);
            QFile file(path((std::string("emumono-") + version + ".bin").c_str()));
            ASSERT_TRUE(file.open(QFile::WriteOnly));
            file.write(reinterpret_cast<const char*>(image.data()), static_cast<qint64>(image.size()));
        }
        GenApi::CFirmwarePackageWriter().WritePackage(path("control.xml").toUtf8(), path("example.guf").toUtf8());
        m_camera = cameras().value(0);
        m_updates = service<IDeviceFirmwareUpdateService>()->getUpdates(path("example.guf"), QString());
        ASSERT_EQ(m_updates.size(), 2);
        listen();
    }
    static bool isGigE() { return GetParam() == ETransport::GigE; }
    QByteArray adapters() const override { return isGigE() ? "127.0.0.1" : "none"; }
    QByteArray emulation() const override { return isGigE() ? QByteArray(R"({"cameras": []})") : camerasAsData(); }
    QByteArray camerasAsData() const
    {
        return R"({"cameras": [{"serial": "FW-A", "firmware": "1.5.0", "bootTimeMs": 20)" + m_more +
               R"(}, {"serial": "FW-B", "model": "Other"}]})";
    }
    void startProgram(const QByteArray& data)
    {
        QFile file(path("gige.json"));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(data);
        file.close();
        m_program.reset(); // the addresses are taken until it is gone
        m_program.emplace(std::vector<std::string>{"--config", path("gige.json").toStdString(), "--count", "2"}, 2);
    }
    QString path(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }

    void listen()
    {
        const auto status = service<ICameraStatusService>();
        const auto* const pStatus = status.data();
        const auto add = [this](const char* name)
        {
            return [this, name](const auto& info)
            {
                if (info == m_camera)
                {
                    m_heard.append(QString::fromLatin1(name));
                }
            };
        };
        QObject::connect(pStatus, &ICameraStatusService::deviceOpened, pStatus, add("opened"));
        QObject::connect(pStatus, &ICameraStatusService::deviceClosing, pStatus, add("closing"));
        QObject::connect(pStatus, &ICameraStatusService::deviceClosed, pStatus, add("closed"));
        QObject::connect(pStatus, &ICameraStatusService::cameraDetached, pStatus, add("detached"));
        QObject::connect(pStatus, &ICameraStatusService::cameraAttached, pStatus, add("attached"));
        QObject::connect(pStatus, &ICameraStatusService::cameraConnectionLost, pStatus, add("lost"));
    }
    QString heard() { return std::exchange(m_heard, {}).join(QLatin1Char(' ')); }

    JobPtr job(const QString& version)
    {
        for (const auto& update : qAsConst(m_updates))
        {
            if (update->getVersion() == version)
            {
                return service<IDeviceFirmwareUpdateService>()->update(m_camera, update);
            }
        }
        return {};
    }
    /** On a thread of its own, as hosts do it; the main thread goes on. Not Qt's: the thread sanitizer knows this one.
     */
    bool apply(IDeviceFirmwareUpdate& job)
    {
        std::atomic<bool> isFinished{false};
        bool isDone = false;
        std::thread thread(
            [&]
            {
                isDone = job.apply();
                isFinished = true;
            });
        const auto isOver = [&]
        {
            runTask();
            return isFinished.load();
        };
        EXPECT_TRUE(QTest::qWaitFor(isOver, 60000));
        thread.join();
        return isDone;
    }
    /** Has that done by the main thread while it waits in apply(), and waits for it. */
    void onMainThread(std::function<void()> work)
    {
        std::packaged_task<void()> task(std::move(work));
        std::future<void> done = task.get_future();
        {
            const std::lock_guard<std::mutex> lock(m_taskMutex);
            m_task = std::move(task);
        }
        done.wait();
    }
    void runTask()
    {
        std::packaged_task<void()> task;
        {
            const std::lock_guard<std::mutex> lock(m_taskMutex);
            std::swap(task, m_task);
        }
        if (task.valid())
        {
            task();
        }
    }
    /** What the second client is told of the camera when it asks. */
    bool isOpen() const { return service<ICameraStatusService>()->isDeviceOpen(m_camera); }
    void expectUpdate(const QString& version, EFirmwareUpdateDirection direction)
    {
        expectApplied(version, direction,
                      [&](const IDeviceFirmwareUpdate& update)
                      {
                          EXPECT_EQ(update.getDeviceVersion(), version);
                          EXPECT_EQ(update.getFirmwareUpdateDirection(), EFirmwareUpdateDirection::Sidegrade);
                      });
    }
    void expectApplied(const QString& version, EFirmwareUpdateDirection direction,
                       const std::function<void(const IDeviceFirmwareUpdate&)>& checkUpdated = {})
    {
        EXPECT_FALSE(isOpen());
        auto update = job(version);
        ASSERT_FALSE(update.isNull()) << m_camera->errorString().toStdString();
        EXPECT_EQ(update->getFirmwareUpdateDirection(), direction);
        EXPECT_EQ(heard(), QStringLiteral("opened detached"));
        EXPECT_TRUE(isOpen());
        EXPECT_FALSE(service<ICameraControlService>()->open(m_camera, false)) << "it is locked";
        int steps = 0;
        QObject::connect(
            update.data(), &IDeviceFirmwareUpdate::firmwareUpdateProgressStepBegin, m_camera.data(),
            [&]
            {
                onMainThread(
                    [&]
                    {
                        ++steps;
                        EXPECT_FALSE(isOpen()) << "the update has its device";
                        EXPECT_EQ(heard(), QString());
                        EXPECT_FALSE(service<ICameraControlService>()->open(m_camera, false));
                    });
            },
            Qt::DirectConnection);
        EXPECT_TRUE(apply(*update)) << m_camera->errorString().toStdString();
        EXPECT_EQ(steps, 7);
        if (checkUpdated)
        {
            checkUpdated(*update);
        }
        EXPECT_EQ(heard(), QString());
        EXPECT_TRUE(isOpen());
        update.clear();
        EXPECT_EQ(heard(), QStringLiteral("attached closing closed"));
        EXPECT_FALSE(isOpen());
    }
    void expectOpenable()
    {
        EXPECT_TRUE(service<ICameraControlService>()->open(m_camera, false)) << m_camera->errorString().toStdString();
        service<ICameraControlService>()->close(m_camera);
    }

    std::optional<::Test::CCameraProgram> m_program; // of GigE cameras
    QByteArray m_more;
    CameraInfoPtr m_camera;
    UpdateInfos m_updates;
    QStringList m_heard;
    std::mutex m_taskMutex; // guards the one below
    std::packaged_task<void()> m_task;
};

TEST_P(HostFirmware, upgradesRepeatsAndDowngrades)
{
    expectUpdate(QStringLiteral("2.0.0"), EFirmwareUpdateDirection::Upgrade);
    expectUpdate(QStringLiteral("2.0.0"), EFirmwareUpdateDirection::Sidegrade);
    expectUpdate(QStringLiteral("1.5.0"), EFirmwareUpdateDirection::Downgrade);
    expectOpenable();
}

TEST_P(HostFirmware, listsWhatFitsNewestFirstAndClosesWhoeverHasTheCameraOpen)
{
    ASSERT_TRUE(service<ICameraControlService>()->open(m_camera, false));
    heard();
    UpdateInfos matching;
    bool isSorted = false;
    EXPECT_TRUE(
        service<IDeviceFirmwareUpdateService>()->getUpdatesMatchingTheDevice(m_camera, m_updates, matching, isSorted));
    EXPECT_TRUE(isSorted);
    ASSERT_EQ(matching.size(), 2);
    EXPECT_EQ(matching.first()->getVersion(), QStringLiteral("2.0.0"));
    EXPECT_EQ(heard(), QStringLiteral("closing closed opened detached closing attached closed"));
    EXPECT_TRUE(service<IDeviceFirmwareUpdateService>()->getUpdatesMatchingTheDevice(cameras().at(1), m_updates,
                                                                                     matching, isSorted));
    EXPECT_TRUE(matching.isEmpty());
}

TEST_P(HostFirmware, whoAsksForUpdatesMeanwhileWaitsAndIsRefused)
{
    auto update = job(QStringLiteral("2.0.0"));
    ASSERT_FALSE(update.isNull());
    std::atomic_bool isEnded{false};
    QObject::connect(
        update.data(), &IDeviceFirmwareUpdate::firmwareUpdateDone, update.data(), [&] { isEnded = true; },
        Qt::DirectConnection);
    int asked = 0;
    QObject::connect(update.data(), &IDeviceFirmwareUpdate::firmwareUpdateProgressStepBegin, m_camera.data(),
                     [&](EFirmwareUpdateStep step)
                     {
                         if (step != EFirmwareUpdateStep::DeviceReset)
                         {
                             return;
                         }
                         ++asked;
                         EXPECT_TRUE(service<IDeviceFirmwareUpdateService>()->update(m_camera, m_updates[0]).isNull());
                         EXPECT_TRUE(isEnded);
                         EXPECT_EQ(m_camera->errorString(),
                                   QStringLiteral("Failed to acquire exclusive camera access."));
                     });
    heard();
    EXPECT_TRUE(apply(*update));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(heard(), QString());
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("2.0.0"));
}

TEST_P(HostFirmware, whoAsksWhatFitsTakesTheCameraFromAWaitingJobWhichCanStillBeApplied)
{
    auto update = job(QStringLiteral("2.0.0"));
    ASSERT_FALSE(update.isNull());
    heard();
    UpdateInfos matching;
    bool isSorted = false;
    EXPECT_TRUE(
        service<IDeviceFirmwareUpdateService>()->getUpdatesMatchingTheDevice(m_camera, m_updates, matching, isSorted));
    EXPECT_EQ(matching.size(), 2);
    EXPECT_EQ(heard(), QStringLiteral("closing attached closed opened detached closing attached closed"));
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(apply(*update)) << m_camera->errorString().toStdString();
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("2.0.0"));
    update.clear();
    EXPECT_FALSE(isOpen());
    expectOpenable();
}

/** A camera that does not come back until it is switched on again at the third look for it: another one, whose version
 *  says nothing of the upload. */
class HostFirmwareSlow : public HostFirmware
{
protected:
    HostFirmwareSlow() { m_more = R"(, "firmwareBootTimeMs": 600000)"; }

    void switchOn()
    {
        const QByteArray data = camerasAsData().replace("1.5.0", "2.0.0");
        isGigE() ? startProgram(data) : writeEmulation(data);
    }
};

TEST_P(HostFirmwareSlow, cameraComesBackAtTheThirdAttempt)
{
    static QStringList s_lines;
    static QMutex s_mutex;
    static std::function<void()> s_atThird; // on the thread that looks for the camera, before it waits
    s_lines.clear();
    s_atThird = [this]
    {
        switchOn();
    };
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text)
        {
            const QMutexLocker lock(&s_mutex);
            s_lines.append(text);
            if (text == QStringLiteral("Waiting (2)\n"))
            {
                s_atThird();
            }
        });
    expectApplied(QStringLiteral("2.0.0"), EFirmwareUpdateDirection::Upgrade);
    qInstallMessageHandler(previous);
    EXPECT_TRUE(s_lines.contains(QStringLiteral("Waiting for device to reboot for 1000 ms.")));
    EXPECT_TRUE(s_lines.contains(QStringLiteral("Trying to re-create the device (2).\n")));
    EXPECT_FALSE(s_lines.contains(QStringLiteral("Trying to re-create the device (1).\n")));
}

/** A camera that is not to be had again after its reset. */
class HostFirmwareGone : public HostFirmware
{
protected:
    void expectGivenUp()
    {
        auto update = job(QStringLiteral("2.0.0"));
        ASSERT_FALSE(update.isNull());
        QString told;
        QObject::connect(update.data(), &IDeviceFirmwareUpdate::firmwareUpdateError, m_camera.data(),
                         [&](const QString& text) { told = text; });
        EXPECT_EQ(heard(), QStringLiteral("opened detached"));
        EXPECT_FALSE(apply(*update));
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(told, QStringLiteral("Could not rediscover device after reset."));
        EXPECT_EQ(m_camera->errorString(), told);
        EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("<unknown>"));
        EXPECT_FALSE(isOpen());
        EXPECT_EQ(heard(), QString()) << "it is locked";
        update.clear();
        EXPECT_FALSE(isOpen());
        // The pass of every ten seconds drops the camera in the midst of the attempts, which take fifteen, or does not.
        const QString after = heard();
        EXPECT_TRUE(after == QStringLiteral("attached") || after.isEmpty()) << after.toStdString();
    }
};

class HostFirmwareNever : public HostFirmwareGone
{
protected:
    HostFirmwareNever() { m_more = R"(, "faults": {"afterReset": "never"})"; }
};

TEST_P(HostFirmwareNever, cameraThatNeverReturnsIsGivenBackClosedOrIsGone)
{
    expectGivenUp();
    EXPECT_FALSE(service<ICameraControlService>()->open(m_camera, false));
}

class HostFirmwareTwice : public HostFirmwareGone
{
protected:
    HostFirmwareTwice() { m_more = R"(, "faults": {"afterReset": "twice"})"; }
};

TEST_P(HostFirmwareTwice, twoCamerasOfOneSerialNumberAreNotChosenFrom)
{
    expectGivenUp();
    expectOpenable();
}

class HostFirmwarePowerLoss : public HostFirmware
{
protected:
    HostFirmwarePowerLoss() { m_more = R"(, "faults": {"powerLossAtFileOperation": 3})"; }
};

TEST_P(HostFirmwarePowerLoss, cameraThatVanishesMidStepKeepsItsFirmwareAndCanBeTriedAgain)
{
    auto update = job(QStringLiteral("2.0.0"));
    ASSERT_FALSE(update.isNull());
    EXPECT_FALSE(apply(*update));
    EXPECT_TRUE(m_camera->errorString().contains(QStringLiteral("The upload failed")))
        << m_camera->errorString().toStdString();
    update.clear();
    EXPECT_TRUE(QTest::qWaitFor(
        [&]
        {
            update = job(QStringLiteral("2.0.0"));
            return !update.isNull();
        },
        20000))
        << m_camera->errorString().toStdString();
    ASSERT_FALSE(update.isNull());
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("1.5.0"));
    EXPECT_TRUE(apply(*update)) << m_camera->errorString().toStdString();
    EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("2.0.0"));
}

/** Packages whose steps take the power before what they do next. */
class HostFirmwareNoPower : public HostFirmware
{
protected:
    JobPtr jobOf(const QByteArray& steps)
    {
        QFile file(path("own.xml"));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(R"(<FirmwarePackage xmlns="urn:camerapool:firmwarepackage" version="1.0">
            <Files><File name="emumono-2.0.0.bin"/></Files><Procedures><Procedure id="all"><Steps>)" +
                   steps + R"(</Steps></Procedure></Procedures><Updates><Update id="u" procedure="all">
            <Condition feature="DeviceModelName" matches=".*"/><Info key="Version"><Text>2.0.0</Text></Info>
            </Update></Updates></FirmwarePackage>)");
        file.close();
        GenApi::CFirmwarePackageWriter().WritePackage(path("own.xml").toUtf8(), path("own.guf").toUtf8());
        const auto updates = service<IDeviceFirmwareUpdateService>()->getUpdates(path("own.guf"), QString());
        return service<IDeviceFirmwareUpdateService>()->update(m_camera, updates.value(0));
    }
    /** Applies it in vain; afterwards the camera has that version, and can be updated. */
    void expectLost(const QByteArray& steps, const QString& version)
    {
        auto update = jobOf(steps);
        ASSERT_FALSE(update.isNull()) << m_camera->errorString().toStdString();
        EXPECT_FALSE(apply(*update));
        EXPECT_FALSE(m_camera->errorString().isEmpty());
        update.clear();
        EXPECT_FALSE(isOpen());
        EXPECT_TRUE(QTest::qWaitFor(
            [&]
            {
                update = job(QStringLiteral("2.0.0"));
                return !update.isNull();
            },
            60000))
            << m_camera->errorString().toStdString();
        ASSERT_FALSE(update.isNull());
        EXPECT_EQ(update->getDeviceVersion(), version);
        EXPECT_TRUE(apply(*update)) << m_camera->errorString().toStdString();
        EXPECT_EQ(update->getDeviceVersion(), QStringLiteral("2.0.0"));
    }

    const QByteArray m_upload = R"(<FileUpload file="emumono-2.0.0.bin" deviceFile="FirmwareUpdate"/>)";
    const QByteArray m_loss = R"(<FeatureWrite feature="FaultPowerLossAtWrite" value="1"/>)";
    const QByteArray m_activate = R"(<FeatureExecute feature="FirmwareActivate" activates="true"/>)";
};

TEST_P(HostFirmwareNoPower, atTheActivationTheOldFirmwareStays)
{
    expectLost(m_upload + m_loss + m_activate + "<DeviceReset/>", QStringLiteral("1.5.0"));
}

TEST_P(HostFirmwareNoPower, atTheRestartTheNewFirmwareRuns)
{
    expectLost(m_upload + m_activate + m_loss + "<DeviceReset/>", QStringLiteral("2.0.0"));
}

const auto transports = ::testing::Values(ETransport::Emulation, ETransport::GigE);
const auto names = [](const auto& info)
{
    return info.param == ETransport::GigE ? "GigE" : "Emulation";
};
INSTANTIATE_TEST_SUITE_P(Over, HostFirmware, transports, names);
INSTANTIATE_TEST_SUITE_P(Over, HostFirmwareSlow, transports, names);
INSTANTIATE_TEST_SUITE_P(Over, HostFirmwareNever, transports, names);
INSTANTIATE_TEST_SUITE_P(Over, HostFirmwareTwice, transports, names);
INSTANTIATE_TEST_SUITE_P(Over, HostFirmwarePowerLoss, transports, names);
INSTANTIATE_TEST_SUITE_P(Over, HostFirmwareNoPower, transports, names);

} // namespace
