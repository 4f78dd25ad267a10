// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/dataprocessinggraph.h"
#include "dataprocessingcore/jsondata.h"
#include "dataprocessingcore/nodedatamodel.h"
#include "utils/exceptions.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace
{

using namespace Plugin::DataProcessingCore;
using Plugin::DataProcessing::CJsonData;

/** Two inputs and two outputs; port 1 of each side carries another type. */
class CTestNode : public CNodeDataModel
{
public:
    explicit CTestNode(const QString& caption) : CNodeDataModel(caption) {}
    QString name() const override { return QStringLiteral("TestNode"); }
    int nPorts(ENodePortType type) const override { return type == ENodePortType::None ? 0 : 2; }
    SNodeDataType dataType(ENodePortType, int index) const override
    {
        return index == 0 ? CJsonData::dataType() : SNodeDataType{QStringLiteral("Other"), QStringLiteral("JSON")};
    }
    void setInData(CNodeDataPtr data, int) override
    {
        received.append(data);
        if (onReceive)
        {
            onReceive(data);
        }
    }
    CNodeDataPtr outData(int index) override { return index == 0 ? out : CNodeDataPtr(); }
    bool isUnique() const override { return unique; }
    ENodeConnectionPolicy portOutConnectionPolicy(int) const override { return policy; }

    void give(const CNodeDataPtr& data)
    {
        out = data;
        emit dataUpdated(0);
    }

    QVector<CNodeDataPtr> received;
    std::function<void(const CNodeDataPtr&)> onReceive;
    CNodeDataPtr out;
    bool unique = false;
    ENodeConnectionPolicy policy = ENodeConnectionPolicy::Many;
};

using TestNodePtr = QSharedPointer<CTestNode>;

class DataProcessingGraphTest : public ::testing::Test
{
protected:
    TestNodePtr add(const char* caption)
    {
        const auto node = TestNodePtr::create(QString::fromLatin1(caption));
        m_graph.addNode(node);
        return node;
    }
    static CNodeDataPtr data() { return QSharedPointer<CJsonData>::create(); }

    CDataProcessingGraph m_graph;
    TestNodePtr m_source = add("source");
    TestNodePtr m_first = add("first");
    TestNodePtr m_second = add("second");
};

TEST_F(DataProcessingGraphTest, deliversInTheOrderOfConnection)
{
    QStringList order;
    m_first->onReceive = [&](const CNodeDataPtr&)
    {
        order.append(QStringLiteral("first"));
    };
    m_second->onReceive = [&](const CNodeDataPtr&)
    {
        order.append(QStringLiteral("second"));
    };
    m_graph.connectPorts(m_source, 0, m_second, 0);
    m_graph.connectPorts(m_source, 0, m_first, 0);
    m_source->give(data());
    EXPECT_EQ(order, (QStringList{"second", "first"}));
}

TEST_F(DataProcessingGraphTest, deliversTheDataItselfWithoutCopying)
{
    m_graph.connectPorts(m_source, 0, m_first, 0);
    const CNodeDataPtr sent = data();
    m_source->give(sent);
    EXPECT_EQ(m_first->received, QVector<CNodeDataPtr>{sent});
}

TEST_F(DataProcessingGraphTest, updatesOfAnotherPortAreNotDelivered)
{
    m_graph.connectPorts(m_source, 0, m_first, 0);
    emit m_source->dataUpdated(1);
    EXPECT_TRUE(m_first->received.isEmpty());
}

TEST_F(DataProcessingGraphTest, invalidatedDataIsTakenAway)
{
    m_graph.connectPorts(m_source, 0, m_first, 0);
    m_source->give(data());
    emit m_source->dataInvalidated(0);
    ASSERT_EQ(m_first->received.size(), 2);
    EXPECT_TRUE(m_first->received.last().isNull());
}

TEST_F(DataProcessingGraphTest, aLateConsumerReceivesWhatIsThere)
{
    m_source->give(data());
    m_graph.connectPorts(m_source, 0, m_first, 0);
    EXPECT_EQ(m_first->received, QVector<CNodeDataPtr>{m_source->out});
}

TEST_F(DataProcessingGraphTest, aThrowingConsumerDoesNotKeepTheOthersFromTheirData)
{
    m_first->onReceive = [](const CNodeDataPtr&)
    {
        throw std::runtime_error("out of order");
    };
    m_graph.connectPorts(m_source, 0, m_first, 0);
    m_graph.connectPorts(m_source, 0, m_second, 0);
    m_source->give(data());
    EXPECT_EQ(m_second->received.size(), 1);
}

TEST_F(DataProcessingGraphTest, aFailureIsSignalledOnceUntilTheConsumerTakesDataAgain)
{
    QStringList failures;
    QObject::connect(&m_graph, &CDataProcessingGraph::consumerFailed,
                     [&](const ANodeDataModelPtr& node, int, const QString& reason)
                     { failures.append(node->caption() + QStringLiteral(": ") + reason); });
    bool fails = true;
    m_first->onReceive = [&](const CNodeDataPtr&)
    {
        if (fails)
        {
            throw std::runtime_error("out of order");
        }
    };
    m_graph.connectPorts(m_source, 0, m_first, 0);
    m_source->give(data());
    m_source->give(data());
    EXPECT_EQ(failures, QStringList{"first: out of order"});
    fails = false;
    m_source->give(data());
    fails = true;
    m_source->give(data());
    EXPECT_EQ(failures.size(), 2);
}

TEST_F(DataProcessingGraphTest, somethingThrownThatIsNoExceptionIsReportedToo)
{
    int failures = 0;
    QObject::connect(&m_graph, &CDataProcessingGraph::consumerFailed, [&] { ++failures; });
    m_first->onReceive = [](const CNodeDataPtr&)
    {
        throw 5;
    };
    m_graph.connectPorts(m_source, 0, m_first, 0);
    m_source->give(data());
    EXPECT_EQ(failures, 1);
}

TEST_F(DataProcessingGraphTest, aConsumerCutOffWhileDataIsDeliveredGetsNothingMore)
{
    m_first->onReceive = [this](const CNodeDataPtr& d)
    {
        if (!d.isNull())
        {
            m_graph.removeNode(m_second);
        }
    };
    m_graph.connectPorts(m_source, 0, m_first, 0);
    m_graph.connectPorts(m_source, 0, m_second, 0);
    m_source->give(data());
    ASSERT_EQ(m_second->received.size(), 1);
    EXPECT_TRUE(m_second->received.first().isNull()) << "only the removal reaches it";
}

TEST_F(DataProcessingGraphTest, portsOfDifferentTypesAreNotConnected)
{
    try
    {
        m_graph.connectPorts(m_source, 0, m_first, 1);
        FAIL() << "connected";
    }
    catch (const Core::Exception::ArgumentException& e)
    {
        EXPECT_TRUE(e.message().contains("JsonObject") && e.message().contains("Other") &&
                    e.message().contains("source") && e.message().contains("first"))
            << e.what();
    }
}

TEST_F(DataProcessingGraphTest, aPortThatDoesNotExistIsOutOfRange)
{
    using Core::Exception::ArgumentOutOfRangeException;
    EXPECT_THROW(m_graph.connectPorts(m_source, 2, m_first, 0), ArgumentOutOfRangeException);
    EXPECT_THROW(m_graph.connectPorts(m_source, -1, m_first, 0), ArgumentOutOfRangeException);
    EXPECT_THROW(m_graph.connectPorts(m_source, 0, m_first, 2), ArgumentOutOfRangeException);
}

TEST_F(DataProcessingGraphTest, nodesThatAreNotInTheGraphAreNotConnected)
{
    const auto stranger = TestNodePtr::create(QStringLiteral("stranger"));
    EXPECT_THROW(m_graph.connectPorts(m_source, 0, stranger, 0), Core::Exception::ArgumentException);
    EXPECT_THROW(m_graph.connectPorts({}, 0, m_first, 0), Core::Exception::ArgumentException);
}

TEST_F(DataProcessingGraphTest, anInputTakesOneConnection)
{
    m_graph.connectPorts(m_source, 0, m_second, 0);
    EXPECT_THROW(m_graph.connectPorts(m_first, 0, m_second, 0), Core::Exception::InvalidOperationException);
}

TEST_F(DataProcessingGraphTest, anOutputForOneTakesOneConnection)
{
    m_source->policy = ENodeConnectionPolicy::One;
    m_graph.connectPorts(m_source, 0, m_first, 0);
    EXPECT_THROW(m_graph.connectPorts(m_source, 0, m_second, 0), Core::Exception::InvalidOperationException);
}

TEST_F(DataProcessingGraphTest, circlesAreRefused)
{
    using Core::Exception::InvalidOperationException;
    EXPECT_THROW(m_graph.connectPorts(m_source, 0, m_source, 0), InvalidOperationException);
    m_graph.connectPorts(m_source, 0, m_first, 0);
    m_graph.connectPorts(m_first, 0, m_second, 0);
    EXPECT_THROW(m_graph.connectPorts(m_second, 0, m_source, 0), InvalidOperationException);
    EXPECT_EQ(m_graph.connections().size(), 2);
}

TEST_F(DataProcessingGraphTest, aCutConnectionDeliversNullAndThenNothing)
{
    m_graph.connectPorts(m_source, 0, m_first, 0);
    EXPECT_TRUE(m_graph.disconnectPorts(m_source, 0, m_first, 0));
    EXPECT_FALSE(m_graph.disconnectPorts(m_source, 0, m_first, 0));
    m_source->give(data());
    ASSERT_EQ(m_first->received.size(), 1);
    EXPECT_TRUE(m_first->received.first().isNull());
}

TEST_F(DataProcessingGraphTest, removingANodeCutsItsConnectionsAndReleasesIt)
{
    m_graph.connectPorts(m_source, 0, m_first, 0);
    const QWeakPointer<CTestNode> watched = m_source;
    EXPECT_TRUE(m_graph.removeNode(m_source));
    EXPECT_FALSE(m_graph.removeNode(m_source));
    EXPECT_TRUE(m_graph.connections().isEmpty());
    m_source.clear();
    EXPECT_TRUE(watched.isNull());
}

TEST_F(DataProcessingGraphTest, aNodeIsAddedOnceAndNullNever)
{
    EXPECT_THROW(m_graph.addNode(m_source), Core::Exception::ArgumentException);
    EXPECT_THROW(m_graph.addNode({}), Core::Exception::ArgumentException);
    EXPECT_EQ(m_graph.nodes().size(), 3);
}

TEST_F(DataProcessingGraphTest, aUniqueNodeIsRefusedWhenItsNameIsThere)
{
    m_source->setUniqueName(QStringLiteral("serial 1"));
    const auto twin = TestNodePtr::create(QStringLiteral("twin"));
    twin->unique = true;
    twin->setUniqueName(QStringLiteral("serial 1"));
    EXPECT_THROW(m_graph.addNode(twin), Core::Exception::ArgumentException);
    twin->setUniqueName(QStringLiteral("serial 2"));
    EXPECT_NO_THROW(m_graph.addNode(twin));
}

} // namespace
