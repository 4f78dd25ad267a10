// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/compressionstatistic.h"
#include "camerapool/icamera.h"

#include <QObject>

namespace Test
{

/** The three signals of an image with their arguments, and nothing else. */
class CBareSender : public QObject
{
    Q_OBJECT
signals:
    void statistic(int imagesGrabbedCount, int imagesFailedCount, double fps, uint64_t bps,
                   CCompressionStatistic compressionStatistic);
    void image(Velmo::CGrabResultPtr result);
    void timeout(int64_t imageNumber);
};

/** Counts what arrives. */
class CBareReceiver : public QObject
{
    Q_OBJECT
public:
    explicit CBareReceiver(const CBareSender& sender)
    {
        connect(&sender, &CBareSender::statistic, this, &CBareReceiver::onStatistic, Qt::QueuedConnection);
        connect(&sender, &CBareSender::image, this, &CBareReceiver::onImage, Qt::QueuedConnection);
        connect(&sender, &CBareSender::timeout, this, &CBareReceiver::onTimeout, Qt::QueuedConnection);
    }
    int statistics = 0;
    int images = 0;
    int timeouts = 0;

private slots:
    void onStatistic(int /*grabbed*/, int /*failed*/, double /*fps*/, uint64_t /*bps*/,
                     CCompressionStatistic /*compression*/)
    {
        ++statistics;
    }
    void onImage(const Velmo::CGrabResultPtr& /*result*/) { ++images; }
    void onTimeout(int64_t /*imageNumber*/) { ++timeouts; }
};

} // namespace Test
