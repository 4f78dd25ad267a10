// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/grabsession.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/iimagedecompressorservice.h"
#include "hostkit/imageconversion.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace PoolCli
{
namespace
{

using Plugin::CameraPool::ICameraStatusService;

/** When there is room for a part only, the first write takes that, and the next one tells why not more. */
bool writeAll(QFileDevice& device, const QByteArray& bytes)
{
    for (qint64 done = 0; done < bytes.size();)
    {
        const qint64 count = device.write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0)
        {
            return false;
        }
        done += count;
    }
    return device.flush();
}

/** Whole or not at all: without room for it, what the file held before stays and nothing is left. Throws CRefusal. */
void writeFile(const QString& file, const QByteArray& bytes)
{
    const auto refuse = [&file](const QFileDevice& device)
    {
        throw CRefusal(CTexts::tr("%1 could not be written: %2").arg(file, device.errorString()));
    };
    const QFileInfo present(file);
    if (present.exists() && !present.isFile())
    {
        // A device or a pipe, which is not to be replaced by a file; a folder, which cannot be opened.
        QFile device(file);
        if (!device.open(QIODevice::WriteOnly) || !writeAll(device, bytes))
        {
            refuse(device);
        }
        return;
    }
    QSaveFile device(file);
    device.setDirectWriteFallback(true); // a file that may be written to, in a folder that may not
    if (!device.open(QIODevice::WriteOnly) || !writeAll(device, bytes) || !device.commit())
    {
        refuse(device);
    }
}

void writePicture(CSession& session, const HostKit::CameraInfoPtr& camera, const Velmo::CGrabResultPtr& result,
                  const QString& file)
{
    QString error;
    const auto decompressor = session.host().decompressors().getImageDecompressor(camera);
    const QImage picture = HostKit::toPicture(result, decompressor.data(), error);
    if (picture.isNull())
    {
        throw CRefusal(QStringLiteral("%1: %2").arg(camera->getFriendlyName(), error));
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG"))
    {
        throw CRefusal(CTexts::tr("%1 could not be written: %2").arg(file, buffer.errorString()));
    }
    writeFile(file, png);
}

/** Makes the folder. A long grab is not to find out at its end that there is no place for its pictures. */
void preparePictures(const QString& folder)
{
    const std::filesystem::path path(QFile::encodeName(folder).toStdString());
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (!error && access(path.c_str(), W_OK | X_OK) != 0)
    {
        error = std::error_code(errno, std::generic_category());
    }
    if (error)
    {
        throw CRefusal(CTexts::tr("%1 could not be written: %2").arg(folder, QString::fromStdString(error.message())));
    }
}

/** A file name that any file system takes, without its ending, from what a camera calls itself. */
QString fileNameFor(const Plugin::CameraPool::ICameraInfo& camera)
{
    QString name = camera.getModelName() + QLatin1Char('-') + camera.getSerialNumber();
    for (QChar& character : name)
    {
        if (!character.isLetterOrNumber() && character != QLatin1Char('-'))
        {
            character = QLatin1Char('_');
        }
    }
    return name;
}

/** The cameras of a grab, open while it lives. */
struct SOpened
{
    QVector<HostKit::CameraInfoPtr> cameras;
    std::vector<std::unique_ptr<COpenCamera>> open;
    bool isAll = true;
};

/** Those that were named must open. When all are meant, one that refuses is reported and the others are taken. */
SOpened openAll(CSession& session, const SOptions& options)
{
    SOpened opened;
    const auto cameras = session.camerasCalled(options.cameras, options.discoveryTimeoutMs);
    checkCameraSettings(cameras, options);
    for (const auto& camera : cameras)
    {
        try
        {
            opened.open.push_back(std::make_unique<COpenCamera>(session, camera));
        }
        catch (const CRefusal& refusal)
        {
            if (!options.cameras.isEmpty())
            {
                throw;
            }
            printError(QString::fromUtf8(refusal.what()));
            opened.isAll = false;
            continue;
        }
        opened.cameras.append(camera);
        applySettings(session, camera, options);
    }
    return opened;
}

/** One PNG of each camera's last image; cameras of the same model and serial number get numbers. False, and the reasons
 * on stderr, when one of them could not be written. */
bool writePictures(CSession& session, CGrabSession& grab, const SOptions& options)
{
    bool isAll = true;
    QSet<QString> taken;
    const auto counts = grab.counts();
    for (const SGrabCount& count : counts)
    {
        if (!count.last.IsValid())
        {
            continue;
        }
        const QString name = fileNameFor(*count.camera);
        QString unique = name + QStringLiteral(".png");
        for (int number = 2; taken.contains(unique); ++number)
        {
            unique = QStringLiteral("%1-%2.png").arg(name).arg(number);
        }
        taken.insert(unique);
        const QString file = QDir(options.output).filePath(unique);
        try
        {
            writePicture(session, count.camera, count.last, file);
        }
        catch (const CRefusal& refusal)
        {
            printError(QString::fromUtf8(refusal.what()));
            isAll = false;
            continue;
        }
        grab.setPicture(count.camera, file);
        if (!options.json)
        {
            printLine(CTexts::tr("%1: picture in %2").arg(printable(count.camera->getFriendlyName()), file));
        }
    }
    return isAll;
}

} // namespace

int runGrab(CSession& session, const SOptions& options)
{
    if (!options.output.isEmpty())
    {
        preparePictures(options.output);
    }
    SOpened opened = openAll(session, options);
    CGrabSession grab(session, opened.cameras, options);
    grab.run();
    const bool isWritten = options.output.isEmpty() || writePictures(session, grab, options);
    grab.printSummary();
    grab.printFailures();
    return opened.isAll && isWritten ? grab.exitCode() : ExitRefused;
}

int runMonitor(CSession& session, const SOptions& options)
{
    if (!options.output.isEmpty())
    {
        preparePictures(options.output);
    }
    constexpr bool monitorMode = true;
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs),
                             monitorMode);
    CGrabSession grab(session, {camera.info()}, options);
    grab.run();
    const bool isWritten = options.output.isEmpty() || writePictures(session, grab, options);
    grab.printSummary();
    grab.printFailures();
    return isWritten ? grab.exitCode() : ExitRefused;
}

int runSnapshot(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    applySettings(session, camera.info(), options);
    Velmo::CGrabResultPtr image;
    bool failed = false;
    QObject receiver;
    auto& status = session.host().status();
    QObject::connect(&status, &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const auto& info, const Velmo::CGrabResultPtr& result)
                     {
                         if (info == camera.info())
                         {
                             image = result;
                         }
                     });
    QObject::connect(&status, &ICameraStatusService::cameraImageGrabFailed, &receiver,
                     [&](const auto& info) { failed = failed || info == camera.info(); });
    camera.info()->clearError();
    session.host().stream().singleShot(camera.info(), static_cast<unsigned int>(options.timeoutMs));
    if (status.isCameraGrabbing(camera.info()))
    {
        // What was noted on the way, such as that it cannot compress, is no reason for a missing image.
        camera.info()->clearError();
    }
    constexpr int graceMs = 1000; // the camera's own time-out reports better than ours
    session.waitUntil([&] { return image.IsValid() || failed; }, options.timeoutMs + graceMs);
    session.host().stream().stopGrabbing(camera.info());
    if (!image.IsValid())
    {
        const QString reason = camera.info()->errorString();
        throw CRefusal(CTexts::tr("%1 gave no image: %2")
                           .arg(camera.info()->getFriendlyName(),
                                reason.isEmpty() ? CTexts::tr("none arrived in time.") : reason));
    }
    const QString file =
        options.output.isEmpty() ? fileNameFor(*camera.info()) + QStringLiteral(".png") : options.output;
    writePicture(session, camera.info(), image, file);
    const QJsonObject summary{{"file", file},
                              {"width", static_cast<int>(image->GetWidth())},
                              {"height", static_cast<int>(image->GetHeight())},
                              {"pixel_type", static_cast<qint64>(image->GetPixelType())},
                              {"block_id", static_cast<qint64>(image->GetBlockID())}};
    if (options.json)
    {
        printJson(summary);
    }
    else
    {
        printLine(CTexts::tr("%1 x %2 pixels in %3").arg(image->GetWidth()).arg(image->GetHeight()).arg(file));
    }
    return ExitDone;
}

int runStats(CSession& session, const SOptions& options)
{
    const COpenCamera camera(session, session.camera(options.cameras.value(0), options.discoveryTimeoutMs));
    SOptions grabOptions = options;
    if (grabOptions.durationMs == 0 && grabOptions.images == 0)
    {
        constexpr int defaultDurationMs = 5000;
        grabOptions.durationMs = defaultDurationMs;
    }
    CGrabSession grab(session, {camera.info()}, grabOptions);
    grab.showStatistics();
    grab.run();
    grab.printSummary();
    grab.printFailures();
    return grab.exitCode();
}

} // namespace PoolCli
