// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/camera.h"
#include "velmo/grabresult.h"
#include "velmo/instantcamera.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Test
{

/** A grabbed image without a stream behind it: it has a number and a size, but no bytes. */
class CImage : public Velmo::CGrabResultData
{
public:
    static Velmo::CGrabResultPtr make(std::int64_t imageNumber, std::size_t payloadBytes)
    {
        return Velmo::CGrabResultPtr(new CImage(imageNumber, payloadBytes));
    }

private:
    CImage(std::int64_t imageNumber, std::size_t payloadBytes)
    {
        m_succeeded = true;
        m_imageNumber = imageNumber;
        m_result.status = Velmo::Transport::EResultStatus::Ok;
        m_result.payloadType = Velmo::EPayloadType::Image;
        m_result.payloadBytes = payloadBytes;
        m_result.blockId = static_cast<std::uint64_t>(imageNumber);
    }
    void Recycle() override { delete this; }
};

/** As many images as a camera has buffers at most; they come round again and again, as its buffers do. */
class CImageRing
{
public:
    CImageRing()
    {
        constexpr int buffers = 450;
        for (int i = 1; i <= buffers; ++i)
        {
            m_images.push_back(CImage::make(i, 512 * 512));
        }
    }
    const Velmo::CGrabResultPtr& image(int number) const
    {
        return m_images[static_cast<std::size_t>(number) % m_images.size()];
    }

private:
    std::vector<Velmo::CGrabResultPtr> m_images;
};

/** Calls a camera as its grab loop does. */
class CGrabCalls
{
public:
    explicit CGrabCalls(Plugin::CameraPool::Internal::CCamera& camera) : m_camera(camera) {}

    void grabStart() { (m_camera.*(&SCallable::OnGrabStart))(m_instantCamera); }
    void imageGrabbed(const Velmo::CGrabResultPtr& result)
    {
        (m_camera.*(&SCallable::OnImageGrabbed))(m_instantCamera, result);
    }

private:
    struct SCallable : Plugin::CameraPool::Internal::CCamera
    {
        using CCamera::OnGrabStart;
        using CCamera::OnImageGrabbed;
    };

    Plugin::CameraPool::Internal::CCamera& m_camera;
    Velmo::CInstantCamera m_instantCamera; // the callbacks get it, and leave it alone
};

} // namespace Test
