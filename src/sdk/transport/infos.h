// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/gcstring.h"
#include "transport/transport_export.h"

#include <map>
#include <string>
#include <vector>

namespace Velmo
{

/** Names of the properties of information records. */
namespace Key
{
constexpr const char* DeviceClass = "DeviceClass";
constexpr const char* TLType = "TLType";
constexpr const char* FriendlyName = "FriendlyName";
constexpr const char* FullName = "FullName";
constexpr const char* VendorName = "VendorName";
constexpr const char* ModelName = "ModelName";
constexpr const char* SerialNumber = "SerialNumber";
constexpr const char* UserDefinedName = "UserDefinedName";
constexpr const char* DeviceVersion = "DeviceVersion";
constexpr const char* DeviceFactory = "DeviceFactory";
constexpr const char* InterfaceID = "InterfaceID";
constexpr const char* IpAddress = "IpAddress";
constexpr const char* SubnetMask = "SubnetMask";
constexpr const char* DefaultGateway = "DefaultGateway";
constexpr const char* MacAddress = "MacAddress";
constexpr const char* Interface = "Interface";       // address of the adapter that sees the device
constexpr const char* AccessStatus = "AccessStatus"; // "ReadWrite", "InUse", "Unreachable" ... when known
} // namespace Key

/**
 * An information record: a map from property names to texts. Values are copied; a record is an ordinary value.
 * Threads: as any value.
 */
class TRANSPORT_EXPORT CInfoBase
{
public:
    CInfoBase() = default;
    virtual ~CInfoBase();
    CInfoBase(const CInfoBase&) = default;
    CInfoBase(CInfoBase&&) = default;
    CInfoBase& operator=(const CInfoBase&) = default;
    CInfoBase& operator=(CInfoBase&&) = default;

    /** Adds every name that has a value; sorted. Returns their number. */
    int GetPropertyNames(GenICam::gcstring_vector& names) const;
    bool GetPropertyAvailable(const GenICam::gcstring& name) const;
    /** False, and value untouched, when there is no such property. */
    bool GetPropertyValue(const GenICam::gcstring& name, GenICam::gcstring& value) const;
    CInfoBase& SetPropertyValue(const GenICam::gcstring& name, const GenICam::gcstring& value);
    /** "" when there is no such property. */
    GenICam::gcstring Get(const char* name) const;

    GenICam::gcstring GetDeviceClass() const { return Get(Key::DeviceClass); }
    GenICam::gcstring GetTLType() const { return Get(Key::TLType); }
    GenICam::gcstring GetFriendlyName() const { return Get(Key::FriendlyName); }
    GenICam::gcstring GetFullName() const { return Get(Key::FullName); }
    GenICam::gcstring GetVendorName() const { return Get(Key::VendorName); }
    CInfoBase& SetDeviceClass(const GenICam::gcstring& v) { return SetPropertyValue(Key::DeviceClass, v); }
    CInfoBase& SetTLType(const GenICam::gcstring& v) { return SetPropertyValue(Key::TLType, v); }
    CInfoBase& SetFriendlyName(const GenICam::gcstring& v) { return SetPropertyValue(Key::FriendlyName, v); }
    CInfoBase& SetFullName(const GenICam::gcstring& v) { return SetPropertyValue(Key::FullName, v); }
    CInfoBase& SetVendorName(const GenICam::gcstring& v) { return SetPropertyValue(Key::VendorName, v); }
    bool IsUserDefinedNameAvailable() const { return GetPropertyAvailable(Key::UserDefinedName); }

    bool operator==(const CInfoBase& other) const { return m_properties == other.m_properties; }
    /** True when every property of this record has the same value in the other: this record used as a filter. */
    bool IsSubset(const CInfoBase& other) const;

private:
    std::map<std::string, GenICam::gcstring, std::less<>> m_properties;
};

/** A transport layer (producer). */
class TRANSPORT_EXPORT CTlInfo : public CInfoBase
{
public:
    CTlInfo() = default;
    CTlInfo(const CTlInfo&) = default;
    CTlInfo(CTlInfo&&) = default;
    CTlInfo& operator=(const CTlInfo&) = default;
    CTlInfo& operator=(CTlInfo&&) = default;
    ~CTlInfo() override;
};

/** An interface: a network adapter, a frame-grabber port. */
class TRANSPORT_EXPORT CInterfaceInfo : public CInfoBase
{
public:
    CInterfaceInfo() = default;
    CInterfaceInfo(const CInterfaceInfo&) = default;
    CInterfaceInfo(CInterfaceInfo&&) = default;
    CInterfaceInfo& operator=(const CInterfaceInfo&) = default;
    CInterfaceInfo& operator=(CInterfaceInfo&&) = default;
    ~CInterfaceInfo() override;
    GenICam::gcstring GetInterfaceID() const { return Get(Key::InterfaceID); }
    CInfoBase& SetInterfaceID(const GenICam::gcstring& v) { return SetPropertyValue(Key::InterfaceID, v); }
};

/** A camera. */
class TRANSPORT_EXPORT CDeviceInfo : public CInfoBase
{
public:
    CDeviceInfo() = default;
    CDeviceInfo(const CDeviceInfo&) = default;
    CDeviceInfo(CDeviceInfo&&) = default;
    CDeviceInfo& operator=(const CDeviceInfo&) = default;
    CDeviceInfo& operator=(CDeviceInfo&&) = default;
    ~CDeviceInfo() override;
    GenICam::gcstring GetModelName() const { return Get(Key::ModelName); }
    GenICam::gcstring GetSerialNumber() const { return Get(Key::SerialNumber); }
    GenICam::gcstring GetUserDefinedName() const { return Get(Key::UserDefinedName); }
    GenICam::gcstring GetDeviceVersion() const { return Get(Key::DeviceVersion); }
    GenICam::gcstring GetDeviceFactory() const { return Get(Key::DeviceFactory); }
    GenICam::gcstring GetInterfaceID() const { return Get(Key::InterfaceID); }
    GenICam::gcstring GetIpAddress() const { return Get(Key::IpAddress); }
    CInfoBase& SetModelName(const GenICam::gcstring& v) { return SetPropertyValue(Key::ModelName, v); }
    CInfoBase& SetSerialNumber(const GenICam::gcstring& v) { return SetPropertyValue(Key::SerialNumber, v); }
    CInfoBase& SetUserDefinedName(const GenICam::gcstring& v) { return SetPropertyValue(Key::UserDefinedName, v); }
    CInfoBase& SetDeviceVersion(const GenICam::gcstring& v) { return SetPropertyValue(Key::DeviceVersion, v); }
    CInfoBase& SetDeviceFactory(const GenICam::gcstring& v) { return SetPropertyValue(Key::DeviceFactory, v); }
    CInfoBase& SetIpAddress(const GenICam::gcstring& v) { return SetPropertyValue(Key::IpAddress, v); }
};

using TlInfoList = std::vector<CTlInfo>;
using InterfaceInfoList = std::vector<CInterfaceInfo>;
using DeviceInfoList = std::vector<CDeviceInfo>;

} // namespace Velmo
