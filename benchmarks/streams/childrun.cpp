// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "childrun.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>
#include <stdexcept>

namespace Benchmarks
{

SStreamFigures runInChild(const std::string& way, int cameras, int seconds)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--one"), QString::fromStdString(way),
                                                          QString::number(cameras), QString::number(seconds)});
    child.waitForFinished(-1);
    const QList<QByteArray> words = child.readAllStandardOutput().simplified().split(' ');
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0 || words.size() < 6)
    {
        throw std::runtime_error("a run of " + std::to_string(cameras) + " cameras failed");
    }
    SStreamFigures f;
    f.images = words.at(0).toULongLong();
    f.losses = words.at(1).toULongLong();
    f.seconds = words.at(2).toDouble();
    f.cpuMicroseconds = words.at(3).toDouble();
    f.threads = words.at(4).toInt();
    f.descriptors = words.at(5).toInt();
    return f;
}

int printRun(const std::function<SStreamFigures()>& run)
{
    try
    {
        const SStreamFigures f = run();
        std::printf("%llu %llu %.6f %.1f %d %d\n", static_cast<unsigned long long>(f.images),
                    static_cast<unsigned long long>(f.losses), f.seconds, f.cpuMicroseconds, f.threads, f.descriptors);
        return 0;
    }
    catch (const std::exception& e)
    {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}

} // namespace Benchmarks
