// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "parametercollection/iparametercollection.h"

#include <QSharedPointer>

#include <cstdint>

namespace ParameterCollection
{

/**
 * One parameter of a collection, found anew by name on every use, so that it survives reopening.
 *
 * Each access holds the lock of the collection's object state. The is... functions never throw. Reads and writes
 * throw the GenICam exception of the node; a parameter that is not there throws GenICam::AccessException whose text
 * names it. try... functions return false instead of throwing GenICam exceptions. Threads: any.
 */
class PARAMETERCOLLECTION_EXPORT CParameter
{
public:
    CParameter(QSharedPointer<const IParameterCollection> collection, QString name);
    CParameter(const CParameter&);
    CParameter& operator=(const CParameter&);
    virtual ~CParameter();
    QString name() const { return m_name; }
    /** There is such a node and it is of this kind. */
    bool isValid() const;
    bool isImplemented() const;
    bool isAvailable() const;
    bool isReadable() const;
    bool isWritable() const;
    QString toString() const;
    void fromString(const QString& text);
    bool tryFromString(const QString& text);

protected:
    virtual bool matches(GenApi::INode* pNode) const;
    GenApi::INode* node() const;
    GenApi::INode& requireNode() const;
    const QSharedPointer<const IParameterCollection>& collection() const { return m_collection; }

private:
    QSharedPointer<const IParameterCollection> m_collection;
    QString m_name;
};

class PARAMETERCOLLECTION_EXPORT CIntegerParameter : public CParameter
{
public:
    using CParameter::CParameter;
    ~CIntegerParameter() override;
    std::int64_t value() const;
    std::int64_t valueOr(std::int64_t fallback) const;
    void setValue(std::int64_t value);
    bool trySetValue(std::int64_t value);
    std::int64_t minimum() const;
    std::int64_t maximum() const;
    std::int64_t increment() const;

protected:
    bool matches(GenApi::INode* pNode) const override;
};

class PARAMETERCOLLECTION_EXPORT CFloatParameter : public CParameter
{
public:
    using CParameter::CParameter;
    ~CFloatParameter() override;
    double value() const;
    double valueOr(double fallback) const;
    void setValue(double value);
    bool trySetValue(double value);
    double minimum() const;
    double maximum() const;

protected:
    bool matches(GenApi::INode* pNode) const override;
};

class PARAMETERCOLLECTION_EXPORT CBooleanParameter : public CParameter
{
public:
    using CParameter::CParameter;
    ~CBooleanParameter() override;
    bool value() const;
    bool valueOr(bool fallback) const;
    void setValue(bool value);
    bool trySetValue(bool value);

protected:
    bool matches(GenApi::INode* pNode) const override;
};

class PARAMETERCOLLECTION_EXPORT CEnumParameter : public CParameter
{
public:
    using CParameter::CParameter;
    ~CEnumParameter() override;
    /** The symbolic name of the current entry. */
    QString value() const;
    QString valueOr(const QString& fallback) const;
    void setValue(const QString& symbolic);
    bool trySetValue(const QString& symbolic);
    /** Of the entries that are available now. */
    QStringList symbolics() const;

protected:
    bool matches(GenApi::INode* pNode) const override;
};

class PARAMETERCOLLECTION_EXPORT CStringParameter : public CParameter
{
public:
    using CParameter::CParameter;
    ~CStringParameter() override;
    QString value() const;
    QString valueOr(const QString& fallback) const;
    void setValue(const QString& value);

protected:
    bool matches(GenApi::INode* pNode) const override;
};

class PARAMETERCOLLECTION_EXPORT CCommandParameter : public CParameter
{
public:
    using CParameter::CParameter;
    ~CCommandParameter() override;
    void execute();
    bool isDone() const;

protected:
    bool matches(GenApi::INode* pNode) const override;
};

} // namespace ParameterCollection
