// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/firmwareprogress.h"

#include "poolcli/output.h"
#include "poolcli/texts.h"

#include <utility>

namespace PoolCli
{

using Plugin::CameraPool::EFirmwareUpdateStep;
using Plugin::CameraPool::IDeviceFirmwareUpdate;

namespace
{

constexpr int wholePercent = 100;
constexpr int barWidth = 30;
constexpr unsigned int msPerTenth = 100;
constexpr unsigned int tenthsPerSecond = 10;

} // namespace

QString firmwareStepName(EFirmwareUpdateStep step)
{
    switch (step)
    {
    case EFirmwareUpdateStep::CheckPreconditions:
        return CTexts::tr("Checking the camera");
    case EFirmwareUpdateStep::AcquireUpdateData:
        return CTexts::tr("Reading the package");
    case EFirmwareUpdateStep::FeatureWrite:
        return CTexts::tr("Writing a feature");
    case EFirmwareUpdateStep::FeatureExecute:
        return CTexts::tr("Executing a command");
    case EFirmwareUpdateStep::FeatureAssert:
        return CTexts::tr("Checking a feature");
    case EFirmwareUpdateStep::FileUpload:
        return CTexts::tr("Uploading a file");
    case EFirmwareUpdateStep::DeviceReset:
        return CTexts::tr("Restarting the camera");
    case EFirmwareUpdateStep::Invalid:
        break;
    }
    return CTexts::tr("Updating");
}

QString estimatedTime(unsigned int timeMs)
{
    if (timeMs == 0)
    {
        return {};
    }
    // Rounded up. Tenths say something only of what is short.
    const unsigned int tenths = (timeMs - 1) / msPerTenth + 1;
    const bool isShort = tenths < 10 * tenthsPerSecond && tenths % tenthsPerSecond != 0;
    const unsigned int seconds = (tenths + tenthsPerSecond - 1) / tenthsPerSecond;
    return CTexts::tr("%1 s").arg(
        isShort ? QStringLiteral("%1.%2").arg(tenths / tenthsPerSecond).arg(tenths % tenthsPerSecond)
                : QString::number(seconds));
}

CFirmwareProgress::CFirmwareProgress(const IDeviceFirmwareUpdate& job) : m_isDrawn(canDraw())
{
    connect(&job, &IDeviceFirmwareUpdate::firmwareUpdateBegin, this,
            [this](const QSharedPointer<Plugin::CameraPool::IFirmwareUpdateInfo>& /*info*/, unsigned int estimatedMs)
            { onBegin(estimatedMs); });
    connect(&job, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepBegin, this, &CFirmwareProgress::onStepBegin);
    connect(&job, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepProgressChanged, this,
            [this](EStep /*step*/, double percent) { onPercent(percent); });
    connect(&job, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepDone, this, [this] { onStepDone(); });
    connect(&job, &IDeviceFirmwareUpdate::firmwareUpdateError, this, [this] { endBar(); });
}

void CFirmwareProgress::onBegin(unsigned int estimatedMs)
{
    if (estimatedMs != 0)
    {
        printLine(CTexts::tr("Estimated time: %1").arg(estimatedTime(estimatedMs)));
    }
}

void CFirmwareProgress::onStepBegin(EStep step, unsigned int estimatedMs, const QString& description)
{
    m_step = description.isEmpty() ? firmwareStepName(step) : printable(description);
    const QString time = estimatedTime(estimatedMs);
    if (!time.isEmpty())
    {
        m_step += QStringLiteral(" (%1)").arg(time);
    }
    m_percent = 0;
    m_isDrawn ? draw(0) : printLine(m_step);
}

void CFirmwareProgress::onPercent(double percent)
{
    const int whole = static_cast<int>(percent);
    if (m_isDrawn && whole != m_percent)
    {
        m_percent = whole;
        draw(percent);
    }
}

void CFirmwareProgress::onStepDone()
{
    if (m_isDrawn)
    {
        draw(wholePercent);
        endBar();
    }
}

void CFirmwareProgress::endBar()
{
    if (std::exchange(m_isBarOpen, false))
    {
        printLine(QString());
    }
}

void CFirmwareProgress::draw(double percent)
{
    m_isBarOpen = true;
    const int done = qBound(0, static_cast<int>(percent * barWidth / wholePercent), barWidth);
    printOver(QStringLiteral("[%1%2] %3 %  %4")
                  .arg(QString(done, QLatin1Char('#')), QString(barWidth - done, QLatin1Char('.')))
                  .arg(static_cast<int>(percent), 3)
                  .arg(m_step));
}

} // namespace PoolCli
