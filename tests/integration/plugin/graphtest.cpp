// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/iimagedecompressorservice.h"
#include "camerapool/velmograbresultdata.h"
#include "dataprocessingcore/igraphservice.h"
#include "dataprocessingcore/inoderegistry.h"
#include "dataprocessingcore/jsondata.h"
#include "dataprocessingcore/nodedatamodel.h"
#include "integration/plugin/hostfixture.h"

#include <vector>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::DataProcessingCore;
using Plugin::DataProcessing::CJsonData;

/** A consumer of one kind of data. */
template <class Data> class CConsumer : public CNodeDataModel
{
public:
    int nPorts(ENodePortType type) const override { return type == ENodePortType::In ? 1 : 0; }
    SNodeDataType dataType(ENodePortType, int) const override { return Data::dataType(); }
    void setInData(CNodeDataPtr data, int) override
    {
        if (const auto typed = data.dynamicCast<Data>())
        {
            received.append(typed);
        }
    }
    QVector<QSharedPointer<Data>> received;
};

using ImageConsumer = CConsumer<CVelmoGrabResultData>;
using JsonConsumer = CConsumer<CJsonData>;

/** A source for the first camera in the application's graph, with a consumer of images and one of statistics. */
class PluginGraph : public ::Test::HostFixture
{
protected:
    void SetUp() override
    {
        HostFixture::SetUp();
        if (!HasFatalFailure())
        {
            m_infos = cameras();
            ASSERT_EQ(m_infos.size(), 2);
            m_source = sourceFor(m_infos.at(0));
            graph()->addNode(m_images);
            graph()->addNode(m_statistics);
            graph()->connectPorts(m_source, 0, m_images, 0);
            graph()->connectPorts(m_source, 1, m_statistics, 0);
        }
    }
    QSharedPointer<CDataProcessingGraph> graph() const { return service<IGraphService>()->graph(); }
    ANodeDataModelPtr sourceFor(const CameraInfoPtr& info) const
    {
        const auto source = service<INodeRegistry>()->createNode(QStringLiteral("KorvelCameraSource"), info);
        graph()->addNode(source);
        return source;
    }
    void start(const CameraInfoPtr& info) const
    {
        ASSERT_TRUE(service<ICameraControlService>()->open(info, false)) << info->errorString().toStdString();
        service<ICameraStreamControlService>()->startGrabbing(info);
    }

    QVector<CameraInfoPtr> m_infos;
    ANodeDataModelPtr m_source;
    QSharedPointer<ImageConsumer> m_images = QSharedPointer<ImageConsumer>::create();
    QSharedPointer<JsonConsumer> m_statistics = QSharedPointer<JsonConsumer>::create();
};

TEST_F(PluginGraph, carriesTheImagesAndStatisticsOfACamera)
{
    start(m_infos.at(0));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_images->received.size() >= 3; }, s_waitMs));
    const auto result = m_images->received.at(2)->grabResult();
    EXPECT_TRUE(result->GrabSucceeded());
    EXPECT_EQ(result->GetImageNumber(), 3);
    EXPECT_GT(result->GetPayloadSize(), 0U);
    ASSERT_GE(m_statistics->received.size(), 3);
    const auto statistic = m_statistics->received.at(2)->object();
    EXPECT_EQ(statistic.value(QLatin1String("images_grabbed")).toInt(), 3);
    EXPECT_EQ(statistic.value(QLatin1String("images_failed")).toInt(), 0);
    EXPECT_EQ(statistic.value(QLatin1String("camera_friendly_name")).toString(), m_infos.at(0)->getFriendlyName());
    EXPECT_FALSE(statistic.value(QLatin1String("compression_enabled")).toBool(true));
}

TEST_F(PluginGraph, keepsCamerasThatGrabAtTheSameTimeApart)
{
    const auto others = QSharedPointer<JsonConsumer>::create();
    const auto otherSource = sourceFor(m_infos.at(1));
    graph()->addNode(others);
    graph()->connectPorts(otherSource, 1, others, 0);
    start(m_infos.at(0));
    start(m_infos.at(1));
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return m_statistics->received.size() >= 5 && others->received.size() >= 5; }, s_waitMs));
    const auto allOf = [](const JsonConsumer& consumer, const CameraInfoPtr& info)
    {
        for (const auto& data : consumer.received)
        {
            if (data->object().value(QLatin1String("camera_friendly_name")).toString() != info->getFriendlyName())
            {
                return false;
            }
        }
        return true;
    };
    EXPECT_TRUE(allOf(*m_statistics, m_infos.at(0)));
    EXPECT_TRUE(allOf(*others, m_infos.at(1)));
}

TEST_F(PluginGraph, isStoppedWhileItsCameraGrabsAndItsDataAreHeld)
{
    start(m_infos.at(0));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_images->received.isEmpty(); }, s_waitMs));
    m_manager->stop();
    EXPECT_TRUE(m_images->received.at(0)->grabResult()->GrabSucceeded());
    EXPECT_FALSE(m_source->outData(0).isNull()) << "a node that somebody holds outlives its plugin";
}

/** The same with cameras that compress. */
class PluginGraphOfCompressingCameras : public PluginGraph
{
protected:
    QByteArray emulation() const override
    {
        return R"({"cameras": [{"serial": "PACK", "count": 2, "features": {"ImageCompressionMode": "Lossless"}}]})";
    }
};

TEST_F(PluginGraphOfCompressingCameras, countsCompressedImagesAndHasTheirDecompressor)
{
    const auto& info = m_infos.at(0);
    const auto decompressors = service<IImageDecompressorService>();
    EXPECT_TRUE(decompressors->getImageDecompressor(info).isNull());
    start(info);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_images->received.size() >= 3; }, s_waitMs));
    const auto statistic = m_statistics->received.at(2)->object();
    EXPECT_TRUE(statistic.value(QLatin1String("compression_enabled")).toBool());
    EXPECT_EQ(statistic.value(QLatin1String("lossless_count")).toInt(), 3);
    EXPECT_EQ(statistic.value(QLatin1String("failed_count")).toInt(), 0);
    const auto ratioPercent = statistic.value(QLatin1String("compression_ratio")).toDouble();
    EXPECT_GT(ratioPercent, 0.0);
    EXPECT_LT(ratioPercent, 100.0);

    const auto decompressor = decompressors->getImageDecompressor(info);
    ASSERT_FALSE(decompressor.isNull());
    std::vector<unsigned char> pixels(decompressor->GetImageSizeForDecompression());
    EXPECT_EQ(decompressor->Decompress(pixels.data(), pixels.size(), m_images->received.at(2)->grabResult()),
              Velmo::CompressionStatus_Ok);
    service<ICameraControlService>()->close(BaseInfoPtr(info));
    EXPECT_TRUE(decompressors->getImageDecompressor(info).isNull());
}

} // namespace
