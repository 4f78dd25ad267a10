// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/controlchannel.h"
#include "gigeserver/internal/streamsender.h"
#include "protocols/gvbsregisters.h"

#include <cstdlib>

using namespace GigEServer;
using namespace GigEServer::Internal;
namespace Gvcp = Velmo::Gvcp;

namespace
{

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

constexpr SPeer Owner{0x7F000001, 40000};
constexpr SPeer Stranger{0x7F000001, 40001};

SServedCamera OnLoopback()
{
    SServedCamera camera;
    camera.address.ip = Owner.ip;
    camera.linkBitsPerSecond = 0;
    camera.faults.isStreamBlocked = true; // the packets of its stream are counted, and that is all
    return camera;
}

/** A stream with one block of each kind of identifiers. Its model never acquires: what it sends are requested packets.
 */
struct SStream
{
    SStream()
    {
        constexpr std::size_t packetBytes = 136;
        STarget target;
        target.ip = Owner.ip;
        target.port = 1;
        target.packetBytes = packetBytes;
        const std::vector<std::uint8_t> image(200 * packetBytes);
        Simulator::SFrame frame;
        frame.data = image.data();
        frame.bytes = image.size();
        for (const bool isExtended : {false, true})
        {
            target.isExtended = isExtended;
            sender.SetTarget(target);
            ++frame.blockId;
            Require(sender.OnFrame(frame));
            largest = std::max<std::uint64_t>(largest, counters.lostPackets - sent);
            sent = counters.lostPackets;
        }
    }
    void Resend(const Gvcp::SPacketResend& resend)
    {
        sent = counters.lostPackets;
        sender.Resend(resend);
        Require(counters.lostPackets - sent <= largest);
    }

    SLiveCounters counters;
    std::uint64_t sent = 0;    // so far
    std::uint64_t largest = 0; // packets of a block
    CStreamSender sender{OnLoopback(), std::make_shared<Simulator::CCameraModel>(Simulator::SCameraConfig()), counters,
                         [] {
                         }};
};

/** One camera for all inputs: making one takes a thousand times as long as answering a command. */
struct SCamera
{
    SServedCamera config;
    std::shared_ptr<Simulator::CCameraModel> pModel = std::make_shared<Simulator::CCameraModel>(config.config);
    CRegisters registers{config, pModel,
                         CRegisters::SHooks{[] {}, [](std::uint32_t) {},
                                            [] {
                                            }}};
    SStream stream;
    CControlChannel channel{registers, CControlChannel::SHooks{[this](const Gvcp::SPacketResend& resend)
                                                               { stream.Resend(resend); },
                                                               [](const Gvcp::SForceIp&)
                                                               {
                                                                   return true;
                                                               }}};
};

void Handle(SCamera& camera, const std::uint8_t* data, std::size_t size, const SPeer& peer)
{
    const CControlChannel::Time now{};
    const Gvcp::Bytes answer = camera.channel.Handle(data, size, peer, now);
    if (answer.empty())
    {
        return;
    }
    Gvcp::SAcknowledge ack;
    Require(Gvcp::ParseAcknowledge(answer.data(), answer.size(), ack) == Gvcp::EParseResult::Ok);
    Require(answer.size() == Gvcp::HeaderBytes + ack.payloadBytes && ack.payloadBytes <= Gvcp::MaxPayloadBytes);
    Require(ack.ackId == (data[6] << 8 | data[7]));
}

} // namespace

/** The input is datagrams, each behind a byte that says who sends it (its lowest bit) and two that are its length. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static SCamera camera;
    const Gvcp::Bytes take = Gvcp::EncodeWriteRegCmd(1, {{Velmo::Gvbs::ControlChannelPrivilege, 2}});
    Handle(camera, take.data(), take.size(), Owner);
    constexpr std::size_t headBytes = 3;
    while (size > headBytes)
    {
        const std::size_t announced = std::size_t{data[1]} << 8 | data[2];
        const SPeer& peer = (data[0] & 1) != 0 ? Owner : Stranger;
        data += headBytes;
        size -= headBytes;
        const std::size_t bytes = std::min(announced, size);
        Handle(camera, data, bytes, peer);
        data += bytes;
        size -= bytes;
    }
    const Gvcp::Bytes release = Gvcp::EncodeWriteRegCmd(2, {{Velmo::Gvbs::ControlChannelPrivilege, 0}});
    Handle(camera, release.data(), release.size(), Owner);
    Handle(camera, release.data(), release.size(), Stranger); // the input may have handed the control over
    Require(!camera.pModel->IsAcquiring());
    return 0;
}
