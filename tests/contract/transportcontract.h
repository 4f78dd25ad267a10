// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "contract/interfacecontract.h"
#include "contract/transportfixture.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

/**
 * What every transport must do, as tests that run on any of them.
 *
 * To run them on a transport: a folder below tests/contract with a CMakeLists.txt that calls
 * project_add_test(contract_<name> ...), and one *test.cpp that includes this header and instantiates the suite with a
 * harness of that transport:
 *
 *     INSTANTIATE_TEST_SUITE_P(Name, TransportContract, ::testing::Values(SHarnessFactory{"Name", MakeHarness}));
 *
 * and the same for InterfaceContract.
 */
namespace Contract
{

TEST_P(TransportContract, describesItself)
{
    const Velmo::CTlInfo info = transport->GetTlInfo();
    EXPECT_FALSE(info.GetDeviceClass().empty());
    EXPECT_FALSE(info.GetTLType().empty());
    EXPECT_FALSE(info.GetFullName().empty());
    EXPECT_FALSE(info.GetFriendlyName().empty());
}

TEST_P(TransportContract, recordsAreCompleteAndUnique)
{
    Velmo::DeviceInfoList list;
    transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::Usable);
    ASSERT_FALSE(list.empty());
    std::vector<GenICam::gcstring> names;
    for (const auto& info : list)
    {
        for (const char* key : {Velmo::Key::DeviceClass, Velmo::Key::TLType, Velmo::Key::FullName,
                                Velmo::Key::FriendlyName, Velmo::Key::VendorName, Velmo::Key::ModelName,
                                Velmo::Key::SerialNumber, Velmo::Key::DeviceVersion, Velmo::Key::DeviceFactory})
        {
            EXPECT_TRUE(info.GetPropertyAvailable(key)) << key;
        }
        EXPECT_EQ(transport->GetTlInfo().GetDeviceClass(), info.GetDeviceClass());
        for (const auto& name : names)
        {
            EXPECT_NE(name, info.GetFullName());
        }
        names.push_back(info.GetFullName());
    }
}

TEST_P(TransportContract, enumerationsAppend)
{
    Velmo::DeviceInfoList devices(1);
    transport->EnumerateDevices(devices, Velmo::Transport::EDiscoveryScope::All);
    EXPECT_GT(devices.size(), 1U);
    Velmo::InterfaceInfoList interfaces;
    transport->EnumerateInterfaces(interfaces);
    ASSERT_FALSE(interfaces.empty());
    EXPECT_FALSE(interfaces.front().GetInterfaceID().empty());
}

TEST_P(TransportContract, unknownDeviceIsRefused)
{
    Velmo::CDeviceInfo info = harness->GetCamera();
    info.SetFullName("no such device");
    info.SetSerialNumber("no such serial number");
    info.SetIpAddress("127.255.255.254");
    EXPECT_THROW(transport->CreateDevice(info), GenICam::RuntimeException);
}

TEST_P(TransportContract, nodeMapIsThereWhileOpenOnly)
{
    Open();
    ASSERT_TRUE(device->IsOpen());
    ASSERT_NE(nullptr, device->GetNodeMap());
    EXPECT_NE(nullptr, device->GetNodeMap()->GetNode("AcquisitionStart"));
    device->Close();
    EXPECT_FALSE(device->IsOpen());
    EXPECT_EQ(nullptr, device->GetNodeMap());
    device->Open(Velmo::EDeviceAccess::Control);
    EXPECT_NE(nullptr, device->GetNodeMap());
}

TEST_P(TransportContract, cameraUnderControlIsBusy)
{
    Open();
    const auto second = transport->CreateDevice(harness->GetCamera());
    EXPECT_THROW(second->Open(Velmo::EDeviceAccess::Control), GenICam::AccessException);
    EXPECT_FALSE(second->IsOpen());
    device->Close();
    EXPECT_NO_THROW(second->Open(Velmo::EDeviceAccess::Control));
}

TEST_P(TransportContract, monitorReadsBesideTheControllerButCannotWrite)
{
    Open();
    const auto monitor = transport->CreateDevice(harness->GetCamera());
    monitor->Open(Velmo::EDeviceAccess::Monitor);
    EXPECT_TRUE(monitor->IsOpen());
    ASSERT_NE(nullptr, monitor->GetNodeMap());
    const GenApi::CIntegerPtr width(monitor->GetNodeMap()->GetNode("Width"));
    ASSERT_TRUE(width.IsValid());
    EXPECT_GT(width->GetValue(), 0);
    EXPECT_FALSE(GenApi::IsWritable(width.Get()));
    EXPECT_THROW(width->SetValue(width->GetValue()), GenICam::GenericException);
    monitor->Close();
    EXPECT_TRUE(device->IsOpen());
}

TEST_P(TransportContract, streamsBeyondTheirNumberAreNull)
{
    Open();
    ASSERT_GE(device->GetNumStreams(), 1U);
    EXPECT_NE(nullptr, device->GetStream(0));
    EXPECT_EQ(nullptr, device->GetStream(device->GetNumStreams()));
}

TEST_P(TransportContract, imageArrivesInAnAnnouncedBuffer)
{
    Open();
    auto& stream = StartStream();
    harness->SendImage();
    Velmo::Transport::SStreamResult result;
    ASSERT_TRUE(stream.RetrieveResult(result, WaitMs));
    const auto found =
        std::any_of(memory.begin(), memory.end(), [&](auto& buffer) { return &buffer == result.pContext; });
    EXPECT_TRUE(found);
    EXPECT_EQ(Velmo::Transport::EResultStatus::Ok, result.status);
    EXPECT_GT(result.payloadBytes, 0U);
    EXPECT_LE(result.payloadBytes, memory.front().size());
    Command("AcquisitionStop");
    stream.Stop();
    TakeBack(stream, BufferCount - 1);
    RevokeAndClose(stream);
}

TEST_P(TransportContract, stopReturnsEveryBufferAndTheStreamStartsAgain)
{
    Open();
    for (int round = 0; round < 2; ++round)
    {
        auto& stream = StartStream();
        Command("AcquisitionStop");
        stream.Stop();
        TakeBack(stream, BufferCount);
        RevokeAndClose(stream);
    }
}

TEST_P(TransportContract, stopWithoutAStartReturnsWhatIsQueued)
{
    Open();
    auto& stream = *device->GetStream(0);
    stream.Open();
    Announce(stream);
    for (auto& buffer : memory)
    {
        stream.QueueBuffer(&buffer);
    }
    stream.Stop();
    TakeBack(stream, BufferCount);
    RevokeAndClose(stream);
}

TEST_P(TransportContract, aChunkParserIsThereWhereTheCameraHasChunks)
{
    Open();
    Velmo::IChunkParser* const pParser = device->CreateChunkParser();
    EXPECT_EQ(pParser != nullptr, harness->HasChunks());
    EXPECT_NO_THROW(device->DestroyChunkParser(pParser));
}

TEST_P(TransportContract, chunkFeaturesShowTheAttachedImageAndNothingElse)
{
    Open();
    EnableChunks(harness->HasChunks());
    const std::unique_ptr<Velmo::IChunkParser, std::function<void(Velmo::IChunkParser*)>> parser(
        device->CreateChunkParser(), [this](Velmo::IChunkParser* p) { device->DestroyChunkParser(p); });
    auto& stream = StartStream();
    for (int image = 0; image < 2; ++image)
    {
        harness->SendImage();
        Velmo::Transport::SStreamResult result;
        ASSERT_TRUE(stream.RetrieveResult(result, WaitMs));
        ASSERT_EQ(Velmo::Transport::EResultStatus::Ok, result.status);
        EXPECT_EQ(result.payloadType == Velmo::EPayloadType::ChunkData, harness->HasChunks());
        if (parser != nullptr)
        {
            const auto& buffer = *static_cast<std::vector<std::uint8_t>*>(result.pContext);
            std::size_t imageBytes = 0;
            parser->AttachBuffer(buffer.data(), static_cast<std::int64_t>(result.payloadBytes), 0, &imageBytes);
            EXPECT_EQ(static_cast<std::int64_t>(result.timestamp), ChunkValue("ChunkTimestamp"));
            EXPECT_EQ(static_cast<std::int64_t>(result.blockId), ChunkValue("ChunkFrameID"));
            EXPECT_GE(imageBytes, std::size_t{result.width} * result.height);
            EXPECT_LT(imageBytes, result.payloadBytes);
            parser->DetachBuffer();
            EXPECT_FALSE(GenApi::IsReadable(device->GetNodeMap()->GetNode("ChunkTimestamp")));
        }
        stream.QueueBuffer(result.pContext);
    }
    Command("AcquisitionStop");
    stream.Stop();
    TakeBack(stream, BufferCount);
    RevokeAndClose(stream);
}

TEST_P(TransportContract, closingTheDeviceDetachesItsChunkParser)
{
    Open();
    Velmo::IChunkParser* const pParser = device->CreateChunkParser();
    device->Close();
    if (pParser != nullptr)
    {
        const std::uint8_t empty[8] = {};
        EXPECT_THROW(pParser->AttachBuffer(empty, sizeof empty), GenICam::LogicalErrorException);
        EXPECT_NO_THROW(pParser->DetachBuffer());
    }
    EXPECT_NO_THROW(device->DestroyChunkParser(pParser));
}

TEST_P(TransportContract, bufferThatIsNotAnnouncedIsRefused)
{
    Open();
    auto& stream = *device->GetStream(0);
    stream.Open();
    Announce(stream);
    int stranger = 0;
    EXPECT_THROW(stream.QueueBuffer(&stranger), GenICam::GenericException);
    RevokeAndClose(stream);
}

TEST_P(TransportContract, wakeUpFromAnotherThreadEndsAWait)
{
    Open();
    auto& stream = *device->GetStream(0);
    stream.Open();
    stream.Start();
    std::thread waiting(
        [&]
        {
            Velmo::Transport::SStreamResult result;
            EXPECT_FALSE(stream.RetrieveResult(result, 6 * WaitMs));
        });
    const auto begin = std::chrono::steady_clock::now();
    stream.WakeUp(); // before or during the wait: it must not be lost
    waiting.join();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(WaitMs));
    stream.Stop();
    stream.Close();
}

TEST_P(TransportContract, wakeUpEndsTheNextWait)
{
    Open();
    auto& stream = *device->GetStream(0);
    stream.Open();
    stream.Start();
    stream.WakeUp();
    Velmo::Transport::SStreamResult result;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(stream.RetrieveResult(result, WaitMs));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(WaitMs / 2));
    stream.Stop();
    stream.Close();
}

TEST_P(TransportContract, removalIsReportedOnceAndEverythingStillCloses)
{
    Open();
    CReports reports;
    device->SetRemovalCallback([&] { reports.Count(); });
    auto& stream = StartStream();
    ASSERT_TRUE(harness->Unplug());
    ASSERT_TRUE(reports.WaitForFirst(harness->RemovalLimit()));
    EXPECT_TRUE(device->IsRemoved());
    EXPECT_NO_THROW(stream.Stop());
    RevokeAndClose(stream);
    EXPECT_NO_THROW(device->Close());
    device->SetRemovalCallback(nullptr);
    EXPECT_EQ(1, reports.Get());
}

TEST_P(TransportContract, removedDeviceRefusesBuffersButGivesBackThoseItHas)
{
    Open();
    CReports reports;
    device->SetRemovalCallback([&] { reports.Count(); });
    auto& stream = *device->GetStream(0);
    stream.Open();
    Announce(stream);
    stream.QueueBuffer(&memory[0]);
    stream.Start();
    ASSERT_TRUE(harness->Unplug());
    ASSERT_TRUE(reports.WaitForFirst(harness->RemovalLimit()));
    EXPECT_THROW(stream.QueueBuffer(&memory[1]), GenICam::RuntimeException);
    stream.Stop();
    Velmo::Transport::SStreamResult result;
    ASSERT_TRUE(stream.RetrieveResult(result, WaitMs));
    EXPECT_EQ(&memory[0], result.pContext);
    EXPECT_NE(Velmo::Transport::EResultStatus::Ok, result.status);
    EXPECT_THROW(stream.Start(), GenICam::RuntimeException);
    RevokeAndClose(stream);
}

TEST_P(TransportContract, threadsThatQueueAndRetrieveSurviveTheRemoval)
{
    Open();
    CReports reports;
    device->SetRemovalCallback([&] { reports.Count(); });
    auto& stream = StartStream();
    std::atomic<bool> done{false};
    std::vector<std::thread> users;
    for (int i = 0; i < 3; ++i)
    {
        users.emplace_back(
            [&]
            {
                while (!done)
                {
                    Velmo::Transport::SStreamResult result;
                    if (stream.RetrieveResult(result, 10))
                    {
                        try
                        {
                            stream.QueueBuffer(result.pContext);
                        }
                        catch (const GenICam::RuntimeException&)
                        {
                            EXPECT_TRUE(device->IsRemoved());
                        }
                    }
                    stream.WakeUp();
                }
            });
    }
    harness->SendImage();
    EXPECT_TRUE(harness->Unplug());
    EXPECT_TRUE(reports.WaitForFirst(harness->RemovalLimit()));
    done = true;
    for (std::thread& user : users)
    {
        user.join();
    }
    EXPECT_NO_THROW(stream.Stop());
    RevokeAndClose(stream);
}

TEST_P(TransportContract, removedDeviceCannotBeOpenedAgain)
{
    Open();
    CReports reports;
    device->SetRemovalCallback([&] { reports.Count(); });
    ASSERT_TRUE(harness->Unplug());
    ASSERT_TRUE(reports.WaitForFirst(harness->RemovalLimit()));
    device->Close();
    EXPECT_THROW(device->Open(Velmo::EDeviceAccess::Control), GenICam::GenericException);
    EXPECT_FALSE(device->IsOpen());
    EXPECT_TRUE(device->IsRemoved());
}

TEST_P(TransportContract, removalCallbackMayCloseTheDeviceAndTakeItselfAway)
{
    Open();
    CReports reports;
    auto& stream = StartStream();
    device->SetRemovalCallback(
        [&]
        {
            EXPECT_NO_THROW(stream.Stop());
            RevokeAndClose(stream);
            EXPECT_NO_THROW(device->Close());
            device->SetRemovalCallback(nullptr);
            reports.Count();
        });
    ASSERT_TRUE(harness->Unplug());
    ASSERT_TRUE(reports.WaitForFirst(harness->RemovalLimit()));
    EXPECT_FALSE(device->IsOpen());
    EXPECT_TRUE(device->IsRemoved());
}

TEST_P(TransportContract, removalCallbackMayDestroyTheDeviceInTheMiddleOfAStream)
{
    Open();
    CReports reports;
    StartStream();
    // The callback owns what it still needs: its own function object may go with the device.
    device->SetRemovalCallback(
        [this, &reports]
        {
            CReports& told = reports;
            device.reset();
            told.Count();
        });
    ASSERT_TRUE(harness->Unplug());
    ASSERT_TRUE(reports.WaitForFirst(harness->RemovalLimit()));
    EXPECT_EQ(nullptr, device);
    Velmo::DeviceInfoList list;
    EXPECT_NO_THROW(transport->EnumerateDevices(list, Velmo::Transport::EDiscoveryScope::Usable));
}

TEST_P(TransportContract, callbackTakenAwayBeforeTheRemovalIsNotCalled)
{
    Open();
    CReports reports;
    device->SetRemovalCallback([&] { reports.Count(); });
    device->SetRemovalCallback(nullptr);
    ASSERT_TRUE(harness->Unplug());
    const auto limit = std::chrono::steady_clock::now() + harness->RemovalLimit();
    while (!device->IsRemoved() && std::chrono::steady_clock::now() < limit)
    {
        std::this_thread::yield();
    }
    EXPECT_TRUE(device->IsRemoved());
    device.reset(); // after it nothing of the transport may call any more
    EXPECT_EQ(0, reports.Get());
}

} // namespace Contract
