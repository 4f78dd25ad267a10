// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "hostkit/cameranames.h"
#include "hostkit/host.h"
#include "support/cameraprogram.h"
#include "support/networknamespace.h"
#include "utils/exceptions.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <memory>
#include <string>
#include <vector>

namespace
{

using Core::Exception::BaseException;
using HostKit::CameraInfoPtr;
using Plugin::CameraPool::ICameraEnumerationService;
using ::Test::CCameraProgram;
using ::Test::CPeerNamespace;
using ::Test::RunIp;

constexpr int limitMs = 20000;
constexpr const char* address = "10.8.0.2"; // behind the router, where no broadcast gets

/** A whole host with the real plugins, to which a camera must be announced by its address. */
class HostWithRemoteCamera : public testing::Test
{
protected:
    void SetUp() override
    {
        m_router.Connect("va", "192.168.77.1/24", "ra", "192.168.77.2/24");
        m_router.Visit([this] { m_far.Connect("rb", "10.8.0.1/24", "cb", "10.8.0.2/24"); });
        m_router.ForwardPackets();
        m_far.Visit([] { RunIp("route add default via 10.8.0.1"); });
        RunIp("route add 10.8.0.0/24 via 192.168.77.2");
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", "va");
        qputenv("CAMERAPOOL_EMULATION_CAMERAS", "0");
        m_pHost = std::make_unique<HostKit::CHost>(QStringLiteral(PLUGIN_FOLDER));
        ASSERT_TRUE(m_pHost->start(QStringLiteral("en"))) << m_pHost->errors().join('\n').toStdString();
    }

    CameraInfoPtr find() const
    {
        const auto layers = m_pHost->enumeration().enumerate();
        for (const auto& layer : layers)
        {
            const auto records = layer->getCameraInfoList().toBaseInfoVector();
            for (const auto& record : records)
            {
                if (const auto camera = record.objectCast<Plugin::CameraPool::ICameraInfo>())
                {
                    return camera;
                }
            }
        }
        return {};
    }

    /** What the service raises for that address; "" when it raises nothing. */
    QString refusal(const char* remoteAddress) const
    {
        try
        {
            m_pHost->control().addRemoteGigECamera(QString::fromLatin1(remoteAddress));
        }
        catch (const BaseException& e)
        {
            return QString::fromUtf8(e.what());
        }
        return {};
    }

    CPeerNamespace m_router;
    CPeerNamespace m_far;
    std::unique_ptr<HostKit::CHost> m_pHost;
};

TEST_F(HostWithRemoteCamera, isFoundByTheNextPassAndOpens)
{
    std::unique_ptr<CCameraProgram> camera;
    m_far.Visit(
        [&]
        {
            camera = std::make_unique<CCameraProgram>(
                std::vector<std::string>{"--address", address, "--config", ::Test::WriteConfig("")});
        });
    QSignalSpy changed(&m_pHost->enumeration(), &ICameraEnumerationService::enumerationChanged);
    ASSERT_TRUE(changed.count() > 0 || changed.wait(limitMs)) << "the first pass";
    ASSERT_TRUE(find().isNull()) << "found without having been announced";
    ASSERT_EQ(refusal(address), QString());
    changed.clear();
    m_pHost->enumeration().triggerEnumeration();
    ASSERT_TRUE(changed.wait(limitMs));
    const auto info = find();
    ASSERT_FALSE(info.isNull());
    EXPECT_TRUE(m_pHost->control().open(info, false)) << info->errorString().toStdString();
    m_pHost->control().close(info); // while the camera is there to answer
}

TEST_F(HostWithRemoteCamera, thatDoesNotAnswerIsRefusedInWordsForAPerson)
{
    EXPECT_EQ(refusal(address), QStringLiteral("Failed to find camera. Check the IP configuration."));
}

TEST_F(HostWithRemoteCamera, whoseAddressIsNoneIsRefusedWithTheSdksReason)
{
    EXPECT_EQ(refusal("camera.example"), QStringLiteral("\"camera.example\" is no IPv4 address of a remote camera."));
    EXPECT_EQ(refusal(""), QStringLiteral("\"\" is no IPv4 address of a remote camera."));
}

} // namespace
