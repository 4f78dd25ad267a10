// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "gvcpresponder.h"
#include "protocols/gvbsregisters.h"
#include "support/fakecamera.h"
#include "support/gigeclient.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace Velmo;
using Test::CFakeCamera;
using Test::CGigEClient;
using Test::CGvcpResponder;
using Test::CSignal;
using Test::CStreamBuffers;
using Test::Execute;
using Test::GetInteger;
using Transport::EDiscoveryScope;
using Transport::EResultStatus;
using Transport::SStreamResult;
using namespace std::chrono_literals;

namespace
{

class GigECamera : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override { GigE::SetAdapters({}); }

    CDeviceInfo Find()
    {
        DeviceInfoList list;
        m_pTransport->EnumerateDevices(list, EDiscoveryScope::All);
        return list.empty() ? CDeviceInfo() : list.front();
    }
    std::unique_ptr<IVelmoDevice> OpenCamera()
    {
        std::unique_ptr<IVelmoDevice> pDevice = m_pTransport->CreateDevice(Find());
        pDevice->Open(EDeviceAccess::Control);
        return pDevice;
    }
    CFakeCamera m_camera;
    std::shared_ptr<Transport::ITransport> m_pTransport = GigE::CreateTransport();
};

} // namespace

TEST_F(GigECamera, opensWithANodeMapAndClosesAgain)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    EXPECT_TRUE(pDevice->IsOpen());
    ASSERT_NE(pDevice->GetNodeMap(), nullptr);
    EXPECT_EQ(GenApi::CStringPtr(pDevice->GetNodeMap()->GetNode("DeviceVendorName"))->GetValue(), "Aravis");
    pDevice->Close();
    EXPECT_FALSE(pDevice->IsOpen());
    EXPECT_EQ(pDevice->GetNodeMap(), nullptr);
    EXPECT_FALSE(pDevice->IsRemoved());
}

TEST_F(GigECamera, opensAgainAtOnceAfterClosing)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 3; ++i)
    {
        pDevice->Close();
        pDevice->Open(EDeviceAccess::Control);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
    EXPECT_TRUE(pDevice->IsOpen());
}

TEST_F(GigECamera, openOnesStaysUsableInItsOwnProcessOnly)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    DeviceInfoList own;
    m_pTransport->EnumerateDevices(own, EDiscoveryScope::Usable);
    ASSERT_EQ(own.size(), 1u);
    EXPECT_EQ(own.front().Get(Key::AccessStatus), "InUse");
    DeviceInfoList others;
    GigE::CreateTransport()->EnumerateDevices(others, EDiscoveryScope::Usable);
    EXPECT_TRUE(others.empty());
}

TEST_F(GigECamera, secondOpenInTheSameApplicationSaysSo)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    const std::unique_ptr<IVelmoDevice> pSecond = m_pTransport->CreateDevice(Find());
    try
    {
        pSecond->Open(EDeviceAccess::Control);
        FAIL() << "opened twice";
    }
    catch (const GenICam::AccessException& e)
    {
        EXPECT_THAT(e.GetDescription(), ::testing::HasSubstr("in use by this application"));
    }
    EXPECT_FALSE(pSecond->IsOpen());
}

TEST_F(GigECamera, cameraHeldElsewhereIsRefusedAtOnce)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    const auto pOther = GigE::CreateTransport(); // knows nothing of the first one's cameras
    const std::unique_ptr<IVelmoDevice> pSecond = pOther->CreateDevice(Find());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THROW(pSecond->Open(EDeviceAccess::Control), GenICam::AccessException);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
}

TEST_F(GigECamera, integerFloatEnumerationAndStringRoundTrip)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    GenApi::INodeMap* pNodeMap = pDevice->GetNodeMap();
    const GenApi::CIntegerPtr pWidth(pNodeMap->GetNode("Width"));
    pWidth->SetValue(256);
    EXPECT_EQ(pWidth->GetValue(false, true), 256);
    const GenApi::CFloatPtr pExposure(pNodeMap->GetNode("ExposureTimeAbs"));
    pExposure->SetValue(4000.0);
    EXPECT_NEAR(pExposure->GetValue(false, true), 4000.0, 1.0);
    const GenApi::CEnumerationPtr pMode(pNodeMap->GetNode("AcquisitionMode"));
    pMode->FromString("SingleFrame");
    EXPECT_EQ(pMode->ToString(false, true), "SingleFrame");
    const GenApi::CStringPtr pText(pNodeMap->GetNode("TestStringReg"));
    pText->SetValue("left eye");
    EXPECT_EQ(pText->GetValue(false, true), "left eye");
}

TEST_F(GigECamera, userNameGivenToTheCameraIsInItsRecord)
{
    {
        const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
        auto* pPort = dynamic_cast<GenApi::IPort*>(pDevice->GetNodeMap()->GetNode("Device"));
        ASSERT_NE(pPort, nullptr);
        const char name[Gvbs::UserDefinedNameBytes] = "left eye";
        pPort->Write(name, Gvbs::UserDefinedName, sizeof name);
    }
    const CDeviceInfo info = Find();
    EXPECT_EQ(info.GetUserDefinedName(), "left eye");
    EXPECT_EQ(info.GetFriendlyName(), "left eye (GV77)");
}

TEST_F(GigECamera, accessOffTheFourByteGridChangesNothingBeside)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    auto* pPort = dynamic_cast<GenApi::IPort*>(pDevice->GetNodeMap()->GetNode("Device"));
    ASSERT_NE(pPort, nullptr);
    const char before[Gvbs::UserDefinedNameBytes] = "abcdefghijklmno";
    pPort->Write(before, Gvbs::UserDefinedName, sizeof before);
    pPort->Write("XYZ", Gvbs::UserDefinedName + 3, 3);
    char after[Gvbs::UserDefinedNameBytes] = {};
    pPort->Read(after, Gvbs::UserDefinedName, sizeof after);
    EXPECT_STREQ(after, "abcXYZghijklmno");
    char piece[6] = {};
    pPort->Read(piece, Gvbs::UserDefinedName + 1, 5);
    EXPECT_STREQ(piece, "bcXYZ");
}

TEST_F(GigECamera, accessBeyondTheAddressSpaceIsRefused)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    auto* pPort = dynamic_cast<GenApi::IPort*>(pDevice->GetNodeMap()->GetNode("Device"));
    ASSERT_NE(pPort, nullptr);
    std::uint32_t value = 0;
    EXPECT_THROW(pPort->Read(&value, std::int64_t{1} << 32, 4), GenICam::AccessException);
    EXPECT_THROW(pPort->Read(&value, -4, 4), GenICam::AccessException);
}

TEST_F(GigECamera, heartbeatTimeoutIsAParameterOfTheTransportLayer)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    const GenApi::CIntegerPtr pTimeout(pDevice->GetTLNodeMap()->GetNode("HeartbeatTimeout"));
    EXPECT_EQ(pTimeout->GetValue(), 3000);
    pTimeout->SetValue(5000);
    EXPECT_EQ(pTimeout->GetValue(), 5000);
    EXPECT_THROW(pTimeout->SetValue(10), GenICam::OutOfRangeException);
}

TEST_F(GigECamera, twoHundredImagesArriveCompleteAndInOrder)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    GenApi::CFloatPtr(pDevice->GetNodeMap()->GetNode("AcquisitionFrameRate"))->SetValue(100.0);
    Transport::IStream& stream = *pDevice->GetStream(0);
    const CStreamBuffers buffers(stream, 10);
    stream.Start();
    Execute(*pDevice, "AcquisitionStart");
    std::uint64_t lastTimestamp = 0;
    std::uint64_t lastBlock = 0; // this camera's first block id is 65401, so that the ids wrap on the way
    for (int image = 0; image < 200; ++image)
    {
        SStreamResult result;
        ASSERT_TRUE(stream.RetrieveResult(result, 5000));
        ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription << " at " << image;
        ASSERT_EQ(result.blockId, image == 0 ? 65401 : lastBlock + 1);
        lastBlock = result.blockId;
        EXPECT_GT(result.timestamp, lastTimestamp);
        lastTimestamp = result.timestamp;
        stream.QueueBuffer(result.pContext);
    }
    Execute(*pDevice, "AcquisitionStop");
    EXPECT_GE(GetInteger(*stream.GetNodeMap(), "StreamDeliveredFrameCount"), 200);
    EXPECT_EQ(GetInteger(*stream.GetNodeMap(), "StreamIncompleteFrameCount"), 0);
}

TEST_F(GigECamera, acquisitionThatWasLeftOverEndsWhenTheCameraIsOpened)
{
    constexpr std::int64_t acquisition = 0x124; // this camera's register behind AcquisitionStart and AcquisitionStop
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Execute(*pDevice, "AcquisitionStart");
    const auto isAcquiring = [&]
    {
        std::uint8_t value[4] = {};
        dynamic_cast<GenApi::IPort&>(*pDevice->GetNodeMap()->GetNode("Device")).Read(value, acquisition, sizeof value);
        return value[3] != 0; // big-endian
    };
    EXPECT_TRUE(isAcquiring());
    pDevice->Close();
    pDevice->Open(EDeviceAccess::Control);
    EXPECT_FALSE(isAcquiring());
}

TEST_F(GigECamera, imageHasItsGeometryAndItsBytes)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    GenApi::CIntegerPtr(pDevice->GetNodeMap()->GetNode("Width"))->SetValue(320);
    GenApi::CIntegerPtr(pDevice->GetNodeMap()->GetNode("Height"))->SetValue(200);
    Transport::IStream& stream = *pDevice->GetStream(0);
    const CStreamBuffers buffers(stream, 2);
    EXPECT_EQ(stream.GetPayloadBytes(), 320u * 200u);
    EXPECT_EQ(GetInteger(*stream.GetNodeMap(), "PayloadSize"), 320 * 200);
    stream.Start();
    Execute(*pDevice, "AcquisitionStart");
    SStreamResult result;
    ASSERT_TRUE(stream.RetrieveResult(result, 5000));
    Execute(*pDevice, "AcquisitionStop");
    ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
    EXPECT_EQ(result.payloadType, EPayloadType::Image);
    EXPECT_EQ(result.pixelType, 0x01080001u); // PFNC, Mono8
    EXPECT_EQ(result.width, 320u);
    EXPECT_EQ(result.height, 200u);
    EXPECT_EQ(result.offsetX, 0u);
    EXPECT_EQ(result.offsetY, 0u);
    EXPECT_EQ(result.paddingX, 0u);
    EXPECT_EQ(result.payloadBytes, 320u * 200u);
    const auto& memory = *static_cast<std::vector<std::uint8_t>*>(result.pContext);
    EXPECT_NE(memory.front(), memory[memory.size() / 2]) << "the test image is not even";
}

TEST_F(GigECamera, singleQueuedBufferGivesOneImageAndNoSecond)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    const CStreamBuffers buffers(stream, 1);
    stream.Start();
    Execute(*pDevice, "AcquisitionStart");
    SStreamResult result;
    ASSERT_TRUE(stream.RetrieveResult(result, 5000));
    EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
    EXPECT_FALSE(stream.RetrieveResult(result, 300));
    stream.QueueBuffer(result.pContext);
    ASSERT_TRUE(stream.RetrieveResult(result, 5000)) << "the camera goes on";
}

TEST_F(GigECamera, streamStartsAgain)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    for (int round = 0; round < 2; ++round)
    {
        const CStreamBuffers buffers(stream, 4);
        stream.Start();
        Execute(*pDevice, "AcquisitionStart");
        SStreamResult result;
        ASSERT_TRUE(stream.RetrieveResult(result, 5000));
        EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
        Execute(*pDevice, "AcquisitionStop");
        stream.Stop();
        while (stream.RetrieveResult(result, 0))
        {
        }
    }
}

TEST_F(GigECamera, stopReturnsEveryQueuedBufferAsCanceled)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    const CStreamBuffers buffers(stream, 7);
    stream.Start();
    stream.Stop();
    SStreamResult result;
    int canceled = 0;
    while (stream.RetrieveResult(result, 0))
    {
        EXPECT_EQ(result.status, EResultStatus::Canceled);
        ++canceled;
    }
    EXPECT_EQ(canceled, 7);
}

TEST_F(GigECamera, bufferSmallerThanTheImageFailsWithAReason)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    stream.Open();
    std::vector<std::uint8_t> memory(stream.GetPayloadBytes() / 2);
    stream.AnnounceBuffer(memory.data(), memory.size(), &memory);
    stream.QueueBuffer(&memory);
    stream.Start();
    Execute(*pDevice, "AcquisitionStart");
    SStreamResult result;
    ASSERT_TRUE(stream.RetrieveResult(result, 5000));
    EXPECT_EQ(result.status, EResultStatus::Failed);
    EXPECT_FALSE(result.errorDescription.empty());
    Execute(*pDevice, "AcquisitionStop");
    stream.Stop();
    stream.RevokeBuffer(&memory);
}

TEST_F(GigECamera, wakeUpEndsAWait)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    stream.Open();
    stream.Start();
    const auto start = std::chrono::steady_clock::now();
    std::thread waker([&stream] { stream.WakeUp(); });
    SStreamResult result;
    EXPECT_FALSE(stream.RetrieveResult(result, 20000));
    waker.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

TEST_F(GigECamera, deathIsReportedOnceWithinThreeSeconds)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CSignal removals;
    pDevice->SetRemovalCallback([&removals] { removals.Raise(); });
    const auto start = std::chrono::steady_clock::now();
    m_camera.Kill();
    EXPECT_TRUE(removals.Wait(10s));
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_LT(took, 3s);
    RecordProperty("milliseconds", static_cast<int>(took / 1ms));
    EXPECT_TRUE(pDevice->IsRemoved());
    EXPECT_THROW(GetInteger(*pDevice->GetNodeMap(), "Width"), GenICam::GenericException);
    pDevice->Close();
    EXPECT_TRUE(pDevice->IsRemoved());
    EXPECT_EQ(removals.Count(), 1);
}

TEST_F(GigECamera, deathWhileGrabbingGivesAllBuffersBackAndClosingDoesNotBlock)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CSignal removals;
    pDevice->SetRemovalCallback([&removals] { removals.Raise(); });
    Transport::IStream& stream = *pDevice->GetStream(0);
    {
        const CStreamBuffers buffers(stream, 5);
        stream.Start();
        Execute(*pDevice, "AcquisitionStart");
        SStreamResult result;
        ASSERT_TRUE(stream.RetrieveResult(result, 5000));
        const auto death = std::chrono::steady_clock::now();
        m_camera.Kill();
        ASSERT_TRUE(removals.Wait(10s));
        EXPECT_LT(std::chrono::steady_clock::now() - death, 3s);
        int returned = 1;
        while (stream.RetrieveResult(result, 0))
        {
            ++returned;
        }
        EXPECT_EQ(returned, 5);
        EXPECT_THROW(stream.QueueBuffer(result.pContext), GenICam::RuntimeException);
        EXPECT_THROW(stream.Start(), GenICam::RuntimeException);
        const auto start = std::chrono::steady_clock::now();
        stream.Stop();
        EXPECT_LT(std::chrono::steady_clock::now() - start, 500ms);
    }
    const auto start = std::chrono::steady_clock::now();
    pDevice->Close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 500ms);
}

TEST_F(GigECamera, closingRightAfterDeathDoesNotBlock)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    m_camera.Kill();
    const auto start = std::chrono::steady_clock::now();
    pDevice->Close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
}

TEST_F(GigECamera, stoppingAndClosingRightAfterDeathDoesNotBlock)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    std::unique_ptr<CStreamBuffers> pBuffers = std::make_unique<CStreamBuffers>(stream, 3);
    stream.Start();
    m_camera.Kill();
    const auto start = std::chrono::steady_clock::now();
    pBuffers.reset();
    pDevice->Close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1500ms);
}

TEST_F(GigECamera, cameraThatComesBackIsFoundAndOpensAgain)
{
    std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    const GenICam::gcstring fullName = pDevice->GetDeviceInfo().GetFullName();
    CSignal removals;
    pDevice->SetRemovalCallback([&removals] { removals.Raise(); });
    m_camera.Kill();
    ASSERT_TRUE(removals.Wait(10s));
    EXPECT_THROW(pDevice->Open(EDeviceAccess::Control), GenICam::GenericException);
    pDevice.reset();
    m_camera.Restart();
    const CDeviceInfo info = Find();
    EXPECT_EQ(info.GetFullName(), fullName);
    const std::unique_ptr<IVelmoDevice> pAgain = m_pTransport->CreateDevice(info);
    pAgain->Open(EDeviceAccess::Control);
    EXPECT_TRUE(pAgain->IsOpen());
    EXPECT_FALSE(pAgain->IsRemoved());
}

TEST_F(GigECamera, restartThatIsTooQuickForTheProbeIsALossOfControl)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CSignal removals;
    pDevice->SetRemovalCallback([&removals] { removals.Raise(); });
    m_camera.Restart();
    EXPECT_TRUE(removals.Wait(5s));
}

TEST_F(GigECamera, callbackTakenAwayIsNotCalled)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CSignal never;
    pDevice->SetRemovalCallback([&never] { never.Raise(); });
    pDevice->SetRemovalCallback(nullptr);
    m_camera.Kill();
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (!pDevice->IsRemoved() && std::chrono::steady_clock::now() < deadline)
    {
        std::this_thread::sleep_for(10ms); // there is nothing to wait for but the flag
    }
    EXPECT_TRUE(pDevice->IsRemoved());
    EXPECT_EQ(never.Count(), 0);
}

TEST_F(GigECamera, deviceMayBeClosedInItsRemovalCallback)
{
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CSignal removals;
    pDevice->SetRemovalCallback(
        [&]
        {
            pDevice->Close();
            removals.Raise();
        });
    m_camera.Kill();
    EXPECT_TRUE(removals.Wait(10s));
    pDevice->SetRemovalCallback(nullptr);
    EXPECT_FALSE(pDevice->IsOpen());
}

TEST_F(GigECamera, adapterOpensAsAnInterfaceWithItsAddresses)
{
    InterfaceInfoList interfaces;
    m_pTransport->EnumerateInterfaces(interfaces);
    ASSERT_EQ(interfaces.size(), 1u);
    const auto pInterface = m_pTransport->CreateInterface(interfaces.front());
    EXPECT_EQ(pInterface->GetNodeMap(), nullptr);
    pInterface->Open();
    ASSERT_NE(pInterface->GetNodeMap(), nullptr);
    EXPECT_EQ(GetInteger(*pInterface->GetNodeMap(), "GevInterfaceSubnetIPAddress"), 0x7F000001);
    EXPECT_EQ(GetInteger(*pInterface->GetNodeMap(), "GevInterfaceSubnetMask"), 0xFF000000);
    pInterface->Close();
    EXPECT_FALSE(pInterface->IsOpen());
}

TEST(GigEBusyCamera, errorNamesTheOwnerWhereTheCameraTellsIt)
{
    GigE::SetAdapters({"127.0.0.1"});
    CGvcpResponder held("127.0.0.1",
                        [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                        {
                            if (command.command == static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryCmd))
                            {
                                Gvcp::SDiscoveryAck ack;
                                ack.serialNumber = "held";
                                ack.currentIp = 0x7F000001;
                                return {Gvcp::EncodeDiscoveryAck(command.requestId, ack)};
                            }
                            std::vector<std::uint32_t> addresses;
                            Gvcp::ParseReadRegCmd(command, addresses);
                            const bool isPrivilege = addresses == std::vector{Gvbs::ControlChannelPrivilege};
                            return {Gvcp::EncodeReadRegAck(command.requestId, Gvcp::EStatus::Success,
                                                           {isPrivilege ? Gvbs::CcpControlAccess : 0x0A010203})};
                        });
    const auto pTransport = GigE::CreateTransport();
    DeviceInfoList list;
    pTransport->EnumerateDevices(list, EDiscoveryScope::All);
    ASSERT_EQ(list.size(), 1u);
    const auto pDevice = pTransport->CreateDevice(list.front());
    try
    {
        pDevice->Open(EDeviceAccess::Control);
        FAIL() << "opened";
    }
    catch (const GenICam::AccessException& e)
    {
        EXPECT_THAT(e.GetDescription(), ::testing::HasSubstr("in use by the application at 10.1.2.3"));
    }
    GigE::SetAdapters({});
}

TEST(GigEBusyCamera, oneThatAsksForMoreTimeForEverIsGivenUpInWords)
{
    GigE::SetAdapters({"127.0.0.1"});
    const CGvcpResponder pending("127.0.0.1",
                                 [](const Gvcp::SCommand& command) -> std::vector<Gvcp::Bytes>
                                 {
                                     if (command.command == static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryCmd))
                                     {
                                         Gvcp::SDiscoveryAck ack;
                                         ack.serialNumber = "pending";
                                         ack.currentIp = 0x7F000001;
                                         return {Gvcp::EncodeDiscoveryAck(command.requestId, ack)};
                                     }
                                     return {Gvcp::EncodePendingAck(command.requestId, 0xFFFF)};
                                 });
    CGigEClient client;
    for (const EDeviceAccess access : {EDeviceAccess::Control, EDeviceAccess::Monitor})
    {
        const auto pDevice = client.Create("pending");
        const auto start = std::chrono::steady_clock::now();
        try
        {
            pDevice->Open(access);
            FAIL() << "opened";
        }
        catch (const GenICam::GenericException& e)
        {
            EXPECT_THAT(e.GetDescription(), ::testing::HasSubstr("keeps asking for more time"));
        }
        EXPECT_LT(std::chrono::steady_clock::now() - start, 7s);
        EXPECT_FALSE(pDevice->IsOpen());
    }
    GigE::SetAdapters({});
}
