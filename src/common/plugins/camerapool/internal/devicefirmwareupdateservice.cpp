// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/devicefirmwareupdateservice.h"

#include "camerapool/firmwareupdateinfo.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/devicefirmwareupdate.h"
#include "camerapool/internal/firmwareversion.h"
#include "camerapool/internal/hostexceptions.h"
#include "camerapool/internal/ifirmwareupdatable.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Plugin::CameraPool::Internal
{

namespace
{

using UpdateInfoPtr = QSharedPointer<IFirmwareUpdateInfo>;
using UpdateInfos = QVector<UpdateInfoPtr>;

/** Keeps all updates of a file. */
class CFirmwareUpdateInfoCollector : public GenApi::IFirmwareUpdateInfoCollector
{
public:
    bool OnUpdateRead(const GenApi::CFirmwareUpdateInfo& updateInfo) override
    {
        m_updates.append(QSharedPointer<CFirmwareUpdateInfo>(new CFirmwareUpdateInfo(updateInfo, nullptr)));
        return true;
    }
    const UpdateInfos& updates() const { return m_updates; }

private:
    UpdateInfos m_updates;
};

struct SSortable
{
    SFirmwareVersion version;
    UpdateInfoPtr info;
};

bool isOlder(const SSortable& a, const SSortable& b)
{
    return a.version.components < b.version.components;
}

} // namespace

CDeviceFirmwareUpdateService::CDeviceFirmwareUpdateService(QPointer<CCameraPool> pool, QObject* parent)
    : IDeviceFirmwareUpdateService(parent), m_pool(std::move(pool))
{
}

CDeviceFirmwareUpdateService::~CDeviceFirmwareUpdateService() = default;

void CDeviceFirmwareUpdateService::readFirmwareUpdateInfos(const char* fileName,
                                                           GenApi::IFirmwareUpdateInfoCollector& collector,
                                                           const char* filter) const
{
    GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(fileName, collector, filter);
}

UpdateInfos CDeviceFirmwareUpdateService::getUpdates(const QString& fileName, const QString& filter)
{
    try
    {
        CFirmwareUpdateInfoCollector collector;
        const QByteArray fileNameUtf8 = fileName.toUtf8();
        const QByteArray filterUtf8 = filter.toUtf8();
        readFirmwareUpdateInfos(fileNameUtf8.constData(), collector,
                                filter.isEmpty() ? nullptr : filterUtf8.constData());
        return collector.updates();
    }
    catch (const GenICam::GenericException& e)
    {
        throwFileFailureAsHostException(e);
    }
}

bool CDeviceFirmwareUpdateService::getUpdatesMatchingTheDevice(const QSharedPointer<IBaseInfo>& deviceInfo,
                                                               const UpdateInfos& updates, UpdateInfos& matching,
                                                               bool& sorted)
{
    // A copy: matching may be the same list.
    const UpdateInfos all = updates; // NOLINT(performance-unnecessary-copy-initialization)
    matching.resize(0);
    sorted = false;
    if (all.isEmpty())
    {
        return true;
    }
    const auto info = deviceInfo.objectCast<ICameraInfo>();
    if (info.isNull())
    {
        sorted = sortFirmwareUpdateInfos(matching);
        return true;
    }
    QSharedPointer<ICamera> camera;
    bool isDone = false;
    try
    {
        isDone = collectMatching(info, all, matching, camera);
        if (camera.isNull())
        {
            return false;
        }
    }
    catch (...)
    {
        closeAfterFailure(info);
        setErrorStringHelper(
            info, tr("Unexpected exception caught. Failed to get the list of matching firmware updates.").toUtf8());
    }
    sorted = sortFirmwareUpdateInfos(matching);
    return isDone;
}

bool CDeviceFirmwareUpdateService::collectMatching(const QSharedPointer<ICameraInfo>& info, const UpdateInfos& updates,
                                                   UpdateInfos& matching, QSharedPointer<ICamera>& camera)
{
    if (m_pool && m_pool->isDeviceOpen(info))
    {
        m_pool->closeDevice(info.staticCast<IBaseInfo>());
    }
    camera = m_pool ? m_pool->openCameraExclusive(info) : QSharedPointer<ICamera>();
    if (camera.isNull())
    {
        setErrorStringHelper(info, tr("Failed to acquire exclusive camera access.").toUtf8());
        return false;
    }
    bool isDone = true;
    const auto updatable = camera.dynamicCast<IFirmwareUpdatable>();
    for (const auto& update : updates)
    {
        const auto entry = update.objectCast<CFirmwareUpdateInfo>();
        if (entry.isNull() || updatable.isNull())
        {
            continue;
        }
        bool matches = false;
        if (!updatable->matchesFirmwareUpdate(entry->getGenApiFirmwareUpdateInfo(), matches))
        {
            isDone = false;
        }
        if (matches)
        {
            matching.append(update);
        }
    }
    closeIfOpen(camera->getInfo().objectCast<IBaseInfo>());
    return isDone;
}

void CDeviceFirmwareUpdateService::closeIfOpen(const QSharedPointer<IBaseInfo>& info)
{
    if (m_pool && m_pool->isDeviceOpen(info))
    {
        m_pool->closeDevice(info);
    }
}

void CDeviceFirmwareUpdateService::closeAfterFailure(const QSharedPointer<IBaseInfo>& info)
{
    try
    {
        closeIfOpen(info);
    }
    catch (...) // NOLINT(bugprone-empty-catch): the first failure is the one to tell
    {
    }
}

bool CDeviceFirmwareUpdateService::sortFirmwareUpdateInfos(UpdateInfos& infos)
{
    if (infos.isEmpty())
    {
        return false;
    }
    std::vector<SSortable> sortable;
    UpdateInfos setAside;
    for (const auto& info : qAsConst(infos))
    {
        if (info.objectCast<CFirmwareUpdateInfo>().isNull())
        {
            continue;
        }
        const QString version = info->getVersion();
        if (isComparableFirmwareVersion(version))
        {
            sortable.push_back({parseFirmwareVersion(version), info});
        }
        else
        {
            setAside.append(info);
        }
    }
    std::sort(sortable.rbegin(), sortable.rend(), isOlder);
    infos.clear();
    for (const auto& record : sortable)
    {
        infos.append(record.info);
    }
    infos += setAside;
    return setAside.isEmpty();
}

QSharedPointer<IDeviceFirmwareUpdate> CDeviceFirmwareUpdateService::update(const QSharedPointer<IBaseInfo>& deviceInfo,
                                                                           const UpdateInfoPtr& updateInfo)
{
    const auto info = deviceInfo.objectCast<ICameraInfo>();
    QSharedPointer<ICamera> camera;
    try
    {
        camera = m_pool ? m_pool->openCameraExclusive(info) : camera;
        if (camera.isNull())
        {
            setErrorStringHelper(info, tr("Failed to acquire exclusive camera access.").toUtf8());
            return {};
        }
        return QSharedPointer<CDeviceFirmwareUpdate>(new CDeviceFirmwareUpdate(m_pool, camera, updateInfo, nullptr));
    }
    catch (...)
    {
        closeAfterFailure(info); // nobody else would give it back
        setErrorStringHelper(
            info, tr("Unexpected exception caught. Failed to get the list of matching firmware updates.").toUtf8());
    }
    return {};
}

} // namespace Plugin::CameraPool::Internal
