// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/interrupt.h"

#include <QSocketNotifier>

#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace HostKit
{
namespace
{

// Written once before the handlers are installed and after they are removed.
volatile int eventDescriptor = -1;

extern "C" void onSignal(int)
{
    const std::uint64_t one = 1;
    // Nothing can be done in a signal handler about a failed write, and the counter cannot overflow.
    (void)!write(eventDescriptor, &one, sizeof(one));
}

constexpr int Once = static_cast<int>(SA_RESTART | SA_RESETHAND);
constexpr int Always = SA_RESTART;

/** As nohup does for what is to go on without its terminal. */
bool isIgnored(int number)
{
    struct sigaction action = {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

CInterrupt::CInterrupt(QObject* parent) : QObject(parent)
{
    eventDescriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    m_notifier = std::make_unique<QSocketNotifier>(eventDescriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { onReadable(); });
    m_isHangupTaken = !isIgnored(SIGHUP);
    install(onSignal, Once);
}

CInterrupt::~CInterrupt()
{
    install(SIG_DFL, SA_RESTART);
    m_notifier.reset();
    close(eventDescriptor);
    eventDescriptor = -1;
}

void CInterrupt::install(void (*handler)(int), int flags) const
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    if (m_isHangupTaken)
    {
        sigaction(SIGHUP, &action, nullptr);
    }
}

void CInterrupt::setPatient(bool isPatient)
{
    if (isPatient)
    {
        install(onSignal, Always);
    }
    else
    {
        // The next one is the second if there was one before.
        install(m_raised ? SIG_DFL : onSignal, Once);
    }
}

void CInterrupt::onReadable()
{
    std::uint64_t count = 0;
    if (read(eventDescriptor, &count, sizeof(count)) == static_cast<ssize_t>(sizeof(count)))
    {
        m_raised = true;
        emit raised();
    }
}

} // namespace HostKit
