// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"

#include "camerapool/deviceclasses.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/recordthread.h"

#include <QHash>

#include <vector>

namespace Plugin::CameraPool
{

namespace
{

struct SKnownCamera
{
    int position; // -1: there is none
    bool isSame;  // nothing that a record is refreshed for has changed
};

/** What tells whether a camera is known and unchanged, side by side in memory: among thousands of cameras, whole
 * records are too far apart for the processor's caches. */
class CKnownNames
{
public:
    explicit CKnownNames(const Velmo::CDeviceInfo& info)
    {
        read(info, Velmo::Key::DeviceClass, m_deviceClass);
        read(info, Velmo::Key::FullName, m_fullName);
        read(info, Velmo::Key::FriendlyName, m_friendlyName);
        read(info, Velmo::Key::UserDefinedName, m_userDefinedName);
        m_isConsumer = m_deviceClass.str().find(DeviceClass::GenTlConsumer) != std::string::npos;
    }

    /** False when in doubt: the name of a producer's camera is made of further properties. */
    bool areThoseOf(const Velmo::CDeviceInfo& info) const
    {
        static const GenICam::gcstring deviceClass(Velmo::Key::DeviceClass);
        static const GenICam::gcstring fullName(Velmo::Key::FullName);
        static const GenICam::gcstring friendlyName(Velmo::Key::FriendlyName);
        static const GenICam::gcstring userDefinedName(Velmo::Key::UserDefinedName);
        return !m_isConsumer && is(info, fullName, m_fullName) && is(info, friendlyName, m_friendlyName) &&
               is(info, userDefinedName, m_userDefinedName) && is(info, deviceClass, m_deviceClass);
    }

private:
    static void read(const Velmo::CDeviceInfo& info, const char* key, GenICam::gcstring& value)
    {
        info.GetPropertyValue(key, value);
    }

    static bool is(const Velmo::CDeviceInfo& info, const GenICam::gcstring& key, const GenICam::gcstring& expected)
    {
        static thread_local GenICam::gcstring value; // keeps its memory
        return info.GetPropertyValue(key, value) ? value == expected : expected.empty();
    }

    GenICam::gcstring m_fullName;
    GenICam::gcstring m_friendlyName;
    GenICam::gcstring m_userDefinedName;
    GenICam::gcstring m_deviceClass;
    bool m_isConsumer;
};

/** Where to find a record by its full name. */
class CKnownCameraIndex
{
public:
    /** Notices updates that were not made through update(). */
    void synchronize(const QVector<QSharedPointer<Internal::CCameraInfo>>& known)
    {
        if (m_updateCount == Internal::CCameraInfo::updateCount())
        {
            return;
        }
        m_updateCount = Internal::CCameraInfo::updateCount();
        m_positions.clear();
        m_names.clear();
        for (int i = known.size() - 1; i >= 0; --i) // backwards: of equal names the first remains
        {
            m_positions.insert(known.at(i)->getFullName(), i);
        }
        for (const auto& info : known)
        {
            m_names.emplace_back(info->getVelmoDeviceInfo());
        }
    }

    SKnownCamera find(const QVector<QSharedPointer<Internal::CCameraInfo>>& known, const Velmo::CDeviceInfo& info)
    {
        // Cameras mostly come back unchanged and in the same order; that costs no conversion of their names.
        if (isUnchanged(known, m_next, info))
        {
            return {m_next++, true};
        }
        const int position = m_positions.value(Internal::CCameraInfo::qString(info.GetFullName()), -1);
        m_next = position + 1;
        return {position, position >= 0 && isUnchanged(known, position, info)};
    }

    void add(const QString& fullName, int position, const Velmo::CDeviceInfo& info)
    {
        m_positions.insert(fullName, position);
        m_names.emplace_back(info);
        m_next = position + 1;
    }

    void update(int position, const Velmo::CDeviceInfo& info)
    {
        m_names[static_cast<std::size_t>(position)] = CKnownNames(info);
        m_updateCount = Internal::CCameraInfo::updateCount();
    }

private:
    bool isUnchanged(const QVector<QSharedPointer<Internal::CCameraInfo>>& known, int position,
                     const Velmo::CDeviceInfo& info) const
    {
        return position < known.size() && (m_names[static_cast<std::size_t>(position)].areThoseOf(info) ||
                                           known.at(position)->getVelmoDeviceInfo() == info);
    }

    QHash<QString, int> m_positions;
    std::vector<CKnownNames> m_names; // by position
    unsigned int m_updateCount = 0;
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
    index.synchronize(known);
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
            index.add(info->getFullName(), position, velmoInfo);
        }
        else if (!isSame && hasOtherNames(*known.at(position), velmoInfo))
        {
            known.at(position)->updateFromDeviceInfo(velmoInfo);
            index.update(position, velmoInfo);
            changed = true;
        }
        result.append(known.at(position));
    }
    return result;
}

} // namespace Plugin::CameraPool
