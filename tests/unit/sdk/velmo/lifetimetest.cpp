// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"

#include "velmo/velmo.h"

#include <cstdlib>
#include <memory>

using namespace Velmo;

namespace
{

struct SGlobals
{
    ~SGlobals()
    {
        if (result.IsValid() && *static_cast<const std::uint8_t*>(result->GetBuffer()) != 42)
        {
            std::abort();
        }
    }
    CGrabResultPtr result;
    std::unique_ptr<CInstantCamera> camera; // destroyed before the result
};

/** Constructed before anything of the SDK, therefore destroyed after everything of it that ends with the process. */
SGlobals g_globals;

std::unique_ptr<CInstantCamera> GrabOne(::Test::CScriptedTransport& transport, CGrabResultPtr& result)
{
    transport.AddCamera({});
    auto camera =
        std::make_unique<CInstantCamera>(CTlFactory::GetInstance().CreateDevice(transport.GetDeviceInfo("1001")));
    camera->Open();
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.data = {42};
    EXPECT_TRUE(transport.DeliverImage("1001", image));
    EXPECT_TRUE(camera->RetrieveResult(5000, result));
    return camera;
}

} // namespace

TEST(Lifetime, resultsAndCamerasOutliveTheSdkAndTheTransportItsDevices)
{
    auto transport = std::make_shared<::Test::CScriptedTransport>();
    const std::weak_ptr<::Test::CScriptedTransport> watched = transport;
    CGrabResultPtr result;
    std::unique_ptr<CInstantCamera> camera;
    {
        const ::Test::CScriptedSdk sdk({transport});
        camera = GrabOne(*transport, result);
        transport.reset();
    }
    EXPECT_EQ(0U, VelmoInitializationCount());
    ASSERT_FALSE(watched.expired()) << "the device lost its transport";
    EXPECT_TRUE(watched.lock()->DeliverImage("1001"));
    CGrabResultPtr second;
    EXPECT_TRUE(camera->RetrieveResult(5000, second));
    camera->StopGrabbing();
    camera.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(42, *static_cast<const std::uint8_t*>(result->GetBuffer()));
    EXPECT_EQ(2, second->GetImageNumber());
}

TEST(Lifetime, transportLayerHandleOutlivesTheSdk)
{
    auto transport = std::make_shared<::Test::CScriptedTransport>();
    ITransportLayer* pTl = nullptr;
    {
        const ::Test::CScriptedSdk sdk({transport});
        pTl = CTlFactory::GetInstance().CreateTl(transport->GetTlInfo());
        ASSERT_NE(nullptr, pTl);
    }
    DeviceInfoList list;
    EXPECT_THROW(pTl->EnumerateDevices(list), GenICam::RuntimeException);
    EXPECT_NO_THROW(CTlFactory::GetInstance().ReleaseTl(pTl));
}

TEST(LifetimeDeathTest, globalCameraAndResultAreDestroyedAfterTheSdksOwnGlobals)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const auto transport = std::make_shared<::Test::CScriptedTransport>();
            {
                const ::Test::CScriptedSdk sdk({transport});
                g_globals.camera = GrabOne(*transport, g_globals.result);
            }
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "");
}
