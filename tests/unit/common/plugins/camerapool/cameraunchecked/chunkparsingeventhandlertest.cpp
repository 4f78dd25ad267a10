// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/chunkparsingeventhandler.h"

#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"

#include "velmo/tlfactory.h"

namespace
{

using Plugin::CameraPool::Internal::CChunkParsingEventHander;
using ::Test::EFault;
using ::Test::EStep;
using ::Test::SScriptedCamera;
using ::Test::SScriptedImage;

/** The handler as this program compiles it, alone with an instant camera; the library's has its own. */
class ChunkParsingWithoutAssertions : public ::Test::CameraPoolFixture
{
protected:
    ChunkParsingWithoutAssertions()
    {
        SScriptedCamera config;
        config.serialNumber = s_serial;
        config.hasChunks = true;
        m_transport->AddCamera(config);
        m_camera.RegisterConfiguration(&m_handler, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
        m_camera.RegisterImageEventHandler(&m_handler, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
    }
    ~ChunkParsingWithoutAssertions() override
    {
        m_camera.DestroyDevice();
        m_camera.DeregisterImageEventHandler(&m_handler);
        m_camera.DeregisterConfiguration(&m_handler);
    }
    void open()
    {
        m_camera.Attach(Velmo::CTlFactory::GetInstance().CreateDevice(m_transport->GetDeviceInfo(s_serial)));
        m_camera.Open();
        m_transport->SetRegister(s_serial, "ChunkModeActive", 1);
    }
    bool grab()
    {
        constexpr unsigned int waitMs = 30000;
        SScriptedImage image;
        image.payloadType = Velmo::EPayloadType::ChunkData;
        image.payloadBytes = 100;
        Velmo::CGrabResultPtr result;
        return m_transport->DeliverImage(s_serial, image) && m_camera.RetrieveResult(waitMs, result) &&
               result.IsValid();
    }
    unsigned int count(EStep step) const { return m_transport->GetCount(step); }

    Velmo::CInstantCamera m_camera;
    CChunkParsingEventHander m_handler;
};

TEST_F(ChunkParsingWithoutAssertions, aFailedAttachmentStopsNeitherTheGrabNorTheNextAttachment)
{
    open();
    m_camera.StartGrabbing();
    m_transport->SetFault(EStep::AttachChunkBuffer, EFault::Unknown, "", "", 1);
    EXPECT_TRUE(grab());
    EXPECT_TRUE(grab());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 2U);
    m_camera.Close();
    EXPECT_EQ(count(EStep::DestroyChunkParser), 1U);
}

TEST_F(ChunkParsingWithoutAssertions, aFailedDetachmentStopsNoGrab)
{
    open();
    m_transport->SetFault(EStep::DetachChunkBuffer, EFault::Runtime, "", "", 1);
    m_camera.StartGrabbing();
    EXPECT_EQ(count(EStep::DetachChunkBuffer), 1U);
    EXPECT_TRUE(grab());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 1U);
}

} // namespace
