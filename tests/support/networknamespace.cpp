// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/networknamespace.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <net/if.h>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Test
{

namespace
{

[[noreturn]] void Fail(const std::string& what)
{
    throw std::runtime_error("The test needs a network namespace of its own: " + what + ": " + std::strerror(errno));
}

void WriteFile(const char* name, const std::string& text)
{
    std::ofstream file(name);
    file << text;
    file.flush();
    if (!file)
    {
        Fail(std::string("writing ") + name);
    }
}

/** Without root a user namespace comes first, in which the user is root. */
void Unshare()
{
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (unshare(CLONE_NEWNET) == 0)
    {
        return;
    }
    if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
    {
        Fail("unshare (be root, or allow unprivileged user namespaces)");
    }
    WriteFile("/proc/self/setgroups", "deny");
    WriteFile("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
    WriteFile("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
}

} // namespace

void EnterOwnNetworkNamespace()
{
    Unshare();
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    bool isUp = descriptor >= 0 && ioctl(descriptor, SIOCGIFFLAGS, &request) == 0;
    request.ifr_flags |= IFF_UP;
    isUp = isUp && ioctl(descriptor, SIOCSIFFLAGS, &request) == 0;
    if (!isUp)
    {
        Fail("bringing the loopback adapter up");
    }
    close(descriptor);
}

} // namespace Test
