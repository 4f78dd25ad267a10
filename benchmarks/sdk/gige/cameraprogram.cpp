// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "cameraprogram.h"

#include <QFile>

#include <stdexcept>

namespace Benchmarks
{

namespace
{
constexpr int PatienceMs = 30000;
}

CCameraProgram::CCameraProgram(int cameras, int imagesPerSecond)
{
    QFile file(m_folder.filePath(QStringLiteral("cameras.json")));
    const QString text = QStringLiteral("{\"cameras\":[{\"count\":%1,\"serial\":\"GEV-0001\",\"sensor\":{\"width\":512,"
                                        "\"height\":512},\"frameRate\":%2}]}")
                             .arg(cameras)
                             .arg(imagesPerSecond);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
    {
        throw std::runtime_error("the file of the cameras cannot be written");
    }
    file.close();
    m_program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_program.start(QStringLiteral(GIGECAMERA),
                    {QStringLiteral("--config"), file.fileName(), QStringLiteral("--count"), QString::number(cameras)});
    for (int ready = 0; ready < cameras; ++ready)
    {
        while (!m_program.canReadLine())
        {
            if (!m_program.waitForReadyRead(PatienceMs))
            {
                throw std::runtime_error("the simulated cameras do not start");
            }
        }
        m_program.readLine();
    }
}

CCameraProgram::~CCameraProgram()
{
    m_program.terminate();
    if (!m_program.waitForFinished(PatienceMs))
    {
        m_program.kill();
        m_program.waitForFinished();
    }
}

} // namespace Benchmarks
