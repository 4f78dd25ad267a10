// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/actions.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

using namespace Velmo;
using namespace Velmo::GigE::Internal;

namespace
{

constexpr std::uint16_t Request = 0x1234;
constexpr std::uint32_t Network = 0xC0A80100;       // 192.168.1.0
constexpr std::uint32_t FarNetwork = 0x0A000000;    // 10.0.0.0
constexpr std::uint32_t Camera = Network | 20;      // whom a command to one camera is for
constexpr std::uint32_t NetworkMask = 0xFFFFFF00;   // of both
constexpr std::uint32_t Broadcast = Network | 0xFF; // 192.168.1.255
constexpr std::size_t MetaBytes = 3;                // in front of each datagram
enum EMeta : unsigned
{
    MetaOneCamera = 1, // the command went to Camera ...
    MetaNetwork = 2,   // or to the network; else to everybody
    MetaFar = 4,       // the datagram comes from the other network ...
    MetaOtherPort = 8  // or from another port
};

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

SActionRoute MakeRoute(unsigned meta)
{
    SActionRoute route;
    route.adapter.ip = Network | 5;
    route.adapter.mask = NetworkMask;
    route.isBroadcast = (meta & MetaOneCamera) == 0;
    route.target = !route.isBroadcast ? Camera : (meta & MetaNetwork) != 0 ? Broadcast : LimitedBroadcast;
    return route;
}

/** What may count as an answer, said once more by the bytes of the standard. */
bool IsAnswer(const std::uint8_t* data, std::size_t bytes, std::uint32_t sender, unsigned meta)
{
    constexpr std::size_t headerBytes = 8;
    const auto u16 = [data](std::size_t at)
    {
        return static_cast<unsigned>(data[at] << 8 | data[at + 1]);
    };
    const bool isThere = (meta & MetaOneCamera) != 0 ? sender == Camera
                         : (meta & MetaNetwork) != 0 ? (sender & NetworkMask) == Network
                                                     : true;
    return bytes >= headerBytes && u16(2) == 0x0101 && u16(4) <= bytes - headerBytes && u16(6) == Request && isThere &&
           (meta & MetaOtherPort) == 0;
}

void CheckTaken(const std::vector<Transport::SActionAnswer>& before, const std::vector<Transport::SActionAnswer>& after,
                bool isWanted, const Transport::SActionAnswer& answer)
{
    const auto isSame = [](const Transport::SActionAnswer& one, const Transport::SActionAnswer& other)
    {
        return one.address == other.address && one.status == other.status;
    };
    Require(after.size() == before.size() + (isWanted ? 1 : 0));
    Require(std::equal(before.begin(), before.end(), after.begin(), isSame));
    Require(!isWanted || isSame(after.back(), answer));
}

/** Each is of an address that answered, and none says what the first answer said. */
void CheckContradictions(const CActionAnswers& answers)
{
    constexpr std::size_t most = 64;
    Require(answers.GetContradictions().size() <= most);
    for (const Transport::SActionAnswer& other : answers.GetContradictions())
    {
        const auto first = std::find_if(answers.Get().begin(), answers.Get().end(),
                                        [&](const auto& answer) { return answer.address == other.address; });
        Require(first != answers.Get().end() && first->status != other.status);
    }
}

} // namespace

/** The input is the number of expected answers and a row of datagrams, each behind its length, the last byte of the
 *  sender's address, and the bits of EMeta. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
    {
        return 0;
    }
    const std::size_t expected = data[0];
    CActionAnswers answers(Request, expected);
    for (++data, --size; size >= MetaBytes;)
    {
        const std::size_t bytes = std::min<std::size_t>(data[0], size - MetaBytes);
        const unsigned meta = data[2];
        const std::uint32_t sender = ((meta & MetaFar) != 0 ? FarNetwork : Network) | data[1];
        // A copy of just these bytes lets a sanitizer see what reads beyond them.
        const std::vector<std::uint8_t> datagram(data + MetaBytes, data + MetaBytes + bytes);
        const std::vector<Transport::SActionAnswer> before = answers.Get();
        const std::string address = Gvcp::IpText(sender);
        const bool isNew =
            std::none_of(before.begin(), before.end(), [&](const auto& known) { return known.address == address; });
        const bool isWanted =
            isNew && before.size() < expected && IsAnswer(datagram.data(), datagram.size(), sender, meta);
        const auto port = static_cast<std::uint16_t>(Gvcp::Port + ((meta & MetaOtherPort) != 0 ? 1 : 0));
        answers.Take(datagram.data(), datagram.size(), sender, port, MakeRoute(meta));
        const std::uint32_t status = isWanted ? static_cast<std::uint32_t>(datagram[0] << 8 | datagram[1]) : 0;
        CheckTaken(before, answers.Get(), isWanted, {address, status});
        CheckContradictions(answers);
        Require(answers.IsComplete() == (answers.Get().size() >= expected));
        data += MetaBytes + bytes;
        size -= MetaBytes + bytes;
    }
    return 0;
}
