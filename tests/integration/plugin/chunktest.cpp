// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "integration/plugin/hostfixture.h"
#include "parametercollection/iparametercollection.h"
#include "parametercollection/parameterpath.h"
#include "parametercollection/parameters.h"
#include "support/warnings.h"

#include <QMap>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace
{

using namespace Plugin::CameraPool;
using namespace ParameterCollection;

constexpr double s_firstExposureUs = 100.0;
constexpr double s_exposureStepUs = 0.5; // every step has an exact double

/** What the chunk features of one image said, and what had been asked for by then. */
struct SSeen
{
    std::int64_t frameId = 0;
    std::int64_t timestamp = 0;
    double exposureUs = 0;
    double gainDb = 0;
    int latestStep = 0; // of the exposure
};

/** A small fast camera whose chunks are switched on through its features. */
class PluginChunks : public ::Test::HostFixture
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
        m_parameters = service<IDeviceParameterService>()->getParameterCollection(m_info);
        m_pNodes = m_parameters->nodeMap(ParameterPath::CameraDevice);
        ASSERT_NE(m_pNodes, nullptr);
    }
    QByteArray emulation() const override
    {
        return R"({"cameras": [{"serial": "CHUNK-A", "sensor": {"width": 64, "height": 48}, "frameRate": 500},
                               {"serial": "CHUNK-B"}]})";
    }
    void enable(const char* chunk)
    {
        set<CBooleanParameter>("ChunkModeActive", true);
        CEnumParameter(m_parameters, QStringLiteral("@CameraDevice/ChunkSelector")).setValue(QLatin1String(chunk));
        set<CBooleanParameter>("ChunkEnable", true);
    }
    template <class Parameter, class Value> void set(const char* name, Value value)
    {
        Parameter(m_parameters, QStringLiteral("@CameraDevice/") + QLatin1String(name)).setValue(value);
    }
    bool isReadable(const char* name) const { return GenApi::IsReadable(m_pNodes->GetNode(name)); }

    CameraInfoPtr m_info;
    QSharedPointer<IParameterCollection> m_parameters;
    GenApi::INodeMap* m_pNodes = nullptr;
};

TEST_F(PluginChunks, tellTheValuesOfEachOfAThousandImages)
{
    constexpr std::size_t images = 1000;
    for (const char* chunk : {"Timestamp", "FrameID", "ExposureTime", "Gain"})
    {
        enable(chunk);
    }
    set<CFloatParameter>("Gain", 1.5);
    set<CFloatParameter>("ExposureTime", s_firstExposureUs);

    std::mutex mutex; // guards seen
    std::vector<SSeen> seen;
    std::atomic<int> step{0};
    const GenApi::CIntegerPtr frameId(m_pNodes->GetNode("ChunkFrameID"));
    const GenApi::CIntegerPtr timestamp(m_pNodes->GetNode("ChunkTimestamp"));
    const GenApi::CFloatPtr exposure(m_pNodes->GetNode("ChunkExposureTime"));
    const GenApi::CFloatPtr gain(m_pNodes->GetNode("ChunkGain"));
    const auto handle = m_pNodes->GetNode("ChunkFrameID")
                            ->RegisterCallback(
                                [&](GenApi::INode* node)
                                {
                                    if (GenApi::IsReadable(node))
                                    {
                                        const std::lock_guard<std::mutex> lock(mutex);
                                        seen.push_back({frameId->GetValue(), timestamp->GetValue(),
                                                        exposure->GetValue(), gain->GetValue(), step.load()});
                                    }
                                });
    QMap<std::uint64_t, std::uint64_t> timestamps; // of the results, by block
    QObject receiver;
    QObject::connect(service<ICameraStatusService>().data(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const CameraInfoPtr&, const Velmo::CGrabResultPtr& result)
                     {
                         EXPECT_EQ(result->GetPayloadType(), Velmo::EPayloadType::ChunkData);
                         EXPECT_EQ(result->GetImageSize(), 64U * 48U);
                         timestamps.insert(result->GetBlockID(), result->GetTimeStamp());
                         // Told first, set then: an image may show a step that is known, never one that is not.
                         ++step;
                         set<CFloatParameter>("ExposureTime", s_firstExposureUs + step * s_exposureStepUs);
                     });
    service<ICameraStreamControlService>()->startGrabbing(m_info);
    ASSERT_TRUE(QTest::qWaitFor([&] { return static_cast<std::size_t>(timestamps.size()) >= images; }, 3 * s_waitMs));
    service<ICameraStreamControlService>()->stopGrabbing(m_info);
    m_pNodes->GetNode("ChunkFrameID")->DeregisterCallback(handle);

    ASSERT_GE(seen.size(), images);
    double last = 0;
    std::size_t matched = 0;
    for (const SSeen& image : seen)
    {
        const double steps = (image.exposureUs - s_firstExposureUs) / s_exposureStepUs;
        EXPECT_EQ(steps, static_cast<int>(steps)) << image.exposureUs;
        EXPECT_LE(steps, image.latestStep);
        EXPECT_GE(image.exposureUs, last);
        last = image.exposureUs;
        EXPECT_EQ(image.gainDb, 1.5);
        const auto result = timestamps.constFind(static_cast<std::uint64_t>(image.frameId));
        if (result != timestamps.constEnd())
        {
            ++matched;
            EXPECT_EQ(result.value(), static_cast<std::uint64_t>(image.timestamp));
        }
    }
    EXPECT_GE(matched, images);
    EXPECT_GT(last, s_firstExposureUs + 100 * s_exposureStepUs); // the exposure did change on the way
}

TEST_F(PluginChunks, areNotAvailableWithoutChunkMode)
{
    int grabbed = 0;
    QObject receiver;
    QObject::connect(service<ICameraStatusService>().data(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const CameraInfoPtr&, const Velmo::CGrabResultPtr& result)
                     {
                         EXPECT_EQ(result->GetPayloadType(), Velmo::EPayloadType::Image);
                         ++grabbed;
                     });
    service<ICameraStreamControlService>()->startGrabbing(m_info);
    ASSERT_TRUE(QTest::qWaitFor([&] { return grabbed >= 3; }, s_waitMs));
    EXPECT_FALSE(isReadable("ChunkTimestamp"));
    service<ICameraStreamControlService>()->stopGrabbing(m_info);
}

TEST_F(PluginChunks, thatAreMissingAreNotAvailableWhileOthersAre)
{
    enable("Timestamp");
    enable("Gain");
    set<CBooleanParameter>("FaultChunkMissing", true);
    service<ICameraStreamControlService>()->startGrabbing(m_info);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isReadable("ChunkTimestamp"); }, s_waitMs));
    EXPECT_FALSE(isReadable("ChunkGain"));
    service<ICameraStreamControlService>()->stopGrabbing(m_info);
    EXPECT_TRUE(isReadable("ChunkTimestamp")); // of the last image
    ASSERT_TRUE(QTest::qWaitFor([&] { return !service<ICameraStatusService>()->isCameraGrabbing(m_info); }, s_waitMs));
    set<CBooleanParameter>("ChunkModeActive", false);
    service<ICameraStreamControlService>()->startGrabbing(m_info);
    EXPECT_FALSE(isReadable("ChunkTimestamp"));
}

TEST_F(PluginChunks, thatCannotBeReadAreNotAvailableUntilTheyCanBeAgain)
{
    enable("FrameID");
    set<CBooleanParameter>("FaultChunkLies", true);
    ::Test::CWarnings warnings;
    int grabbed = 0;
    QObject receiver;
    QObject::connect(service<ICameraStatusService>().data(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const CameraInfoPtr&, const Velmo::CGrabResultPtr&) { ++grabbed; });
    service<ICameraStreamControlService>()->startGrabbing(m_info);
    ASSERT_TRUE(QTest::qWaitFor([&] { return grabbed >= 5; }, s_waitMs));
    EXPECT_FALSE(isReadable("ChunkFrameID"));
    const auto lines = warnings.Lines();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& line) { return line.find("cannot be read") != std::string::npos; }),
              1); // of all those images
    set<CBooleanParameter>("FaultChunkLies", false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isReadable("ChunkFrameID"); }, s_waitMs));
    service<ICameraStreamControlService>()->stopGrabbing(m_info);
}

TEST_F(PluginChunks, ofASingleShotStayReadableAfterwards)
{
    enable("FrameID");
    service<ICameraStreamControlService>()->singleShot(m_info, 5000);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isReadable("ChunkFrameID"); }, s_waitMs));
    EXPECT_EQ(GenApi::CIntegerPtr(m_pNodes->GetNode("ChunkFrameID"))->GetValue(), 1);
}

} // namespace
