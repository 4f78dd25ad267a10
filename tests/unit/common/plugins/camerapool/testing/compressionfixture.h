// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/descriptor.h"
#include "codec/encoder.h"
#include "protocols/chunks.h"
#include "unit/common/plugins/camerapool/testing/poolfixture.h"
#include "velmo/imagedecompressor.h"

#include <QVector>

#include <cstdint>
#include <vector>

namespace Test
{

/** A pool with the open camera "1001", which compresses: mode lossless, a good descriptor, its hash and size. */
class CompressionFixture : public PoolFixture
{
protected:
    using Bytes = std::vector<std::uint8_t>;
    using EMode = Velmo::Codec::EMode;

    CompressionFixture()
    {
        SScriptedCamera camera;
        camera.hasCompression = true;
        m_transport->AddCamera(camera);
        setMode(Velmo::CompressionMode_Lossless);
        m_transport->SetBytes(s_serial, "ImageCompressionDescriptor", m_descriptor);
        m_transport->SetBytes(s_serial, "ImageCompressionDescriptorHash", m_hash);
        m_transport->SetRegister(s_serial, "ImageCompressionDecodedSize", 64 * 48);
        EXPECT_TRUE(m_pool->openDevice(m_info, false)) << m_info->errorString().toStdString();
        m_log.clear();
    }

    void setMode(int mode) const { m_transport->SetRegister(s_serial, "ImageCompressionMode", mode); }
    static QVector<unsigned char> qBytes(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }
    /** Every access of a register throws that from now on. */
    template <class Exception> void throwOnRead(const Exception& exception) const
    {
        m_transport->SetHook(EStep::ReadRegister, [exception](const std::string&) { throw exception; });
    }

    static Bytes picture(std::uint32_t width, std::uint32_t height)
    {
        Bytes image(std::size_t{width} * height);
        for (std::size_t i = 0; i < image.size(); ++i)
        {
            image[i] = static_cast<std::uint8_t>(i / width + i % width);
        }
        return image;
    }
    /** As a camera sends that image under that descriptor. */
    static SScriptedImage compressed(const Velmo::Codec::SDescriptor& descriptor, const Bytes& pixels)
    {
        Velmo::Codec::CEncoder encoder(descriptor);
        const auto frame = encoder.Encode(pixels.data());
        SScriptedImage image;
        image.payloadType = Velmo::EPayloadType::ChunkData;
        Velmo::Chunks::Append(image.data, Velmo::Chunks::CompressedImageChunkId, frame.pData, frame.bytes,
                              Velmo::Chunks::EByteOrder::Big);
        return image;
    }
    static SScriptedImage compressed(std::uint32_t width, std::uint32_t height)
    {
        return compressed(Velmo::Codec::MakeDescriptor(EMode::Lossless, 0x01080001, width, height),
                          picture(width, height));
    }

    // PFNC, Mono8
    const Bytes m_descriptor =
        Velmo::Codec::EncodeDescriptor(Velmo::Codec::MakeDescriptor(EMode::Lossless, 0x01080001, 64, 48));
    const Bytes m_hash = {16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1};
};

} // namespace Test
