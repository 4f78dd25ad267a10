// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameranodedatamodel.h"

#include "camerapool/internal/camerapool.h"
#include "camerapool/velmograbresultdata.h"
#include "dataprocessingcore/jsondata.h"
#include "utils/exceptions.h"

#include <utility>

namespace Plugin::CameraPool::Internal
{

using namespace Plugin::DataProcessingCore;
using Plugin::DataProcessing::CJsonData;

namespace
{

constexpr int s_imagePort = 0;
constexpr int s_statisticPort = 1;
constexpr int s_outPorts = 2;

void insertCompression(QJsonObject& object, const CCompressionStatistic& statistic)
{
    object.insert(QStringLiteral("compression_enabled"), statistic.compressionEnabled);
    if (!statistic.compressionEnabled)
    {
        return;
    }
    object.insert(QStringLiteral("compression_ratio"), statistic.compressionRatio);
    object.insert(QStringLiteral("min_compression_ratio"), statistic.minCompressionRatio);
    object.insert(QStringLiteral("max_compression_ratio"), statistic.maxCompressionRatio);
    object.insert(QStringLiteral("lossless_count"), static_cast<qint64>(statistic.losslessCount));
    object.insert(QStringLiteral("lossy_count"), static_cast<qint64>(statistic.lossyCount));
    object.insert(QStringLiteral("failed_count"), static_cast<qint64>(statistic.failedCount));
}

} // namespace

CCameraNodeDataModel::CCameraNodeDataModel(CameraInfoPtr cameraInfo, QObject* parent)
    : CNodeDataModel(nodeName(), parent), m_ptrCameraInfo(std::move(cameraInfo))
{
    qRegisterMetaType<CNodeDataPtr>("Plugin::DataProcessingCore::CNodeDataPtr");
    qRegisterMetaType<uint64_t>("uint64_t");
}

CCameraNodeDataModel::~CCameraNodeDataModel() = default;

QString CCameraNodeDataModel::nodeName()
{
    return QStringLiteral("KorvelCameraSource");
}

ANodeDataModelPtr CCameraNodeDataModel::create(const CCameraPool* pPool,
                                               const QSharedPointer<Plugin::AppCore::IInfo>& info)
{
    const auto cameraInfo = qSharedPointerObjectCast<ICameraInfo>(info);
    if (cameraInfo.isNull() && !info.isNull())
    {
        throw Core::Exception::ArgumentException(
            tr("A camera source node cannot be created: the given record is not that of a camera."));
    }
    const QSharedPointer<CCameraNodeDataModel> node(new CCameraNodeDataModel(cameraInfo));
    if (!cameraInfo.isNull())
    {
        node->setUniqueName(cameraInfo->getFullName());
    }
    if (pPool != nullptr)
    {
        connect(pPool, &CCameraPool::cameraImageGrabbed, node.data(), &CCameraNodeDataModel::onCameraImageGrabbed);
        connect(pPool, &CCameraPool::cameraStatisticUpdated, node.data(),
                &CCameraNodeDataModel::onCameraStatisticUpdated);
    }
    return node;
}

QString CCameraNodeDataModel::portCaption(PortType, int) const
{
    return QStringLiteral("VelmoImage");
}

QString CCameraNodeDataModel::name() const
{
    return nodeName();
}

int CCameraNodeDataModel::nPorts(PortType type) const
{
    return type == PortType::Out ? s_outPorts : 0;
}

CCameraNodeDataModel::NodeDataType CCameraNodeDataModel::dataType(PortType, int index) const
{
    return index == s_imagePort ? CVelmoGrabResultData::dataType() : CJsonData::dataType();
}

void CCameraNodeDataModel::setInData(CNodeDataPtr, int) {}

CNodeDataPtr CCameraNodeDataModel::outData(int index)
{
    return index == s_imagePort ? m_ptrImage : m_ptrStatistic;
}

bool CCameraNodeDataModel::isUnique() const
{
    return true;
}

void CCameraNodeDataModel::onCameraImageGrabbed(const CameraInfoPtr& cameraInfo,
                                                const Velmo::CGrabResultPtr& grabResult)
{
    if (cameraInfo.data() != m_ptrCameraInfo.data())
    {
        return;
    }
    m_ptrImage = QSharedPointer<CVelmoGrabResultData>::create(grabResult);
    emit dataUpdated(s_imagePort);
}

void CCameraNodeDataModel::onCameraStatisticUpdated(const CameraInfoPtr& cameraInfo, int imagesGrabbedCount,
                                                    int imagesFailedCount, double fps, uint64_t bps,
                                                    CCompressionStatistic compressionStatistic)
{
    if (cameraInfo.data() != m_ptrCameraInfo.data())
    {
        return;
    }
    QJsonObject object{{QStringLiteral("bps"), static_cast<qint64>(bps)},
                       {QStringLiteral("fps"), fps},
                       {QStringLiteral("images_grabbed"), imagesGrabbedCount},
                       {QStringLiteral("images_failed"), imagesFailedCount}};
    if (!cameraInfo.isNull())
    {
        object.insert(QStringLiteral("camera_friendly_name"), cameraInfo->getFriendlyName());
    }
    insertCompression(object, compressionStatistic);
    m_ptrStatistic = QSharedPointer<CJsonData>::create(object);
    emit dataUpdated(s_statisticPort);
}

} // namespace Plugin::CameraPool::Internal
