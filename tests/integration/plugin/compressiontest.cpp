// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/iimagedecompressorservice.h"
#include "integration/plugin/hostfixture.h"
#include "parametercollection/iparametercollection.h"
#include "parametercollection/parameters.h"
#include "velmo/imagedecompressor.h"

#include <algorithm>
#include <cstdlib>

namespace
{

using namespace Plugin::CameraPool;
using namespace ParameterCollection;
using Velmo::CGrabResultPtr;
using Velmo::CImageDecompressor;

constexpr int s_imageBytes = 1024 * 1024;

/** A grey camera whose first image of each grab is the same, with noise that makes a fixed ratio lossy. */
class PluginCompression : public ::Test::HostFixture
{
protected:
    void SetUp() override
    {
        HostFixture::SetUp();
        if (HasFatalFailure())
        {
            return;
        }
        const auto infos = cameras();
        ASSERT_EQ(infos.size(), 2);
        m_info = infos.at(0);
        ASSERT_TRUE(service<ICameraControlService>()->open(m_info, false)) << m_info->errorString().toStdString();
        set<CEnumParameter>("TestPattern", QStringLiteral("NoisyScene"));
    }
    QByteArray emulation() const override
    {
        return R"({"cameras": [{"serial": "COMP-A", "sensor": {"width": 1024, "height": 1024}},
                               {"serial": "COMP-B"}]})";
    }
    template <class Parameter, class Value> void set(const char* name, Value value)
    {
        Parameter(service<IDeviceParameterService>()->getParameterCollection(m_info),
                  QStringLiteral("@CameraDevice/") + QLatin1String(name))
            .setValue(value);
    }
    /** The only image of a grab in that mode; invalid, and the test failed, when there is none. */
    CGrabResultPtr grab(const char* mode)
    {
        set<CEnumParameter>("ImageCompressionMode", QString(QLatin1String(mode)));
        CGrabResultPtr image;
        QObject receiver;
        QObject::connect(service<ICameraStatusService>().data(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                         [&](const CameraInfoPtr&, const CGrabResultPtr& result) { image = result; });
        constexpr unsigned int timeoutMs = 30000;
        service<ICameraStreamControlService>()->singleShot(m_info, timeoutMs);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return image.IsValid() && !service<ICameraStatusService>()->isCameraGrabbing(m_info); },
            static_cast<int>(timeoutMs)))
            << mode;
        return image;
    }
    QSharedPointer<const CImageDecompressor> decompressor() const
    {
        return service<IImageDecompressorService>()->getImageDecompressor(m_info);
    }
    QByteArray decode(const CGrabResultPtr& image) const
    {
        const auto with = decompressor();
        QByteArray pixels(s_imageBytes, '\0');
        EXPECT_FALSE(with.isNull());
        EXPECT_TRUE(!with.isNull() &&
                    with->Decompress(pixels.data(), s_imageBytes, image) == Velmo::CompressionStatus_Ok);
        return pixels;
    }
    static QByteArray pixels(const CGrabResultPtr& image)
    {
        EXPECT_EQ(image->GetPayloadType(), Velmo::EPayloadType::Image);
        return QByteArray(static_cast<const char*>(image->GetBuffer()), static_cast<int>(image->GetImageSize()));
    }

    CameraInfoPtr m_info;
};

/** Largest difference of a sample. */
int difference(const QByteArray& a, const QByteArray& b)
{
    int largest = 0;
    for (int i = 0; i < std::min(a.size(), b.size()); ++i)
    {
        largest = std::max(largest, std::abs(static_cast<std::uint8_t>(a.at(i)) - static_cast<std::uint8_t>(b.at(i))));
    }
    return largest;
}

TEST_F(PluginCompression, keepsEveryBitOrTheStatedBoundAndEndsWhenItIsSwitchedOff)
{
    const CGrabResultPtr first = grab("Off");
    ASSERT_TRUE(first.IsValid());
    const QByteArray original = pixels(first);
    ASSERT_EQ(original.size(), s_imageBytes);
    EXPECT_TRUE(decompressor().isNull());

    Velmo::SCompressionInfo compression;
    const CGrabResultPtr lossless = grab("Lossless");
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(compression, lossless));
    EXPECT_FALSE(compression.lossy);
    EXPECT_LT(compression.compressedImageBytes, static_cast<std::size_t>(s_imageBytes));
    EXPECT_TRUE(decode(lossless) == original);

    set<CFloatParameter>("ImageCompressionRatio", 20.0);
    const CGrabResultPtr lossy = grab("FixedRatio");
    ASSERT_TRUE(CImageDecompressor::GetCompressionInfo(compression, lossy));
    EXPECT_TRUE(compression.lossy);
    EXPECT_LE(compression.compressedImageBytes, static_cast<std::size_t>(s_imageBytes / 5));
    const int error = difference(decode(lossy), original);
    EXPECT_GT(error, 0);
    EXPECT_LE(error, static_cast<int>(compression.maxError));

    const CGrabResultPtr last = grab("Off");
    EXPECT_TRUE(decompressor().isNull());
    EXPECT_FALSE(CImageDecompressor::GetCompressionInfo(compression, last));
    EXPECT_TRUE(pixels(last) == original);
}

} // namespace
