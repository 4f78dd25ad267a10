// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/interfaceinfo.h"
#include "unit/common/plugins/camerapool/testing/compressionfixture.h"
#include "unit/common/plugins/camerapool/testing/records.h"
#include "utils/exceptions.h"

#include <functional>
#include <typeinfo>

namespace
{

using Core::Exception::BaseException;
using Core::Exception::RuntimeException;

class CameraPoolCompression : public ::Test::CompressionFixture
{
protected:
    using Queries = QVector<std::function<void()>>;

    Queries queriesOf(const CameraInfoPtr& info) const
    {
        return {[=] { m_pool->getCompressionMode(info); }, [=] { m_pool->getCompressionDescriptor(info); },
                [=] { m_pool->getCompressionDescriptorHash(info); },
                [=]
                {
                    m_pool->getImageSizeForDecompression(info);
                }};
    }
    Queries queriesOfTheActive() const
    {
        return {[=] { m_pool->getCompressionMode(); }, [=] { m_pool->getCompressionDescriptor(); },
                [=] { m_pool->getCompressionDescriptorHash(); },
                [=]
                {
                    m_pool->getImageSizeForDecompression();
                }};
    }
    static void expectThrown(const Queries& queries, const char* text)
    {
        for (const auto& query : queries)
        {
            try
            {
                query();
                ADD_FAILURE() << "nothing was thrown";
            }
            catch (const BaseException& e)
            {
                EXPECT_STREQ(typeid(e).name(), typeid(BaseException).name());
                EXPECT_EQ(e.message().toStdString(), text);
            }
        }
    }

    static inline const char* const s_unknown = "No camera found for the provided camera info.";
    static inline const char* const s_locked =
        "The camera with the provided info is not available because it has been opened in exclusive mode.";
    static inline const char* const s_inactive = "No active camera available at the moment.";
};

TEST_F(CameraPoolCompression, forwardsToTheCameraOfTheRecord)
{
    EXPECT_EQ(m_pool->getCompressionMode(m_info), Velmo::CompressionMode_Lossless);
    EXPECT_EQ(m_pool->getCompressionDescriptor(m_info), qBytes(m_descriptor));
    EXPECT_EQ(m_pool->getCompressionDescriptorHash(m_info), qBytes(m_hash));
    EXPECT_EQ(m_pool->getImageSizeForDecompression(m_info), 64U * 48U);
}

TEST_F(CameraPoolCompression, forwardsToTheActiveCamera)
{
    m_pool->setActiveDevice(m_info);
    EXPECT_EQ(m_pool->getCompressionMode(), Velmo::CompressionMode_Lossless);
    EXPECT_EQ(m_pool->getCompressionDescriptor(), qBytes(m_descriptor));
    EXPECT_EQ(m_pool->getCompressionDescriptorHash(), qBytes(m_hash));
    EXPECT_EQ(m_pool->getImageSizeForDecompression(), 64U * 48U);
}

TEST_F(CameraPoolCompression, passesOnWhatTheCameraThrows)
{
    setMode(3);
    EXPECT_THROW(m_pool->getCompressionMode(m_info), RuntimeException);
}

TEST_F(CameraPoolCompression, anUnknownCameraIsRefused)
{
    ::Test::SScriptedCamera stranger;
    stranger.serialNumber = "9999";
    m_transport->AddCamera(stranger);
    expectThrown(queriesOf(record("9999")), s_unknown);
    expectThrown(queriesOf({}), s_unknown);
}

TEST_F(CameraPoolCompression, aLockedCameraIsRefusedUntilItIsUnlocked)
{
    const auto locked = m_pool->tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    expectThrown(queriesOf(m_info), s_locked);
    m_pool->setActiveDevice(m_info);
    expectThrown(queriesOfTheActive(), s_locked);
    EXPECT_TRUE(m_pool->unlock(locked));
    EXPECT_EQ(m_pool->getCompressionMode(m_info), Velmo::CompressionMode_Lossless);
}

TEST_F(CameraPoolCompression, withoutAnActiveCameraTheShortFormsAreRefused)
{
    m_pool->setActiveDevice({});
    expectThrown(queriesOfTheActive(), s_inactive);
    m_pool->setActiveDevice(::Test::interfaceRecord("port0"));
    expectThrown(queriesOfTheActive(), s_inactive);
}

} // namespace
