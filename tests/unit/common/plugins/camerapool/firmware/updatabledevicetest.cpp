// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/updatabledevice.h"
#include "genapi/exceptions.h"
#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"
#include "velmo/tlfactory.h"

namespace
{

using Plugin::CameraPool::Internal::CUpdatableDevice;
using ::Test::EFault;
using ::Test::EStep;

const char* const notRediscovered = "Could not rediscover device after reset.";

struct SLogged
{
    QtMsgType type;
    QString text;
};

QVector<SLogged>& logged()
{
    static QVector<SLogged> lines;
    return lines;
}

class UpdatableDevice : public ::Test::CameraPoolFixture
{
protected:
    UpdatableDevice() : m_device([this](unsigned int timeMs) { onSleep(timeMs); })
    {
        m_device.attach(Velmo::CTlFactory::GetInstance().CreateDevice(m_transport->GetDeviceInfo(s_serial)));
        m_device.PrepareForFirmwareUpdate();
        m_transport->SetHook(EStep::DeviceReset, [this](const std::string&) { m_hasReset = true; });
        m_previous = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext&, const QString& text) {
                logged().append({type, text});
            });
    }
    ~UpdatableDevice() override
    {
        qInstallMessageHandler(m_previous);
        logged().clear();
    }

    /** The device is away from its reset until it has been looked for that often in vain; negative: for ever. */
    void returnAfter(int attemptsInVain) { m_attemptsInVain = attemptsInVain; }
    void onSleep(unsigned int timeMs)
    {
        m_sleeps.push_back(timeMs);
        const int attempt = static_cast<int>(m_sleeps.size()) - 1;
        if (attempt == 0 && m_attemptsInVain != 0)
        {
            m_transport->RemoveCamera(s_serial);
        }
        if (attempt == m_attemptsInVain)
        {
            m_transport->AddCamera(::Test::SScriptedCamera());
        }
        if (m_atSleep)
        {
            m_atSleep(attempt);
        }
    }
    std::string reset(unsigned int waitTimeMs)
    {
        try
        {
            m_device.DeviceResetWhileUpdatingFirmware(12345, waitTimeMs);
        }
        catch (const GenICam::GenericException& e)
        {
            m_kind = e.GetKind();
            m_source = e.GetSourceFileName();
            EXPECT_GT(e.GetSourceLine(), 0U);
            return e.GetDescription();
        }
        return {};
    }
    static QStringList lines()
    {
        QStringList all;
        for (const SLogged& line : qAsConst(logged()))
        {
            all.append(line.text);
        }
        return all;
    }
    static int count(const QString& text) { return lines().count(text); }

    CUpdatableDevice m_device;
    std::vector<unsigned int> m_sleeps;
    std::function<void(int)> m_atSleep;
    bool m_hasReset = false;
    int m_attemptsInVain = 0;
    std::string m_kind;
    std::string m_source;
    QtMessageHandler m_previous = nullptr;
};

TEST_F(UpdatableDevice, opensWithoutChangingTheDevicesSettings)
{
    EXPECT_TRUE(m_device.deviceIsOpen());
    EXPECT_TRUE(m_transport->GetWrites(s_serial).empty());
    EXPECT_EQ(m_device.GetDisplayName(), "TestModel (1001)");
    EXPECT_NE(m_device.GetNodeMapOfDeviceToUpdate().GetNode("DeviceReset"), nullptr);
    m_device.CleanupAfterFirmwareUpdate();
    EXPECT_TRUE(m_device.deviceIsOpen());
}

TEST_F(UpdatableDevice, givesTheDeviceAwayAsItIs)
{
    Velmo::IVelmoDevice* pDevice = m_device.detach();
    ASSERT_NE(pDevice, nullptr);
    EXPECT_TRUE(pDevice->IsOpen());
    EXPECT_FALSE(m_device.deviceIsOpen());
    EXPECT_FALSE(m_device.wasReset());
    EXPECT_EQ(m_device.detach(), nullptr);
    Velmo::CTlFactory::GetInstance().DestroyDevice(pDevice);
}

TEST_F(UpdatableDevice, destroysTheDeviceThatItHasAtItsEnd)
{
    {
        CUpdatableDevice other;
        other.attach(m_device.detach());
    }
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(UpdatableDevice, returnsAtTheFirstAttempt)
{
    EXPECT_EQ(reset(5000), "");
    EXPECT_TRUE(m_hasReset);
    EXPECT_TRUE(m_device.wasReset());
    EXPECT_TRUE(m_device.deviceIsOpen());
    EXPECT_EQ(m_sleeps, std::vector<unsigned int>{5000});
    EXPECT_EQ(lines(), (QStringList{"Resetting device.", "Waiting for device to reboot for 5000 ms.",
                                    "Trying to rediscover the device.", "Trying to re-create the device (0).\n",
                                    "Trying to re-open the device (0).\n", "Trying to retrieve nodemap (0)."}));
    EXPECT_EQ(m_transport->GetCount(EStep::DestroyDevice), 1U);
}

TEST_F(UpdatableDevice, waitOfZeroIsHalfASecondAndItsLineSaysZero)
{
    EXPECT_EQ(reset(0), "");
    EXPECT_EQ(m_sleeps, std::vector<unsigned int>{500});
    EXPECT_EQ(lines().value(1), QStringLiteral("Waiting (0)\n"));
}

TEST_F(UpdatableDevice, shortWaitIsOneSecond)
{
    EXPECT_EQ(reset(200), "");
    EXPECT_EQ(m_sleeps, std::vector<unsigned int>{1000});
    EXPECT_EQ(lines().value(1), QStringLiteral("Waiting for device to reboot for 1000 ms."));
}

TEST_F(UpdatableDevice, comesBackAtTheThirdAttempt)
{
    returnAfter(2);
    EXPECT_EQ(reset(2000), "");
    EXPECT_EQ(m_sleeps, (std::vector<unsigned int>{2000, 500, 500}));
    EXPECT_EQ(lines(),
              (QStringList{"Resetting device.", "Waiting for device to reboot for 2000 ms.",
                           "Trying to rediscover the device.", "Waiting (1)\n", "Trying to rediscover the device.",
                           "Waiting (2)\n", "Trying to rediscover the device.", "Trying to re-create the device (2).\n",
                           "Trying to re-open the device (2).\n", "Trying to retrieve nodemap (2)."}));
    EXPECT_TRUE(m_device.deviceIsOpen());
    EXPECT_NE(m_device.GetNodeMapOfDeviceToUpdate().GetNode("DeviceReset"), nullptr);
}

TEST_F(UpdatableDevice, comesBackAtTheLastAttempt)
{
    returnAfter(29);
    EXPECT_EQ(reset(0), "");
    EXPECT_EQ(m_sleeps.size(), 30U);
    EXPECT_TRUE(m_device.deviceIsOpen());
}

TEST_F(UpdatableDevice, neverFoundEndsAfterThirtyAttempts)
{
    returnAfter(-1);
    EXPECT_EQ(reset(1500), notRediscovered);
    EXPECT_EQ(m_kind, "RuntimeException");
    EXPECT_EQ(m_source.find("src/common/plugins/camerapool/internal/updatabledevice"), 0U) << m_source;
    std::vector<unsigned int> expected(30, 500);
    expected.front() = 1500;
    EXPECT_EQ(m_sleeps, expected);
    EXPECT_EQ(count(QStringLiteral("Trying to rediscover the device.")), 30);
    EXPECT_EQ(count(QStringLiteral("Waiting (29)\n")), 1);
    EXPECT_EQ(m_device.detach(), nullptr);
    EXPECT_TRUE(m_device.wasReset());
}

TEST_F(UpdatableDevice, deviceFoundOnceButNotOpenedIsFoundTwiceAndGivenUp)
{
    m_transport->SetFault(EStep::OpenControl, EFault::Access, "still busy", s_serial, 1);
    EXPECT_EQ(reset(0), notRediscovered);
    EXPECT_EQ(m_sleeps.size(), 30U);
    EXPECT_EQ(count(QStringLiteral("Failed to re-open device '1001'")), 1);
    EXPECT_EQ(count(QStringLiteral("Trying to re-open the device (0).\n")), 1);
    EXPECT_FALSE(lines().contains(QStringLiteral("Trying to re-create the device (1).\n")));
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(UpdatableDevice, lastAttemptsFailureIsLoggedAsCritical)
{
    returnAfter(29);
    m_transport->SetFault(EStep::OpenControl, EFault::Runtime);
    EXPECT_EQ(reset(0), notRediscovered);
    int critical = 0;
    for (const SLogged& line : qAsConst(logged()))
    {
        critical += line.type == QtCriticalMsg ? 1 : 0;
        EXPECT_EQ(line.type == QtCriticalMsg, line.text == QStringLiteral("Failed to re-open device '1001'"));
    }
    EXPECT_EQ(critical, 1);
}

TEST_F(UpdatableDevice, failureThatIsNoneOfGenICamEndsTheRecovery)
{
    m_transport->SetFault(EStep::OpenControl, EFault::Standard);
    EXPECT_THROW(m_device.DeviceResetWhileUpdatingFirmware(0, 0), std::runtime_error);
    EXPECT_EQ(m_sleeps.size(), 1U);
}

TEST_F(UpdatableDevice, twoDevicesOfOneSerialNumberAreNeverChosenFrom)
{
    ::Test::SScriptedCamera twin;
    twin.serialNumber = "twin";
    twin.moreProperties = {{Velmo::Key::SerialNumber, s_serial}};
    m_transport->AddCamera(twin);
    EXPECT_EQ(reset(0), notRediscovered);
    EXPECT_EQ(m_sleeps.size(), 30U);
    EXPECT_FALSE(lines().contains(QStringLiteral("Trying to re-create the device (0).\n")));
}

TEST_F(UpdatableDevice, anotherDeviceIsNotTakenForTheOneThatWasReset)
{
    returnAfter(-1);
    m_atSleep = [this](int attempt)
    {
        if (attempt == 3)
        {
            ::Test::SScriptedCamera other;
            other.serialNumber = "1002";
            m_transport->AddCamera(other);
        }
    };
    EXPECT_EQ(reset(0), notRediscovered);
}

TEST_F(UpdatableDevice, deviceWithoutAResetCommandIsRefused)
{
    const std::string none;
    const std::string noCommand = "<Integer Name=\"DeviceReset\"><Value>0</Value></Integer>";
    int serialNumber = 1003;
    for (const std::string& node : {none, noCommand})
    {
        ::Test::SScriptedCamera camera;
        camera.serialNumber = std::to_string(serialNumber++);
        camera.description = "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" "
                             "StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" "
                             "SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\" "
                             "ProductGuid=\"p\" VersionGuid=\"v\" "
                             "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\"><Category Name=\"Root\"/>" +
                             node + "<Port Name=\"Device\"/></RegisterDescription>";
        m_transport->AddCamera(camera);
        CUpdatableDevice device;
        device.attach(Velmo::CTlFactory::GetInstance().CreateDevice(m_transport->GetDeviceInfo(camera.serialNumber)));
        device.PrepareForFirmwareUpdate();
        try
        {
            device.DeviceResetWhileUpdatingFirmware(0, 0);
            ADD_FAILURE() << "reset without a command: '" << node << "'";
        }
        catch (const GenICam::LogicalErrorException& e)
        {
            EXPECT_STREQ(e.GetDescription(), "NULL pointer dereferenced");
            EXPECT_EQ(std::string(e.GetSourceFileName()).find("src/common/plugins/camerapool/internal/updatabledevice"),
                      0U);
        }
        EXPECT_TRUE(device.deviceIsOpen());
        EXPECT_FALSE(device.wasReset());
    }
}

} // namespace
