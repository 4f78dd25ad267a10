// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamerainfo.h"
#include "unit/common/plugins/camerapool/testing/baresignals.h"

namespace Benchmarks
{

/** The end of the chain: signals that are connected to signals. */
class CBareService : public QObject
{
    Q_OBJECT
signals:
    void statistic(QSharedPointer<Plugin::CameraPool::ICameraInfo> info, int grabbed, int failed, double fps,
                   uint64_t bps, CCompressionStatistic compression);
    void image(QSharedPointer<Plugin::CameraPool::ICameraInfo> info, const Velmo::CGrabResultPtr& result);
};

/** The same hops as an image takes in the pool, with nothing done on the way but putting a record in front. */
class CBareChain : public QObject
{
    Q_OBJECT
public:
    CBareChain(const Test::CBareSender& sender, CBareService& service,
               QSharedPointer<Plugin::CameraPool::ICameraInfo> info)
        : m_pSender(&sender), m_info(std::move(info))
    {
        using Test::CBareSender;
        connect(&sender, &CBareSender::statistic, this, &CBareChain::onStatistic, Qt::QueuedConnection);
        connect(&sender, &CBareSender::image, this, &CBareChain::onImage, Qt::QueuedConnection);
        connect(&sender, &CBareSender::timeout, this, &CBareChain::onTimeout, Qt::QueuedConnection);
        connect(this, &CBareChain::statistic, &service, &CBareService::statistic);
        connect(this, &CBareChain::image, &service, &CBareService::image);
    }

signals:
    void statistic(QSharedPointer<Plugin::CameraPool::ICameraInfo> info, int grabbed, int failed, double fps,
                   uint64_t bps, CCompressionStatistic compression);
    void image(QSharedPointer<Plugin::CameraPool::ICameraInfo> info, const Velmo::CGrabResultPtr& result);

private slots:
    void onStatistic(int grabbed, int failed, double fps, uint64_t bps, CCompressionStatistic compression)
    {
        if (sender() == m_pSender)
        {
            emit statistic(m_info, grabbed, failed, fps, bps, compression);
        }
    }
    void onImage(const Velmo::CGrabResultPtr& result)
    {
        if (sender() == m_pSender)
        {
            emit image(m_info, result);
        }
    }
    void onTimeout(int64_t /*imageNumber*/) {}

private:
    const Test::CBareSender* m_pSender;
    QSharedPointer<Plugin::CameraPool::ICameraInfo> m_info;
};

} // namespace Benchmarks
