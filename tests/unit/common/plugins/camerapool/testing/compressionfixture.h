// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/descriptor.h"
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

    // PFNC, Mono8
    const Bytes m_descriptor =
        Velmo::Codec::EncodeDescriptor(Velmo::Codec::MakeDescriptor(Velmo::Codec::EMode::Lossless, 0x01080001, 64, 48));
    const Bytes m_hash = {16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1};
};

} // namespace Test
