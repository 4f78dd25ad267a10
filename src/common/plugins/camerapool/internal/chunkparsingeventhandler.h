// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "transport/chunkparser.h"
#include "transport/device.h"
#include "velmo/eventhandlers.h"
#include "velmo/grabresult.h"
#include "velmo/instantcamera.h"

#include <cassert>

namespace Plugin::CameraPool::Internal
{

/**
 * Makes the chunk values of the latest image readable through the camera's node map.
 *
 * Holds that image until the next one with chunks, so one buffer of a grab is always out.
 * Ownership: the camera's; registered as configuration and image handler and deregistered before it goes.
 * Threads: OnImageGrabbed on the grab loop thread, which does not run during the other callbacks.
 * Errors: what the SDK throws is a programming error here and asserted. Chunk data that cannot be read are none: the
 * SDK logs them and shows no values.
 */
class CChunkParsingEventHander : public Velmo::CImageEventHandler, public Velmo::CConfigurationEventHandler
{
public:
    void OnImageGrabbed(Velmo::CInstantCamera& /*camera*/, const Velmo::CGrabResultPtr& result) override
    {
        if (m_pChunkParser == nullptr || !m_isChunkModeActive || !result.IsValid() || !result->GrabSucceeded() ||
            result->GetPayloadType() != Velmo::EPayloadType::ChunkData)
        {
            return;
        }
        // The last image's buffer goes back only when nobody can read its chunks any more.
        const Velmo::CGrabResultPtr last = m_result;
        m_result = result;
        try
        {
            m_pChunkParser->AttachBuffer(m_result->GetBuffer(), static_cast<std::int64_t>(m_result->GetPayloadSize()),
                                         0, nullptr);
        }
        catch (...)
        {
            assert(false);
        }
    }

    void OnAttached(Velmo::CInstantCamera& camera) override
    {
        assert(m_pChunkParser == nullptr);
        CreateChunkParser(camera);
    }

    void OnDetach(Velmo::CInstantCamera& /*camera*/) override { DestroyChunkParser(); }

    void OnOpened(Velmo::CInstantCamera& camera) override
    {
        if (m_pChunkParser != nullptr && m_pVelmoDevice != camera.GetDevice())
        {
            DestroyChunkParser();
        }
        if (m_pChunkParser == nullptr)
        {
            CreateChunkParser(camera);
        }
    }

    void OnClose(Velmo::CInstantCamera& /*camera*/) override { DestroyChunkParser(); }

    void OnGrabStarted(Velmo::CInstantCamera& camera) override
    {
        if (m_pChunkParser != nullptr)
        {
            try
            {
                m_pChunkParser->DetachBuffer();
            }
            catch (...)
            {
                assert(false);
            }
            m_result.Release();
        }
        m_isChunkModeActive = ReadChunkModeActive(camera);
    }

private:
    void CreateChunkParser(Velmo::CInstantCamera& camera)
    {
        try
        {
            m_pVelmoDevice = camera.GetDevice();
            if (m_pVelmoDevice == nullptr)
            {
                return;
            }
            m_pChunkParser = m_pVelmoDevice->CreateChunkParser();
        }
        catch (...)
        {
            assert(false);
        }
    }

    void DestroyChunkParser()
    {
        if (m_pChunkParser == nullptr)
        {
            return;
        }
        assert(m_pVelmoDevice);
        try
        {
            m_pVelmoDevice->DestroyChunkParser(m_pChunkParser);
        }
        catch (...)
        {
            assert(false);
        }
        m_pChunkParser = nullptr;
        m_result.Release();
    }

    /** False also where the feature is not there or cannot be read. */
    static bool ReadChunkModeActive(Velmo::CInstantCamera& camera)
    {
        try
        {
            const GenApi::CBooleanPtr feature(camera.GetNodeMap().GetNode("ChunkModeActive"));
            return feature.IsValid() && GenApi::IsReadable(feature->GetAccessMode()) && feature->GetValue();
        }
        catch (...)
        {
            return false;
        }
    }

    Velmo::CGrabResultPtr m_result; // what the parser reads
    Velmo::IChunkParser* m_pChunkParser = nullptr;
    Velmo::IVelmoDevice* m_pVelmoDevice = nullptr; // who made the parser
    bool m_isChunkModeActive = false;              // at the start of the grab
};

} // namespace Plugin::CameraPool::Internal
