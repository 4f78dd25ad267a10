// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/chunkparser.h"
#include "transport/transport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

namespace Contract
{

/** One transport with at least one camera that can be opened, and what a test does to that camera from outside. */
class IHarness
{
public:
    virtual ~IHarness() = default;
    virtual std::shared_ptr<Velmo::Transport::ITransport> GetTransport() = 0;
    /** The record of the camera to use. */
    virtual Velmo::CDeviceInfo GetCamera() = 0;
    /** Has the camera send at least one image into the started stream (free-running ones need do nothing). */
    virtual void SendImage() = 0;
    /** Unplugs the camera. Every harness must be able to: false is a failure of the test that asked for it. */
    virtual bool Unplug() = 0;
    /** Whether the camera can send the chunks Timestamp and FrameID. */
    virtual bool HasChunks() const { return false; }
    /** How long the transport may take to notice it. */
    virtual std::chrono::seconds RemovalLimit() const { return std::chrono::seconds(3); }
};

struct SHarnessFactory
{
    std::string name;
    std::function<std::unique_ptr<IHarness>()> make;
    friend std::ostream& operator<<(std::ostream& stream, const SHarnessFactory& factory)
    {
        return stream << factory.name;
    }
};

/** Counts the reports of a removal. */
class CReports
{
public:
    void Count()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_count;
        m_changed.notify_all();
    }
    bool WaitForFirst(std::chrono::seconds limit)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, limit, [this] { return m_count > 0; });
    }
    int Get() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }

private:
    mutable std::mutex m_mutex; // guards m_count
    std::condition_variable m_changed;
    int m_count = 0;
};

class TransportContract : public ::testing::TestWithParam<SHarnessFactory>
{
protected:
    static constexpr unsigned int WaitMs = 10000;
    static constexpr std::size_t BufferCount = 4;

    void SetUp() override
    {
        harness = GetParam().make();
        transport = harness->GetTransport();
    }
    void TearDown() override
    {
        device.reset();
        transport.reset();
        harness.reset();
    }
    void Open()
    {
        device = transport->CreateDevice(harness->GetCamera());
        device->Open(Velmo::EDeviceAccess::Control);
    }
    void Announce(Velmo::Transport::IStream& stream)
    {
        const std::size_t bytes = stream.GetPayloadBytes();
        memory.assign(BufferCount, std::vector<std::uint8_t>(bytes));
        for (auto& buffer : memory)
        {
            stream.AnnounceBuffer(buffer.data(), bytes, &buffer);
        }
    }
    Velmo::Transport::IStream& StartStream()
    {
        auto& stream = *device->GetStream(0);
        stream.Open();
        Announce(stream);
        for (auto& buffer : memory)
        {
            stream.QueueBuffer(&buffer);
        }
        stream.Start();
        Command("AcquisitionStart");
        return stream;
    }
    void Command(const char* name)
    {
        const GenApi::CCommandPtr command(device->GetNodeMap()->GetNode(name));
        if (command.IsValid())
        {
            command->Execute();
        }
    }
    void EnableChunks(bool isWanted)
    {
        if (!isWanted)
        {
            return;
        }
        GenApi::INodeMap& nodes = *device->GetNodeMap();
        GenApi::CBooleanPtr(nodes.GetNode("ChunkModeActive"))->SetValue(true);
        for (const char* chunk : {"Timestamp", "FrameID"})
        {
            GenApi::CEnumerationPtr(nodes.GetNode("ChunkSelector"))->FromString(chunk);
            GenApi::CBooleanPtr(nodes.GetNode("ChunkEnable"))->SetValue(true);
        }
    }
    std::int64_t ChunkValue(const char* name)
    {
        return GenApi::CIntegerPtr(device->GetNodeMap()->GetNode(name))->GetValue();
    }
    /** Everything that comes out until as many buffers are back as were out. */
    void TakeBack(Velmo::Transport::IStream& stream, std::size_t count)
    {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::milliseconds(WaitMs);
        Velmo::Transport::SStreamResult result;
        while (count > 0 && std::chrono::steady_clock::now() < limit)
        {
            count -= stream.RetrieveResult(result, 100) ? 1 : 0;
        }
        EXPECT_EQ(0U, count);
    }
    void RevokeAndClose(Velmo::Transport::IStream& stream)
    {
        for (auto& buffer : memory)
        {
            EXPECT_NO_THROW(stream.RevokeBuffer(&buffer));
        }
        EXPECT_NO_THROW(stream.Close());
    }

    std::unique_ptr<IHarness> harness;
    std::shared_ptr<Velmo::Transport::ITransport> transport;
    std::vector<std::vector<std::uint8_t>> memory;
    std::unique_ptr<Velmo::IVelmoDevice> device;
};

} // namespace Contract
