// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/packetsize.h"

#include "protocols/gvbsregisters.h"
#include "transport/log.h"
#include "transports/gige/internal/adapterlink.h"
#include "transports/gige/internal/opencamera.h"
#include "transports/gige/internal/packetsizesearch.h"
#include "transports/gige/internal/testpackets.h"

#include <algorithm>

namespace Velmo::GigE::Internal
{

namespace
{

/** What the adapter takes in one piece. Loopback would take more than any network: there, what jumbo frames carry. */
std::uint32_t AdapterLimit(const SOpenCamera& camera)
{
    constexpr std::uint32_t jumbo = 9000;
    constexpr std::uint32_t usual = 1500;
    if (camera.isLoopback)
    {
        return jumbo;
    }
    const std::vector<SAdapter> adapters = ListSystemAdapters();
    const auto found = std::find_if(adapters.begin(), adapters.end(),
                                    [&camera](const SAdapter& adapter) { return adapter.ip == camera.adapterIp; });
    const std::int64_t mtu = found == adapters.end() ? UnknownLinkValue : ReadMtu(*found);
    return mtu > 0 ? static_cast<std::uint32_t>(mtu) : usual;
}

/** What the camera says of its setting, where it says it. */
SPacketSizes CameraSizes(const SOpenCamera& camera)
{
    SPacketSizes sizes;
    try
    {
        const GenApi::CIntegerPtr pSize(camera.pNodeMap->GetNode("GevSCPSPacketSize"));
        if (pSize)
        {
            const auto limited = [&](std::int64_t value)
            {
                return static_cast<std::uint32_t>(
                    std::clamp<std::int64_t>(value, 0, std::int64_t{Gvbs::ScpsPacketSizeMask}));
            };
            const std::uint32_t least = limited(pSize->GetMin());
            sizes.increment = std::max<std::uint32_t>(1, limited(pSize->GetInc()));
            const std::uint32_t below = sizes.min > least ? sizes.min - least : 0;
            sizes.min = least + (below + sizes.increment - 1) / sizes.increment * sizes.increment;
            sizes.max = std::max(limited(pSize->GetMax()), sizes.min);
        }
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Debug, "velmo.gige",
            "Camera " + camera.name + ": the limits of its packet size cannot be read: " + e.GetDescription());
    }
    return sizes;
}

std::string Describe(const SPacketSizeChoice& choice)
{
    const std::string size = "packets of " + std::to_string(choice.bytes) + " bytes";
    switch (choice.origin)
    {
    case EPacketSizeOrigin::Camera:
        return size + ", as it was set";
    case EPacketSizeOrigin::User:
        return size + ", as the user set it";
    case EPacketSizeOrigin::TestPackets:
        return size + ", the largest of which a test packet arrived";
    case EPacketSizeOrigin::Limits:
        return size + ", the most that network adapter and camera allow: no test packet arrived. If no image does "
                      "either, a firewall may be in the way";
    }
    return size;
}

} // namespace

void CPacketSize::ChooseForGrab(SOpenCamera& camera, bool isWanted)
{
    const std::lock_guard<std::mutex> lock(m_chooseMutex);
    if (m_isDone || !isWanted)
    {
        return;
    }
    m_isDone = true;
    try
    {
        constexpr bool isUsersStanding = true;
        const SPacketSizeChoice choice = Choose(camera, isUsersStanding);
        Keep(choice);
        // On loopback there are no narrow paths: a simulated camera that knows no test packets is nothing to worry
        // about.
        const bool isDoubtful = choice.origin == EPacketSizeOrigin::Limits && !camera.isLoopback;
        Log(isDoubtful ? ELogLevel::Warning : ELogLevel::Info, "velmo.gige",
            "Camera " + camera.name + ": " + Describe(choice) + ".");
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + camera.name + ": the packet size stays as it is: " + e.GetDescription());
    }
}

void CPacketSize::Probe(SOpenCamera& camera)
{
    const std::lock_guard<std::mutex> lock(m_chooseMutex);
    constexpr bool isUsersStanding = false;
    Keep(Choose(camera, isUsersStanding));
    m_isDone = true;
}

SPacketSizeChoice CPacketSize::Choose(SOpenCamera& camera, bool isUsersStanding)
{
    const std::uint32_t before = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize);
    const std::uint32_t chosen = Get().bytes;
    const std::uint32_t expected = (chosen != 0 ? chosen : camera.packetSettingAtOpen) & Gvbs::ScpsPacketSizeMask;
    const bool isUsers =
        camera.pPort->IsPacketSizeWritten() || (before & Gvbs::ScpsPacketSizeMask) != expected; // or a user set
    SPacketSizeChoice choice;
    if (isUsers && isUsersStanding)
    {
        choice.origin = EPacketSizeOrigin::User;
        choice.bytes = before & Gvbs::ScpsPacketSizeMask;
        return choice;
    }
    const SPacketSizes sizes = CameraSizes(camera);
    const std::uint32_t limit = AdapterLimit(camera);
    std::uint32_t setting = before;
    choice.isTested = true;
    try
    {
        CTestPackets packets(camera);
        choice.pathBytes =
            SearchPacketSize(sizes, limit, [&packets](std::uint32_t bytes) { return packets.Pass(bytes); });
        if (!isUsers)
        {
            // What was not tested may yet be cut up on its way rather than lost, if the camera was set up so.
            setting = choice.pathBytes != 0 ? Gvbs::ScpsDoNotFragment | choice.pathBytes
                                            : (before & Gvbs::ScpsDoNotFragment) | LargestPacketSize(sizes, limit);
        }
    }
    catch (...)
    {
        camera.pPort->WriteRegister(Gvbs::StreamChannelPacketSize, before & ~Gvbs::ScpsFireTestPacket);
        throw;
    }
    camera.pPort->WriteRegister(Gvbs::StreamChannelPacketSize, setting & ~Gvbs::ScpsFireTestPacket);
    choice.bytes = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize) & Gvbs::ScpsPacketSizeMask;
    choice.origin = isUsers                 ? EPacketSizeOrigin::User
                    : choice.pathBytes != 0 ? EPacketSizeOrigin::TestPackets
                                            : EPacketSizeOrigin::Limits;
    camera.pNodeMap->InvalidateNodes();
    return choice;
}

SPacketSizeChoice CPacketSize::Get() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_choice;
}

void CPacketSize::Keep(const SPacketSizeChoice& choice)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_choice = choice;
}

} // namespace Velmo::GigE::Internal
