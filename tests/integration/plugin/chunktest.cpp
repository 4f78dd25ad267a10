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
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>

namespace
{

using namespace Plugin::CameraPool;
using namespace ParameterCollection;

constexpr double s_firstExposureUs = 100.0;
constexpr double s_exposureStepUs = 0.5; // every step has an exact double

/** Counts images on the grab thread for the test's thread to wait for. */
class CImageCounter
{
public:
    void countOne()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_count;
        m_changed.notify_one();
    }
    int count()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }
    bool waitFor(int wanted)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(30), [&] { return m_count >= wanted; });
    }

private:
    std::mutex m_mutex; // guards m_count
    std::condition_variable m_changed;
    int m_count = 0;
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
    constexpr int images = 1000;
    for (const char* chunk : {"Timestamp", "FrameID", "ExposureTime", "Gain"})
    {
        enable(chunk);
    }
    set<CEnumParameter>("TriggerMode", QStringLiteral("On"));
    const GenApi::CFloatPtr exposure(m_pNodes->GetNode("ExposureTime"));
    const GenApi::CFloatPtr gain(m_pNodes->GetNode("Gain"));
    const GenApi::CIntegerPtr frameId(m_pNodes->GetNode("ChunkFrameID"));
    const GenApi::CIntegerPtr timestamp(m_pNodes->GetNode("ChunkTimestamp"));
    const GenApi::CFloatPtr chunkExposure(m_pNodes->GetNode("ChunkExposureTime"));
    const GenApi::CFloatPtr chunkGain(m_pNodes->GetNode("ChunkGain"));
    CImageCounter attached;
    const auto handle =
        m_pNodes->GetNode("ChunkFrameID")->RegisterCallback([&](GenApi::INode*) { attached.countOne(); });
    QMap<std::uint64_t, std::uint64_t> timestamps; // of the results, by block
    QObject receiver;
    QObject::connect(service<ICameraStatusService>().data(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const CameraInfoPtr&, const Velmo::CGrabResultPtr& result)
                     {
                         EXPECT_EQ(result->GetPayloadType(), Velmo::EPayloadType::ChunkData);
                         EXPECT_EQ(result->GetImageSize(), 64U * 48U);
                         timestamps.insert(result->GetBlockID(), result->GetTimeStamp());
                     });
    service<ICameraStreamControlService>()->startGrabbing(m_info);
    const int before = attached.count(); // changes of settings count, too
    QMap<std::uint64_t, std::uint64_t> told;
    for (int image = 1; image <= images; ++image)
    {
        set<CFloatParameter>("ExposureTime", s_firstExposureUs + image * s_exposureStepUs);
        set<CFloatParameter>("Gain", image % 2 == 0 ? 1.5 : 3.0);
        GenApi::CCommandPtr(m_pNodes->GetNode("TriggerSoftware"))->Execute();
        ASSERT_TRUE(attached.waitFor(before + image)) << image;
        ASSERT_EQ(frameId->GetValue(), image);
        ASSERT_EQ(chunkExposure->GetValue(), exposure->GetValue(false, true)) << image;
        ASSERT_EQ(chunkExposure->GetValue(), s_firstExposureUs + image * s_exposureStepUs);
        ASSERT_EQ(chunkGain->GetValue(), gain->GetValue(false, true)) << image;
        told.insert(static_cast<std::uint64_t>(image), static_cast<std::uint64_t>(timestamp->GetValue()));
        QCoreApplication::processEvents(); // the results go back to the stream
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return timestamps.size() >= images; }, s_waitMs));
    service<ICameraStreamControlService>()->stopGrabbing(m_info);
    m_pNodes->GetNode("ChunkFrameID")->DeregisterCallback(handle);
    EXPECT_EQ(timestamps, told);
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
