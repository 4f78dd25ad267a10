// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/nodedatamodel.h"

#include <QUuid>

namespace Plugin::DataProcessingCore
{

ANodeDataModel::ANodeDataModel(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<CNodeDataPtr>("Plugin::DataProcessingCore::CNodeDataPtr");
}

ANodeDataModel::~ANodeDataModel() = default;

CNodeDataModel::CNodeDataModel(const QString& caption, QObject* parent)
    : ANodeDataModel(parent), m_caption(caption), m_id(QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

CNodeDataModel::~CNodeDataModel() = default;

QString CNodeDataModel::caption() const
{
    return m_caption;
}

void CNodeDataModel::setCaption(const QString& caption)
{
    m_caption = caption;
}

bool CNodeDataModel::captionVisible() const
{
    return true;
}

QString CNodeDataModel::portCaption(ENodePortType type, int index) const
{
    return dataType(type, index).name;
}

bool CNodeDataModel::portCaptionVisible(ENodePortType, int) const
{
    return true;
}

QString CNodeDataModel::name() const
{
    return QString::fromLatin1(metaObject()->className());
}

QJsonObject CNodeDataModel::save() const
{
    QJsonObject object{{QStringLiteral("name"), name()}, {QStringLiteral("is_unique"), isUnique()}};
    if (uniqueName() != NoUniqueName)
    {
        object.insert(QStringLiteral("unique_name"), uniqueName());
    }
    return object;
}

void CNodeDataModel::restore(const QJsonObject& object)
{
    const QJsonValue uniqueName = object.value(QLatin1String("unique_name"));
    if (uniqueName.isString())
    {
        setUniqueName(uniqueName.toString());
    }
}

int CNodeDataModel::nPorts(ENodePortType) const
{
    return 0;
}

SNodeDataType CNodeDataModel::dataType(ENodePortType, int) const
{
    return {};
}

void CNodeDataModel::setInData(CNodeDataPtr, int) {}

CNodeDataPtr CNodeDataModel::outData(int)
{
    return {};
}

bool CNodeDataModel::isUnique() const
{
    return false;
}

QString CNodeDataModel::uniqueName() const
{
    return m_uniqueName;
}

void CNodeDataModel::setUniqueName(const QString& uniqueName)
{
    m_uniqueName = uniqueName;
}

ENodeConnectionPolicy CNodeDataModel::portOutConnectionPolicy(int) const
{
    return ENodeConnectionPolicy::Many;
}

ENodeValidationState CNodeDataModel::validationState() const
{
    return ENodeValidationState::Valid;
}

QString CNodeDataModel::validationMessage() const
{
    return {};
}

} // namespace Plugin::DataProcessingCore
