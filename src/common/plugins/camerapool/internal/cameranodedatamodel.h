// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamera.h"
#include "camerapool/icamerainfo.h"
#include "dataprocessingcore/nodedatamodel.h"

namespace Plugin::CameraPool::Internal
{

class CCameraPool;

/**
 * The source node of one camera: port 0 gives its images, port 1 its statistics as a JSON object.
 *
 * Bound for life to the record that it was made for. A node without a record takes only what comes without one.
 * Every image and statistic gives a new object, so that consumers may keep the old one. Main thread.
 */
class CAMERAPOOL_TEST_EXPORT CCameraNodeDataModel : public Plugin::DataProcessingCore::CNodeDataModel
{
    Q_OBJECT
public:
    /** The record may be null. */
    explicit CCameraNodeDataModel(CameraInfoPtr cameraInfo = {}, QObject* parent = nullptr);
    ~CCameraNodeDataModel() override;

    /** The name under which the registry makes such nodes. */
    static QString nodeName();
    /**
     * A node for the record, fed by the pool for as long as both exist; its unique name is the camera's full name.
     * Without a pool it is never fed. Throws Core::Exception::ArgumentException for a record that is not a camera's.
     */
    static Plugin::DataProcessingCore::ANodeDataModelPtr create(const CCameraPool* pPool,
                                                                const QSharedPointer<Plugin::AppCore::IInfo>& info);

    using NodeDataType = Plugin::DataProcessingCore::SNodeDataType;
    using PortType = Plugin::DataProcessingCore::ENodePortType;
    QString portCaption(PortType type, int index) const override;
    QString name() const override;
    int nPorts(PortType type) const override;
    NodeDataType dataType(PortType type, int index) const override;
    void setInData(Plugin::DataProcessingCore::CNodeDataPtr data, int index) override;
    Plugin::DataProcessingCore::CNodeDataPtr outData(int index) override;
    bool isUnique() const override;

public slots:
    void onCameraImageGrabbed(const Plugin::CameraPool::CameraInfoPtr& cameraInfo,
                              const Velmo::CGrabResultPtr& grabResult);
    void onCameraStatisticUpdated(const Plugin::CameraPool::CameraInfoPtr& cameraInfo, int imagesGrabbedCount,
                                  int imagesFailedCount, double fps, uint64_t bps,
                                  CCompressionStatistic compressionStatistic);

private:
    const CameraInfoPtr m_ptrCameraInfo;
    Plugin::DataProcessingCore::CNodeDataPtr m_ptrImage;
    Plugin::DataProcessingCore::CNodeDataPtr m_ptrStatistic;
};

} // namespace Plugin::CameraPool::Internal
