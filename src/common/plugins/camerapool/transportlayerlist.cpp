// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/transportlayerlist.h"

#include "camerapool/deviceclasses.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/enumerationlog.h"
#include "camerapool/internal/interfaceinfo.h"
#include "camerapool/internal/recordthread.h"
#include "camerapool/internal/transportlayerinfo.h"
#include "camerapool/internal/unusablesettings.h"
#include "velmo/tlfactory.h"

#include <QSettings>

#include <algorithm>
#include <optional>
#include <utility>

namespace Plugin::CameraPool
{

namespace
{

using Internal::enumerationLog;
using KnownTransportLayers = QVector<QSharedPointer<Internal::CTransportLayerInfo>>;

constexpr int ExpectedTransportLayers = 5;

/** None for a text that is no truth value; QSettings would make one of any. */
std::optional<bool> truthOf(const QVariant& value)
{
    if (value.type() != QVariant::String)
    {
        return value.canConvert<bool>() ? std::make_optional(value.toBool()) : std::nullopt;
    }
    const auto text = value.toString().trimmed().toLower();
    if (text == QLatin1String("true") || text == QLatin1String("1"))
    {
        return true;
    }
    if (text == QLatin1String("false") || text == QLatin1String("0"))
    {
        return false;
    }
    return std::nullopt;
}

/** A value that is no truth value counts as not there. */
bool readBool(const QSettings& settings, const QString& key, bool defaultValue)
{
    const auto value = settings.value(key, defaultValue);
    const auto truth = truthOf(value);
    const auto name = settings.group() + QLatin1Char('/') + key;
    if (Internal::isNewlyUnusable(name, truth.has_value(), Internal::settingText(value)))
    {
        qCWarning(enumerationLog, "The setting %s has the unusable value \"%s\"; %s is used.", qUtf8Printable(name),
                  qUtf8Printable(Internal::settingText(value)), defaultValue ? "true" : "false");
    }
    return truth.value_or(defaultValue);
}

bool isGigE(const GenICam::gcstring& deviceClass)
{
    return deviceClass == DeviceClass::GigE || deviceClass == DeviceClass::GenTlGigE;
}

QSharedPointer<Internal::CTransportLayerInfo> recordFor(const Velmo::CTlInfo& velmoInfo, KnownTransportLayers& known)
{
    const auto fullName = Internal::CCameraInfo::qString(velmoInfo.GetFullName());
    const auto found = std::find_if(known.cbegin(), known.cend(),
                                    [&fullName](const auto& record) { return record->getFullName() == fullName; });
    if (found != known.cend())
    {
        return *found;
    }
    const auto record = Internal::CTransportLayerInfo::fromVelmoTransportLayer(velmoInfo);
    Internal::moveToMainThread(*record);
    known.append(record);
    return record;
}

void refreshInterfaces(Velmo::ITransportLayer& tl, Internal::CTransportLayerInfo& record)
{
    Velmo::InterfaceInfoList velmoInterfaces;
    tl.EnumerateInterfaces(velmoInterfaces, false);
    const auto interfaces = CInterfaceInfoList::fromInterfaceInfoList(velmoInterfaces);
    const auto isReal = [](const auto& info)
    {
        return info->getInterfaceId() != QLatin1String("DefaultInterface");
    };
    if (std::any_of(interfaces.cbegin(), interfaces.cend(), isReal))
    {
        record.setInterfaceInfoList(interfaces);
    }
}

void refreshCameras(Velmo::ITransportLayer& tl, bool allDevicesDisabled, Internal::CTransportLayerInfo& record)
{
    Velmo::DeviceInfoList velmoDevices;
    auto* const pGigE = dynamic_cast<Velmo::IGigETransportLayer*>(&tl);
    if (pGigE && !allDevicesDisabled)
    {
        pGigE->EnumerateAllDevices(velmoDevices, false);
    }
    else
    {
        tl.EnumerateDevices(velmoDevices, false);
    }
    bool recordsUpdated = false;
    const auto cameras = CCameraInfoList::fromDeviceInfoList(std::move(velmoDevices), recordsUpdated);
    record.replaceCameraInfoList(cameras, recordsUpdated);
}

/** Returns how many cameras the record had before. */
int refresh(Velmo::ITransportLayer& tl, bool allDevicesDisabled, Internal::CTransportLayerInfo& record)
{
    int countBefore = record.cameraInfoList().size();
    try
    {
        refreshInterfaces(tl, record);
        countBefore = record.cameraInfoList().size();
        refreshCameras(tl, allDevicesDisabled, record);
    }
    catch (const std::exception& e)
    {
        qCDebug(enumerationLog, "CTransportLayerList::refreshTransportLayerList failed: %s", e.what());
    }
    catch (...)
    {
        qCDebug(enumerationLog, "CTransportLayerList::refreshTransportLayerList: Unknown exception occured");
    }
    return countBefore;
}

void logResult(const Internal::CTransportLayerInfo& record, int countBefore)
{
    if (!enumerationLog().isDebugEnabled())
    {
        return;
    }
    const auto cameras = record.cameraInfoList();
    qCDebug(enumerationLog, "Enumerated '%s' and found %d new devices.", record.getFriendlyName().toUtf8().constData(),
            cameras.size() - countBefore);
    for (const auto& camera : cameras)
    {
        qCDebug(enumerationLog, "    Found '%s'", camera->getFriendlyName().toUtf8().constData());
    }
}

bool enumerateTransportLayers(Velmo::TlInfoList& list)
{
    try
    {
        Velmo::CTlFactory::GetInstance().EnumerateTls(list);
        return true;
    }
    catch (const std::exception& e)
    {
        qCDebug(enumerationLog, "CTransportLayerList::refreshTransportLayerList failed: %s", e.what());
    }
    catch (...)
    {
        qCDebug(enumerationLog, "CTransportLayerList::refreshTransportLayerList: Unknown exception occured");
    }
    return false;
}

Velmo::ITransportLayer* createTransportLayer(const Velmo::CTlInfo& velmoInfo)
{
    try
    {
        return Velmo::CTlFactory::GetInstance().CreateTl(velmoInfo);
    }
    catch (...)
    {
        return nullptr; // as when it cannot be created: its record is listed as it was
    }
}

void releaseTransportLayer(const Velmo::ITransportLayer* pTl)
{
    try
    {
        Velmo::CTlFactory::GetInstance().ReleaseTl(pTl);
    }
    catch (const std::exception& e)
    {
        qCDebug(enumerationLog, "A transport layer could not be released: %s", e.what());
    }
    catch (...)
    {
        qCDebug(enumerationLog, "A transport layer could not be released: unknown exception");
    }
}

} // namespace

struct CTransportLayerList::SSettings
{
    static SSettings read();

    bool allDevicesDisabled = false;
    bool cxpProducerKept = true;
};

CTransportLayerList::SSettings CTransportLayerList::SSettings::read()
{
    QSettings settings;
    settings.beginGroup(QStringLiteral("Enumeration"));
    SSettings result;
    result.allDevicesDisabled = readBool(settings, QStringLiteral("DisableEnumerateAllDevices"), false);
    result.cxpProducerKept = readBool(settings, QStringLiteral("ReleaseTeskCXPProducer"), true);
    return result;
}

QVector<QSharedPointer<Internal::CTransportLayerInfo>>* CTransportLayerList::m_pKnownTransportLayers = nullptr;
Velmo::ITransportLayer* CTransportLayerList::m_pCxpTransportLayer = nullptr;

QVector<QSharedPointer<Internal::CTransportLayerInfo>>& CTransportLayerList::knownTransportLayers()
{
    if (!m_pKnownTransportLayers)
    {
        m_pKnownTransportLayers = new KnownTransportLayers;
    }
    return *m_pKnownTransportLayers;
}

void CTransportLayerList::refreshTransportLayerList(CTransportLayerList& list, bool gigEOnly, bool transportLayersOnly,
                                                    bool logResults)
{
    CTransportLayerList result;
    result.reserve(ExpectedTransportLayers);
    Velmo::TlInfoList velmoInfos;
    if (!enumerateTransportLayers(velmoInfos))
    {
        return;
    }
    const auto settings = SSettings::read();
    if (settings.allDevicesDisabled)
    {
        qCDebug(enumerationLog, "EnumerateAllDevices is disabled. Falling back to EnumerateDevices");
    }
    for (const auto& velmoInfo : velmoInfos)
    {
        if (gigEOnly && !isGigE(velmoInfo.GetDeviceClass()))
        {
            continue;
        }
        const auto record = recordFor(velmoInfo, knownTransportLayers());
        record->setHaveContainedCamerasChanged(false);
        if (!transportLayersOnly)
        {
            refreshContents(velmoInfo, settings, logResults, *record);
        }
        result.append(record);
    }
    list.swap(result);
}

void CTransportLayerList::refreshContents(const Velmo::CTlInfo& velmoInfo, const SSettings& settings, bool logResults,
                                          Internal::CTransportLayerInfo& record)
{
    const bool isKept = settings.cxpProducerKept && velmoInfo.GetDeviceClass() == DeviceClass::GenTlCxp;
    auto* const pTl = isKept ? cxpTransportLayer(velmoInfo) : createTransportLayer(velmoInfo);
    if (pTl == nullptr)
    {
        return;
    }
    const int countBefore = refresh(*pTl, settings.allDevicesDisabled, record);
    if (logResults)
    {
        logResult(record, countBefore);
    }
    // By how it was obtained: the factory may count one handle per device class, also of the one kept from before.
    if (!isKept)
    {
        releaseTransportLayer(pTl);
    }
}

Velmo::ITransportLayer* CTransportLayerList::cxpTransportLayer(const Velmo::CTlInfo& velmoInfo)
{
    if (m_pCxpTransportLayer == nullptr)
    {
        m_pCxpTransportLayer = createTransportLayer(velmoInfo);
    }
    return m_pCxpTransportLayer;
}

void CTransportLayerList::releaseTeskProducer()
{
    if (m_pCxpTransportLayer != nullptr)
    {
        releaseTransportLayer(std::exchange(m_pCxpTransportLayer, nullptr));
    }
}

} // namespace Plugin::CameraPool
