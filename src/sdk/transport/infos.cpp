// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/infos.h"

namespace Velmo
{

CInfoBase::~CInfoBase() = default;
CTlInfo::~CTlInfo() = default;
CInterfaceInfo::~CInterfaceInfo() = default;
CDeviceInfo::~CDeviceInfo() = default;

int CInfoBase::GetPropertyNames(GenICam::gcstring_vector& names) const
{
    for (const auto& [name, value] : m_properties)
    {
        names.emplace_back(name);
    }
    return static_cast<int>(m_properties.size());
}

bool CInfoBase::GetPropertyAvailable(const GenICam::gcstring& name) const
{
    return m_properties.find(name.str()) != m_properties.end();
}

bool CInfoBase::GetPropertyValue(const GenICam::gcstring& name, GenICam::gcstring& value) const
{
    const auto found = m_properties.find(name.str());
    if (found == m_properties.end())
    {
        return false;
    }
    value = found->second;
    return true;
}

CInfoBase& CInfoBase::SetPropertyValue(const GenICam::gcstring& name, const GenICam::gcstring& value)
{
    m_properties[name.str()] = value;
    return *this;
}

GenICam::gcstring CInfoBase::Get(const char* name) const
{
    const auto found = m_properties.find(name);
    return found == m_properties.end() ? GenICam::gcstring() : found->second;
}

bool CInfoBase::IsSubset(const CInfoBase& other) const
{
    for (const auto& [name, value] : m_properties)
    {
        const auto found = other.m_properties.find(name);
        if (found == other.m_properties.end() || found->second != value)
        {
            return false;
        }
    }
    return true;
}

} // namespace Velmo
