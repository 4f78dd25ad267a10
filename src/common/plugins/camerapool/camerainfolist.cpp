// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/recordthread.h"

#include <QHash>

namespace Plugin::CameraPool
{

namespace
{

struct SKnownCamera
{
    int position; // -1: there is none
    bool isSame;  // the whole SDK record is as it was
};

/** Where to find a record by its full name. */
class CKnownCameraIndex
{
public:
    SKnownCamera find(const QVector<QSharedPointer<Internal::CCameraInfo>>& known, const Velmo::CDeviceInfo& info)
    {
        // Cameras mostly come back unchanged and in the same order; that costs no conversion of their names.
        if (m_next < known.size() && known.at(m_next)->getVelmoDeviceInfo() == info)
        {
            return {m_next++, true};
        }
        const int position = m_positions.value(Internal::CCameraInfo::qString(info.GetFullName()), -1);
        m_next = position + 1;
        return {position, position >= 0 && known.at(position)->getVelmoDeviceInfo() == info};
    }

    void add(const QString& fullName, int position)
    {
        m_positions.insert(fullName, position);
        m_next = position + 1;
    }

private:
    QHash<QString, int> m_positions;
    int m_next = 0;
};

bool hasOtherNames(const Internal::CCameraInfo& known, const Velmo::CDeviceInfo& info)
{
    return known.getFriendlyName() != Internal::CCameraInfo::friendlyName(info) ||
           known.getUserDefinedName() != Internal::CCameraInfo::qString(info.GetUserDefinedName());
}

} // namespace

QVector<QSharedPointer<Internal::CCameraInfo>>* CCameraInfoList::m_pKnownCameras = nullptr;

QVector<QSharedPointer<Internal::CCameraInfo>>& CCameraInfoList::knownCameras()
{
    if (!m_pKnownCameras)
    {
        m_pKnownCameras = new QVector<QSharedPointer<Internal::CCameraInfo>>;
    }
    return *m_pKnownCameras;
}

QVector<QSharedPointer<IBaseInfo>> CCameraInfoList::toBaseInfoVector() const
{
    QVector<QSharedPointer<IBaseInfo>> result;
    result.reserve(size());
    for (const auto& info : *this)
    {
        result.append(info);
    }
    return result;
}

CCameraInfoList CCameraInfoList::fromDeviceInfoList(Velmo::DeviceInfoList devices, bool& changed)
{
    static CKnownCameraIndex index;
    auto& known = knownCameras();
    changed = false;
    CCameraInfoList result;
    result.reserve(static_cast<int>(devices.size()));
    for (const auto& velmoInfo : devices)
    {
        auto [position, isSame] = index.find(known, velmoInfo);
        if (position < 0)
        {
            const auto info = Internal::CCameraInfo::fromDeviceInfo(velmoInfo);
            Internal::moveToMainThread(*info);
            position = known.size();
            known.append(info);
            index.add(info->getFullName(), position);
        }
        else if (!isSame && hasOtherNames(*known.at(position), velmoInfo))
        {
            known.at(position)->updateFromDeviceInfo(velmoInfo);
            changed = true;
        }
        result.append(known.at(position));
    }
    return result;
}

} // namespace Plugin::CameraPool
