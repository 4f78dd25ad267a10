// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/monitorcamera.h"

#include "protocols/gvbsregisters.h"
#include "transports/gige/internal/descriptionurl.h"

#include <array>
#include <cstring>
#include <utility>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr std::uint32_t MostDescriptionBytes = 64U << 20; // a camera that names more does not mean it

std::vector<std::uint8_t> ReadDescription(SMonitorCamera& camera)
{
    std::string urls;
    for (const std::uint32_t address : {Gvbs::FirstUrl, Gvbs::SecondUrl})
    {
        std::array<char, Gvbs::UrlBytes> bytes{};
        camera.pPort->Read(bytes.data(), address, bytes.size());
        const std::string url(bytes.data(), strnlen(bytes.data(), bytes.size()));
        SDescriptionPlace place;
        if (ParseDescriptionUrl(url, place) && place.bytes <= MostDescriptionBytes)
        {
            std::vector<std::uint8_t> description(place.bytes);
            camera.pPort->Read(description.data(), place.address, place.bytes);
            return description;
        }
        urls += (urls.empty() ? "\"" : "\", \"") + url;
    }
    GENICAM_THROW(RuntimeException, "The camera " + camera.name +
                                        " cannot be monitored: the description of its features is not in the camera, "
                                        "but at " +
                                        urls + "\".");
}

/** Its message tells whether nobody answers or somebody else keeps the camera to himself. */
void CheckReadable(SMonitorCamera& camera)
{
    try
    {
        camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize);
    }
    catch (const GenICam::TimeoutException&)
    {
        GENICAM_THROW(RuntimeException, "The camera " + camera.name + " cannot be monitored: it does not answer.");
    }
    catch (const GenICam::AccessException& e)
    {
        GENICAM_THROW(AccessException, "The camera " + camera.name +
                                           " cannot be monitored; another application may have it for itself alone: " +
                                           e.GetDescription());
    }
}

} // namespace

std::unique_ptr<SMonitorCamera> OpenMonitorCamera(const std::string& name, std::uint32_t adapterIp,
                                                  std::uint32_t deviceIp, std::shared_ptr<CRemoval> pRemoval)
{
    auto pCamera = std::make_unique<SMonitorCamera>();
    pCamera->name = name;
    pCamera->deviceIp = deviceIp;
    pCamera->adapterIp = adapterIp;
    pCamera->pRemoval = pRemoval;
    pCamera->pPort = std::make_unique<CMonitorPort>(name, adapterIp, deviceIp, std::move(pRemoval));
    CheckReadable(*pCamera);
    const std::vector<std::uint8_t> description = ReadDescription(*pCamera);
    const GenApi::CNodeMapFactory factory = GenApi::CNodeMapFactory::FromData(description.data(), description.size());
    for (std::unique_ptr<GenApi::INodeMap>* pNodeMap : {&pCamera->pNodeMap, &pCamera->pStreamNodeMap})
    {
        *pNodeMap = factory.CreateNodeMap();
        (*pNodeMap)->Connect(pCamera->pPort.get());
    }
    return pCamera;
}

} // namespace Velmo::GigE::Internal
