// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/discoveryanswers.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <vector>

using namespace Velmo;
using namespace Velmo::GigE::Internal;

namespace
{

constexpr std::uint16_t Id = 0x1234;
constexpr std::uint32_t Network = 0xC0A80100;    // 192.168.1.0/24, the first adapter's
constexpr std::uint32_t FarNetwork = 0x0A000000; // 10.0.0.0/24, the second one's
constexpr std::uint32_t Nowhere = 0xAC100000;    // 172.16.0.0/24, nobody's
constexpr std::uint32_t NetworkMask = 0xFFFFFF00;
constexpr std::size_t MetaBytes = 3; // in front of each datagram
enum EMeta : unsigned
{
    MetaLong = 1,          // 256 bytes more
    MetaSecond = 2,        // it came to the second adapter
    MetaSenderFar = 4,     // from its network ...
    MetaSenderNowhere = 8, // or from nobody's
    MetaOtherPort = 16
};
// Asked by their addresses, one in each network.
const std::vector<std::uint32_t> Asked{Network | 20, FarNetwork | 20, Nowhere | 20};

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

SAdapter MakeAdapter(bool isSecond)
{
    SAdapter adapter;
    adapter.id = isSecond ? "eth1" : "eth0";
    adapter.ip = (isSecond ? FarNetwork : Network) | 5;
    adapter.mask = NetworkMask;
    return adapter;
}

std::uint32_t SenderOf(unsigned meta, std::uint8_t last)
{
    return ((meta & MetaSenderNowhere) != 0 ? Nowhere : (meta & MetaSenderFar) != 0 ? FarNetwork : Network) | last;
}

/** 0 to 2: how well the camera can be reached there, said once more. */
int ReachOf(const SFoundDevice& device)
{
    const bool isInSubnet = (device.ip & NetworkMask) == (device.adapter.ip & NetworkMask);
    return isInSubnet ? 2 : device.isRemote ? 1 : 0;
}

auto IdentityOf(const SFoundDevice& device)
{
    return std::tie(device.ack.mac, device.ack.serialNumber, device.ack.modelName);
}

void CheckDevices(const CDiscoveryAnswers& answers)
{
    std::size_t askable = 0;
    const std::vector<SFoundDevice>& devices = answers.GetDevices();
    for (std::size_t i = 0; i < devices.size(); ++i)
    {
        const SFoundDevice& device = devices[i];
        Require(device.ip != 0 && device.ip < 0xE0000000 && device.ip != (device.adapter.ip | ~NetworkMask));
        Require(device.access == EAccessStatus::Unreachable || ReachOf(device) > 0);
        Require(!device.isRemote || std::count(Asked.begin(), Asked.end(), device.ip) != 0);
        askable += ReachOf(device) > 0 ? 1 : 0;
        for (std::size_t other = 0; other < i; ++other)
        {
            Require(IdentityOf(devices[other]) != IdentityOf(device));
        }
    }
    const std::vector<SPrivilegeQuestion> questions = answers.GetOpenQuestions();
    Require(questions.size() <= askable && answers.HasOpenQuestions() == !questions.empty());
    for (const SPrivilegeQuestion& question : questions)
    {
        Require(std::any_of(devices.begin(), devices.end(),
                            [&](const SFoundDevice& device)
                            { return device.ip == question.ip && device.adapter.id == question.adapterId; }));
    }
}

/** Devices only come, and each only to where it can be reached better. */
void CheckStep(const std::vector<SFoundDevice>& before, const std::vector<SFoundDevice>& after,
               const CDiscoveryAnswers::STaken& taken, unsigned meta)
{
    Require(after.size() == before.size() + (taken.isNewDevice ? 1 : 0));
    std::size_t moved = 0;
    for (std::size_t i = 0; i < before.size(); ++i)
    {
        Require(IdentityOf(before[i]) == IdentityOf(after[i]) && ReachOf(after[i]) >= ReachOf(before[i]));
        const bool isSame = before[i].ip == after[i].ip && before[i].adapter.id == after[i].adapter.id;
        Require(isSame || ReachOf(after[i]) > ReachOf(before[i]));
        Require(!isSame || after[i].access == before[i].access || (meta & MetaOtherPort) == 0);
        moved += isSame ? 0 : 1;
    }
    Require(moved <= (taken.question.has_value() && !taken.isNewDevice ? 1U : 0U));
    Require((meta & MetaOtherPort) == 0 || (!taken.isNewDevice && !taken.question.has_value()));
    Require(!taken.question.has_value() || taken.question->requestId >= 0x8000);
}

} // namespace

/** The input is a row of datagrams, each behind its length, the bits of EMeta and the last byte of the sender's
 *  address. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CDiscoveryAnswers answers(Id, Asked, {Network | 20, Network | 21});
    while (size >= MetaBytes)
    {
        const unsigned meta = data[1];
        const std::size_t wanted = data[0] + ((meta & MetaLong) != 0 ? 256U : 0U);
        const std::size_t bytes = std::min(wanted, size - MetaBytes);
        // A copy of just these bytes lets a sanitizer see what reads beyond them.
        const std::vector<std::uint8_t> datagram(data + MetaBytes, data + MetaBytes + bytes);
        const std::vector<SFoundDevice> before = answers.GetDevices();
        const bool wasComplete = answers.IsComplete();
        const auto port = static_cast<std::uint16_t>(Gvcp::Port + ((meta & MetaOtherPort) != 0 ? 1 : 0));
        const CDiscoveryAnswers::STaken taken = answers.Take(datagram.data(), datagram.size(), SenderOf(meta, data[2]),
                                                             port, MakeAdapter((meta & MetaSecond) != 0));
        CheckStep(before, answers.GetDevices(), taken, meta);
        CheckDevices(answers);
        Require(answers.IsComplete() || !wasComplete);
        data += MetaBytes + bytes;
        size -= MetaBytes + bytes;
    }
    return 0;
}
