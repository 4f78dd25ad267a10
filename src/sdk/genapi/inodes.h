// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/exceptions.h"
#include "genapi/gcstring.h"
#include "genapi/genapi_export.h"
#include "genapi/types.h"

#include <cstdint>
#include <functional>
#include <vector>

/**
 * The node interfaces. Nodes belong to their node map and live as long as it does.
 *
 * Threads: every function may be called from any thread; each takes its node map's one recursive lock. Change
 * callbacks run after that lock is released, on the thread whose call caused the change.
 * Errors: AccessException (not readable, writable, available; locked), OutOfRangeException (value outside limits or
 * off the increment), InvalidArgumentException (unknown entry, bad text), LogicalErrorException (what a description
 * gets wrong at run time), RuntimeException (formula errors, port failures), TimeoutException (port).
 */
namespace GenApi
{

class INode;
class INodeMap;
class IEnumEntry;
using NodeList = std::vector<INode*>;
using FeatureList = std::vector<INode*>;
using EnumEntryList = std::vector<IEnumEntry*>;
using CallbackHandle = std::uint64_t; // 0 is no callback

class GENAPI_EXPORT IBase
{
public:
    virtual ~IBase();
    virtual EAccessMode GetAccessMode() const = 0;
};

class GENAPI_EXPORT INode : public virtual IBase
{
public:
    ~INode() override;
    virtual GenICam::gcstring GetName(bool fullyQualified = false) const = 0;
    virtual ENameSpace GetNameSpace() const = 0;
    virtual EVisibility GetVisibility() const = 0;
    virtual GenICam::gcstring GetToolTip() const = 0;
    virtual GenICam::gcstring GetDescription() const = 0;
    virtual GenICam::gcstring GetDisplayName() const = 0;
    virtual GenICam::gcstring GetDeviceName() const = 0;
    virtual GenICam::gcstring GetEventID() const = 0;
    virtual GenICam::gcstring GetDocuURL() const = 0;
    virtual bool IsFeature() const = 0;
    virtual bool IsStreamable() const = 0;
    virtual bool IsDeprecated() const = 0;
    virtual bool IsCachable() const = 0;
    virtual ECachingMode GetCachingMode() const = 0;
    /** Milliseconds between polls; negative when the node is not polled. */
    virtual std::int64_t GetPollingTime() const = 0;
    virtual EInterfaceType GetPrincipalInterfaceType() const = 0;
    virtual INode* GetAlias() const = 0;
    virtual INode* GetCastAlias() const = 0;
    virtual INodeMap* GetNodeMap() const = 0;
    /** Any other text property of the description by its element name; false when absent. */
    virtual bool GetProperty(const GenICam::gcstring& name, GenICam::gcstring& value) const = 0;
    /** Drops the cached value of this node and of all that depend on it, and fires their callbacks. */
    virtual void InvalidateNode() = 0;
    /** Called once for each change, also for changes of what the node depends on. Never called with the node map's lock
     *  held, unless the caller of the change holds it by INodeMap::GetLock(). What the callback throws reaches the
     *  caller of the change after all other callbacks ran. */
    virtual CallbackHandle RegisterCallback(std::function<void(INode*)> callback) = 0;
    /** Returns after a call running on another thread has ended; the callback is not called again. False when there is
     *  no such callback. Must not be called with a lock held that the callback takes. */
    virtual bool DeregisterCallback(CallbackHandle handle) = 0;
};

class GENAPI_EXPORT IValue : public virtual IBase
{
public:
    ~IValue() override;
    virtual GenICam::gcstring ToString(bool verify = false, bool ignoreCache = false) = 0;
    virtual void FromString(const GenICam::gcstring& text, bool verify = true) = 0;
    virtual bool IsValueCacheValid() const = 0;
};

class GENAPI_EXPORT IInteger : public virtual IValue
{
public:
    ~IInteger() override;
    virtual void SetValue(std::int64_t value, bool verify = true) = 0;
    virtual std::int64_t GetValue(bool verify = false, bool ignoreCache = false) = 0;
    virtual std::int64_t GetMin() = 0;
    virtual std::int64_t GetMax() = 0;
    virtual EIncMode GetIncMode() = 0;
    virtual std::int64_t GetInc() = 0;
    virtual ERepresentation GetRepresentation() = 0;
    virtual GenICam::gcstring GetUnit() = 0;
};

class GENAPI_EXPORT IFloat : public virtual IValue
{
public:
    ~IFloat() override;
    virtual void SetValue(double value, bool verify = true) = 0;
    virtual double GetValue(bool verify = false, bool ignoreCache = false) = 0;
    virtual double GetMin() = 0;
    virtual double GetMax() = 0;
    virtual bool HasInc() = 0;
    virtual double GetInc() = 0;
    virtual ERepresentation GetRepresentation() = 0;
    virtual GenICam::gcstring GetUnit() = 0;
    virtual EDisplayNotation GetDisplayNotation() const = 0;
    virtual std::int64_t GetDisplayPrecision() const = 0;
};

class GENAPI_EXPORT IBoolean : public virtual IValue
{
public:
    ~IBoolean() override;
    virtual void SetValue(bool value, bool verify = true) = 0;
    virtual bool GetValue(bool verify = false, bool ignoreCache = false) = 0;
};

class GENAPI_EXPORT ICommand : public virtual IValue
{
public:
    ~ICommand() override;
    virtual void Execute(bool verify = true) = 0;
    virtual bool IsDone(bool verify = true) = 0;
};

class GENAPI_EXPORT IString : public virtual IValue
{
public:
    ~IString() override;
    virtual void SetValue(const GenICam::gcstring& value, bool verify = true) = 0;
    virtual GenICam::gcstring GetValue(bool verify = false, bool ignoreCache = false) = 0;
    virtual std::int64_t GetMaxLength() = 0;
};

class GENAPI_EXPORT IRegister : public virtual IValue
{
public:
    ~IRegister() override;
    virtual void Set(const std::uint8_t* data, std::int64_t length, bool verify = true) = 0;
    virtual void Get(std::uint8_t* data, std::int64_t length, bool verify = false, bool ignoreCache = false) = 0;
    virtual std::int64_t GetLength() = 0;
    virtual std::int64_t GetAddress() = 0;
};

class GENAPI_EXPORT IEnumEntry : public virtual IValue
{
public:
    ~IEnumEntry() override;
    virtual std::int64_t GetValue() const = 0;
    virtual GenICam::gcstring GetSymbolic() const = 0;
    virtual double GetNumericValue() const = 0;
    virtual bool IsSelfClearing() const = 0;
};

class GENAPI_EXPORT IEnumeration : public virtual IValue
{
public:
    ~IEnumeration() override;
    /** All entries, also those that are not available now. */
    virtual void GetEntries(EnumEntryList& entries) = 0;
    virtual void GetSymbolics(GenICam::gcstring_vector& symbolics) = 0;
    virtual void SetIntValue(std::int64_t value, bool verify = true) = 0;
    virtual std::int64_t GetIntValue(bool verify = false, bool ignoreCache = false) = 0;
    /** Null when there is no such entry. */
    virtual IEnumEntry* GetEntryByName(const GenICam::gcstring& symbolic) = 0;
    virtual IEnumEntry* GetEntry(std::int64_t value) = 0;
    /** Null when the value on the device belongs to no entry. */
    virtual IEnumEntry* GetCurrentEntry(bool verify = false, bool ignoreCache = false) = 0;
};

class GENAPI_EXPORT ICategory : public virtual IValue
{
public:
    ~ICategory() override;
    /** Features that are implemented, in the description's order. */
    virtual void GetFeatures(FeatureList& features) const = 0;
};

class GENAPI_EXPORT ISelector : public virtual IBase
{
public:
    ~ISelector() override;
    virtual bool IsSelector() const = 0;
    virtual void GetSelectedFeatures(FeatureList& features) const = 0;
    virtual void GetSelectingFeatures(FeatureList& features) const = 0;
};

/** Where registers are read and written. Implemented by devices; throws GenICam exceptions on failure. */
class GENAPI_EXPORT IPort : public virtual IBase
{
public:
    ~IPort() override;
    virtual void Read(void* buffer, std::int64_t address, std::int64_t length) = 0;
    virtual void Write(const void* buffer, std::int64_t address, std::int64_t length) = 0;
    /** Why a port that is not writable refuses to write, as a clause without a full stop: "the camera is open as a
     *  monitor". It is told to who wants to write to a node behind the port. Empty when there is nothing to say. */
    virtual GenICam::gcstring GetWriteRefusal() const;
};

/** A pointer to a node as one of its interfaces; using it while null throws LogicalErrorException. */
template <class T> class CPointer
{
public:
    CPointer() = default;
    CPointer(T* pointer) : m_pointer(pointer) {}
    template <class B, class = decltype(dynamic_cast<T*>(static_cast<B*>(nullptr)))>
    CPointer(B* pointer) : m_pointer(dynamic_cast<T*>(pointer))
    {
    }
    bool IsValid() const noexcept { return m_pointer != nullptr; }
    explicit operator bool() const noexcept { return IsValid(); }
    T* Get() const noexcept { return m_pointer; }
    T* operator->() const { return &**this; }
    T& operator*() const
    {
        if (m_pointer == nullptr)
        {
            GENICAM_THROW(LogicalErrorException, "NULL pointer dereferenced");
        }
        return *m_pointer;
    }

private:
    T* m_pointer = nullptr;
};

using CNodePtr = CPointer<INode>;
using CValuePtr = CPointer<IValue>;
using CIntegerPtr = CPointer<IInteger>;
using CFloatPtr = CPointer<IFloat>;
using CBooleanPtr = CPointer<IBoolean>;
using CCommandPtr = CPointer<ICommand>;
using CStringPtr = CPointer<IString>;
using CRegisterPtr = CPointer<IRegister>;
using CEnumerationPtr = CPointer<IEnumeration>;
using CEnumEntryPtr = CPointer<IEnumEntry>;
using CCategoryPtr = CPointer<ICategory>;
using CSelectorPtr = CPointer<ISelector>;

inline bool IsReadable(const IBase* node)
{
    return node != nullptr && IsReadable(node->GetAccessMode());
}
inline bool IsWritable(const IBase* node)
{
    return node != nullptr && IsWritable(node->GetAccessMode());
}
inline bool IsAvailable(const IBase* node)
{
    return node != nullptr && IsAvailable(node->GetAccessMode());
}
inline bool IsImplemented(const IBase* node)
{
    return node != nullptr && IsImplemented(node->GetAccessMode());
}

} // namespace GenApi
