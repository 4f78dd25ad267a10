// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/camerastatistics.h"

#include "hostkit/host.h"

#include "dataprocessingcore/igraphservice.h"
#include "dataprocessingcore/inoderegistry.h"
#include "dataprocessingcore/jsondata.h"
#include "dataprocessingcore/nodedatamodel.h"

namespace HostKit
{
namespace
{

using namespace Plugin::DataProcessingCore;
using Plugin::DataProcessing::CJsonData;

constexpr int StatisticsPort = 1; // of the source node

/** Keeps the newest object of its one input. */
class CJsonKeeper : public CNodeDataModel
{
public:
    QString name() const override { return QStringLiteral("StatisticsKeeper"); }
    int nPorts(ENodePortType type) const override { return type == ENodePortType::In ? 1 : 0; }
    SNodeDataType dataType(ENodePortType, int) const override { return CJsonData::dataType(); }
    void setInData(CNodeDataPtr data, int) override
    {
        if (const auto json = data.dynamicCast<CJsonData>())
        {
            m_latest = json->object();
        }
    }
    const QJsonObject& latest() const { return m_latest; }

private:
    QJsonObject m_latest;
};

} // namespace

struct CCameraStatistics::SPrivate
{
    QSharedPointer<CDataProcessingGraph> graph;
    ANodeDataModelPtr source;
    QSharedPointer<CJsonKeeper> keeper = QSharedPointer<CJsonKeeper>::create();

    ~SPrivate()
    {
        graph->removeNode(keeper);
        graph->removeNode(source);
    }
};

CCameraStatistics::CCameraStatistics(CHost& host, const CameraInfoPtr& camera) : m_p(std::make_unique<SPrivate>())
{
    m_p->graph = host.graph().graph();
    const auto source = host.nodes().createNode(QStringLiteral("KorvelCameraSource"), camera);
    m_p->graph->addNode(source);
    m_p->source = source; // taken out again only if it came in
    m_p->graph->addNode(m_p->keeper);
    m_p->graph->connectPorts(m_p->source, StatisticsPort, m_p->keeper, 0);
}

CCameraStatistics::~CCameraStatistics() = default;

QJsonObject CCameraStatistics::latest() const
{
    return m_p->keeper->latest();
}

} // namespace HostKit
