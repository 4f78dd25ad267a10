// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/jsondata.h"
#include "dataprocessingcore/nodedatamodel.h"
#include "dataprocessingcore/noderegistry.h"
#include "utils/exceptions.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace
{

using namespace Plugin::DataProcessingCore;
using Plugin::DataProcessing::CJsonData;

class CNumberData : public CNodeData
{
public:
    SNodeDataType type() const override { return {QStringLiteral("Number"), QStringLiteral("JSON")}; }
};

TEST(NodeData, kindsAreComparedByIdNotByName)
{
    EXPECT_TRUE(CJsonData().sameType(CJsonData(QJsonObject{{"a", 1}})));
    EXPECT_FALSE(CJsonData().sameType(CNumberData()));
}

TEST(JsonData, tellsItsTypeAndKeepsItsObject)
{
    const QJsonObject object{{"fps", 12.5}};
    const CJsonData data(object);
    EXPECT_EQ(data.type().id, QStringLiteral("JsonObject"));
    EXPECT_EQ(data.type().name, QStringLiteral("JSON"));
    EXPECT_EQ(data.object(), object);
}

TEST(NodePortType, hasItsNumbers)
{
    EXPECT_EQ(static_cast<int>(ENodePortType::None), 0);
    EXPECT_EQ(static_cast<int>(ENodePortType::In), 1);
    EXPECT_EQ(static_cast<int>(ENodePortType::Out), 2);
}

TEST(NodeDataModel, hasTheUsualAnswers)
{
    CNodeDataModel node(QStringLiteral("a caption"));
    EXPECT_EQ(node.caption(), QStringLiteral("a caption"));
    EXPECT_TRUE(node.captionVisible());
    EXPECT_TRUE(node.portCaptionVisible(ENodePortType::Out, 0));
    EXPECT_EQ(node.nPorts(ENodePortType::In), 0);
    EXPECT_EQ(node.nPorts(ENodePortType::Out), 0);
    EXPECT_TRUE(node.outData(0).isNull());
    EXPECT_FALSE(node.isUnique());
    EXPECT_EQ(node.uniqueName(), QStringLiteral("DataProcessingCore.NoUniqueName"));
    EXPECT_EQ(node.portOutConnectionPolicy(0), ENodeConnectionPolicy::Many);
    EXPECT_EQ(node.validationState(), ENodeValidationState::Valid);
    EXPECT_EQ(node.validationMessage(), QString());
}

TEST(NodeDataModel, everyNodeHasAnIdOfItsOwn)
{
    const CNodeDataModel first;
    const CNodeDataModel second;
    EXPECT_TRUE(first.id().isValid());
    EXPECT_NE(first.id(), second.id());
}

TEST(NodeDataModel, savesNoUniqueNameUnlessOneWasSet)
{
    CNodeDataModel node;
    EXPECT_EQ(node.save(), (QJsonObject{{"name", node.name()}, {"is_unique", false}}));
    node.setUniqueName(QStringLiteral("serial 1"));
    EXPECT_EQ(node.save().value("unique_name").toString(), QStringLiteral("serial 1"));
}

TEST(NodeDataModel, restoresItsUniqueName)
{
    CNodeDataModel node;
    node.setUniqueName(QStringLiteral("serial 1"));
    CNodeDataModel other;
    other.restore(node.save());
    EXPECT_EQ(other.uniqueName(), QStringLiteral("serial 1"));
    other.restore(QJsonObject{{"unique_name", 5}});
    EXPECT_EQ(other.uniqueName(), QStringLiteral("serial 1")) << "a number is no name";
}

TEST(NodeRegistry, createsANodeWithTheRecordItIsGiven)
{
    CNodeRegistry registry;
    QSharedPointer<Plugin::AppCore::IInfo> received;
    registry.registerNode(QStringLiteral("Source"),
                          [&](const QSharedPointer<Plugin::AppCore::IInfo>& info)
                          {
                              received = info;
                              return QSharedPointer<CNodeDataModel>::create(QStringLiteral("made"));
                          });
    const auto info = QSharedPointer<Plugin::AppCore::IInfo>::create();
    const auto node = registry.createNode(QStringLiteral("Source"), info);
    ASSERT_FALSE(node.isNull());
    EXPECT_EQ(node->caption(), QStringLiteral("made"));
    EXPECT_EQ(received, info);
}

TEST(NodeRegistry, refusesEmptyAndTakenNamesAndEmptyCreators)
{
    CNodeRegistry registry;
    const NodeCreator creator = [](const auto&)
    {
        return QSharedPointer<CNodeDataModel>::create();
    };
    EXPECT_FALSE(registry.registerNode(QString(), creator));
    EXPECT_FALSE(registry.registerNode(QStringLiteral("b"), {}));
    EXPECT_TRUE(registry.registerNode(QStringLiteral("b"), creator));
    EXPECT_FALSE(registry.registerNode(QStringLiteral("b"), creator));
    EXPECT_TRUE(registry.registerNode(QStringLiteral("a"), creator));
    EXPECT_EQ(registry.nodeNames(), (QStringList{"a", "b"}));
}

TEST(NodeRegistry, anUnknownNameIsAnArgumentException)
{
    CNodeRegistry registry;
    EXPECT_THROW(registry.createNode(QStringLiteral("x")), Core::Exception::ArgumentException);
    EXPECT_FALSE(registry.unregisterNode(QStringLiteral("x")));
}

} // namespace
