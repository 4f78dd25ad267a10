// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameranodedatamodel.h"
#include "camerapool/velmograbresultdata.h"
#include "dataprocessingcore/dataprocessinggraph.h"
#include "dataprocessingcore/jsondata.h"
#include "unit/common/plugins/camerapool/testing/poolfixture.h"
#include "unit/common/plugins/camerapool/testing/records.h"
#include "utils/exceptions.h"

#include <functional>
#include <stdexcept>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using namespace Plugin::DataProcessingCore;
using Plugin::DataProcessing::CJsonData;

/** One input of a given type, which keeps what it was handed. */
class CConsumer : public CNodeDataModel
{
public:
    CConsumer(const QString& caption, SNodeDataType type) : CNodeDataModel(caption), m_type(std::move(type)) {}
    int nPorts(ENodePortType type) const override { return type == ENodePortType::In ? 1 : 0; }
    SNodeDataType dataType(ENodePortType, int) const override { return m_type; }
    void setInData(CNodeDataPtr data, int) override
    {
        if (onReceive)
        {
            onReceive(data);
        }
        received.append(data);
    }
    Velmo::CGrabResultPtr result(int index) const
    {
        return received.at(index).dynamicCast<CVelmoGrabResultData>()->grabResult();
    }

    QVector<CNodeDataPtr> received;
    std::function<void(const CNodeDataPtr&)> onReceive;

private:
    SNodeDataType m_type;
};

CCompressionStatistic compressed()
{
    CCompressionStatistic statistic;
    statistic.compressionEnabled = true;
    statistic.compressionRatio = 40.5;
    statistic.minCompressionRatio = 20.25;
    statistic.maxCompressionRatio = 60.75;
    statistic.losslessCount = 4000000000U;
    statistic.lossyCount = 7;
    statistic.failedCount = 2;
    return statistic;
}

class CameraNode : public ::Test::PoolFixture
{
protected:
    ANodeDataModelPtr makeNode(const QSharedPointer<Plugin::AppCore::IInfo>& info) const
    {
        return CCameraNodeDataModel::create(m_pool.get(), info);
    }
    static QJsonObject json(const ANodeDataModelPtr& node)
    {
        const auto data = node->outData(1).dynamicCast<CJsonData>();
        return data.isNull() ? QJsonObject() : data->object();
    }
    static QStringList sorted(std::initializer_list<const char*> keys)
    {
        QStringList list;
        for (const auto* key : keys)
        {
            list.append(QString::fromLatin1(key));
        }
        list.sort();
        return list;
    }
    void grab(std::size_t images)
    {
        if (!m_pool->isDeviceOpen(m_info))
        {
            ASSERT_TRUE(m_pool->openDevice(m_info, false));
            m_pool->startGrabbing(m_info);
            ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
        }
        ASSERT_EQ(m_transport->DeliverImages(s_serial, images), images);
    }
};

TEST_F(CameraNode, hasNoInputsAndTwoOutputs)
{
    const auto node = makeNode(m_info);
    EXPECT_EQ(node->nPorts(ENodePortType::In), 0);
    EXPECT_EQ(node->nPorts(ENodePortType::None), 0);
    EXPECT_EQ(node->nPorts(ENodePortType::Out), 2);
    EXPECT_EQ(node->dataType(ENodePortType::Out, 0).id, QStringLiteral("velmo Grab Result"));
    EXPECT_EQ(node->dataType(ENodePortType::Out, 0).name, QStringLiteral("VGR"));
    EXPECT_EQ(node->dataType(ENodePortType::Out, 1).id, QStringLiteral("JsonObject"));
    EXPECT_EQ(node->dataType(ENodePortType::Out, 7).name, QStringLiteral("JSON"));
}

TEST_F(CameraNode, hasItsNamesAndTheUsualAnswersOtherwise)
{
    const auto node = makeNode(m_info);
    EXPECT_EQ(node->name(), QStringLiteral("KorvelCameraSource"));
    EXPECT_EQ(node->caption(), QStringLiteral("KorvelCameraSource"));
    node->setCaption(QStringLiteral("left camera"));
    EXPECT_EQ(node->caption(), QStringLiteral("left camera"));
    EXPECT_EQ(node->name(), QStringLiteral("KorvelCameraSource"));
    for (const auto type : {ENodePortType::None, ENodePortType::In, ENodePortType::Out})
    {
        EXPECT_EQ(node->portCaption(type, 0), QStringLiteral("VelmoImage"));
        EXPECT_EQ(node->portCaption(type, 1), QStringLiteral("VelmoImage"));
        EXPECT_TRUE(node->portCaptionVisible(type, 1));
    }
    EXPECT_TRUE(node->captionVisible());
    EXPECT_TRUE(node->isUnique());
    EXPECT_EQ(node->portOutConnectionPolicy(0), ENodeConnectionPolicy::Many);
    EXPECT_EQ(node->validationState(), ENodeValidationState::Valid);
    EXPECT_EQ(node->validationMessage(), QString());
}

TEST_F(CameraNode, registersTheTypesOfItsQueuedArguments)
{
    const auto node = makeNode(m_info);
    EXPECT_EQ(QMetaType::type("Plugin::DataProcessingCore::CNodeDataPtr"), qMetaTypeId<CNodeDataPtr>());
    EXPECT_EQ(QMetaType::type("uint64_t"), qMetaTypeId<uint64_t>());
}

TEST_F(CameraNode, savesItsUniqueNameOnlyWhenItHasOne)
{
    CCameraNodeDataModel unbound;
    EXPECT_EQ(unbound.save(), (QJsonObject{{"name", "KorvelCameraSource"}, {"is_unique", true}}));
    EXPECT_EQ(
        makeNode(m_info)->save(),
        (QJsonObject{{"name", "KorvelCameraSource"}, {"is_unique", true}, {"unique_name", m_info->getFullName()}}));
}

TEST_F(CameraNode, outputsAreNullBeforeTheFirstImageAndStatistic)
{
    const auto node = makeNode(m_info);
    EXPECT_TRUE(node->outData(0).isNull());
    EXPECT_TRUE(node->outData(1).isNull());
}

TEST_F(CameraNode, takesNoInput)
{
    const auto node = makeNode(m_info);
    node->setInData(QSharedPointer<CJsonData>::create(), 0);
    EXPECT_TRUE(node->outData(0).isNull());
    EXPECT_TRUE(node->outData(1).isNull());
}

TEST_F(CameraNode, givesEachImageAndStatisticOfItsCamera)
{
    const auto node = makeNode(m_info);
    ::Test::CSignalRecord updates(node.data(), &ANodeDataModel::dataUpdated);
    QVector<std::uint64_t> blocks;
    QObject::connect(node.data(), &ANodeDataModel::dataUpdated, node.data(),
                     [&](int index)
                     {
                         if (index == 0)
                         {
                             const auto data = node->outData(0).dynamicCast<CVelmoGrabResultData>();
                             blocks.append(data->grabResult()->GetBlockID());
                         }
                     });
    grab(2);
    ASSERT_TRUE(::Test::waitUntil([&] { return blocks.size() == 2; }));
    EXPECT_EQ(blocks, (QVector<std::uint64_t>{1, 2}));
    EXPECT_EQ(json(node).value("images_grabbed").toInt(), 2);
    EXPECT_EQ(updates.at(0), std::make_tuple(1)) << "the statistic comes before its image";
    EXPECT_EQ(updates.at(1), std::make_tuple(0));
}

TEST_F(CameraNode, passesOnAnInvalidResult)
{
    const auto node = makeNode(m_info);
    emit m_pool->cameraImageGrabbed(m_info, Velmo::CGrabResultPtr());
    const auto data = node->outData(0).dynamicCast<CVelmoGrabResultData>();
    ASSERT_FALSE(data.isNull());
    EXPECT_FALSE(data->grabResult().IsValid());
}

TEST_F(CameraNode, imagesAndStatisticsOfAnotherCameraLeaveBothOutputsUntouched)
{
    const auto node = makeNode(m_info);
    const auto other = addSecondCamera();
    ::Test::CSignalRecord updates(node.data(), &ANodeDataModel::dataUpdated);
    emit m_pool->cameraImageGrabbed(other, Velmo::CGrabResultPtr());
    emit m_pool->cameraStatisticUpdated(other, 1, 0, 1.0, 1, CCompressionStatistic());
    emit m_pool->cameraImageGrabbed({}, Velmo::CGrabResultPtr());
    emit m_pool->cameraStatisticUpdated({}, 1, 0, 1.0, 1, CCompressionStatistic());
    EXPECT_TRUE(node->outData(0).isNull());
    EXPECT_TRUE(node->outData(1).isNull());
    EXPECT_EQ(updates.count(), 0);
}

TEST_F(CameraNode, anUnboundNodeTakesOnlyWhatComesWithoutARecord)
{
    const auto node = makeNode({});
    emit m_pool->cameraImageGrabbed(m_info, Velmo::CGrabResultPtr());
    emit m_pool->cameraStatisticUpdated(m_info, 1, 0, 1.0, 1, CCompressionStatistic());
    EXPECT_TRUE(node->outData(0).isNull());
    EXPECT_TRUE(node->outData(1).isNull());
    emit m_pool->cameraImageGrabbed({}, Velmo::CGrabResultPtr());
    emit m_pool->cameraStatisticUpdated({}, 1, 0, 1.0, 1, CCompressionStatistic());
    EXPECT_FALSE(node->outData(0).isNull());
    EXPECT_FALSE(node->outData(1).isNull());
}

TEST_F(CameraNode, recordsAreComparedByIdentity)
{
    const auto node = makeNode(m_info);
    const QSharedPointer<CCameraInfo> twin(new CCameraInfo(m_info->getVelmoDeviceInfo(), nullptr));
    emit m_pool->cameraImageGrabbed(twin, Velmo::CGrabResultPtr());
    EXPECT_TRUE(node->outData(0).isNull());
}

TEST_F(CameraNode, aStatisticWithoutCompressionHasSixKeys)
{
    const auto node = makeNode(m_info);
    CCompressionStatistic statistic = compressed();
    statistic.compressionEnabled = false;
    constexpr uint64_t bps = 5000000000U;
    emit m_pool->cameraStatisticUpdated(m_info, 10, 3, 12.5, bps, statistic);
    const auto object = json(node);
    EXPECT_EQ(object.keys(),
              sorted({"bps", "fps", "images_grabbed", "images_failed", "camera_friendly_name", "compression_enabled"}));
    EXPECT_EQ(object.value("bps").toVariant(), QVariant(5000000000LL)) << "an integer of 64 bits";
    EXPECT_DOUBLE_EQ(object.value("fps").toDouble(), 12.5);
    EXPECT_EQ(object.value("images_grabbed").toInt(), 10);
    EXPECT_EQ(object.value("images_failed").toInt(), 3);
    EXPECT_EQ(object.value("camera_friendly_name").toString(), m_info->getFriendlyName());
    EXPECT_TRUE(object.value("compression_enabled").isBool());
    EXPECT_FALSE(object.value("compression_enabled").toBool());
}

TEST_F(CameraNode, aStatisticWithoutARecordHasFiveKeys)
{
    const auto node = makeNode({});
    emit m_pool->cameraStatisticUpdated({}, 1, 0, 1.0, 1, CCompressionStatistic());
    EXPECT_EQ(json(node).keys(), sorted({"bps", "fps", "images_grabbed", "images_failed", "compression_enabled"}));
}

TEST_F(CameraNode, compressionAddsSixKeys)
{
    const auto node = makeNode(m_info);
    emit m_pool->cameraStatisticUpdated(m_info, 10, 3, 12.5, 1000, compressed());
    const auto object = json(node);
    EXPECT_EQ(object.size(), 12);
    EXPECT_TRUE(object.value("compression_enabled").toBool());
    EXPECT_DOUBLE_EQ(object.value("compression_ratio").toDouble(), 40.5);
    EXPECT_DOUBLE_EQ(object.value("min_compression_ratio").toDouble(), 20.25);
    EXPECT_DOUBLE_EQ(object.value("max_compression_ratio").toDouble(), 60.75);
    EXPECT_DOUBLE_EQ(object.value("lossless_count").toDouble(), 4e9);
    EXPECT_EQ(object.value("lossy_count").toInt(), 7);
    EXPECT_EQ(object.value("failed_count").toInt(), 2);
}

TEST_F(CameraNode, oldDataStayAsTheyWereForThoseWhoHoldThem)
{
    const auto node = makeNode(m_info);
    emit m_pool->cameraStatisticUpdated(m_info, 1, 0, 1.0, 1, CCompressionStatistic());
    const auto old = node->outData(1).dynamicCast<CJsonData>();
    emit m_pool->cameraStatisticUpdated(m_info, 2, 0, 1.0, 1, CCompressionStatistic());
    EXPECT_NE(node->outData(1), old);
    EXPECT_EQ(old->object().value("images_grabbed").toInt(), 1);
    EXPECT_EQ(json(node).value("images_grabbed").toInt(), 2);
}

TEST_F(CameraNode, cannotBeMadeForARecordThatIsNotACameras)
{
    try
    {
        makeNode(::Test::interfaceRecord("port0"));
        FAIL() << "nothing was thrown";
    }
    catch (const Core::Exception::ArgumentException& e)
    {
        EXPECT_EQ(e.message(), QStringLiteral("A camera source node cannot be created: the given record is not that of "
                                              "a camera."));
    }
}

TEST_F(CameraNode, outlivesThePoolAndKeepsItsLastData)
{
    const auto node = makeNode(m_info);
    grab(1);
    ASSERT_TRUE(::Test::waitUntil([&] { return !node->outData(0).isNull(); }));
    m_pool.reset();
    const auto data = node->outData(0).dynamicCast<CVelmoGrabResultData>();
    EXPECT_TRUE(data->grabResult()->GrabSucceeded());
    EXPECT_EQ(CCameraNodeDataModel::create(nullptr, m_info)->outData(0), CNodeDataPtr());
}

TEST_F(CameraNode, thePoolOutlivesANode)
{
    auto node = makeNode(m_info);
    node.reset();
    emit m_pool->cameraImageGrabbed(m_info, Velmo::CGrabResultPtr());
    EXPECT_EQ(order(), QStringLiteral("cameraImageGrabbed"));
}

/** A graph with a source for the camera, an image consumer and a statistic consumer. */
class CameraGraph : public CameraNode
{
protected:
    CameraGraph()
    {
        add(m_source);
        connectConsumer(m_images, 0);
        connectConsumer(m_statistics, 1);
    }
    void add(const ANodeDataModelPtr& node) { m_graph.addNode(node); }
    void connectConsumer(const QSharedPointer<CConsumer>& consumer, int outPort)
    {
        add(consumer);
        m_graph.connectPorts(m_source, outPort, consumer, 0);
    }
    static QSharedPointer<CConsumer> imageConsumer(const char* caption)
    {
        return QSharedPointer<CConsumer>::create(QString::fromLatin1(caption), CVelmoGrabResultData::dataType());
    }

    CDataProcessingGraph m_graph;
    ANodeDataModelPtr m_source = makeNode(m_info);
    QSharedPointer<CConsumer> m_images = imageConsumer("images");
    QSharedPointer<CConsumer> m_statistics =
        QSharedPointer<CConsumer>::create(QStringLiteral("statistics"), CJsonData::dataType());
};

TEST_F(CameraGraph, carriesImagesAndStatisticsToTheirConsumers)
{
    grab(3);
    ASSERT_TRUE(::Test::waitUntil([&] { return m_images->received.size() == 3; }));
    EXPECT_GE(m_statistics->received.size(), 3);
    EXPECT_EQ(m_images->result(2)->GetBlockID(), 3U);
    EXPECT_EQ(m_images->result(0)->GetBlockID(), 1U) << "what a consumer keeps does not change";
}

TEST_F(CameraGraph, keepsTheNodesOfTwoCamerasApart)
{
    const auto other = makeNode(addSecondCamera());
    const auto consumer = imageConsumer("others");
    add(other);
    add(consumer);
    m_graph.connectPorts(other, 0, consumer, 0);
    grab(1);
    ASSERT_TRUE(::Test::waitUntil([&] { return m_images->received.size() == 1; }));
    EXPECT_TRUE(consumer->received.isEmpty());
}

TEST_F(CameraGraph, hasOneNodeForEachCamera)
{
    EXPECT_THROW(add(makeNode(m_info)), Core::Exception::ArgumentException);
    EXPECT_NO_THROW(add(makeNode(addSecondCamera())));
}

TEST_F(CameraGraph, aConsumerThatThrowsIsReportedOnceAndHurtsNobodyElse)
{
    const auto after = imageConsumer("after");
    connectConsumer(after, 0);
    m_images->onReceive = [](const CNodeDataPtr& data)
    {
        if (!data.isNull())
        {
            throw std::runtime_error("disk full");
        }
    };
    m_log.clear();
    grab(3);
    ASSERT_TRUE(::Test::waitUntil([&] { return after->received.size() == 3; }));
    EXPECT_TRUE(m_images->received.isEmpty());
    EXPECT_EQ(m_log.count(QStringLiteral("The node \"images\" could not take data at input port 0. Reason: disk full")),
              1);
}

TEST_F(CameraGraph, survivesThePool)
{
    grab(1);
    ASSERT_TRUE(::Test::waitUntil([&] { return m_images->received.size() == 1; }));
    m_pool.reset();
    EXPECT_TRUE(m_images->result(0)->GrabSucceeded());
    EXPECT_TRUE(m_graph.removeNode(m_source));
    EXPECT_TRUE(m_images->received.last().isNull()) << "a consumer that is cut off is told";
}

TEST_F(CameraGraph, aConsumerMayRemoveTheSourceWhileItReceives)
{
    m_images->onReceive = [this](const CNodeDataPtr& data)
    {
        if (!data.isNull())
        {
            m_graph.removeNode(m_source);
            m_source.reset();
        }
    };
    grab(1);
    ASSERT_TRUE(::Test::waitUntil([&] { return m_source.isNull(); }));
    ASSERT_EQ(m_transport->DeliverImages(s_serial, 1), 1U);
    EXPECT_TRUE(::Test::waitUntil([&] { return m_order.count(QStringLiteral("cameraImageGrabbed")) == 2; }));
    EXPECT_EQ(m_images->received.size(), 2) << "the null of the cut, then the image in hand";
}

} // namespace
