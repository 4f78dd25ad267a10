// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/devicefirmwareupdate.h"

#include "camerapool/firmwareupdateinfo.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/firmwareversion.h"
#include "camerapool/internal/ifirmwareupdatable.h"
#include "genapi/exceptions.h"
#include "parametercollection/parameters.h"

#include <QThread>

#include <array>
#include <utility>

namespace Plugin::CameraPool::Internal
{

namespace
{

const char* const s_unknownVersion = "<unknown>";

EFirmwareUpdateStep stepOf(GenApi::EFirmwareUpdateStepType step)
{
    return static_cast<EFirmwareUpdateStep>(step);
}

/** By the names that the signals use, once per process: queued connections look them up. */
void registerMetaTypes()
{
    static const std::array ids{
        qRegisterMetaType<QSharedPointer<IFirmwareUpdateInfo>>("QSharedPointer<IFirmwareUpdateInfo>"),
        qRegisterMetaType<EFirmwareUpdateStep>("EFirmwareUpdateStep")};
    Q_UNUSED(ids)
}

} // namespace

CDeviceFirmwareUpdate::CDeviceFirmwareUpdate(QPointer<CCameraPool> pool, const QSharedPointer<ICamera>& camera,
                                             const QSharedPointer<IFirmwareUpdateInfo>& updateInfo, QObject* parent)
    : IDeviceFirmwareUpdate(parent), m_pool(std::move(pool)), m_camera(camera), m_updateInfo(updateInfo),
      m_deviceVersion(QLatin1String(s_unknownVersion))
{
    if (const auto info = m_updateInfo.objectCast<CFirmwareUpdateInfo>())
    {
        m_genApiUpdateInfo = info->getGenApiFirmwareUpdateInfo();
    }
    registerMetaTypes();
    updateFirmwareVersionAndFirmwareUpdateDirection();
}

CDeviceFirmwareUpdate::~CDeviceFirmwareUpdate()
{
    if (!m_pool)
    {
        return;
    }
    m_pool->unlock(m_camera);
    const auto info = m_camera.isNull() ? QSharedPointer<IBaseInfo>() : m_camera->getInfo().objectCast<IBaseInfo>();
    if (m_pool && m_pool->isDeviceOpen(info))
    {
        m_pool->closeDevice(info);
    }
}

QSharedPointer<ICameraInfo> CDeviceFirmwareUpdate::getInfoOfDeviceToUpdate() const
{
    return m_camera.isNull() ? QSharedPointer<ICameraInfo>() : m_camera->getInfo().objectCast<ICameraInfo>();
}

QSharedPointer<IFirmwareUpdateInfo> CDeviceFirmwareUpdate::getFirmwareUpdateInfoToApply() const
{
    return m_updateInfo;
}

EFirmwareUpdateDirection CDeviceFirmwareUpdate::getFirmwareUpdateDirection() const
{
    return m_direction;
}

QString CDeviceFirmwareUpdate::getDeviceVersion() const
{
    return m_deviceVersion;
}

bool CDeviceFirmwareUpdate::apply()
{
    bool isDone = false;
    try
    {
        if (const auto updatable = m_camera.dynamicCast<IFirmwareUpdatable>())
        {
            QString failure; // the record's error string has the reason too
            isDone = updatable->applyFirmwareUpdate(m_genApiUpdateInfo, this, failure);
        }
    }
    catch (const std::exception& e)
    {
        setErrorStringHelper(getInfoOfDeviceToUpdate(), e.what());
    }
    catch (...) // NOLINT(bugprone-empty-catch): false is all that can be told
    {
    }
    updateFirmwareVersionAndFirmwareUpdateDirection();
    return isDone;
}

void CDeviceFirmwareUpdate::updateFirmwareVersionAndFirmwareUpdateDirection()
{
    m_direction = EFirmwareUpdateDirection::Unknown;
    m_deviceVersion = QLatin1String(s_unknownVersion);
    if (m_updateInfo.isNull() || !m_genApiUpdateInfo.IsValid() || m_camera.isNull() || !m_camera->isOpen())
    {
        return;
    }
    try
    {
        m_deviceVersion = readDeviceVersion();
        m_direction = directionFrom(m_deviceVersion);
    }
    catch (...) // NOLINT(bugprone-empty-catch): what cannot be read is unknown
    {
    }
}

QString CDeviceFirmwareUpdate::readDeviceVersion() const
{
    const ParameterCollection::CParameter parameter(m_camera->getParameterCollection(),
                                                    QStringLiteral("DeviceFirmwareVersion"));
    return CCameraInfo::qString(
        m_genApiUpdateInfo.ExtractVersionFromDeviceFirmwareVersion(CCameraInfo::velmoString(parameter.toString())));
}

EFirmwareUpdateDirection CDeviceFirmwareUpdate::directionFrom(const QString& deviceVersion) const
{
    const QString updateVersion = m_updateInfo->getVersion();
    if (!isComparableFirmwareVersion(updateVersion) || !isComparableFirmwareVersion(deviceVersion))
    {
        return updateVersion == deviceVersion ? EFirmwareUpdateDirection::Sidegrade : EFirmwareUpdateDirection::Unknown;
    }
    const auto device = parseFirmwareVersion(deviceVersion).components;
    const auto update = parseFirmwareVersion(updateVersion).components;
    if (device == update)
    {
        return EFirmwareUpdateDirection::Sidegrade;
    }
    return device < update ? EFirmwareUpdateDirection::Upgrade : EFirmwareUpdateDirection::Downgrade;
}

void CDeviceFirmwareUpdate::OnFirmwareUpdateBegin(const GenApi::CFirmwareUpdateInfo& /*updateInfo*/,
                                                  unsigned int estimatedDuration)
{
    emit firmwareUpdateBegin(m_updateInfo, estimatedDuration);
}

void CDeviceFirmwareUpdate::OnFirmwareUpdateProgressStepBegin(EStep step, unsigned int estimatedTime,
                                                              const char* description)
{
    if (QThread::currentThread()->isInterruptionRequested())
    {
        GENICAM_THROW(RuntimeException,
                      tr("The firmware update was interrupted between two steps. What was done so far "
                         "stays; apply the update again to complete it.")
                          .toStdString());
    }
    emit firmwareUpdateProgressStepBegin(stepOf(step), estimatedTime, QString::fromUtf8(description));
}

void CDeviceFirmwareUpdate::OnFirmwareUpdateProgressStepPartialProgress(EStep step, double percent)
{
    emit firmwareUpdateProgressStepProgressChanged(stepOf(step), percent);
}

void CDeviceFirmwareUpdate::OnFirmwareUpdateProgressStepEnd(EStep step, unsigned int time)
{
    emit firmwareUpdateProgressStepDone(stepOf(step), time);
}

void CDeviceFirmwareUpdate::OnFirmwareUpdateEnd()
{
    emit firmwareUpdateDone();
}

void CDeviceFirmwareUpdate::OnFirmwareUpdateError(const GenICam::GenericException& error)
{
    emit firmwareUpdateError(QString::fromUtf8(error.GetDescription()));
}

} // namespace Plugin::CameraPool::Internal
