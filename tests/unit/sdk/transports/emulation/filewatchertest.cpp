// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/filewatcher.h"
#include "transport/log.h"

#include "rig.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

using namespace EmulationTest;
using testing::HasSubstr;
using Velmo::Emulation::Internal::CFileWatcher;

namespace
{

/** A folder of its own, and a file in it. */
class FileWatcher : public testing::Test
{
protected:
    FileWatcher()
    {
        std::filesystem::create_directory(folder);
        Velmo::SetLogSink(
            [this](const Velmo::SLogRecord& record)
            {
                const std::lock_guard<std::mutex> lock(mutex);
                logged.push_back(record.text);
                changed.notify_all();
            });
    }
    ~FileWatcher() override
    {
        Velmo::SetLogSink(nullptr);
        std::filesystem::remove_all(folder);
    }

    static void Write(const std::string& name, const std::string& text = "x") { std::ofstream(name) << text; }
    bool WaitForLog()
    {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, std::chrono::milliseconds(DeadlineMs), [&] { return !logged.empty(); });
    }

    const std::string folder = testing::TempDir() + "filewatcher_" + std::to_string(::getpid());
    const std::string file = folder + "/cameras.json";
    CCounter counter;
    std::mutex mutex; // guards logged
    std::condition_variable changed;
    std::vector<std::string> logged;
};

} // namespace

TEST_F(FileWatcher, tellsThatAFileAppeared)
{
    const CFileWatcher watcher(file, [this] { counter.Count(); });
    Write(file);
    EXPECT_TRUE(counter.WaitFor(1));
}

TEST_F(FileWatcher, tellsThatAFileWasWrittenAgain)
{
    Write(file);
    const CFileWatcher watcher(file, [this] { counter.Count(); });
    Write(file, "y");
    EXPECT_TRUE(counter.WaitFor(1));
    Write(file, "z");
    EXPECT_TRUE(counter.WaitFor(2));
}

TEST_F(FileWatcher, tellsThatAFileWasRenamedIntoPlace)
{
    Write(file);
    const CFileWatcher watcher(file, [this] { counter.Count(); });
    Write(file + ".new");
    std::filesystem::rename(file + ".new", file);
    EXPECT_TRUE(counter.WaitFor(1));
}

TEST_F(FileWatcher, tellsNothingOfOtherFilesAndOfDeletion)
{
    Write(file);
    const CFileWatcher watcher(file, [this] { counter.Count(); });
    Write(folder + "/cameras.jso");
    Write(file + ".new");
    std::filesystem::remove(file);
    std::filesystem::rename(file + ".new", file); // told after all before
    ASSERT_TRUE(counter.WaitFor(1));
    EXPECT_EQ(counter.Get(), 1);
}

TEST_F(FileWatcher, logsOnceThatAFolderIsNotThere)
{
    {
        const CFileWatcher watcher(folder + "/missing/cameras.json", [this] { counter.Count(); });
    }
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_THAT(logged.at(0), HasSubstr(folder + "/missing'"));
    EXPECT_THAT(logged.at(0), HasSubstr("No such file or directory"));
}

TEST_F(FileWatcher, logsOnceThatItsFolderWasRemoved)
{
    const CFileWatcher watcher(file, [this] { counter.Count(); });
    std::filesystem::remove_all(folder);
    ASSERT_TRUE(WaitForLog());
    const std::lock_guard<std::mutex> lock(mutex);
    EXPECT_EQ(logged.size(), 1U);
    EXPECT_THAT(logged.at(0), HasSubstr("it was removed"));
}

TEST_F(FileWatcher, letsTheEmulationReportALossWithoutADiscovery)
{
    Write(file, R"({"cameras": [{"serial": "A"}, {"serial": "B"}]})");
    ::setenv(Velmo::Emulation::FileVariable, file.c_str(), 1);
    const auto transport = Velmo::Emulation::CreateTransport();
    ::unsetenv(Velmo::Emulation::FileVariable);
    Velmo::DeviceInfoList list;
    transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::All);
    const auto device = transport->CreateDevice(list.at(0));
    device->Open(Velmo::EDeviceAccess::Control);
    device->SetRemovalCallback([this] { counter.Count(); });
    Write(file, R"({"cameras": [{"serial": "B"}]})");
    EXPECT_TRUE(counter.WaitFor(1));
    EXPECT_TRUE(device->IsRemoved());
    device->SetRemovalCallback(nullptr);
}
