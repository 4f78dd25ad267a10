// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/anodedatamodel.h"

namespace Plugin::DataProcessingCore
{

/**
 * A node with the usual answers: no ports, captions visible, any number of connections at an output, valid, not unique.
 * save() writes "name", "is_unique" and, when it was set, "unique_name"; restore() reads "unique_name".
 */
class DATAPROCESSINGCORE_EXPORT CNodeDataModel : public ANodeDataModel
{
    Q_OBJECT
public:
    explicit CNodeDataModel(const QString& caption = QString(), QObject* parent = nullptr);
    ~CNodeDataModel() override;

    /** Made at construction, different for every node of every process. */
    Core::CId id() const { return m_id; }

    QString caption() const override;
    void setCaption(const QString& caption) override;
    bool captionVisible() const override;
    QString portCaption(ENodePortType type, int index) const override;
    bool portCaptionVisible(ENodePortType type, int index) const override;
    /** The class name unless overridden. */
    QString name() const override;
    QJsonObject save() const override;
    void restore(const QJsonObject& object) override;
    int nPorts(ENodePortType type) const override;
    SNodeDataType dataType(ENodePortType type, int index) const override;
    void setInData(CNodeDataPtr data, int index) override;
    CNodeDataPtr outData(int index) override;
    bool isUnique() const override;
    QString uniqueName() const override;
    void setUniqueName(const QString& uniqueName) override;
    ENodeConnectionPolicy portOutConnectionPolicy(int index) const override;
    ENodeValidationState validationState() const override;
    QString validationMessage() const override;

private:
    QString m_caption;
    Core::CId m_id;
    QString m_uniqueName = NoUniqueName;
};

} // namespace Plugin::DataProcessingCore
