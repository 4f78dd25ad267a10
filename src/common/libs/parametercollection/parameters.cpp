// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/parameters.h"

#include <utility>

namespace ParameterCollection
{

namespace
{

/** A question that a failing device answers with "no". */
template <class F> auto orFalse(F&& question) -> bool
{
    try
    {
        return question();
    }
    catch (...)
    {
        return false;
    }
}

/** Runs an access that may be refused. */
template <class F> bool attempt(F&& access)
{
    try
    {
        access();
        return true;
    }
    catch (const GenICam::GenericException&)
    {
        return false;
    }
}

template <class T, class F> T valueOrFallback(F&& read, const T& fallback)
{
    try
    {
        return read();
    }
    catch (const GenICam::GenericException&)
    {
        return fallback;
    }
}

template <class T> T& as(GenApi::INode& node, const QString& name)
{
    auto* pValue = dynamic_cast<T*>(&node);
    if (pValue == nullptr)
    {
        GENICAM_THROW(AccessException, "The parameter '" + name.toStdString() + "' is of another kind.");
    }
    return *pValue;
}

QString toQString(const GenICam::gcstring& text)
{
    return QString::fromUtf8(text.c_str());
}

GenICam::gcstring toGcString(const QString& text)
{
    return GenICam::gcstring(text.toStdString());
}

/** Keeps the node map attached while a node of it is in use. */
class CAccess
{
public:
    explicit CAccess(const QSharedPointer<const IParameterCollection>& collection)
        : m_lock(collection.isNull() ? CObjectState() : collection->objectState())
    {
    }

private:
    CScopedObjectStateLock m_lock;
};

} // namespace

CParameter::CParameter(QSharedPointer<const IParameterCollection> collection, QString name)
    : m_collection(std::move(collection)), m_name(std::move(name))
{
}

CParameter::CParameter(const CParameter&) = default;

CParameter& CParameter::operator=(const CParameter&) = default;

CParameter::~CParameter() = default;

GenApi::INode* CParameter::node() const
{
    GenApi::INode* pNode = m_collection.isNull() ? nullptr : m_collection->node(m_name);
    return pNode != nullptr && matches(pNode) ? pNode : nullptr;
}

GenApi::INode& CParameter::requireNode() const
{
    GenApi::INode* pNode = node();
    if (pNode == nullptr)
    {
        GENICAM_THROW(AccessException, "The parameter '" + m_name.toStdString() + "' is not available.");
    }
    return *pNode;
}

bool CParameter::matches(GenApi::INode*) const
{
    return true;
}

bool CParameter::isValid() const
{
    const CAccess access(m_collection);
    return orFalse([this] { return node() != nullptr; });
}

bool CParameter::isImplemented() const
{
    const CAccess access(m_collection);
    return orFalse([this] { return GenApi::IsImplemented(node()); });
}

bool CParameter::isAvailable() const
{
    const CAccess access(m_collection);
    return orFalse([this] { return GenApi::IsAvailable(node()); });
}

bool CParameter::isReadable() const
{
    const CAccess access(m_collection);
    return orFalse([this] { return GenApi::IsReadable(node()); });
}

bool CParameter::isWritable() const
{
    const CAccess access(m_collection);
    return orFalse([this] { return GenApi::IsWritable(node()); });
}

QString CParameter::toString() const
{
    const CAccess access(m_collection);
    return toQString(as<GenApi::IValue>(requireNode(), m_name).ToString());
}

void CParameter::fromString(const QString& text)
{
    const CAccess access(m_collection);
    as<GenApi::IValue>(requireNode(), m_name).FromString(toGcString(text));
}

bool CParameter::tryFromString(const QString& text)
{
    return attempt([&] { fromString(text); });
}

CIntegerParameter::~CIntegerParameter() = default;

bool CIntegerParameter::matches(GenApi::INode* pNode) const
{
    return dynamic_cast<GenApi::IInteger*>(pNode) != nullptr;
}

std::int64_t CIntegerParameter::value() const
{
    const CAccess access(collection());
    return as<GenApi::IInteger>(requireNode(), name()).GetValue();
}

std::int64_t CIntegerParameter::valueOr(std::int64_t fallback) const
{
    return valueOrFallback<std::int64_t>([this] { return value(); }, fallback);
}

void CIntegerParameter::setValue(std::int64_t value)
{
    const CAccess access(collection());
    as<GenApi::IInteger>(requireNode(), name()).SetValue(value);
}

bool CIntegerParameter::trySetValue(std::int64_t value)
{
    return attempt([&] { setValue(value); });
}

std::int64_t CIntegerParameter::minimum() const
{
    const CAccess access(collection());
    return as<GenApi::IInteger>(requireNode(), this->name()).GetMin();
}

std::int64_t CIntegerParameter::maximum() const
{
    const CAccess access(collection());
    return as<GenApi::IInteger>(requireNode(), this->name()).GetMax();
}

std::int64_t CIntegerParameter::increment() const
{
    const CAccess access(collection());
    return as<GenApi::IInteger>(requireNode(), this->name()).GetInc();
}

CFloatParameter::~CFloatParameter() = default;

bool CFloatParameter::matches(GenApi::INode* pNode) const
{
    return dynamic_cast<GenApi::IFloat*>(pNode) != nullptr;
}

double CFloatParameter::value() const
{
    const CAccess access(collection());
    return as<GenApi::IFloat>(requireNode(), name()).GetValue();
}

double CFloatParameter::valueOr(double fallback) const
{
    return valueOrFallback<double>([this] { return value(); }, fallback);
}

void CFloatParameter::setValue(double value)
{
    const CAccess access(collection());
    as<GenApi::IFloat>(requireNode(), name()).SetValue(value);
}

bool CFloatParameter::trySetValue(double value)
{
    return attempt([&] { setValue(value); });
}

double CFloatParameter::minimum() const
{
    const CAccess access(collection());
    return as<GenApi::IFloat>(requireNode(), this->name()).GetMin();
}

double CFloatParameter::maximum() const
{
    const CAccess access(collection());
    return as<GenApi::IFloat>(requireNode(), this->name()).GetMax();
}

CBooleanParameter::~CBooleanParameter() = default;

bool CBooleanParameter::matches(GenApi::INode* pNode) const
{
    return dynamic_cast<GenApi::IBoolean*>(pNode) != nullptr;
}

bool CBooleanParameter::value() const
{
    const CAccess access(collection());
    return as<GenApi::IBoolean>(requireNode(), name()).GetValue();
}

bool CBooleanParameter::valueOr(bool fallback) const
{
    return valueOrFallback<bool>([this] { return value(); }, fallback);
}

void CBooleanParameter::setValue(bool value)
{
    const CAccess access(collection());
    as<GenApi::IBoolean>(requireNode(), name()).SetValue(value);
}

bool CBooleanParameter::trySetValue(bool value)
{
    return attempt([&] { setValue(value); });
}

CEnumParameter::~CEnumParameter() = default;

bool CEnumParameter::matches(GenApi::INode* pNode) const
{
    return dynamic_cast<GenApi::IEnumeration*>(pNode) != nullptr;
}

QString CEnumParameter::value() const
{
    const CAccess access(collection());
    return toQString(as<GenApi::IEnumeration>(requireNode(), name()).ToString());
}

QString CEnumParameter::valueOr(const QString& fallback) const
{
    return valueOrFallback<QString>([this] { return value(); }, fallback);
}

void CEnumParameter::setValue(const QString& symbolic)
{
    const CAccess access(collection());
    as<GenApi::IEnumeration>(requireNode(), name()).FromString(toGcString(symbolic));
}

bool CEnumParameter::trySetValue(const QString& symbolic)
{
    return attempt([&] { setValue(symbolic); });
}

QStringList CEnumParameter::symbolics() const
{
    const CAccess access(collection());
    GenApi::EnumEntryList entries;
    as<GenApi::IEnumeration>(requireNode(), name()).GetEntries(entries);
    QStringList result;
    for (const GenApi::IEnumEntry* pEntry : entries)
    {
        if (GenApi::IsAvailable(pEntry))
        {
            result.append(toQString(pEntry->GetSymbolic()));
        }
    }
    return result;
}

CStringParameter::~CStringParameter() = default;

bool CStringParameter::matches(GenApi::INode* pNode) const
{
    return dynamic_cast<GenApi::IString*>(pNode) != nullptr;
}

QString CStringParameter::value() const
{
    const CAccess access(collection());
    return toQString(as<GenApi::IString>(requireNode(), name()).GetValue());
}

QString CStringParameter::valueOr(const QString& fallback) const
{
    return valueOrFallback<QString>([this] { return value(); }, fallback);
}

void CStringParameter::setValue(const QString& value)
{
    const CAccess access(collection());
    as<GenApi::IString>(requireNode(), name()).SetValue(toGcString(value));
}

CCommandParameter::~CCommandParameter() = default;

bool CCommandParameter::matches(GenApi::INode* pNode) const
{
    return dynamic_cast<GenApi::ICommand*>(pNode) != nullptr;
}

void CCommandParameter::execute()
{
    const CAccess access(collection());
    as<GenApi::ICommand>(requireNode(), name()).Execute();
}

bool CCommandParameter::isDone() const
{
    const CAccess access(collection());
    return as<GenApi::ICommand>(requireNode(), name()).IsDone();
}

} // namespace ParameterCollection
