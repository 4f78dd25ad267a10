// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/firmwareapply.h"

#include "poolcli/firmwareprogress.h"
#include "poolcli/output.h"
#include "poolcli/texts.h"

#include "genapi/exceptions.h"
#include "parametercollection/parameters.h"

#include <QEventLoop>
#include <QThread>

#include <memory>
#include <optional>

namespace PoolCli
{

using Plugin::CameraPool::EFirmwareUpdateStep;
using Plugin::CameraPool::IDeviceFirmwareUpdate;

namespace
{

const char* const unknownVersion = "<unknown>"; // of a job that cannot tell it

/** Keeps a second Ctrl-C from ending the program while it lives. */
class CPatience
{
public:
    explicit CPatience(HostKit::CInterrupt& interrupt) : m_interrupt(interrupt) { m_interrupt.setPatient(true); }
    ~CPatience() { m_interrupt.setPatient(false); }
    CPatience(const CPatience&) = delete;
    CPatience& operator=(const CPatience&) = delete;

private:
    HostKit::CInterrupt& m_interrupt;
};

/** How far an update came, by the job's signals. Main thread. */
class CHowFar : public QObject
{
public:
    explicit CHowFar(const IDeviceFirmwareUpdate& job)
    {
        connect(&job, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepBegin, this,
                [this](EFirmwareUpdateStep step) { onBegin(step); });
        connect(&job, &IDeviceFirmwareUpdate::firmwareUpdateProgressStepDone, this, [this] { m_isInUpload = false; });
    }
    bool hasWritten() const { return m_hasWritten; }
    bool isInUpload() const { return m_isInUpload; }

private:
    void onBegin(EFirmwareUpdateStep step)
    {
        m_isInUpload = step == EFirmwareUpdateStep::FileUpload;
        m_hasWritten = m_hasWritten || m_isInUpload || step == EFirmwareUpdateStep::FeatureWrite ||
                       step == EFirmwareUpdateStep::FeatureExecute || step == EFirmwareUpdateStep::DeviceReset;
    }

    bool m_hasWritten = false;
    bool m_isInUpload = false;
};

bool apply(CSession& session, IDeviceFirmwareUpdate& job, bool isShown)
{
    std::optional<CFirmwareProgress> progress;
    if (isShown)
    {
        progress.emplace(job);
    }
    bool isDone = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] { isDone = job.apply(); }));
    const auto end = [&]
    {
        const bool isFirst = !thread->isInterruptionRequested();
        thread->requestInterruption();
        if (progress)
        {
            progress->endBar();
        }
        printError(isFirst
                       ? CTexts::tr("Interrupted: the update ends when the present step is done. Leave the camera "
                                    "switched on.")
                       : CTexts::tr("Still waiting for the end of the present step. Leave the camera switched on."));
    };
    const CPatience patience(session.interrupt());
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QObject::connect(&session.interrupt(), &HostKit::CInterrupt::raised, &loop, end);
    thread->start();
    if (session.interrupt().wasRaised())
    {
        end();
    }
    loop.exec();
    thread->wait();
    QCoreApplication::sendPostedEvents(); // what the last step told
    return isDone;
}

/** What the user has to know of the camera after an update that did not complete. */
QString consequence(const CHowFar& howFar, const QString& version)
{
    if (howFar.isInUpload())
    {
        return {}; // the reason of a failed upload says it
    }
    if (!howFar.hasWritten())
    {
        return CTexts::tr("Nothing was written to the camera.");
    }
    if (version != QLatin1String(unknownVersion))
    {
        return CTexts::tr("The camera has firmware %1.").arg(printable(version));
    }
    return CTexts::tr("Which firmware the camera has is not known: switch it off and on, look for it with 'poolcli "
                      "list', and update it again.");
}

/** Why the camera cannot be read after its update; null when it can, and only its version says nothing. */
QString whyNotReached(CSession& session, const HostKit::CameraInfoPtr& camera)
{
    const QString reason = camera->errorString();
    if (!reason.isEmpty())
    {
        return reason;
    }
    try
    {
        ParameterCollection::CParameter(session.parameters(camera), QStringLiteral("DeviceFirmwareVersion")).toString();
        return {};
    }
    catch (const GenICam::GenericException& e)
    {
        return QString::fromUtf8(e.GetDescription());
    }
}

} // namespace

void applyUpdate(CSession& session, IDeviceFirmwareUpdate& job, bool isShown)
{
    const auto camera = job.getInfoOfDeviceToUpdate();
    camera->clearError();
    const CHowFar howFar(job);
    const bool isDone = apply(session, job, isShown);
    const QString name = printable(camera->getFriendlyName());
    const QString version = job.getDeviceVersion();
    if (!isDone)
    {
        const QString more = consequence(howFar, version);
        throw CRefusal(CTexts::tr("The update of %1 did not complete: %2").arg(name, printable(camera->errorString())) +
                       (more.isEmpty() ? QString() : QLatin1Char('\n') + more));
    }
    const QString fault = version == QLatin1String(unknownVersion) ? whyNotReached(session, camera) : QString();
    if (!fault.isEmpty())
    {
        throw CRefusal(CTexts::tr("%1 was updated, but cannot be reached: %2").arg(name, printable(fault)));
    }
}

} // namespace PoolCli
