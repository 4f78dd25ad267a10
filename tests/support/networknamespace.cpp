// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/networknamespace.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <fstream>
#include <net/if.h>
#include <sched.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
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

void BringLoopbackUp()
{
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

int OpenOwnNamespace()
{
    const int descriptor = open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
    {
        Fail("opening /proc/thread-self/ns/net");
    }
    return descriptor;
}

/** Also when the kernel does so meanwhile, for the sake of a namespace at the far end that is no more. */
void DeleteAdapter(const std::string& name)
{
    const auto isThere = [&]
    {
        return if_nametoindex(name.c_str()) != 0;
    };
    if (!isThere())
    {
        return;
    }
    try
    {
        RunIp("link del " + name);
    }
    catch (const std::runtime_error&)
    {
        if (isThere())
        {
            throw;
        }
    }
}

/** Takes the calling thread back to the namespace it was in, also out of an exception. */
class CReturn
{
public:
    CReturn() : m_descriptor(OpenOwnNamespace()) {}
    ~CReturn()
    {
        if (setns(m_descriptor, CLONE_NEWNET) != 0)
        {
            std::terminate(); // the rest of the test would run in the wrong network
        }
        close(m_descriptor);
    }
    CReturn(const CReturn&) = delete;
    CReturn& operator=(const CReturn&) = delete;

private:
    int m_descriptor;
};

} // namespace

void EnterOwnNetworkNamespace()
{
    Unshare();
    BringLoopbackUp();
}

void RunProgram(const std::vector<std::string>& programAndArguments)
{
    std::vector<char*> arguments;
    std::string line;
    for (const std::string& argument : programAndArguments)
    {
        arguments.push_back(const_cast<char*>(argument.c_str()));
        line += (line.empty() ? "" : " ") + argument;
    }
    arguments.push_back(nullptr);
    pid_t process = -1;
    const int error = posix_spawnp(&process, arguments.front(), nullptr, nullptr, arguments.data(), environ);
    int status = -1;
    if (error != 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
    {
        throw std::runtime_error("\"" + line + "\" failed" +
                                 (error != 0 ? std::string(": ") + std::strerror(error) : std::string()));
    }
}

void RunIp(const std::string& arguments)
{
    std::vector<std::string> command{"ip"};
    std::istringstream words(arguments);
    for (std::string word; words >> word;)
    {
        command.push_back(word);
    }
    RunProgram(command);
}

std::string SetNetworkSetting(const std::string& name, const std::string& value)
{
    const std::string file = "/proc/sys/net/" + name; // the namespace's own of whoever opens it
    std::string before;
    std::getline(std::ifstream(file), before);
    WriteFile(file.c_str(), value);
    return before;
}

CPeerNamespace::CPeerNamespace()
{
    const CReturn back;
    if (unshare(CLONE_NEWNET) != 0)
    {
        Fail("unshare of a second one");
    }
    BringLoopbackUp();
    m_descriptor = OpenOwnNamespace();
}

CPeerNamespace::~CPeerNamespace()
{
    try
    {
        // The kernel would take them away with the namespace, but in its own time: too late for the next test.
        Visit(
            [this]
            {
                for (const std::string& adapter : m_farAdapters)
                {
                    DeleteAdapter(adapter);
                }
            });
    }
    catch (const std::runtime_error& e)
    {
        ADD_FAILURE() << e.what();
    }
    close(m_descriptor);
}

void CPeerNamespace::Visit(const std::function<void()>& function) const
{
    const CReturn back;
    if (setns(m_descriptor, CLONE_NEWNET) != 0)
    {
        Fail("entering the second one");
    }
    function();
}

void CPeerNamespace::ForwardPackets() const
{
    Visit([] { SetNetworkSetting("ipv4/ip_forward", "1"); });
}

void CPeerNamespace::Connect(const std::string& adapter, const std::string& address, const std::string& farAdapter,
                             const std::string& farAddress)
{
    const auto configure = [](const std::string& name, const std::string& ip)
    {
        if (!ip.empty())
        {
            RunIp("addr add " + ip + " broadcast + dev " + name);
        }
        RunIp("link set " + name + " up");
    };
    const std::string there = "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(m_descriptor);
    RunIp("link add " + adapter + " type veth peer name " + farAdapter + " netns " + there);
    m_farAdapters.push_back(farAdapter);
    configure(adapter, address);
    Visit([&] { configure(farAdapter, farAddress); });
}

} // namespace Test
