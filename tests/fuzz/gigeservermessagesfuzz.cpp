// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/messagechannel.h"

#include <algorithm>
#include <cstdlib>

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

constexpr SPeer Application{0x7F000001, 40000};
constexpr SPeer Stranger{0x7F000001, 40001};
constexpr std::chrono::milliseconds Timeout{100};
constexpr std::uint32_t Retries = 2;
constexpr std::uint64_t Events = 4;

Gvcp::SEvent MakeEvent(std::uint64_t number)
{
    Gvcp::SEvent event;
    event.id = 0x9010;
    event.isExtended = number == 0;
    event.timestamp = number;
    event.data.resize(number % 2 * 8);
    return event;
}

} // namespace

/** The input is datagrams, each behind a byte and two that are its length. The byte's lowest bit says who sends it, the
 *  next whether the time-out is over before. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::uint64_t sent = 0;
    SLiveCounters counters;
    CMessageChannel channel{[&](const Gvcp::Bytes& message, const SPeer& peer)
                            {
                                ++sent;
                                Require(peer == Application && message.size() > Gvcp::HeaderBytes);
                            },
                            counters};
    CMessageChannel::Time now{};
    channel.SetTarget({Application, Timeout, Retries});
    for (std::uint64_t i = 0; i < Events; ++i)
    {
        channel.Push(MakeEvent(i), now);
    }
    Require(sent == 1);
    constexpr std::size_t headBytes = 3;
    while (size > headBytes)
    {
        const std::size_t announced = std::size_t{data[1]} << 8 | data[2];
        const bool isStranger = (data[0] & 1) == 0;
        if ((data[0] & 2) != 0)
        {
            now += Timeout;
            channel.OnTime(now);
        }
        data += headBytes;
        size -= headBytes;
        const std::size_t bytes = std::min(announced, size);
        const std::uint64_t before = sent;
        channel.Handle(data, bytes, isStranger ? Stranger : Application, now);
        Require(sent - before <= (isStranger ? 0U : 1U)); // one message waits for its acknowledge at any time
        data += bytes;
        size -= bytes;
    }
    Require(counters.events <= Events && sent <= Events * (1 + Retries));
    for (std::uint64_t i = 0; i <= Events * (1 + Retries) && channel.GetDeadline().has_value(); ++i)
    {
        now += Timeout;
        channel.OnTime(now);
    }
    Require(!channel.GetDeadline().has_value() && counters.events == Events);
    return 0;
}
