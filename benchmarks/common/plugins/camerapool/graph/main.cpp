// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

// What one image costs on its way from the pool's relay through the source node and the graph to its consumers,
// against making the same node data and calling the same consumers directly.

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/cameranodedatamodel.h"
#include "camerapool/internal/camerapool.h"
#include "camerapool/velmograbresultdata.h"
#include "dataprocessingcore/dataprocessinggraph.h"
#include "support/figures.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using namespace Plugin::DataProcessingCore;
using Benchmarks::CFigures;

constexpr int Images = 50000;

/** Keeps the latest image and counts: the cheapest consumer there is. */
class CConsumer : public CNodeDataModel
{
public:
    int nPorts(ENodePortType type) const override { return type == ENodePortType::In ? 1 : 0; }
    SNodeDataType dataType(ENodePortType, int) const override { return CVelmoGrabResultData::dataType(); }
    void setInData(CNodeDataPtr data, int) override
    {
        m_data = std::move(data);
        ++m_images;
    }
    int imageCount() const { return m_images; }

private:
    CNodeDataPtr m_data;
    int m_images = 0;
};

QSharedPointer<CCameraInfo> cameraRecord(int index)
{
    Velmo::CDeviceInfo info;
    info.SetFullName("bench/" + std::to_string(index));
    return CCameraInfo::fromDeviceInfo(info);
}

double viaRelay(CCameraPool& pool, const QSharedPointer<ICameraInfo>& info)
{
    const Velmo::CGrabResultPtr result;
    const auto work = [&]
    {
        for (int i = 0; i < Images; ++i)
        {
            emit pool.cameraImageGrabbed(info, result);
        }
    };
    return Benchmarks::costMicroseconds(work) / Images;
}

double direct(const std::vector<ANodeDataModelPtr>& consumers)
{
    const Velmo::CGrabResultPtr result;
    const auto work = [&]
    {
        for (int i = 0; i < Images; ++i)
        {
            const CNodeDataPtr data = QSharedPointer<CVelmoGrabResultData>::create(result);
            for (const auto& consumer : consumers)
            {
                consumer->setInData(data, 0);
            }
        }
    };
    return Benchmarks::costMicroseconds(work) / Images;
}

/** Consumers at one source, for one camera whose node is one of so many at the same pool. */
void measure(CFigures& figures, int consumerCount, int cameras, int runs)
{
    CCameraPool pool(nullptr);
    CDataProcessingGraph graph;
    std::vector<QSharedPointer<ICameraInfo>> infos;
    std::vector<ANodeDataModelPtr> sources;
    for (int i = 0; i < cameras; ++i)
    {
        infos.emplace_back(cameraRecord(i));
        sources.push_back(CCameraNodeDataModel::create(&pool, infos.back()));
        graph.addNode(sources.back());
    }
    std::vector<ANodeDataModelPtr> consumers;
    for (int i = 0; i < consumerCount; ++i)
    {
        consumers.push_back(QSharedPointer<CConsumer>::create());
        graph.addNode(consumers.back());
        graph.connectPorts(sources.front(), 0, consumers.back(), 0);
    }
    const auto& info = infos.front();
    viaRelay(pool, info);
    for (const auto& consumer : consumers)
    {
        if (consumer.staticCast<CConsumer>()->imageCount() != Images)
        {
            qFatal("camerapool_graph: the images did not reach their consumers.");
        }
    }
    std::vector<double> relayed;
    std::vector<double> called;
    for (int i = 0; i < runs; ++i)
    {
        relayed.push_back(viaRelay(pool, info));
        called.push_back(direct(consumers));
    }
    CFigures::SRow row;
    row.what = "an image to " + std::to_string(consumerCount) + (consumerCount == 1 ? " consumer" : " consumers") +
               (cameras == 1 ? "" : ", one of " + std::to_string(cameras) + " camera nodes");
    row.value = Benchmarks::median(relayed);
    row.unit = "us";
    row.boundName = "direct calls";
    row.bound = Benchmarks::median(called);
    figures.add(row);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
    CFigures figures("From the camera pool through the graph to its consumers");
    for (const int consumers : {1, 4, 16})
    {
        measure(figures, consumers, 1, runs);
    }
    measure(figures, 1, 50, runs);
    return 0;
}
