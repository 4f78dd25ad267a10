// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/firmwareupdateinfo.h"
#include "camerapool/internal/devicefirmwareupdateservice.h"
#include "unit/common/plugins/camerapool/testing/poolfixture.h"

#include <QFile>
#include <QTemporaryDir>

#include <zip.h>

#include <string>
#include <vector>

namespace Test
{

/** A ZIP archive of one stored file. */
inline std::string archiveOf(const char* name, const std::string& bytes, zip_uint16_t encryption = ZIP_EM_NONE)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const pTarget = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(pTarget);
    zip_t* const pArchive = zip_open_from_source(pTarget, ZIP_TRUNCATE, &error);
    zip_file_add(pArchive, name, zip_source_buffer(pArchive, bytes.data(), bytes.size(), 0), ZIP_FL_ENC_UTF_8);
    EXPECT_EQ(zip_file_set_encryption(pArchive, 0, encryption, "secret"), 0);
    EXPECT_EQ(zip_close(pArchive), 0);
    zip_source_open(pTarget);
    zip_source_seek(pTarget, 0, SEEK_END);
    std::string archive(static_cast<std::size_t>(zip_source_tell(pTarget)), '\0');
    zip_source_seek(pTarget, 0, SEEK_SET);
    zip_source_read(pTarget, archive.data(), archive.size());
    zip_source_close(pTarget);
    zip_source_free(pTarget);
    return archive;
}

/** An update of a package without files. */
struct SUpdate
{
    std::string version;
    std::string model = "TestModel";
    std::string description = "An update";
    std::string procedure = "main";
    std::string deviceVersionPattern = {};
};

/** An update that was not read from a package. */
class COtherUpdate : public Plugin::CameraPool::IFirmwareUpdateInfo
{
public:
    QString getVersion() const override { return QStringLiteral("9.0"); }
    QString getDescription() const override { return {}; }
    QString getReleaseNotes() const override { return {}; }
    QString getUpdateFilename() const override { return {}; }
};

/** Packages, a pool with the closed camera "1001", and the service. The steps of an update are the test's own. */
class FirmwareFixture : public PoolFixture
{
protected:
    using IFirmwareUpdateInfo = Plugin::CameraPool::IFirmwareUpdateInfo;
    using UpdateInfoPtr = QSharedPointer<IFirmwareUpdateInfo>;
    using UpdateInfos = QVector<UpdateInfoPtr>;
    using CService = Plugin::CameraPool::Internal::CDeviceFirmwareUpdateService;

    FirmwareFixture() : m_service(new CService(m_pool.get(), nullptr))
    {
        concreteCamera()->setRecoverySleep([this](unsigned int timeMs) { onSleep(timeMs); });
    }

    QSharedPointer<CCamera> concreteCamera() const { return m_pool->findDevice(m_info).objectCast<CCamera>(); }

    static std::string controlOf(const std::vector<SUpdate>& updates, const std::string& steps)
    {
        std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                           "<FirmwarePackage xmlns=\"urn:camerapool:firmwarepackage\" version=\"1.0\"><Procedures>"
                           "<Procedure id=\"main\"><Steps>" +
                           steps + "</Steps></Procedure></Procedures><Updates>";
        int id = 0;
        for (const SUpdate& update : updates)
        {
            text += "<Update id=\"update" + std::to_string(++id) + "\" procedure=\"" + update.procedure +
                    "\"><Condition feature=\"DeviceModelName\" matches=\"" + update.model +
                    "\"/><Info key=\"Version\"><Text>" + update.version +
                    "</Text></Info><Info key=\"Description\"><Text>" + update.description + "</Text></Info>" +
                    (update.deviceVersionPattern.empty()
                         ? std::string()
                         : "<DeviceVersion pattern=\"" + update.deviceVersionPattern + "\"/>") +
                    "</Update>";
        }
        return text + "</Updates></FirmwarePackage>";
    }
    QString package(const std::vector<SUpdate>& updates, const std::string& steps = oneWrite) const
    {
        const QString name = m_folder.filePath(QStringLiteral("päckage.guf"));
        const std::string bytes = archiveOf("package.zip", archiveOf("control.xml", controlOf(updates, steps)));
        QFile file(name);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        return name;
    }
    UpdateInfos read(const std::vector<SUpdate>& updates, const std::string& steps = oneWrite) const
    {
        return m_service->getUpdates(package(updates, steps), QString());
    }
    UpdateInfoPtr update(const std::string& version, const std::string& steps = oneWrite) const
    {
        return read({{version}}, steps).value(0);
    }
    static QStringList versionsOf(const UpdateInfos& updates)
    {
        QStringList versions;
        for (const auto& update : updates)
        {
            versions.append(update->getVersion());
        }
        return versions;
    }
    static std::vector<SUpdate> updatesOf(const std::vector<std::string>& versions)
    {
        std::vector<SUpdate> updates;
        for (const std::string& version : versions)
        {
            updates.push_back({version});
        }
        return updates;
    }

    /** Recovery waits nowhere; the test looks at what it would have waited, and changes the world meanwhile. */
    void onSleep(unsigned int timeMs)
    {
        m_sleeps.push_back(timeMs);
        if (m_atSleep)
        {
            m_atSleep(static_cast<int>(m_sleeps.size()) - 1);
        }
    }

    static inline const std::string oneWrite = "<FeatureWrite feature=\"TriggerMode\" value=\"On\"/>";
    static inline const std::string reset = "<DeviceReset waitTimeMs=\"2000\"/>";
    QTemporaryDir m_folder;
    QSharedPointer<CService> m_service;
    std::vector<unsigned int> m_sleeps;
    std::function<void(int)> m_atSleep;
};

} // namespace Test
