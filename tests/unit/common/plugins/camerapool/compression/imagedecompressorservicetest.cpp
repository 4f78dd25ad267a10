// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/imagedecompressorservice.h"
#include "unit/common/plugins/camerapool/testing/compressionfixture.h"

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

namespace
{

using Plugin::CameraPool::Internal::CImageDecompressorService;

class ImageDecompressorService : public ::Test::CompressionFixture
{
protected:
    using DecompressorPtr = QSharedPointer<const Velmo::CImageDecompressor>;

    ~ImageDecompressorService() override { m_transport->SetHook(::Test::EStep::ReadRegister, nullptr); }

    DecompressorPtr decompressor() const { return m_service.getImageDecompressor(m_info); }
    /** One grab from its start to its end. */
    void grabAndStop()
    {
        m_pool->startGrabbing(m_info);
        EXPECT_TRUE(m_pool->isCameraGrabbing(m_info)) << m_info->errorString().toStdString();
        m_pool->stopGrabbing(m_info);
    }
    /** Reads fail like that while the service is told of a grab. */
    template <class Exception> void grabStartWhileReadsThrow(const Exception& exception)
    {
        throwOnRead(exception);
        emit m_pool->cameraGrabStart(m_info);
        m_transport->SetHook(::Test::EStep::ReadRegister, nullptr);
    }

    static inline const QString s_logged = QStringLiteral("Error while getting compression status from camera.");
    CImageDecompressorService m_service{m_pool.get(), nullptr};
};

TEST_F(ImageDecompressorService, givesTheDecompressorFromTheStartOfAGrabUntilTheCameraIsClosed)
{
    EXPECT_TRUE(decompressor().isNull());
    grabAndStop();
    const auto made = decompressor();
    ASSERT_FALSE(made.isNull());
    EXPECT_EQ(made->GetWidth(), 64U);
    EXPECT_EQ(made->GetHeight(), 48U);
    EXPECT_EQ(made->GetCompressionMode(), Velmo::CompressionMode_Lossless);
    EXPECT_TRUE(m_info->errorString().isEmpty());
    m_pool->closeDevice(m_info);
    EXPECT_TRUE(decompressor().isNull());
    EXPECT_EQ(made->GetWidth(), 64U) << "it stays usable for those who hold it";
}

TEST_F(ImageDecompressorService, isReadyWhenTheFirstImageArrives)
{
    bool ready = false;
    QObject::connect(m_pool.get(), &CCameraPool::cameraImageGrabbed, m_pool.get(),
                     [&] { ready = !decompressor().isNull(); });
    m_pool->startGrabbing(m_info);
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(::Test::waitUntil([&] { return m_order.count(QStringLiteral("cameraImageGrabbed")) == 1; }));
    EXPECT_TRUE(ready);
}

TEST_F(ImageDecompressorService, everyGrabReplacesTheDecompressor)
{
    grabAndStop();
    const auto first = decompressor();
    m_transport->SetBytes(s_serial, "ImageCompressionDescriptor",
                          Velmo::Codec::EncodeDescriptor(
                              Velmo::Codec::MakeDescriptor(Velmo::Codec::EMode::FixedRatio, 0x01080001, 32, 16, 50.0)));
    setMode(Velmo::CompressionMode_FixedRatio);
    grabAndStop();
    ASSERT_FALSE(decompressor().isNull());
    EXPECT_EQ(decompressor()->GetWidth(), 32U);
    EXPECT_EQ(decompressor()->GetCompressionMode(), Velmo::CompressionMode_FixedRatio);
    EXPECT_EQ(first->GetWidth(), 64U);
}

TEST_F(ImageDecompressorService, switchingCompressionOffRemovesIt)
{
    grabAndStop();
    setMode(Velmo::CompressionMode_Off);
    grabAndStop();
    EXPECT_TRUE(decompressor().isNull());
    EXPECT_TRUE(m_info->errorString().isEmpty());
}

TEST_F(ImageDecompressorService, anUnknownModeIsRecordedAndLoggedAndKeepsTheEarlierOne)
{
    grabAndStop();
    const auto earlier = decompressor();
    setMode(3);
    m_log.clear();
    grabAndStop();
    EXPECT_EQ(decompressor(), earlier);
    EXPECT_EQ(m_info->errorString(), QStringLiteral("Unknown compression mode found."));
    EXPECT_EQ(m_log.count(s_logged + QStringLiteral(" Reason: Unknown compression mode found.")), 1);
}

TEST_F(ImageDecompressorService, aDescriptorThatCannotBeReadKeepsTheEarlierOneAndSetsTheError)
{
    grabAndStop();
    const auto earlier = decompressor();
    m_transport->SetRegister(s_serial, "ImageCompressionDescriptorLength", 0);
    grabAndStop();
    EXPECT_EQ(decompressor(), earlier);
    EXPECT_EQ(m_info->errorString(), QStringLiteral("Invalid compression descriptor size found."));
}

TEST_F(ImageDecompressorService, aDescriptorThatNoDecompressorTakesIsAFailureToo)
{
    grabAndStop();
    const auto earlier = decompressor();
    m_transport->SetBytes(s_serial, "ImageCompressionDescriptor", {1, 2, 3});
    m_log.clear();
    grabAndStop();
    EXPECT_EQ(decompressor(), earlier);
    EXPECT_TRUE(m_info->errorString().contains(QStringLiteral("compression descriptor")))
        << m_info->errorString().toStdString();
    EXPECT_EQ(m_log.count(s_logged + QStringLiteral(" Reason: ") + m_info->errorString()), 1);
}

TEST_F(ImageDecompressorService, exceptionsOfEveryKindStopHere)
{
    grabAndStop();
    const auto earlier = decompressor();
    grabStartWhileReadsThrow(GenICam::TimeoutException("no answer", __FILE__, __LINE__));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("no answer"));
    EXPECT_EQ(m_log.count(s_logged + QStringLiteral(" Reason: no answer")), 1);
    EXPECT_EQ(decompressor(), earlier);
}

TEST_F(ImageDecompressorService, aFailureWithoutTextIsLoggedWithoutAReason)
{
    grabAndStop();
    const auto earlier = decompressor();
    m_log.clear();
    grabStartWhileReadsThrow(42);
    grabStartWhileReadsThrow(GenICam::RuntimeException("", __FILE__, __LINE__));
    EXPECT_EQ(m_log.count(s_logged), 2);
    EXPECT_FALSE(m_log.containsStart(s_logged + QStringLiteral(" Reason")));
    EXPECT_TRUE(m_info->errorString().isEmpty());
    EXPECT_EQ(decompressor(), earlier);
}

TEST_F(ImageDecompressorService, aCameraThatDoesNotCompressHasNone)
{
    const auto info = addSecondCamera();
    ASSERT_TRUE(m_pool->openDevice(info, false));
    m_pool->startGrabbing(info);
    EXPECT_TRUE(m_pool->isCameraGrabbing(info)) << "the missing features must not keep the camera from grabbing";
    EXPECT_TRUE(m_service.getImageDecompressor(info).isNull());
    EXPECT_TRUE(m_log.containsStart(s_logged + QStringLiteral(" Reason: ")));
}

TEST_F(ImageDecompressorService, isAskedByRecordAndNothingElse)
{
    grabAndStop();
    EXPECT_TRUE(m_service.getImageDecompressor({}).isNull());
    const QSharedPointer<CCameraInfo> twin(new CCameraInfo(m_info->getVelmoDeviceInfo(), nullptr));
    EXPECT_TRUE(m_service.getImageDecompressor(twin).isNull());
    EXPECT_FALSE(m_service.getImageDecompressor(BaseInfoPtr(m_info)).isNull());
}

TEST_F(ImageDecompressorService, aLostCameraHasNoDecompressor)
{
    grabAndStop();
    m_transport->RemoveCamera(s_serial);
    EXPECT_TRUE(::Test::waitUntil([&] { return decompressor().isNull(); }));
}

TEST_F(ImageDecompressorService, withoutThePoolAGrabStartRemovesTheEntry)
{
    grabAndStop();
    const auto kept = decompressor();
    CImageDecompressorService alone(nullptr, nullptr);
    alone.onCameraGrabStart(m_info);
    EXPECT_TRUE(alone.getImageDecompressor(m_info).isNull());
    // Destroying the pool closes its cameras; nobody is left to tell the service of it but the pool itself.
    m_pool.reset();
    m_service.onCameraGrabStart(m_info);
    EXPECT_TRUE(decompressor().isNull());
    EXPECT_FALSE(kept.isNull());
}

TEST_F(ImageDecompressorService, mayBeAskedWhileTheCameraIsAsked)
{
    grabAndStop();
    const auto earlier = decompressor();
    DecompressorPtr during;
    m_transport->SetHook(::Test::EStep::ReadRegister, [&](const std::string&) { during = decompressor(); });
    emit m_pool->cameraGrabStart(m_info);
    EXPECT_EQ(during, earlier) << "asked on the same thread, from below the read";
    EXPECT_NE(decompressor(), earlier);
}

TEST_F(ImageDecompressorService, anotherThreadThatAsksWhileTheCameraIsAskedWaitsForTheNewOne)
{
    grabAndStop();
    const auto earlier = decompressor();
    std::future<DecompressorPtr> asked;
    std::future_status whileRead = std::future_status::ready;
    m_transport->SetHook(::Test::EStep::ReadRegister,
                         [&](const std::string&)
                         {
                             if (!asked.valid())
                             {
                                 asked = std::async(std::launch::async, [&] { return decompressor(); });
                                 whileRead = asked.wait_for(std::chrono::milliseconds(100));
                             }
                         });
    emit m_pool->cameraGrabStart(m_info);
    EXPECT_EQ(whileRead, std::future_status::timeout);
    const auto answer = asked.get();
    EXPECT_NE(answer, earlier);
    EXPECT_EQ(answer, decompressor());
}

TEST_F(ImageDecompressorService, mayBeAskedOnEveryThreadWhileCamerasStartAndClose)
{
    std::atomic<bool> stop{false};
    std::atomic<int> bad{0};
    std::vector<std::thread> askers;
    for (int i = 0; i < 2; ++i)
    {
        askers.emplace_back(
            [&]
            {
                while (!stop)
                {
                    const auto found = decompressor();
                    bad += !found.isNull() && found->GetWidth() != 64 ? 1 : 0;
                }
            });
    }
    constexpr int rounds = 200;
    for (int i = 0; i < rounds; ++i)
    {
        m_service.onCameraGrabStart(m_info);
        m_service.onDeviceClosed(m_info);
    }
    stop = true;
    for (auto& asker : askers)
    {
        asker.join();
    }
    EXPECT_EQ(bad, 0);
}

/** The camera sends what its descriptor says, or something else. */
class DecompressedImages : public ImageDecompressorService
{
protected:
    DecompressedImages()
    {
        QObject::connect(m_pool.get(), &CCameraPool::cameraImageGrabbed, m_pool.get(),
                         [this](const CameraInfoPtr&, const Velmo::CGrabResultPtr& result) { m_latest = result; });
    }

    void setDescriptorOf(std::uint32_t width, std::uint32_t height) const
    {
        m_transport->SetBytes(
            s_serial, "ImageCompressionDescriptor",
            Velmo::Codec::EncodeDescriptor(Velmo::Codec::MakeDescriptor(EMode::Lossless, 0x01080001, width, height)));
    }
    /** The first image of a grab of its own, as the pool tells it. */
    Velmo::CGrabResultPtr grab(const ::Test::SScriptedImage& image)
    {
        m_latest.Release();
        m_pool->startGrabbing(m_info);
        EXPECT_TRUE(m_transport->WaitForQueued(s_serial, 1));
        EXPECT_TRUE(m_transport->DeliverImage(s_serial, image));
        EXPECT_TRUE(::Test::waitUntil([this] { return m_latest.IsValid(); }));
        m_pool->stopGrabbing(m_info);
        return m_latest;
    }
    static Velmo::ECompressionStatus decode(const DecompressorPtr& with, const Velmo::CGrabResultPtr& result,
                                            Bytes& image)
    {
        image.assign(with->GetImageSizeForDecompression(), 0);
        return with->Decompress(image.data(), image.size(), result);
    }

    Velmo::CGrabResultPtr m_latest;
};

TEST_F(DecompressedImages, ofAnotherSizeAreNotForTheDecompressorOfAnEarlierGrab)
{
    Bytes image;
    const auto before = grab(compressed(64, 48));
    const auto stale = decompressor();
    ASSERT_FALSE(stale.isNull());
    ASSERT_EQ(decode(stale, before, image), Velmo::CompressionStatus_Ok);
    setDescriptorOf(32, 16);
    const auto after = grab(compressed(32, 16));
    EXPECT_EQ(decode(stale, after, image), Velmo::CompressionStatus_WrongDescriptor);
    EXPECT_EQ(decode(decompressor(), before, image), Velmo::CompressionStatus_WrongDescriptor);
    ASSERT_EQ(decode(decompressor(), after, image), Velmo::CompressionStatus_Ok);
    EXPECT_EQ(image, picture(32, 16));
}

TEST_F(DecompressedImages, whoseHeadsTellOtherSizesThanTheDescriptorAreRefused)
{
    Bytes image;
    for (const auto& [width, height] : {std::pair(48U, 64U), {64U, 47U}, {65U, 48U}, {1024U, 64U}})
    {
        const auto lie = compressed(width, height);
        ASSERT_LE(lie.data.size(), 64U * 48U) << "it has to fit into the buffer";
        const auto result = grab(lie);
        EXPECT_EQ(decode(decompressor(), result, image), Velmo::CompressionStatus_WrongDescriptor);
    }
}

TEST_F(DecompressedImages, areNotCompressedOnceTheCameraHasSwitchedItOff)
{
    grabAndStop();
    const auto stale = decompressor();
    setMode(Velmo::CompressionMode_Off);
    const auto plain = grab({});
    EXPECT_TRUE(decompressor().isNull());
    Bytes image;
    EXPECT_EQ(decode(stale, plain, image), Velmo::CompressionStatus_NotCompressed);
}

TEST_F(DecompressedImages, areDecodedOnSeveralThreadsWhileTheirCameraCloses)
{
    const auto result = grab(compressed(64, 48));
    auto made = decompressor();
    ASSERT_FALSE(made.isNull());
    constexpr int threads = 3;
    std::atomic<int> begun{0};
    std::atomic<bool> isClosed{false};
    std::atomic<int> bad{0};
    std::vector<std::thread> decoders;
    for (int i = 0; i < threads; ++i)
    {
        decoders.emplace_back(
            [&, result, made]
            {
                Bytes image;
                const auto decodeOnce = [&]
                {
                    const auto status = decode(made, result, image);
                    bad += status != Velmo::CompressionStatus_Ok || image != picture(64, 48) ? 1 : 0;
                };
                decodeOnce();
                ++begun;
                while (!isClosed)
                {
                    decodeOnce();
                }
                decodeOnce();
            });
    }
    EXPECT_TRUE(::Test::waitUntil([&] { return begun == threads; }));
    m_latest.Release();
    made.reset();
    m_pool->closeDevice(m_info);
    EXPECT_TRUE(decompressor().isNull());
    isClosed = true;
    for (auto& decoder : decoders)
    {
        decoder.join();
    }
    EXPECT_EQ(bad, 0);
}

} // namespace
